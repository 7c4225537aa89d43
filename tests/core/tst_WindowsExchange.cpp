#include "core/FileOperations.h"
#include "core/WindowsExchange.h"
#include "support/RaisedNumber.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"

#include <deque>

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

/// Steps with real files, some of which fail as Windows says that they can.
class FailingExchange : public WindowsExchange
{
public:
    /// What the next steps of a kind fail with; ERROR_SUCCESS is one that goes well, as those behind them do.
    std::deque<DWORD> takePlace;
    std::deque<DWORD> move;

protected:
    DWORD TakePlace(const std::string& from, const std::string& to, const std::string& out) override
    {
        const DWORD code = Next(takePlace);
        if (code == ERROR_UNABLE_TO_MOVE_REPLACEMENT_2) {
            WindowsExchange::Move(to, out);
        }
        return code == ERROR_SUCCESS ? WindowsExchange::TakePlace(from, to, out) : code;
    }

    DWORD Move(const std::string& from, const std::string& to) override
    {
        const DWORD code = Next(move);
        return code == ERROR_SUCCESS ? WindowsExchange::Move(from, to) : code;
    }

private:
    static DWORD Next(std::deque<DWORD>& codes)
    {
        if (codes.empty()) {
            return ERROR_SUCCESS;
        }
        const DWORD code = codes.front();
        codes.pop_front();
        return code;
    }
};

} // namespace

