#include "Version.h"
#include "core/FileOperations.h"
#include "safety/ChildProgram.h"
#include "safety/Form.h"
#include "safety/QuickPlace.h"
#include "store/RecordLayouts.h"
#include "support/Platform.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"

#include <array>
#include <chrono>
#include <cstring>
#include <map>
#include <random>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <poll.h>
#include <sys/inotify.h>
#endif

using namespace std::string_literals;

namespace
{

using std::chrono::nanoseconds;
using std::chrono::steady_clock;

constexpr unsigned seed = 20260314;

/// The file of the log in which one entry changes from save to save, as the program writes it.
class ChangingLog
{
public:
    explicit ChangingLog(int entries) : m_key(entries / 2 + 1)
    {
        m_head = "<data>\n";
        std::string* part = &m_head;
        for (int key = 1; key <= entries; ++key) {
            *part += "\t<tarno>\n";
            for (std::size_t field = 0; field < EntryField::Count; ++field) {
                const std::string name = "Field" + std::to_string(field);
                *part += "\t\t<" + (field == 0 ? "TarnoNo"s : name) + '>';
                if (field == EntryField::FishCaught && key == m_key) {
                    part = &m_tail;
                } else {
                    *part += std::to_string(field == 0 ? key : key % 1000);
                }
                *part += "</" + (field == 0 ? "TarnoNo"s : name) + ">\n";
            }
            *part += "\t</tarno>\n";
        }
        m_tail += "</data>\n";
    }

    std::string Key() const { return std::to_string(m_key); }

    std::string Version(int number) const { return m_head + VersionText(number) + m_tail; }

private:
    int m_key;
    std::string m_head;
    std::string m_tail;
};

/// How far a save had come when it was killed, as far as the files tell.
enum Moment {
    BeforeTheTemporary,
    FirstByte,
    HalfWay,
    BeforeTheExchange,
    AmidTheExchange,
    AfterTheExchange,
    Cleaned,
    Ended
};

constexpr std::array<const char*, 8> momentNames{
    "before the temporary", "before its first byte", "half way through",         "whole, before the exchange",
    "amid the exchange",    "after the exchange",    "temporary gone, not told", "between two saves"};

using Counts = std::map<Moment, int>;

/// Names that look like temporaries and are none that the program may remove. No process has that number.
void MakeDecoys(const TemporaryFolder& folder)
{
    folder.Write("tarno.xml.12.tmp", "not ours");
    folder.Write("tarno.xml.4999999-abc.tarno-tmp", "not ours either");
    folder.Write("tarno.xml.tarno-tmp", "nor this");
    folder.Write("xtarno.xml.4999999-5.tarno-tmp", "of another file");
    folder.MakeFolder("tarno.xml.4999999-7.tarno-tmp");
    folder.Write("tarno.xml.4999999-7.tarno-tmp/inside", "of a folder");
    if constexpr (!isWindows) {
        folder.Write("precious", "behind a link");
        folder.MakeLink("tarno.xml.4999999-8.tarno-tmp", "precious");
    }
}

/// Everything in the folder but the log itself, with its bytes.
std::map<std::string, std::string> OtherFiles(const TemporaryFolder& folder)
{
    std::map<std::string, std::string> files;
    for (const std::string& name : folder.Names()) {
        if (name != "tarno.xml") {
            const bool isFolder = std::filesystem::is_directory(ToPath(folder.PathOf(name)));
            files[name] = ReadWholeFile(folder.PathOf(isFolder ? name + "/inside" : name));
        }
    }
    return files;
}

int NumberIn(const std::string& line)
{
    return std::stoi(line.substr(line.find(' ')));
}

#ifdef Q_OS_WIN

/// Tells when files are made in a folder, or get another name.
class MadeFiles
{
public:
    explicit MadeFiles(const TemporaryFolder& folder)
        : m_watch(::FindFirstChangeNotificationW(ToPath(folder.Path()).c_str(), FALSE,
                                                 FILE_NOTIFY_CHANGE_FILE_NAME))
    {
        if (m_watch == INVALID_HANDLE_VALUE) {
            qFatal("cannot watch the folder");
        }
    }

    MadeFiles(const MadeFiles&) = delete;
    MadeFiles& operator=(const MadeFiles&) = delete;

