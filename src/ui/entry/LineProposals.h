#pragma once

#include "store/EntryFields.h"
#include "ui/common/Program.h"
#include "ui/common/TextCompleter.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace Tarno
{

/// The lines that are proposed for a multi-line box: those of earlier trips, most frequent first, then those
/// of the pick list. Of the catch, only what was caught is proposed, without sizes and numbers.
class LineProposals
{
public:
    /// `pickList` is the name of the pick-list file. `program` must outlive the object.
    LineProposals(const Program& program, EntryField::Position field, const char* pickList);

    /// Returns the lines that contain what is typed in `line`, first those that start with it. Case and
    /// accents do not matter. Proposes nothing if the line is one of them, or if the cursor is not at its
    /// end.
    TextCompleter::Proposals For(const QString& line, int cursor);

    /// Reads trips and pick list again before the next proposal.
    void Forget() { m_lines.reset(); }

private:
    struct Line {
        QString text;
        std::string folded;
    };

    const std::vector<Line>& Lines();

    const Program& m_program;
    EntryField::Position m_field;
    const char* m_pickList;
    std::optional<std::vector<Line>> m_lines;
};

} // namespace Tarno
