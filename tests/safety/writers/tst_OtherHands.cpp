#include "SharedLog.h"
#include "safety/Form.h"
#include "support/TestClass.h"

#include <chrono>
#include <fcntl.h>
#include <functional>
#include <random>
#include <sys/stat.h>

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;
using Entries = std::vector<SharedLog::Entry>;

constexpr unsigned seed = 20260509;
constexpr int oldEntries = 20;

/// What puts other versions of the log in its place, as a tool that synchronises folders does, and knows what
/// it has taken away itself.
class Hand
{
public:
    explicit Hand(const SharedLog& log) : m_path(log.folder.PathOf("tarno.xml")) {}

    /// Puts a version in the place of the one that is there, or where there is none.
    void Put(const std::string& bytes)
    {
        std::filesystem::remove(ToPath(Side("new"))); // a program may still be reading it
        m_side.Write("new", bytes);
        if (::renameat2(AT_FDCWD, Side("new").c_str(), AT_FDCWD, m_path.c_str(), RENAME_EXCHANGE) == 0) {
            m_taken.push_back(m_side.Read("new"));
            m_put.push_back(bytes);
        } else if (::renameat2(AT_FDCWD, Side("new").c_str(), AT_FDCWD, m_path.c_str(), RENAME_NOREPLACE) ==
                   0) {
            m_put.push_back(bytes);
        }
    }

    /// A version with one entry more than there was a moment ago, whose value is its own.
    void PutOneMore()
    {
        const std::optional<std::string> bytes = Seen();
        std::optional<Entries> entries = bytes ? SharedLog::Entries(*bytes) : std::nullopt;
        if (entries) {
            const int last = entries->empty() ? 0 : std::stoi(entries->back().key);
            entries->push_back({std::to_string(last + 1), "hand-" + std::to_string(++m_number)});
            Put(SharedLog::Bytes(*entries));
        }
    }

    void PutDamaged() { Put("<data>\n\t<tarno>\n\t\t<TarnoNo>damaged-" + std::to_string(++m_number)); }

    void PutEmpty() { Put(""); }

    /// One of those that it has taken away.
    void PutOlder(std::mt19937& random)
    {
        if (!m_taken.empty()) {
            const std::size_t which =
                std::uniform_int_distribution<std::size_t>(0, m_taken.size() - 1)(random);
            Put(std::string(m_taken[which]));
        }
    }

    void Touch() const { ::utimensat(AT_FDCWD, m_path.c_str(), nullptr, 0); }

    void Delete()
    {
        if (::rename(m_path.c_str(), Side("out").c_str()) == 0) {
            m_taken.push_back(m_side.Read("out"));
        }
    }

    const Texts& Taken() const { return m_taken; }

    const Texts& Given() const { return m_put; }

private:
    std::string Side(const std::string& name) const { return m_side.PathOf(name); }

    /// Read in one go from one file; nothing when there is none.
    std::optional<std::string> Seen() const
    {
        std::ifstream file(m_path, std::ios::binary);
        return file ? std::optional<std::string>({std::istreambuf_iterator<char>(file), {}}) : std::nullopt;
    }

    std::string m_path;
    TemporaryFolder m_side{QuickPlace()};
    Texts m_taken;
    Texts m_put;
    int m_number = 0;
};

struct Figures {
    int saved = 0;
    int failed = 0;
    int put = 0;
    int inLog = 0;
    int keptFiles = 0;
};

/// Looks whether what either side has written is in the log, in a kept file that was named, or was taken away
/// by the hand itself; returns what is wrong.
std::string Fault(const SharedLog& log, const Hand& hand, Figures& figures)
{
    const std::string bytes = log.folder.Read("tarno.xml");
    if (!SharedLog::Entries(bytes)) {
        return "the log is not whole";
    }
    if (!log.Names("", ".tarno-tmp").empty()) {
        return "a temporary is left";
    }
    const std::set<std::string> named = log.NamedFiles();
    Texts found{bytes};
    for (const std::string& name : log.KeptFiles()) {
        found.push_back(log.folder.Read(name));
        if (!named.contains(log.folder.PathOf(name))) {
            return name + " is not named";
        }
        const bool isPut =
            std::find(hand.Given().begin(), hand.Given().end(), found.back()) != hand.Given().end();
        if (!SharedLog::Entries(found.back()) && !isPut) {
            return name + " is neither whole nor as it was found";
        }
    }
    const std::set<std::string> values = SharedLog::Values(found);
    Texts saved = log.Noted("saved");
    for (int key = 1; key <= oldEntries; ++key) {
        saved.push_back("old-" + std::to_string(key));
    }
    const std::set<std::string> inLog = SharedLog::Values({bytes});
    for (const std::string& value : saved) {
        if (!values.contains(value)) {
            return value + " is lost";
        }
        figures.inLog += inLog.contains(value) ? 1 : 0;
    }
    Texts all = found;
    all.insert(all.end(), hand.Taken().begin(), hand.Taken().end());
    const std::set<std::string> allValues = SharedLog::Values(all);
    for (const std::string& version : hand.Given()) {
        for (const std::string& value : SharedLog::Values({version})) {
            if (!allValues.contains(value)) {
                return value + ", which the hand put there, is lost";
            }
        }
        if (!SharedLog::Entries(version) && std::find(all.begin(), all.end(), version) == all.end()) {
            return "lost is what the hand put there: " + version;
        }
    }
    figures.saved += static_cast<int>(saved.size());
    figures.failed += static_cast<int>(log.Noted("failed").size());
    figures.put += static_cast<int>(hand.Given().size());
    figures.keptFiles += static_cast<int>(log.KeptFiles().size());
    return {};
}