// No step that fails loses one of the two files, and what a failure has left half done is put right as far as
// the system lets it.
class tst_WindowsExchange : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_folder.emplace();
        m_folder->Write("old", "1");
        m_folder->Write("new", "2");
        m_exchange.takePlace.clear();
        m_exchange.move.clear();
    }

    void exchange_filesThatAreSoonFree_succeeds_data()
    {
        QTest::addColumn<int>("takePlace");
        QTest::addColumn<int>("move");
        QTest::newRow("at once") << 0 << 0;
        QTest::newRow("the way in") << 10 << 0;
        QTest::newRow("the way out") << 0 << 10;
        QTest::newRow("both") << 10 << 10;
    }

    void exchange_filesThatAreSoonFree_succeeds()
    {
        QFETCH(int, takePlace);
        QFETCH(int, move);
        m_exchange.takePlace.assign(static_cast<std::size_t>(takePlace), ERROR_SHARING_VIOLATION);
        m_exchange.move.assign(static_cast<std::size_t>(move), ERROR_SHARING_VIOLATION);
        QVERIFY(m_exchange.Exchange(m_folder->PathOf("new"), m_folder->PathOf("old")));
        QCOMPARE(Files(), (Texts{"new: 1", "old: 2"}));
    }

    void exchange_cannotBegin_changesNothing_data()
    {
        QTest::addColumn<DWORD>("code");
        QTest::addColumn<int>("number");
        QTest::newRow("held by another program") << DWORD{ERROR_SHARING_VIOLATION} << 70;
        QTest::newRow("the old file cannot be removed") << DWORD{ERROR_UNABLE_TO_REMOVE_REPLACED} << 70;
        QTest::newRow("the new file cannot be moved") << DWORD{ERROR_UNABLE_TO_MOVE_REPLACEMENT} << 75;
        QTest::newRow("no rights") << DWORD{ERROR_ACCESS_DENIED} << 75;
        QTest::newRow("full disk") << DWORD{ERROR_DISK_FULL} << 61;
    }

    void exchange_cannotBegin_changesNothing()
    {
        QFETCH(DWORD, code);
        m_exchange.takePlace.assign(11, code);
        QTEST(ExchangeFails(), "number");
        QCOMPARE(Files(), (Texts{"new: 2", "old: 1"}));
    }

    void exchange_oneIsMissing_isNone()
    {
        QVERIFY(!m_exchange.Exchange(m_folder->PathOf("neither"), m_folder->PathOf("old")));
        QVERIFY(!m_exchange.Exchange(m_folder->PathOf("new"), m_folder->PathOf("neither")));
        QCOMPARE(Files(), (Texts{"new: 2", "old: 1"}));
    }

    void exchange_halfDone_isUndone()
    {
        m_exchange.takePlace = {ERROR_UNABLE_TO_MOVE_REPLACEMENT_2};
        m_exchange.move = {ERROR_SHARING_VIOLATION};
        QCOMPARE(ExchangeFails(), 70);
        QCOMPARE(Files(), (Texts{"new: 2", "old: 1"}));
    }

    void exchange_halfDoneAndNotUndone_theOldFileComesBackWhenItIsRead()
    {
        const std::string temporary = m_folder->PathOf("old.12-3.tarno-tmp");
        std::filesystem::rename(ToPath(m_folder->PathOf("new")), ToPath(temporary));
        m_exchange.takePlace = {ERROR_UNABLE_TO_MOVE_REPLACEMENT_2};
        m_exchange.move = {ERROR_ACCESS_DENIED};
        QCOMPARE(RaisedNumber([&] { m_exchange.Exchange(temporary, m_folder->PathOf("old")); }), 70);
        QCOMPARE(Files(), (Texts{"old.12-3.tarno-tmp: 2", "old.12-3.tarno-tmp.out: 1"}));
        QCOMPARE(ReadWholeFile(m_folder->PathOf("old")), "1"s);
        QCOMPARE(Files(), (Texts{"old: 1", "old.12-3.tarno-tmp: 2"}));
    }

    void exchange_theOldFileCannotTakeTheOtherName_isUndone()
    {
        m_exchange.takePlace = {ERROR_SUCCESS, ERROR_SHARING_VIOLATION};
        m_exchange.move = {ERROR_ACCESS_DENIED};
        QCOMPARE(ExchangeFails(), 75);
        QCOMPARE(Files(), (Texts{"new: 2", "old: 1"}));
    }

    void exchange_theOldFileCannotTakeAnyName_bothAreThere()
    {
        m_exchange.takePlace = {ERROR_SUCCESS, ERROR_ACCESS_DENIED};
        m_exchange.move = {ERROR_ACCESS_DENIED};
        QCOMPARE(ExchangeFails(), 75);
        QCOMPARE(Files(), (Texts{"new.out: 1", "old: 2"}));
    }

    void comesBack_nothingWentOut_isFalseAtOnce()
    {
        QVERIFY(!WindowsExchange::ComesBack(m_folder->PathOf("tarno.xml")));
        QVERIFY(!WindowsExchange::ComesBack(m_folder->PathOf("gone/tarno.xml")));
        QVERIFY(WindowsExchange::ComesBack(m_folder->PathOf("old")));
    }

    void comesBack_filesOfTheUser_areNotTaken()
    {
        m_folder->Write("tarno.xml.old.out", "mine");
        m_folder->Write("tarno.xml.out", "mine");
        QVERIFY(!WindowsExchange::ComesBack(m_folder->PathOf("tarno.xml")));
        QCOMPARE(Files(), (Texts{"new: 2", "old: 1", "tarno.xml.old.out: mine", "tarno.xml.out: mine"}));
    }

    void comesBack_theExchangeGoesOn_waitsForItsEnd()
    {
        m_folder->Write("tarno.xml.12-3.tarno-tmp.out", "older");
        const std::unique_ptr<QThread> exchange(QThread::create([&] {
            QThread::msleep(50);
            m_folder->Write("tarno.xml", "3");
        }));
        exchange->start();
        QVERIFY(WindowsExchange::ComesBack(m_folder->PathOf("tarno.xml")));
        QVERIFY(exchange->wait());
        QCOMPARE(Files(), (Texts{"new: 2", "old: 1", "tarno.xml: 3", "tarno.xml.12-3.tarno-tmp.out: older"}));
    }

private:
    int ExchangeFails()
    {
        return RaisedNumber([&] { m_exchange.Exchange(m_folder->PathOf("new"), m_folder->PathOf("old")); });
    }

    /// The files of the folder with what they hold.
    Texts Files() const
    {
        Texts files;
        for (const std::string& name : m_folder->Names()) {
            files.push_back(name + ": " + m_folder->Read(name));
        }
        return files;
    }

    std::optional<TemporaryFolder> m_folder;
    FailingExchange m_exchange;
};

TEST_CLASS(tst_WindowsExchange)
#include "tst_WindowsExchange.moc"
