#include "LineProposals.h"

#include "PickLists.h"
#include "analysis/QueryCompletion.h"
#include "core/Paths.h"
#include "qt/Strings.h"

#include <algorithm>
#include <set>

namespace Tarno
{

LineProposals::LineProposals(const Program& program, EntryField::Position field, const char* pickList)
    : m_program(program), m_field(field), m_pickList(pickList)
{
}

const std::vector<LineProposals::Line>& LineProposals::Lines()
{
    if (m_lines) {
        return *m_lines;
    }
    m_lines.emplace();
    std::set<std::string> known;
    const auto add = [&](const std::string& text) {
        std::string folded = Fold(text);
        if (!folded.empty() && known.insert(folded).second) {
            m_lines->push_back({FromUtf8(text), std::move(folded)});
        }
    };
    RecordList trips;
    m_program.sql.EntryList(trips);
    // sizes and numbers of fish differ from trip to trip
    for (const std::string& text : m_field == EntryField::FishCaught ? FrequentSubjects(trips, m_field)
                                                                     : FrequentLines(trips, m_field)) {
        add(text);
    }
    for (const QString& text : ReadPickList(m_program.folder, m_pickList)) {
        add(ToUtf8(text.trimmed()));
    }
    return *m_lines;
}

TextCompleter::Proposals LineProposals::For(const QString& line, int cursor)
{
    constexpr qsizetype most = 20;
    const std::string typed = Fold(ToUtf8(line.trimmed()));
    if (typed.empty() || cursor != line.size()) {
        return {};
    }
    QStringList starting;
    QStringList containing;
    for (const Line& known : Lines()) {
        const std::size_t found = known.folded.find(typed);
        if (known.folded == typed) {
            return {};
        }
        if (found != std::string::npos) {
            (found == 0 ? starting : containing) << known.text;
        }
    }
    return {.position = 0,
            .length = static_cast<int>(line.size()),
            .texts = (starting + containing).mid(0, most)};
}

} // namespace Tarno