void OneMore(SharedLog& log)
{
    log.Writer(0).Tell("one");
    QCOMPARE(log.Writer(0).Line().value_or("ended"), "done"s);
}

} // namespace

// What a tool that synchronises folders, or a hand, does to the log between and during the saves of a program
// loses nothing of either side.
class tst_OtherHands : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void betweenTwoSaves_sameBytes_nothingIsSaid_data()
    {
        using Action = std::function<void(const SharedLog&, Hand&)>;
        QTest::addColumn<Action>("action");
        QTest::newRow("touched") << Action([](const SharedLog&, Hand& hand) { hand.Touch(); });
        QTest::newRow("another file")
            << Action([](const SharedLog& log, Hand& hand) { hand.Put(log.folder.Read("tarno.xml")); });
        QTest::newRow("written anew in place") << Action(
            [](const SharedLog& log, Hand&) { log.folder.Write("tarno.xml", log.folder.Read("tarno.xml")); });
    }

    void betweenTwoSaves_sameBytes_nothingIsSaid()
    {
        using Action = std::function<void(const SharedLog&, Hand&)>;
        QFETCH(Action, action);
        SharedLog log(oldEntries);
        Hand hand(log);
        log.Start("add", 1);
        for (int save = 0; save < 3; ++save) {
            OneMore(log);
            action(log, hand);
        }
        OneMore(log);
        QCOMPARE(log.Noted("told"), Texts());
        QCOMPARE(log.KeptFiles(), Texts());
        QCOMPARE(log.Noted("saved"), (Texts{"A-1", "A-2", "A-3", "A-4"}));
        Figures figures;
        QCOMPARE(Fault(log, hand, figures), ""s);
        QCOMPARE(figures.inLog, oldEntries + 4);
    }

    void betweenTwoSaves_oneMore_isTakenOverAndNothingIsSaid()
    {
        SharedLog log(oldEntries);
        Hand hand(log);
        log.Start("add", 1);
        OneMore(log);
        hand.PutOneMore();
        OneMore(log);
        hand.PutOneMore();
        hand.PutOneMore();
        OneMore(log);
        QCOMPARE(log.Noted("told"), Texts());
        QCOMPARE(log.KeptFiles(), Texts());
        const auto entries = SharedLog::Entries(log.folder.Read("tarno.xml"));
        QVERIFY(entries.has_value());
        Texts added;
        for (std::size_t at = oldEntries; at < entries->size(); ++at) {
            added.push_back(entries->at(at).key + ' ' + entries->at(at).value);
        }
        QCOMPARE(added, (Texts{"21 A-1", "22 hand-1", "23 A-2", "24 hand-2", "25 hand-3", "26 A-3"}));
    }

    void betweenTwoSaves_deleted_allIsThereAgain()
    {
        SharedLog log(oldEntries);
        Hand hand(log);
        log.Start("add", 1);
        OneMore(log);
        hand.Delete();
        OneMore(log);
        QCOMPARE(log.Noted("told"), Texts());
        Figures figures;
        QCOMPARE(Fault(log, hand, figures), ""s);
        QCOMPARE(figures.inLog, oldEntries + 2);
    }

    void betweenTwoSaves_olderCopy_oursIsKept()
    {
        SharedLog log(oldEntries);
        Hand hand(log);
        log.Start("add", 1);
        OneMore(log);
        const std::string older = log.folder.Read("tarno.xml");
        OneMore(log);
        const std::string ours = log.folder.Read("tarno.xml");
        hand.Put(older);
        OneMore(log);
        QCOMPARE(log.Noted("told").size(), std::size_t{1});
        QCOMPARE(log.KeptFiles(), Texts{"tarno-kept-1.xml"});
        QCOMPARE(log.folder.Read("tarno-kept-1.xml"), ours);
        Figures figures;
        QCOMPARE(Fault(log, hand, figures), ""s);
        QCOMPARE(figures.inLog, oldEntries + 2); // A-2 is the one that is kept
    }

    void betweenTwoSaves_noLog_isKept_data()
    {
        QTest::addColumn<std::string>("bytes");
        QTest::newRow("empty") << ""s;
        QTest::newRow("torn") << "<data>\n\t<tarno>\n\t\t<TarnoNo>1</Tar"s;
        QTest::newRow("zero bytes") << std::string(4096, '\0');
        QTest::newRow("of another program") << "<html><body/></html>"s;
    }

    void betweenTwoSaves_noLog_isKept()
    {
        QFETCH(std::string, bytes);
        SharedLog log(oldEntries);
        Hand hand(log);
        log.Start("add", 1);
        OneMore(log);
        hand.Put(bytes);
        OneMore(log);
        OneMore(log);
        QCOMPARE(log.Noted("told").size(), std::size_t{1});
        QCOMPARE(log.KeptFiles(), Texts{"tarno-kept-1.xml"});
        QCOMPARE(log.folder.Read("tarno-kept-1.xml"), bytes);
        Figures figures;
        QCOMPARE(Fault(log, hand, figures), ""s);
        QCOMPARE(figures.inLog, oldEntries + 3);
    }

    void betweenTwoSaves_aFolder_isSaidAndLeft()
    {
        SharedLog log(oldEntries);
        Hand hand(log);
        log.Start("add", 1);
        OneMore(log);
        hand.Delete();
        log.folder.Write("inside", "precious");
        log.folder.MakeFolder("tarno.xml");
        std::filesystem::rename(ToPath(log.folder.PathOf("inside")),
                                ToPath(log.folder.PathOf("tarno.xml/inside")));
        OneMore(log);
        QCOMPARE(log.Noted("failed"), Texts{"A-2"});
        QCOMPARE(log.Noted("told").size(), std::size_t{1});
        QCOMPARE(log.folder.Read("tarno.xml/inside"), "precious"s);
        QVERIFY(log.Names("", ".tarno-tmp").empty());
        std::filesystem::remove_all(ToPath(log.folder.PathOf("tarno.xml")));
        OneMore(log);
        QCOMPARE(log.Noted("saved"), (Texts{"A-1", "A-3"}));
        Figures figures;
        QCOMPARE(Fault(log, hand, figures), ""s);
    }

    void duringSaves_allIsInTheLogOrKept_data()
    {
        QTest::addColumn<Texts>("tasks");
        QTest::newRow("one program") << Texts{"add"};
        QTest::newRow("two programs") << Texts{"add", "add"};
    }

    void duringSaves_allIsInTheLogOrKept()
    {
        QFETCH(Texts, tasks);
        constexpr int changes = 60;
        constexpr int longestPause = 1500; // microseconds, some saves
        std::mt19937 random(seed);
        Figures figures;
#ifdef __SANITIZE_ADDRESS__
        const int rounds = 5;
#else
        const int rounds = Times(25, 1000);
#endif
        for (int round = 0; round < rounds; ++round) {
            SharedLog log(oldEntries);
            Hand hand(log);
            const std::vector<std::function<void()>> actions{
                [&] { hand.PutOneMore(); },     [&] { hand.PutOneMore(); }, [&] { hand.PutDamaged(); },
                [&] { hand.PutOlder(random); }, [&] { hand.PutEmpty(); },   [&] { hand.Touch(); },
                [&] { hand.Delete(); }};
            for (const std::string& task : tasks) {
                log.Start(task, changes);
            }
            for (std::size_t writer = 0; writer < tasks.size(); ++writer) {
                log.Writer(writer).Tell("all");
            }
            for (bool areSaving = true; areSaving;) {
                actions[std::uniform_int_distribution<std::size_t>(0, actions.size() - 1)(random)]();
                const auto end =
                    std::chrono::steady_clock::now() +
                    std::chrono::microseconds(std::uniform_int_distribution(0, longestPause)(random));
                while (std::chrono::steady_clock::now() < end) {
                }
                areSaving = log.Noted("saved").size() + log.Noted("failed").size() < changes * tasks.size();
            }
            for (std::size_t writer = 0; writer < tasks.size(); ++writer) {
                QCOMPARE(log.Writer(writer).Line().value_or("ended"), "done"s);
            }
            for (std::size_t writer = 0; writer < tasks.size(); ++writer) { // the hand rests now
                log.Writer(writer).Tell("one");
                QCOMPARE(log.Writer(writer).Line().value_or("ended"), "done"s);
            }
            const std::string fault = Fault(log, hand, figures);
            QVERIFY2(fault.empty(), qPrintable(QStringLiteral("seed %1, round %2: %3")
                                                   .arg(seed)
                                                   .arg(round)
                                                   .arg(QString::fromStdString(fault))));
        }
        qInfo("%d rounds: %d to be found, %d of them in the log; %d failed; %d versions by the hand; %d kept "
              "files",
              rounds, figures.saved, figures.inLog, figures.failed, figures.put, figures.keptFiles);
    }
};

TEST_CLASS(tst_OtherHands)
#include "tst_OtherHands.moc"
