#include "FindTest.h"
#include "support/Pictures.h"
#include "support/TestClass.h"
#include "ui/reports/LogPreviewTest.h"

using namespace Tarno;

// The sheet of the selected trip, printed from the main window.

namespace
{

/// A log of one trip with a picture.
class TripWithPicture : public TestProgram
{
public:
    explicit TripWithPicture(const std::string& picture)
    {
        Start();
        AddLocation("Pittwater");
        AddEntry({{EntryField::StartDate, "2003-02-05"},
                  {EntryField::LocNo, "1"},
                  {EntryField::FishCaught, "2 bream~CL~1 cod"},
                  {EntryField::Picture, picture}});
    }
};

/// Returns the cells of the sheet of the selected trip, separated by "|".
QString SheetText(TestProgram& program, const QWidget& window)
{
    QStringList cells;
    WhileOpen(
        "fPreview", [&] { Press(window, Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier); },
        [&](QDialog& preview) {
            const RtfReading sheet = Exported(program, preview);
            QCOMPARE(sheet.fault, QString());
            for (const RtfRow& row : sheet.header + sheet.body) {
                cells << row.cells;
            }
            preview.close();
        });
    return cells.join(QLatin1Char('|'));
}

} // namespace

class tst_TripSheet : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void sheet_describesTheSelectedTrip()
    {
        TripWithPicture program("");
        program.AddEntry({{EntryField::StartDate, "2003-02-06"}, {EntryField::LocNo, "1"}});
        ShownLog window(program);
        const QString text = SheetText(program, window);
        for (const char* part : {"Tarno Fishing Log - Trip", "Date|2003-02-05", "Place|Pittwater",
                                 "Caught|2 bream\n1 cod", "Printed on 5/02/2003 at 9:07 PM"}) {
            QVERIFY2(text.contains(QLatin1String(part)), qPrintable(text));
        }
        QVERIFY2(!text.contains(QStringLiteral("2003-02-06")), qPrintable(text));
        QVERIFY2(!text.contains(QStringLiteral("Picture")), qPrintable(text));
        QVERIFY(List(window).isEnabled());
    }

    void sheet_hasThePicture()
    {
        TripWithPicture program("fish.png");
        program.folder.Write("fish.png", Pictures::Png(40, 20));
        ShownLog window(program);
        const QString text = SheetText(program, window);
        QVERIFY2(text.endsWith(QStringLiteral("<picture>")), qPrintable(text));
    }

    void sheet_pictureProblem_isExplained_data()
    {
        QTest::addColumn<bool>("exists");
        QTest::addColumn<QString>("problem");
        QTest::newRow("missing") << false << "Picture|The picture does not exist: ";
        QTest::newRow("unreadable") << true << "Picture|The picture cannot be read: ";
    }

    void sheet_pictureProblem_isExplained()
    {
        QFETCH(bool, exists);
        QFETCH(QString, problem);
        TripWithPicture program("fish.png");
        if (exists) {
            program.folder.Write("fish.png", "no picture");
        }
        ShownLog window(program);
        const QString text = SheetText(program, window);
        QVERIFY2(text.contains(problem) && text.contains(QStringLiteral("fish.png")), qPrintable(text));
        QVERIFY2(!text.endsWith(QStringLiteral("<picture>")), qPrintable(text));
    }

    void sheet_ofATripWithoutValues()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater");
        program.AddEntry({{EntryField::LocNo, "1"}});
        program.sql.LocationDelete(1);
        program.reports.Expect("cSQL", "LocationNameGet", ErrorNumber::ObjectNotSet);
        ShownLog window(program);
        const QString text = SheetText(program, window);
        QVERIFY2(text.contains(QStringLiteral("Tarno Fishing Log - Trip")), qPrintable(text));
    }
};

TEST_CLASS(tst_TripSheet)
#include "tst_TripSheet.moc"
