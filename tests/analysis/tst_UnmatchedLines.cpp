// The lines that name no item of their pick list.

#include "SmallLog.h"
#include "analysis/UnmatchedLines.h"
#include "support/TestClass.h"

#include <QtTest>

using namespace Tarno;
using namespace Tarno::EntryField;

namespace
{

/// Returns the lines as "field line trips".
std::vector<std::string> Described(const SmallLog& log, const LogContext& context)
{
    std::vector<std::string> lines;
    for (const UnmatchedLine& line : UnmatchedLines(log.Trips(), context)) {
        lines.push_back(std::string(entryFields.at(line.field).name) + ' ' + line.line + ' ' +
                        std::to_string(line.trips));
    }
    return lines;
}

} // namespace

class tst_UnmatchedLines : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void lines_areListedByNumberOfTrips()
    {
        const SmallLog log({{{FishCaught, "Squid~CL~ boots ~CL~boots"}, {BaitUsed, "Squid"}},
                            {{FishCaught, "2 squids"}, {TargetSpecies, "boots"}},
                            {{FishCaught, "boots"}, {Method, "luck~CL~~CL~charm"}}},
                           {});
        const LogContext context{.species = LineItems({"Squid"})};
        QCOMPARE(Described(log, context),
                 (std::vector<std::string>{"FishCaught boots 2", "BaitUsed Squid 1", "TargetSpecies boots 1",
                                           "Method charm 1", "Method luck 1"}));
    }

    void log_withoutLines_hasNone()
    {
        const SmallLog log({{}, {{FishCaught, "  "}}}, {});
        QCOMPARE(Described(log, {}), std::vector<std::string>());
    }
};

TEST_CLASS(tst_UnmatchedLines)
#include "tst_UnmatchedLines.moc"
