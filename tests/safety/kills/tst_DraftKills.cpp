#include "safety/ChildProgram.h"
#include "safety/Form.h"
#include "support/DraftTest.h"
#include "support/TestClass.h"

#include <chrono>
#include <random>
#include <thread>

using namespace Tarno;

using namespace std::string_literals;

namespace
{

/// Returns the number in the draft that a typist has left in the log; empty if there is none.
std::string Drafted(TestProgram& program)
{
    return DraftsOf(program).empty() ? ""s : DraftValue(program, EntryField::Obbos);
}

} // namespace

// A program that is killed at any moment while its user types and saves leaves what was typed, in the log or
// in a draft.
class tst_DraftKills : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void killedAnywhere_theLastNumberIsInTheLogOrInADraft()
    {
        TestProgram program;
        program.UseSample();
        std::mt19937 random(20261122);
        std::map<std::string, int> outcomes;
        const int kills = Times(isWindows ? 4 : 20, 500);
        for (int kill = 0; kill < kills; ++kill) {
            const int first = kill * 1000;
            ChildProgram typist({TARNO_TYPIST, program.folder.Path(), program.stateFolder.PathOf("drafts"),
                                 std::to_string(first)});
            int reported = -1;
            const auto read = [&] {
                const std::optional<std::string> line = typist.Line();
                reported = line ? std::stoi(*line) : reported;
                return line.has_value();
            };
            while (reported < first + 3) {
                QVERIFY(read());
            }
            std::this_thread::sleep_for(std::chrono::microseconds(random() % 30'000));
            typist.Kill();
            while (read()) {
            }
            const std::string saved = program.StoredEntry(1, EntryField::Obbos);
            const std::string drafted = Drafted(program);
            const std::string last = std::to_string(reported);
            const std::string next = std::to_string(reported + 1); // it was in work
            const bool isSaved = saved == last || saved == next;
            QVERIFY2(isSaved || drafted == last || drafted == next,
                     qPrintable(QString::fromStdString(saved + ", " + drafted + " after " + last)));
            ++outcomes[(isSaved ? "saved"s : "not saved"s) + (drafted.empty() ? "" : ", draft")];
            for (const Draft& draft : DraftsOf(program)) {
                program.drafts.Remove(draft);
            }
        }
        for (const auto& [outcome, count] : outcomes) {
            qInfo("%s: %d", outcome.c_str(), count);
        }
    }
};

TEST_CLASS(tst_DraftKills)
#include "tst_DraftKills.moc"
