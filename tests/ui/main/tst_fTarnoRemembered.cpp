#include "CommandTest.h"
#include "reports/arLocList.h"
#include "support/TestClass.h"
#include "ui/entry/fEntry.h"
#include "ui/locations/dlgLocMaint.h"
#include "ui/locations/fLocs.h"
#include "ui/reports/fCustom.h"
#include "ui/reports/fPreview.h"
#include "ui/reports/fRptLog.h"

#include <functional>

using namespace Tarno;

// What is remembered of the windows when they are closed and when the program ends.

namespace
{

void Exit(TestProgram& program, QWidget& window)
{
    program.messages.Expect(exitQuestion, Button::Yes);
    Click(window, "cmdExit");
    window.close();
    program.Start(); // the next run
}

void ShowPreview(const Program& program)
{
    RecordList locations;
    program.sql.LocationList(locations);
    arLocList report(program.printers.DefaultPage(), locations);
    fPreview(program, report, nullptr).ShowReport();
}

using Open = std::function<void(const Program&)>;

const std::map<std::string, Open>& ModalWindows()
{
    static const std::map<std::string, Open> windows{
        {"fEntry", [](const Program& program) { fEntry(program, nullptr).SetData(1, false); }},
        {"fLocs", [](const Program& program) { fLocs(program, nullptr).exec(); }},
        {"dlgLocMaint", [](const Program& program) { dlgLocMaint(program, nullptr).SetData(1, false); }},
        {"fRptLog", [](const Program& program) { fRptLog(program, nullptr).exec(); }},
        {"fCustom", [](const Program& program) { fCustom(program, nullptr).exec(); }},
        {"fPreview", ShowPreview}};
    return windows;
}

} // namespace

class tst_fTarnoRemembered : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void modalWindow_keepsItsSize_data()
    {
        QTest::addColumn<std::string>("name");
        for (const auto& [name, open] : ModalWindows()) {
            QTest::newRow(name.c_str()) << name;
        }
    }

    void modalWindow_keepsItsSize()
    {
        QFETCH(std::string, name);
        TwoTrips program;
        QSize wanted;
        for (int time = 0; time < 2; ++time) {
            WhileOpen(
                name.c_str(), [&] { ModalWindows().at(name)(program.program); },
                [&](QDialog& window) {
                    if (time == 0) {
                        constexpr int roomForTools = 800;
                        wanted = window.minimumSizeHint().expandedTo({roomForTools, 0}) + QSize(0, 7);
                        QVERIFY(window.size() != wanted);
                        window.resize(wanted);
                        wanted = window.size(); // texts that wrap may need more height
                    }
                    QCOMPARE(window.size(), wanted);
                    window.close();
                });
        }
    }

    void log_keepsItsGeometry()
    {
        TwoTrips program;
        QRect wanted;
        {
            ShownLog window(program);
            wanted = {QPoint(20, 40), window.minimumSizeHint() + QSize(0, 7)};
            QVERIFY(window.geometry() != wanted);
            window.setGeometry(wanted);
            Exit(program, window);
        }
        const ShownLog window(program);
        QCOMPARE(window.geometry(), wanted);
    }

    void selectedTrip_isSelectedAtTheNextStart()
    {
        TwoTrips program;
        {
            ShownLog window(program);
            ClickRow(window, 1);
            Exit(program, window);
        }
        ShownLog window(program);
        QCOMPARE(Selected(window), "K2");
    }

    void selectedTrip_inALongList_isScrolledTo()
    {
        TwoTrips program;
        for (int trip = 0; trip < 100; ++trip) {
            program.AddEntry({{EntryField::LocNo, "1"}});
        }
        {
            ShownLog window(program);
            List(window).SelectKey(QStringLiteral("K90"));
            Exit(program, window);
        }
        ShownLog window(program);
        const SortableList& list = List(window);
        QCOMPARE(Selected(window), "K90");
        QVERIFY(list.viewport()->rect().contains(list.visualRect(list.currentIndex())));
    }

    void selectedTrip_thatIsGone_isTheFirstOne()
    {
        TwoTrips program;
        {
            ShownLog window(program);
            ClickRow(window, 1);
            Exit(program, window);
        }
        program.sql.EntryDelete(2);
        ShownLog window(program);
        QCOMPARE(Selected(window), "K1");
    }

    void selectedTrip_ofAnotherLog_isNotSelected()
    {
        TwoTrips program;
        program.windows.SetSelectedRow(FromUtf8(program.stateFolder.Path()), QStringLiteral("K2"));
        ShownLog window(program);
        QCOMPARE(Selected(window), "K1");
    }

    void emptyList_keepsWhatIsRemembered()
    {
        TwoTrips program;
        const QString folder = FromUtf8(program.folder.Path());
        program.windows.SetSelectedRow(folder, QStringLiteral("K2"));
        program.folder.Write("tarno.xml", "<data />");
        program.Start();
        ShownLog window(program);
        Exit(program, window);
        QCOMPARE(program.windows.SelectedRow(folder), QStringLiteral("K2"));
    }
};

TEST_CLASS(tst_fTarnoRemembered)
#include "tst_fTarnoRemembered.moc"