    ~MadeFiles() { ::FindCloseChangeNotification(m_watch); }

    /// Returns when one more has been made; false when that takes too long.
    bool AwaitOne()
    {
        return ::WaitForSingleObject(m_watch, INFINITE) == WAIT_OBJECT_0 &&
               ::FindNextChangeNotification(m_watch) != 0;
    }

    /// Forgets those made so far.
    void Clear()
    {
        while (::WaitForSingleObject(m_watch, 0) == WAIT_OBJECT_0) {
            ::FindNextChangeNotification(m_watch);
        }
    }

private:
    HANDLE m_watch;
};

#else

/// Tells when files are made in a folder.
class MadeFiles
{
public:
    explicit MadeFiles(const TemporaryFolder& folder) : m_watch(::inotify_init1(IN_CLOEXEC))
    {
        if (::inotify_add_watch(m_watch, folder.Path().c_str(), IN_CREATE) < 0) {
            qFatal("cannot watch the folder");
        }
    }

    MadeFiles(const MadeFiles&) = delete;
    MadeFiles& operator=(const MadeFiles&) = delete;

    ~MadeFiles() { ::close(m_watch); }

    /// Returns when one more has been made; false when that takes too long.
    bool AwaitOne()
    {
        for (; m_made == 0; m_made += CountRead()) {
            pollfd waiting{m_watch, POLLIN, 0};
            if (::poll(&waiting, 1, -1) <= 0) {
                return false;
            }
        }
        --m_made;
        return true;
    }

    /// Forgets those made so far.
    void Clear()
    {
        for (pollfd waiting{m_watch, POLLIN, 0}; ::poll(&waiting, 1, 0) > 0;) {
            CountRead();
        }
        m_made = 0;
    }

private:
    int CountRead() const
    {
        std::array<char, 4096> buffer{};
        const ssize_t size = ::read(m_watch, buffer.data(), buffer.size());
        int count = 0;
        for (ssize_t at = 0; at < size; ++count) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            at += static_cast<ssize_t>(sizeof event + event.len);
        }
        return count;
    }

    int m_watch;
    int m_made = 0;
};

#endif

/// Busy, as a wait that leaves the processor comes back too late to hit anything.
void WaitFor(nanoseconds time)
{
    for (const auto end = steady_clock::now() + time; steady_clock::now() < end;) {
    }
}

} // namespace

/// A folder with a log, in which one program after the other saves and is killed.
class KilledSaves
{
public:
    KilledSaves(const QString& place, int entries, unsigned seedOfRow)
        : m_folder(place), m_log(entries), m_random(seedOfRow)
    {
        for (const char* name : {"field.xml", "location.xml", "tarnoblank.xml", "locationblank.xml",
                                 "Rpt.xml", "RptBlank.xml"}) {
            std::filesystem::copy_file(std::filesystem::path(TARNO_SHIPPED_DATA) / name,
                                       m_folder.PathOf(name));
        }
        m_folder.Write("tarno.xml", m_log.Version(0));
        MakeDecoys(m_folder);
        m_holder.emplace(std::vector<std::string>{TARNO_SAVER, "hold", m_folder.PathOf("tarno.xml")});
        const std::string holding = m_holder->Line().value_or("");
        m_heldName = "tarno.xml" + holding.substr(std::min(holding.size(), std::size_t{8}));
        m_others = OtherFiles(m_folder);
    }

    /// Saves undisturbed so often, and learns how long a save takes, from its begin and from the moment when
    /// its temporary is made.
    bool Measure(int times)
    {
        for (const From from : {From::Begin, From::Temporary}) {
            ChildProgram saver = Started();
            if (!HasTidied(saver)) {
                return false;
            }
            m_made.Clear();
            saver.Tell("go");
            m_usual[from] = nanoseconds(0);
            for (int saves = 0; saves < times; ++saves) {
                if (!Await(saver, from)) {
                    return Failed("the program does not save");
                }
                const auto begin = steady_clock::now();
                if (!AwaitLine(saver, "end")) {
                    return Failed("the program does not end a save");
                }
                m_usual[from] += (steady_clock::now() - begin) / times;
            }
            if (!IsWholeAfter(saver)) {
                return false;
            }
        }
        m_moments.clear();
        return true;
    }

