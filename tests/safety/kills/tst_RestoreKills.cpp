#include "backup/LogFolder.h"
#include "safety/ChildProgram.h"
#include "safety/Form.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

#include <chrono>
#include <random>
#include <thread>

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Clock = std::chrono::steady_clock;

/// Returns bytes that cannot be compressed.
std::string Noise(unsigned seed)
{
    constexpr int size = 300'000;
    std::mt19937 random(seed);
    std::string bytes;
    for (int count = 0; count < size; ++count) {
        bytes += static_cast<char>(random());
    }
    return bytes;
}

/// Two back-ups with different pictures of the same names, and a folder into which they are restored in turn.
class TwoLogs
{
public:
    TwoLogs()
    {
        Restore(0);
        m_states[0] = m_log.State();
        Restore(1);
        m_states[1] = m_log.State();
        for (const auto& [name, bytes] : m_states[0]) { // only the pictures of the second log
            if (name.starts_with("pictures/")) {
                m_states[1].erase(name);
            }
        }
        Tidy(1);
    }

    /// Kills a restore of the other back-up at a random moment. Describes what is wrong then; empty if
    /// nothing is.
    std::string KillRestore()
    {
        const int other = 1 - m_present;
        KillProgram({TARNO_TARNO, "--folder", m_log.Path(), "--restore", PathOf(other)}, m_restoring);
        const bool isFinished = FinishRestore(m_log.program, *m_system) != FinishedRestore::Nothing;
        const Contents now = m_log.State();
        Contents restored = m_states.at(static_cast<std::size_t>(other));
        const Contents& before = m_states.at(static_cast<std::size_t>(m_present));
        restored.insert(before.begin(), before.end()); // the pictures stay
        if (now != before && now != restored) {
            return "neither the old nor the new log";
        }
        ++outcomes[(now == before ? "old"s : "new"s) + (isFinished ? ", finished later" : "")];
        const int present = now == before ? m_present : other;
        std::string fault = FaultOfArchives(m_log.folder.PathOf("backups"));
        Tidy(present);
        return fault;
    }

    /// The same for a back-up of the present log.
    std::string KillBackUp()
    {
        KillProgram({TARNO_TARNO, "--folder", m_log.Path(), "--backup", m_target.PathOf("new.zip")},
                    m_backingUp);
        if (m_log.State() != m_states.at(static_cast<std::size_t>(m_present))) {
            return "a back-up has changed the log";
        }
        const std::string fault = FaultOfArchives(m_target.Path());
        const bool isThere = m_system->GetState(m_target.PathOf("new.zip")).exists;
        ++outcomes[isThere ? "back-up" : "no back-up"];
        for (const std::string& name : m_target.Names()) {
            std::filesystem::remove(ToPath(m_target.PathOf(name)));
        }
        return fault;
    }

    std::map<std::string, int> outcomes;

private:
    /// A log with three pictures.
    struct PicturesLog : LogFolder {
        explicit PicturesLog(unsigned seed) : LogFolder(Log::Sample)
        {
            for (const char* name : {"snapper.png", "trout.png", "pittwater.png"}) {
                folder.Write("pictures/"s + name, Noise(seed++));
            }
            Replace("tarno.xml", "Bream", "Bream " + std::to_string(seed));
        }
    };

    /// How long a program works when it is not killed.
    struct Duration {
        Clock::duration longest{};
    };

    std::string PathOf(int log) const { return m_backUps.PathOf(std::to_string(log) + ".zip"); }

    void Restore(int log)
    {
        PicturesLog(static_cast<unsigned>(log) * 10).BackUpTo(PathOf(log));
        m_log.Restore(PathOf(log));
    }

    void KillProgram(const std::vector<std::string>& command, Duration& duration)
    {
        const auto begin = Clock::now();
        ChildProgram program(command);
        if (duration.longest == Clock::duration()) { // the first one is not killed
            program.Wait();
            duration.longest = Clock::now() - begin;
            return;
        }
        std::this_thread::sleep_for(duration.longest * std::uniform_real_distribution(0.2, 1.1)(m_random));
        program.Kill();
    }

    static std::string FaultOfArchives(const std::string& folder)
    {
        for (const std::string& name : NamesIn(folder)) {
            if (name.ends_with(".zip")) {
                try {
                    ArchiveReader(FromPath(ToPath(folder) / name)).CheckAll();
                } catch (const Error& error) {
                    return name + ": " + error.Description();
                }
            }
        }
        return {};
    }

    /// Leaves nothing in the folder but the log `present`.
    void Tidy(int present)
    {
        m_present = present;
        const Contents& state = m_states.at(static_cast<std::size_t>(present));
        for (const auto& [name, bytes] : m_log.State()) {
            if (!state.contains(name)) {
                std::filesystem::remove(ToPath(m_log.folder.PathOf(name)));
            }
        }
        std::filesystem::remove_all(ToPath(m_log.folder.PathOf("backups")));
    }

    TemporaryFolder m_backUps;
    TemporaryFolder m_target;
    LogFolder m_log;
    std::unique_ptr<FileOperations> m_system = SystemFileOperations();
    std::array<Contents, 2> m_states; ///< of the folder after a restore
    int m_present = 0;
    Duration m_restoring;
    Duration m_backingUp;
    std::mt19937 m_random{20261122};
};

} // namespace

// A program that is killed at any moment of a restore leaves the old log or the new one, and no archive that
// is not complete.
class tst_RestoreKills : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void killedAnywhere_logAndArchivesAreComplete()
    {
        TwoLogs logs;
        const int kills = Times(20, 500);
        for (int kill = 0; kill < kills + 2; ++kill) {
            QCOMPARE(kill % 2 == 0 ? logs.KillRestore() : logs.KillBackUp(), ""s);
        }
        QString text;
        for (const auto& [outcome, count] : logs.outcomes) {
            text += QStringLiteral("; %1: %2").arg(QString::fromStdString(outcome)).arg(count);
        }
        qInfo("%d kills%s", kills, qPrintable(text));
    }
};

TEST_CLASS(tst_RestoreKills)
#include "tst_RestoreKills.moc"
