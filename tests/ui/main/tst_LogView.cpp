#include "MainTest.h"
#include "core/Text.h"
#include "support/TestClass.h"
#include "ui/common/QueryBar.h"
#include "ui/main/LogView.h"

#include <random>

using namespace Tarno;

// The rows of the log after changes of any kind are those that a new list would have.

namespace
{

/// A list of the log with a find bar.
struct ShownTrips {
    explicit ShownTrips(const TestProgram& program, const char* query = "")
        : view(program.program, list, bar, nullptr)
    {
        bar.Search(QString::fromUtf8(query));
        view.LoadEntryList();
    }

    /// Returns each row with its key, in the order of the list.
    std::vector<std::string> Rows() const
    {
        std::vector<std::string> rows;
        const QAbstractItemModel* model = list.model();
        for (int row = 0; row < model->rowCount(); ++row) {
            QStringList cells{model->index(row, 0).data(TextTableModel::keyRole).toString()};
            for (int column = 0; column < model->columnCount(); ++column) {
                cells << model->index(row, column).data().toString();
            }
            rows.push_back(ToUtf8(cells.join(QLatin1Char('|'))));
        }
        return rows;
    }

    SortableList list;
    QueryBar bar;
    LogView view;
};

/// Changes the log at random.
class Changes
{
public:
    explicit Changes(TestProgram& program) : m_program(program) {}

    void MakeOne()
    {
        RecordList trips;
        m_program.sql.EntryList(trips);
        const std::string key = trips[m_random() % trips.size()].Text(0);
        const std::string bait = m_random() % 2 == 0 ? "squid" : "prawn";
        Record trip;
        m_program.sql.EntryGet(static_cast<std::int16_t>(std::stoi(key)), trip);
        trip.SetText(EntryField::BaitUsed, bait);
        trip.SetText(EntryField::LocNo, std::to_string(1 + m_random() % 2));
        switch (m_random() % 8) {
        case 0:
            m_program.sql.EntryDelete(static_cast<std::int16_t>(std::stoi(key)));
            break;
        case 1:
        case 2:
            m_program.AddEntry({{EntryField::BaitUsed, bait}, {EntryField::LocNo, "2"}});
            break;
        case 3:
            m_program.sql.Undo();
            break;
        case 4:
            m_program.sql.Redo();
            break;
        case 5:
            ChangeByOther(bait);
            break;
        default:
            m_program.sql.EntryUpdate(trip);
        }
    }

private:
    /// Another program replaces a bait in the file, and the next save here reads it.
    void ChangeByOther(const std::string& bait)
    {
        const std::string bytes = m_program.folder.Read("tarno.xml");
        m_program.folder.Write("other.xml", ReplaceAll(bytes, ">" + bait + "<", ">other<"));
        std::filesystem::rename(ToPath(m_program.folder.PathOf("other.xml")),
                                ToPath(m_program.folder.PathOf("tarno.xml")));
        m_program.sql.ReadChangesOfOthers();
    }

    TestProgram& m_program;
    std::mt19937 m_random{20261123};
};

} // namespace

class tst_LogView : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void rows_afterChanges_areThoseOfANewList_data()
    {
        QTest::addColumn<QString>("query");
        QTest::newRow("all trips") << QString();
        QTest::newRow("trips found") << QStringLiteral("squid");
    }

    void rows_afterChanges_areThoseOfANewList()
    {
        QFETCH(QString, query);
        const QByteArray words = query.toUtf8();
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater");
        program.AddLocation("Reef");
        for (int trip = 0; trip < 5; ++trip) {
            program.AddEntry({{EntryField::BaitUsed, "squid"}, {EntryField::LocNo, "1"}});
        }
        ShownTrips shown(program, words.constData());
        Changes changes(program);
        for (int change = 0; change < 300; ++change) {
            changes.MakeOne();
            if (change % 3 != 0) { // otherwise, the next load shows two changes
                shown.view.LoadEntryList();
                QCOMPARE(shown.Rows(), ShownTrips(program, words.constData()).Rows());
            }
        }
    }

    void changedName_isShownAndFound()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater");
        program.AddEntry({{EntryField::LocNo, "1"}});
        const ShownTrips all(program);
        ShownTrips shown(program, "reef");
        QCOMPARE(shown.list.RowCount(), 0);
        Record place;
        program.sql.LocationGet(1, place);
        place.SetText(LocationField::LocName, "Reef");
        program.sql.LocationUpdate(place);
        shown.view.LoadEntryList();
        QCOMPARE(shown.Rows(), ShownTrips(program).Rows());
        QVERIFY(shown.Rows().front().find("Reef") != std::string::npos);
    }

    void recordsOfOneKey_areShownEach()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater");
        program.AddEntry({{EntryField::LocNo, "1"}, {EntryField::StartDate, "2003-02-05"}});
        program.AddEntry({{EntryField::LocNo, "1"}, {EntryField::StartDate, "2003-02-06"}});
        program.folder.Write("tarno.xml",
                             ReplaceAll(program.folder.Read("tarno.xml"), "<TarnoNo>2<", "<TarnoNo>1<"));
        program.sql.Init();
        ShownTrips shown(program, "2003");
        QCOMPARE(shown.list.RowCount(), 2);
        QVERIFY(shown.Rows().front().starts_with("K1|2003-02-05|"));
        QVERIFY(shown.Rows().back().starts_with("K1|2003-02-06|"));
        program.AddEntry({{EntryField::LocNo, "1"}, {EntryField::StartDate, "2003-02-07"}});
        shown.view.LoadEntryList();
        QCOMPARE(shown.Rows(), ShownTrips(program, "2003").Rows());
        QCOMPARE(shown.list.RowCount(), 3);
    }

    void changedLog_canBePaintedBeforeTheListIsLoadedAgain()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater");
        const int trip = program.AddEntry({{EntryField::LocNo, "1"}, {EntryField::StartDate, "2003-02-05"}});
        ShownTrips shown(program);
        const auto date = [&] { return ToUtf8(shown.list.model()->index(0, 0).data().toString()); };
        program.sql.EntryDelete(static_cast<std::int16_t>(trip));
        QCOMPARE(date(), "");
        QVERIFY(!shown.view.SelectedTrip());
        program.sql.Undo();
        QCOMPARE(date(), "2003-02-05");
        program.sql.DeInit();
        QCOMPARE(date(), "");
    }
};

TEST_CLASS(tst_LogView)
#include "tst_LogView.moc"