    /// Starts a program, kills it somewhere in its first saves and looks.
    bool KillOnce()
    {
        ChildProgram saver = Started();
        if (!HasTidied(saver)) {
            return false;
        }
        const From from = std::uniform_int_distribution(0, 1)(m_random) == 0 ? From::Begin : From::Temporary;
        const auto longest = m_usual[from].count() * 3 / 2;
        const nanoseconds delay(std::uniform_int_distribution<std::int64_t>(0, longest)(m_random));
        m_made.Clear();
        saver.Tell("go");
        for (int saves = std::uniform_int_distribution(1, 3)(m_random); saves > 0; --saves) {
            if (!Await(saver, from)) {
                return Failed("the program does not save");
            }
        }
        WaitFor(delay);
        return IsWholeAfter(saver);
    }

    /// The last start, and one after the living writer of a temporary has ended.
    bool Finish()
    {
        {
            ChildProgram saver = Started();
            if (!HasTidied(saver)) {
                return false;
            }
        }
        m_holder->Kill();
        m_others.erase(m_heldName);
        ChildProgram saver = Started();
        return HasTidied(saver);
    }

    const Counts& Moments() const { return m_moments; }

    /// How many of the killed programs left a temporary.
    int Temporaries() const
    {
        int count = 0;
        for (const auto& [moment, times] : m_moments) {
            count += moment >= FirstByte && moment <= AfterTheExchange ? times : 0;
        }
        return count;
    }

    const std::string& Failure() const { return m_failure; }

    /// How long a save takes.
    nanoseconds Usual() const { return m_usual.at(From::Begin); }

private:
    /// What a delay is counted from: much of a save is over when its temporary is made.
    enum class From { Begin, Temporary };

    ChildProgram Started() { return ChildProgram({TARNO_SAVER, m_folder.Path(), m_log.Key()}); }

    bool Failed(const std::string& why)
    {
        m_failure = why;
        return false;
    }

    bool Await(ChildProgram& saver, From from)
    {
        return from == From::Temporary ? m_made.AwaitOne() : AwaitLine(saver, "begin");
    }

    /// Reads what the program writes down until it is something of that kind.
    bool AwaitLine(ChildProgram& saver, std::string_view kind)
    {
        while (const auto line = saver.Line()) {
            Note(*line);
            if (line->starts_with(kind)) {
                return true;
            }
        }
        return false;
    }

    void Note(const std::string& line)
    {
        if (line.starts_with("begin")) {
            m_begun = NumberIn(line);
        } else if (line.starts_with("end")) {
            m_ended = NumberIn(line);
        } else {
            m_told = line;
        }
    }

    /// Whether the program has found the version that was there and removed what the one before it left.
    bool HasTidied(ChildProgram& saver)
    {
        const auto line = saver.Line();
        if (line != "loaded " + std::to_string(m_ended)) {
            return Failed("expected version " + std::to_string(m_ended) + ", " + line.value_or("ended"));
        }
        const auto others = OtherFiles(m_folder);
        if (others != m_others) {
            return Failed("after the start the folder holds " + std::to_string(others.size()) +
                          " other files, or changed ones, instead of " + std::to_string(m_others.size()));
        }
        return true;
    }

    /// Kills the program; what it leaves must be whole.
    bool IsWholeAfter(ChildProgram& saver)
    {
        saver.Kill();
        while (const auto line = saver.Line()) {
            Note(*line);
        }
        if (!m_told.empty()) {
            return Failed(m_told);
        }
        auto others = OtherFiles(m_folder);
        std::vector<std::string> temporaries;
        std::string goingOut; // where an exchange takes several steps
        for (const auto& [name, bytes] : others) {
            if (m_others.contains(name)) {
                continue;
            }
            if (name.ends_with(FileOperations::outSuffix)) {
                goingOut = name;
            } else {
                temporaries.push_back(name);
            }
        }
        const bool isAmid =
            !goingOut.empty() && !std::filesystem::exists(ToPath(m_folder.PathOf("tarno.xml")));
        const std::string found = isAmid ? others[goingOut] : ReadWholeFile(m_folder.PathOf("tarno.xml"));
        const bool isNew = found == m_log.Version(m_begun);
        if (!isNew && (m_ended == m_begun || found != m_log.Version(m_ended))) {
            return Failed(std::to_string(found.size()) + " bytes that are neither version " +
                          std::to_string(m_ended) + " nor " + std::to_string(m_begun) + ", begun last");
        }
        const bool hasTemporary = !temporaries.empty();
        const std::string left = hasTemporary ? others[temporaries.front()] : ""s;
        for (const std::string& name : temporaries) {
            others.erase(name);
        }
        others.erase(goingOut);
        if (temporaries.size() > 1 || others != m_others) {
            return Failed("more than one temporary, or another file was changed");
        }
        ++m_moments[isAmid ? AmidTheExchange : MomentOf(isNew, hasTemporary || !goingOut.empty(), left)];
        m_ended = m_begun = isNew ? m_begun : m_ended;
        return true;
    }

