// The export of major and minor times.

#include "CalendarTest.h"
#include "support/TestClass.h"
#include "ui/calendar/dlgPeaks.h"

#include <QCheckBox>
#include <QDate>
#include <QLineEdit>
#include <QPushButton>

using namespace Tarno;

using std::chrono::year_month_day;

namespace
{

const QString file = QStringLiteral("peaks.ics");

PeakEventsRequest RequestFor(year_month_day date)
{
    return {.location = pittwater, .number = "7", .name = "Pittwater & Bay", .first = date, .last = date};
}

/// The dialog on the screen.
class ShownPeaks : public dlgPeaks
{
public:
    explicit ShownPeaks(const TestProgram& program, year_month_day date = Date(2026, 11, 22))
        : dlgPeaks(program.program, RequestFor(date), nullptr)
    {
        show();
        AwaitActive(*this);
    }
};

class PeaksProgram : public TestProgram
{
public:
    /// The user chooses the file, or cancels.
    void ExpectFile(bool chosen = true)
    {
        files.ExpectSave({.title = QStringLiteral("Export Major and Minor Times"),
                          .filter = QStringLiteral("iCalendar (*.ics)"),
                          .folder = FromUtf8(programFolder.GetAppPath() + '/'),
                          .fileName = file,
                          .suffix = QStringLiteral(".ics")},
                         chosen ? std::optional(Path()) : std::nullopt);
    }

    void ExpectWritten(std::size_t events)
    {
        messages.ExpectInformation(QStringLiteral("%1 events were written to ").arg(events) + Path(),
                                   QStringLiteral("Tarno"));
    }

    QString Path() const { return FromUtf8(folder.PathOf(ToUtf8(file))); }

    /// Returns what the file must contain.
    std::string Expected(const PeakEventsRequest& request) const
    {
        return ICalendar(PeakEvents(request), std::chrono::sys_days(clock.today));
    }
};

std::string BoxDate(const QWidget& window, const char* name)
{
    return ToUtf8(Find<QLineEdit>(window, name).text());
}

void SetRange(const QWidget& window, const QDate& from, const QDate& to)
{
    Find<QLineEdit>(window, "txtFrom").setText(from.toString(Qt::ISODate));
    Find<QLineEdit>(window, "txtTo").setText(to.toString(Qt::ISODate));
}

} // namespace

