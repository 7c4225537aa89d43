#include "Require.h"
#include "analysis/Query.h"
#include "analysis/QueryCompletion.h"

#include <pugixml.hpp>

using namespace Tarno;

namespace
{

/// A trip with all fields.
const RecordView& Trip()
{
    static const pugi::xml_document document = [] {
        pugi::xml_document made;
        made.load_file(TARNO_SHIPPED_DATA "/sample/tarno.xml");
        return made;
    }();
    static const RecordView trip(document.first_child().first_child());
    return trip;
}

void CheckQuery(std::string_view text)
{
    static const SearchedTrip trip(Trip(), {});
    const Query query(text);
    std::size_t end = 0;
    for (const QueryFault& fault : query.Faults()) {
        Require(fault.position >= end && fault.length > 0, "faults are in order and do not overlap");
        end = fault.position + fault.length;
        Require(end <= text.size(), "a fault is inside the query");
        Require(fault.reason.ends_with('.'), "a fault has a reason");
    }
    Require(query.Matches(trip) || query.HasTerms(), "a query without terms matches every trip");
}

void CheckCompletion(std::string_view text)
{
    static const QueryCompletion completion([] { return RecordList{Trip()}; }, {});
    for (std::size_t cursor = 0; cursor <= text.size(); ++cursor) {
        const Completion found = completion.At(text, cursor);
        Require(found.position + found.length <= text.size(), "the replaced bytes are inside the query");
        for (const std::string& proposal : found.texts) {
            const std::string before(text.substr(0, found.position));
            const bool wasSound = Query(before + "x").Faults().empty();
            Require(!wasSound || Query(before + proposal).Faults().empty(), "a proposal adds no fault");
        }
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text = BytesOf(data, size);
    CheckQuery(text);
    CheckCompletion(text);
    return 0;
}