    Moment MomentOf(bool isNew, bool hasTemporary, const std::string& left) const
    {
        if (m_ended == m_begun) {
            return Ended;
        }
        if (!hasTemporary) {
            return isNew ? Cleaned : BeforeTheTemporary;
        }
        if (isNew) {
            return AfterTheExchange;
        }
        if (left.empty()) {
            return FirstByte;
        }
        return left == m_log.Version(m_begun) ? BeforeTheExchange : HalfWay;
    }

    TemporaryFolder m_folder;
    ChangingLog m_log;
    std::mt19937 m_random;
    std::optional<ChildProgram> m_holder;
    std::string m_heldName; ///< of a temporary whose writer is running
    std::map<std::string, std::string> m_others;
    MadeFiles m_made{m_folder};
    std::map<From, nanoseconds> m_usual;
    Counts m_moments;
    int m_begun = 0;
    int m_ended = 0;
    std::string m_told;
    std::string m_failure;
};

// A program that is killed at any moment of a save leaves the old file or the new one, whole, and what it
// leaves beside it is gone after the next start.
class tst_Kills : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void killedAnywhere_theFileIsWholeAndTheNextStartTidiesUp_data()
    {
        QTest::addColumn<QString>("place");
        QTest::addColumn<int>("entries");
        QTest::addColumn<int>("kills");
        // a program takes a fifth of a second to start on Windows
        const int oneOf = (isWindows ? 10 : 1) * (IsQuickForm() ? 4 : 1);
        const auto kills = [&](int shortForm, int longForm) {
            return std::max(Times(shortForm, longForm) / oneOf, std::min(shortForm, 20));
        };
        const QString quick = QuickPlace();
        QTest::newRow("1 KB") << quick << 1 << kills(1290, 64500);
        QTest::newRow("1 KB, on the disk") << QDir::tempPath() << 1 << kills(50, 2500);
        QTest::newRow("200 KB") << quick << 220 << kills(600, 31300);
        QTest::newRow("200 KB, on the disk") << QDir::tempPath() << 220 << kills(30, 1300);
        QTest::newRow("14 MB") << quick << 15300 << kills(20, 380);
        QTest::newRow("14 MB, on the disk") << QDir::tempPath() << 15300 << kills(12, 20);
    }

    void killedAnywhere_theFileIsWholeAndTheNextStartTidiesUp()
    {
        QFETCH(QString, place);
        QFETCH(int, entries);
        QFETCH(int, kills);
        const unsigned seedOfRow = seed + static_cast<unsigned>(entries);
        KilledSaves saves(place, entries, seedOfRow);
        bool isWhole = saves.Measure(20);
        int killed = 0;
        // until enough of them have hit a save
        for (; isWhole && (killed < kills || saves.Temporaries() <= kills / 20); ++killed) {
            isWhole = saves.KillOnce();
        }
        isWhole = isWhole && saves.Finish();
        QVERIFY2(isWhole, qPrintable(QStringLiteral("kill %1, seed %2: %3")
                                         .arg(killed)
                                         .arg(seedOfRow)
                                         .arg(QString::fromStdString(saves.Failure()))));

        QString figures;
        for (const auto& [moment, count] : saves.Moments()) {
            figures += QStringLiteral("; %1: %2").arg(QLatin1String(momentNames.at(moment))).arg(count);
        }
        qInfo("%d kills, a save takes %.2f ms; a temporary was left by %d%s", killed,
              static_cast<double>(saves.Usual().count()) / 1e6, saves.Temporaries(), qPrintable(figures));
    }
};

TEST_CLASS(tst_Kills)
#include "tst_Kills.moc"
