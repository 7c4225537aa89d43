#include "FindTest.h"
#include "support/Pictures.h"
#include "support/TestClass.h"

#include <QClipboard>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextEdit>

using namespace Tarno;

// The details of the selected trip beside the list, copying trips as text, and the trip sheet.

namespace
{

QTextEdit& Details(const QWidget& window)
{
    return Find<QTextEdit>(window, "txtDetails");
}

bool AreDetailsShown(const QWidget& window)
{
    return Find<QWidget>(window, "tripDetails").isVisible();
}

std::string DetailsText(const QWidget& window)
{
    return ToUtf8(Details(window).toPlainText());
}

void ShowDetails(const QWidget& window)
{
    Press(window, Qt::Key_I, Qt::ControlModifier);
}

/// Returns the size of the picture in the details, or an invalid size.
QSize PictureSize(const QWidget& window)
{
    const QTextDocument* document = Details(window).document();
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); part != block.end(); ++part) {
            const QTextCharFormat format = part.fragment().charFormat();
            if (format.isImageFormat()) {
                return QSizeF(format.toImageFormat().width(), format.toImageFormat().height()).toSize();
            }
        }
    }
    return {};
}

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
                  {EntryField::Picture, picture}});
    }
};

} // namespace

class tst_TripDetails : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void details_areHiddenAtFirst()
    {
        FourTrips program;
        ShownLog window(program);
        QVERIFY(!AreDetailsShown(window));
        QVERIFY(!Command(window, "miDetails").isChecked());
    }

    void ctrlI_showsAndHidesThem()
    {
        FourTrips program;
        ShownLog window(program);
        ShowDetails(window);
        QVERIFY(AreDetailsShown(window));
        QVERIFY(Command(window, "miDetails").isChecked());
        QCOMPARE(window.focusWidget(), &List(window));
        ShowDetails(window);
        QVERIFY(!AreDetailsShown(window));
    }

    void hiddenWithTheFocus_theListGetsIt()
    {
        FourTrips program;
        ShownLog window(program);
        ShowDetails(window);
        Details(window).setFocus();
        ShowDetails(window);
        QCOMPARE(window.focusWidget(), &List(window));
        FindTrips(window, "squid");
        ShowDetails(window);
        ShowDetails(window);
        QCOMPARE(window.focusWidget(), &FindBox(window));
    }

    void details_areRemembered()
    {
        FourTrips program;
        for (const bool shown : {false, true}) {
            ShownLog window(program);
            QCOMPARE(AreDetailsShown(window), shown);
            QCOMPARE(DetailsText(window).find("2003-02-05") != std::string::npos, shown);
            ShowDetails(window);
        }
        ShownLog window(program);
        QVERIFY(!AreDetailsShown(window));
    }

    void details_showWordsInsteadOfCodes()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater");
        program.AddEntry({{EntryField::StartDate, "2003-02-05"},
                          {EntryField::EndDate, "2003-02-06"},
                          {EntryField::LocNo, "1"},
                          {EntryField::TideStart, "3"},
                          {EntryField::TideEnd, "0"},
                          {EntryField::FishAction, "3"},
                          {EntryField::FishCaught, "2 bream~CL~1 cod"}});
        ShownLog window(program);
        ShowDetails(window);
        const std::string text = DetailsText(window);
        for (const char* part :
             {"2003-02-05 to 2003-02-06", "Pittwater", "Run In to Top", "Hot!", "2 bream", "1 cod"}) {
            QVERIFY2(text.find(part) != std::string::npos, text.c_str());
        }
        QVERIFY2(text.find("~CL~") == std::string::npos, text.c_str());
    }

    void details_areReadOnly()
    {
        FourTrips program;
        ShownLog window(program);
        ShowDetails(window);
        const std::string text = DetailsText(window);
        Details(window).setFocus();
        Type(window, "x");
        QCOMPARE(DetailsText(window), text);
        Press(window, Qt::Key_Tab);
        QVERIFY(window.focusWidget() != &Details(window));
    }

    void details_followTheSelection()
    {
        FourTrips program;
        ShownLog window(program);
        ShowDetails(window);
        QVERIFY(DetailsText(window).find("2003-02-05") != std::string::npos);
        Press(window, Qt::Key_Down);
        QVERIFY(DetailsText(window).find("2003-02-06") != std::string::npos);
        FindTrips(window, "tailor");
        QVERIFY(DetailsText(window).find("2003-03-07") != std::string::npos);
        Press(window, Qt::Key_Escape);
        QVERIFY(DetailsText(window).find("2003-02-06") != std::string::npos);
    }

    void details_followSaves()
    {
        FourTrips program;
        ShownLog window(program);
        ShowDetails(window);
        WhileOpen(
            "fEntry", [&] { window.Edit(); },
            [](QDialog& editor) {
                Find<QLineEdit>(editor, "txtTideLowHt").setFocus();
                Type(editor, "0.77");
                Click(editor, "cmdOK");
                Click(editor, "cmdCancel");
            });
        QVERIFY(DetailsText(window).find("0.77") != std::string::npos);
        Press(window, Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(DetailsText(window).find("0.77") == std::string::npos);
    }

    void details_noTrip()
    {
        FourTrips program;
        ShownLog window(program);
        ShowDetails(window);
        FindTrips(window, "nothing");
        QCOMPARE(DetailsText(window), "Select a trip to see its details.");
        Press(window, Qt::Key_Escape);
        for (int trip = 0; trip < 4; ++trip) {
            DeleteSelected(program, window);
        }
        QCOMPARE(DetailsText(window), "Select a trip to see its details.");
    }

    void details_vanishedLocation_reportsNothing()
    {
        FourTrips program;
        program.sql.LocationDelete(1);
        program.reports.Expect("cSQL", "LocationNameGet", ErrorNumber::ObjectNotSet);
        ShownLog window(program);
        ShowDetails(window);
        QVERIFY(DetailsText(window).find("2003-02-05") != std::string::npos);
    }

    void picture_small_isShownInItsSize()
    {
        TripWithPicture program("fish.png");
        program.folder.Write("fish.png", Pictures::Png(40, 20));
        ShownLog window(program);
        ShowDetails(window);
        Await([&] { return PictureSize(window).isValid(); }, "no picture");
        QCOMPARE(PictureSize(window), QSize(40, 20));
    }

    void picture_large_isScaledToThePane_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("wide") << QSize(2000, 1000);
        QTest::newRow("high") << QSize(1000, 2000);
    }

    void picture_large_isScaledToThePane()
    {
        QFETCH(QSize, size);
        TripWithPicture program("fish.png");
        program.folder.Write("fish.png", Pictures::Png(size.width(), size.height()));
        ShownLog window(program);
        ShowDetails(window);
        Await([&] { return PictureSize(window).isValid(); }, "no picture");
        const auto fits = [&] {
            const QSize shown = PictureSize(window);
            return shown.width() <= Details(window).viewport()->width() &&
                   shown.width() > Details(window).viewport()->width() / 2 &&
                   std::abs(shown.width() * size.height() - shown.height() * size.width()) <=
                       2 * size.width();
        };
        QVERIFY(fits());
        QCOMPARE(Details(window).horizontalScrollBar()->maximum(), 0);
        const int before = PictureSize(window).width();
        window.resize(window.width() + 400, window.height());
        Await([&] { return PictureSize(window).width() > before; }, "the picture does not grow");
        QVERIFY(fits());
        QCOMPARE(Details(window).horizontalScrollBar()->maximum(), 0);
    }

    void picture_problem_isExplained_data()
    {
        QTest::addColumn<bool>("exists");
        QTest::addColumn<std::string>("text");
        QTest::newRow("missing") << false << std::string("The picture does not exist: ");
        QTest::newRow("unreadable") << true << std::string("The picture cannot be read: ");
    }

    void picture_problem_isExplained()
    {
        QFETCH(bool, exists);
        QFETCH(std::string, text);
        TripWithPicture program("fish.png");
        if (exists) {
            program.folder.Write("fish.png", "no picture");
        }
        ShownLog window(program);
        ShowDetails(window);
        const QString path = QDir(FromUtf8(program.folder.Path())).filePath(QStringLiteral("fish.png"));
        Await([&] { return DetailsText(window).find(text + ToUtf8(path)) != std::string::npos; },
              "the problem is not explained");
        QVERIFY(DetailsText(window).find("2003-02-05") != std::string::npos);
    }

    void picture_ofAnotherTrip_isNotShown()
    {
        TripWithPicture program("fish.png");
        program.folder.Write("fish.png", Pictures::Png(40, 20));
        program.AddEntry({{EntryField::StartDate, "2003-02-06"}, {EntryField::LocNo, "1"}});
        ShownLog window(program);
        ShowDetails(window);
        Await([&] { return PictureSize(window).isValid(); }, "no picture");
        Press(window, Qt::Key_Down);
        QVERIFY(!PictureSize(window).isValid());
        Press(window, Qt::Key_Up);
        Await([&] { return PictureSize(window).isValid(); }, "no picture");
    }

    void picture_ofATripWithoutOtherValues_isShown()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater");
        program.AddEntry({{EntryField::LocNo, "1"}, {EntryField::Picture, "fish.png"}});
        program.sql.LocationDelete(1);
        program.folder.Write("fish.png", Pictures::Png(40, 20));
        program.reports.Expect("cSQL", "LocationNameGet", ErrorNumber::ObjectNotSet);
        ShownLog window(program);
        ShowDetails(window);
        Await([&] { return PictureSize(window).isValid(); }, "no picture");
    }

    void copy_oneTrip()
    {
        FourTrips program;
        ShownLog window(program);
        ClickRow(window, 2);
        Press(window, Qt::Key_C, Qt::ControlModifier);
        const QStringList lines = QApplication::clipboard()->text().split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), 2);
        const QStringList names = lines[0].split(QLatin1Char('\t'));
        const QStringList values = lines[1].split(QLatin1Char('\t'));
        QCOMPARE(names.size(), static_cast<int>(EntryField::Count) - 1);
        QCOMPARE(values.size(), names.size());
        const auto value = [&](const char* name) { return values[names.indexOf(QLatin1String(name))]; };
        QCOMPARE(value("StartDate"), QStringLiteral("2003-03-07"));
        QCOMPARE(value("LocNo"), QStringLiteral("Pittwater"));
        QCOMPARE(value("FishCaught"), QStringLiteral("3 bream; 1 tailor"));
        QCOMPARE(value("MoonPhase"), QStringLiteral("Waxing, 45%"));
    }

    void copy_allFound()
    {
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "squid");
        Press(window, Qt::Key_Return);
        Press(window, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
        const QStringList lines = QApplication::clipboard()->text().split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), 3);
        QVERIFY(lines[0].startsWith(QStringLiteral("StartDate\t")));
        QVERIFY(lines[1].startsWith(QStringLiteral("2003-02-05\t")));
        QVERIFY(lines[2].startsWith(QStringLiteral("2003-03-07\t")));
    }

    void copy_inTheDetails_copiesTheirText()
    {
        FourTrips program;
        ShownLog window(program);
        ShowDetails(window);
        Details(window).setFocus();
        Press(window, Qt::Key_A, Qt::ControlModifier);
        Press(window, Qt::Key_C, Qt::ControlModifier);
        const QString text = QApplication::clipboard()->text();
        QVERIFY2(text.contains(QStringLiteral("Squid")) && !text.contains(QStringLiteral("FishCaught")),
                 qPrintable(text));
        Press(window, Qt::Key_Left); // nothing selected
        Press(window, Qt::Key_C, Qt::ControlModifier);
        QVERIFY(QApplication::clipboard()->text().contains(QStringLiteral("FishCaught")));
    }

    void tripSheet_opensThePreview()
    {
        FourTrips program;
        ShownLog window(program);
        ClickRow(window, 1);
        WhileOpen(
            "fPreview", [&] { Press(window, Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier); },
            [&](QDialog& preview) {
                QVERIFY(!List(window).isEnabled());
                QVERIFY2(preview.windowTitle().contains(QStringLiteral("Tarno Trip Sheet")),
                         qPrintable(preview.windowTitle()));
                preview.close();
            });
        QVERIFY(List(window).isEnabled());
        QCOMPARE(Selected(window), "K2");
    }
};

TEST_CLASS(tst_TripDetails)
#include "tst_TripDetails.moc"