class tst_dlgPeaks : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void opening_proposesThirtyDaysFromTheDay()
    {
        PeaksProgram program;
        const ShownPeaks window(program);
        QCOMPARE(BoxDate(window, "txtFrom"), "2026-11-22");
        QCOMPARE(BoxDate(window, "txtTo"), "2026-12-22");
        QCOMPARE(LabelText(window, "lblPlaceName"), "Pittwater & Bay");
        QVERIFY(!Find<QCheckBox>(window, "chkGoodDays").isChecked());
        QVERIFY(Find<QPushButton>(window, "cmdExport").isEnabled());
    }

    void opening_atTheEnds_staysWithinTheYears()
    {
        PeaksProgram program;
        const ShownPeaks last(program, Date(9999, 12, 20));
        QCOMPARE(BoxDate(last, "txtFrom"), "9999-12-20");
        QCOMPARE(BoxDate(last, "txtTo"), "9999-12-31");
        const ShownPeaks first(program, Date(1, 1, 1));
        QCOMPARE(BoxDate(first, "txtFrom"), "0001-01-01");
        QCOMPARE(BoxDate(first, "txtTo"), "0001-01-31");
    }

    void range_isChecked_data()
    {
        QTest::addColumn<QDate>("to");
        QTest::addColumn<std::string>("problem");
        QTest::newRow("one day") << QDate(2026, 11, 22) << std::string();
        QTest::newRow("reversed") << QDate(2026, 11, 21)
                                  << std::string("The last day is before the first one.");
        QTest::newRow("longest") << QDate(2026, 11, 22).addDays(3659) << std::string();
        QTest::newRow("too long") << QDate(2026, 11, 22).addDays(3660)
                                  << std::string("Choose at most ten years.");
    }

    void range_isChecked()
    {
        QFETCH(QDate, to);
        QFETCH(std::string, problem);
        PeaksProgram program;
        const ShownPeaks window(program);
        SetRange(window, QDate(2026, 11, 22), to);
        QCOMPARE(LabelText(window, "lblProblem"), problem);
        QCOMPARE(Find<QPushButton>(window, "cmdExport").isEnabled(), problem.empty());
        SetRange(window, QDate(2026, 11, 22), QDate(2026, 11, 23));
        QCOMPARE(LabelText(window, "lblProblem"), "");
        QVERIFY(Find<QPushButton>(window, "cmdExport").isEnabled());
    }

    void dates_areTyped_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<bool>("isDate");
        QTest::newRow("date") << "2026-12-01" << true;
        QTest::newRow("short") << "2026-12-1" << true;
        QTest::newRow("no date") << "2026-02-30" << false;
        QTest::newRow("words") << "tomorrow" << false;
        QTest::newRow("empty") << "" << false;
        QTest::newRow("year 10000") << "10000-01-01" << false;
    }

    void dates_areTyped()
    {
        QFETCH(QString, from);
        QFETCH(bool, isDate);
        PeaksProgram program;
        const ShownPeaks window(program);
        auto& box = Find<QLineEdit>(window, "txtFrom");
        box.selectAll();
        QTest::keyClicks(&box, from);
        if (from.isEmpty()) {
            box.clear();
        }
        QCOMPARE(LabelText(window, "lblProblem"),
                 isDate ? "" : "Enter both dates as year-month-day, for example 2026-03-31.");
        QCOMPARE(Find<QPushButton>(window, "cmdExport").isEnabled(), isDate);
    }

    void export_writesTheEvents_data()
    {
        QTest::addColumn<bool>("onlyGoodDays");
        QTest::newRow("all days") << false;
        QTest::newRow("good days") << true;
    }

    void export_writesTheEvents()
    {
        QFETCH(bool, onlyGoodDays);
        PeaksProgram program;
        ShownPeaks window(program);
        SetRange(window, QDate(2026, 11, 1), QDate(2026, 11, 30));
        if (onlyGoodDays) {
            Click(window, "chkGoodDays");
        }
        PeakEventsRequest request = RequestFor(Date(2026, 11, 1));
        request.last = Date(2026, 11, 30);
        request.onlyGoodDays = onlyGoodDays;
        program.ExpectFile();
        program.ExpectWritten(PeakEvents(request).size());
        Click(window, "cmdExport");
        QVERIFY(!window.isVisible());
        QCOMPARE(window.result(), int(QDialog::Accepted));
        QCOMPARE(program.folder.Read("peaks.ics"), program.Expected(request));
    }

    void export_cancelled_keepsTheDialog()
    {
        PeaksProgram program;
        ShownPeaks window(program);
        program.ExpectFile(false);
        Click(window, "cmdExport");
        QVERIFY(window.isVisible());
        QVERIFY(!program.operations.HasWritten());
    }

    void export_failedWrite_namesTheFileAndKeepsTheDialog()
    {
        PeaksProgram program;
        program.folder.Write("peaks.ics", "before");
        ShownPeaks window(program);
        program.ExpectFile();
        program.messages.Expect({.text = QStringLiteral("This file already exists: ") + program.Path() +
                                         QStringLiteral("\r\n\r\nDo you want to replace it?"),
                                 .title = QStringLiteral("Replace File"),
                                 .icon = Icon::Question,
                                 .buttons = Buttons::YesNo,
                                 .byDefault = Button::No},
                                Button::Yes);
        program.operations.Fail("create", ErrorNumber::PermissionDenied);
        program.messages.Expect({.text = QStringLiteral("The file could not be written: ") + program.Path() +
                                         QStringLiteral("\r\n") +
                                         FromUtf8(Error(ErrorNumber::PermissionDenied).Description()),
                                 .title = QStringLiteral("Export Error"),
                                 .icon = Icon::Exclamation},
                                Button::Ok);
        Click(window, "cmdExport");
        QVERIFY(window.isVisible());
        QCOMPARE(program.folder.Read("peaks.ics"), "before");
    }

    void export_atTheEnds_data()
    {
        QTest::addColumn<QDate>("from");
        QTest::addColumn<QDate>("to");
        QTest::newRow("first days") << QDate(1, 1, 1) << QDate(1, 1, 10);
        QTest::newRow("last days") << QDate(9999, 12, 20) << QDate(9999, 12, 31);
    }

    void export_atTheEnds()
    {
        QFETCH(QDate, from);
        QFETCH(QDate, to);
        PeaksProgram program;
        ShownPeaks window(program);
        SetRange(window, from, to);
        PeakEventsRequest request = RequestFor(
            Date(from.year(), static_cast<unsigned>(from.month()), static_cast<unsigned>(from.day())));
        request.last = Date(to.year(), static_cast<unsigned>(to.month()), static_cast<unsigned>(to.day()));
        program.ExpectFile();
        program.ExpectWritten(PeakEvents(request).size());
        Click(window, "cmdExport");
        QCOMPARE(program.folder.Read("peaks.ics"), program.Expected(request));
    }

    void closing_writesNothing()
    {
        PeaksProgram program;
        ShownPeaks byKey(program);
        Press(byKey, Qt::Key_Escape);
        QVERIFY(!byKey.isVisible());
        ShownPeaks byButton(program);
        Click(byButton, "cmdClose");
        QVERIFY(!byButton.isVisible());
        QVERIFY(!program.operations.HasWritten());
    }
};

TEST_CLASS(tst_dlgPeaks)
#include "tst_dlgPeaks.moc"
