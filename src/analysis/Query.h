#pragma once

#include "analysis/SearchedTrip.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

/// A term of a query that cannot be understood. It filters nothing.
struct QueryFault {
    std::size_t position; ///< in bytes from the start of the query
    std::size_t length;   ///< in bytes
    std::string reason;   ///< a sentence for the user
};

/// A filter for trips, written in the language that docs/queries.md describes. Any text is a query; parts of
/// it that cannot be understood become faults.
class Query
{
public:
    /// Matches every trip.
    Query() = default;
    explicit Query(std::string_view text);

    /// Whether the query filters anything.
    bool HasTerms() const { return !m_terms.empty(); }

    /// The faults in the order of the text.
    const std::vector<QueryFault>& Faults() const { return m_faults; }

    bool Matches(const SearchedTrip& trip) const;

private:
    using Condition = std::function<bool(const SearchedTrip&)>;

    struct Term {
        bool isExcluded;
        std::vector<Condition> alternatives;
    };

    std::vector<Term> m_terms;
    std::vector<QueryFault> m_faults;
};

} // namespace Tarno
