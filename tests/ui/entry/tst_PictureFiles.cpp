#include "PictureTest.h"
#include "support/Pictures.h"
#include "support/Platform.h"
#include "support/TestClass.h"

#include <optional>

using namespace Tarno;

// The files of the picture panel: loading, removing, paths and formats.

namespace
{

void ExpectPictureProblem(TestProgram& program)
{
    program.messages.ExpectInformation(
        QStringLiteral("There is a problem with the image you are tring to load. It could be:\r\n"
                       "   - that the image is too large when opened (filesize)\r\n"
                       "   - you do not have sufficient memory to handle the iamge\r\n"
                       "   - you need to close other applications which are open"),
        QStringLiteral("Picture Problem"));
}

} // namespace

class tst_PictureFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void load_showsThePictureAndMarksTheChange()
    {
        ProgramWithPlace program;
        program.folder.Write("big.png", Pictures::Png(2000, 1500));
        program.files.ExpectOpen(ChooseIn(program), FromUtf8(program.folder.PathOf("big.png")));
        program.messages.Expect(saveQuestion, Button::No);
        EditPicture(program, "", [](QDialog& editor) {
            Click(editor, "cmdLoad");
            QCOMPARE(Picture(editor).size(), QSize(2000, 1500));
            QVERIFY(IsNear(Colour(editor, 10, 10), Qt::red));
            QCOMPARE(Zoom(editor).value(), 100);
            QCOMPARE(EnabledControls(editor), Names({"cmdRemove", "sldZoom", "hscPic", "vscPic"}));
            QCOMPARE(Focused(editor), "cmdRemove");
            QVERIFY(IsSaveEnabled(editor));
            Close(editor);
        });
    }

    void load_ofASmallPicture_enablesTheSlider()
    {
        ProgramWithPlace program;
        program.folder.Write("small.png", Pictures::Png(100, 60));
        program.files.ExpectOpen(ChooseIn(program), FromUtf8(program.folder.PathOf("small.png")));
        const int key = EditPicture(program, "", [](QDialog& editor) {
            Click(editor, "cmdLoad");
            QCOMPARE(EnabledControls(editor), Names({"cmdRemove", "sldZoom"}));
            Zoom(editor).setValue(50);
            QCOMPARE(Picture(editor).size(), QSize(50, 30));
            ClickPage(editor, 0);
            ClickPage(editor, 3);
            QCOMPARE(EnabledControls(editor), Names({"cmdRemove", "sldZoom"}));
            QCOMPARE(Picture(editor).size(), QSize(50, 30));
            SaveAndClose(editor);
        });
        // the same picture, loaded with its record
        Edit(program, key, [](QDialog& editor) {
            ShowPageOf(editor, Find<QWidget>(editor, "frPic"));
            QCOMPARE(EnabledControls(editor), Names({"cmdRemove"}));
            QCOMPARE(Picture(editor).size(), QSize(100, 60));
            Close(editor);
        });
    }

    void load_saved_isStored()
    {
        ProgramWithPlace program;
        program.folder.Write("catch.png", Pictures::Png(100, 60));
        program.files.ExpectOpen(ChooseIn(program), FromUtf8(program.folder.PathOf("catch.png")));
        const int key = EditPicture(program, "", [](QDialog& editor) {
            Click(editor, "cmdLoad");
            Save(editor);
            QVERIFY(!IsSaveEnabled(editor));
            QCOMPARE(Picture(editor).size(), QSize(100, 60));
            Close(editor);
        });
        std::vector<std::string> expected = program.StoredEntry(1);
        expected[EntryField::Picture] = program.folder.PathOf("catch.png");
        QCOMPARE(program.StoredEntry(key), expected);
    }

    void load_cancelled_changesNothing()
    {
        ProgramWithPlace program;
        program.files.ExpectOpen(ChooseIn(program), std::nullopt);
        EditPicture(program, "", [](QDialog& editor) {
            Click(editor, "cmdLoad");
            QVERIFY(IsEmpty(editor));
            QCOMPARE(EnabledControls(editor), Names({"cmdLoad"}));
            QCOMPARE(Focused(editor), "cmdLoad");
            Close(editor); // asks no question
        });
    }

    void load_notSaved_leavesTheRecord()
    {
        ProgramWithPlace program;
        program.folder.Write("catch.png", Pictures::Png(100, 60));
        program.files.ExpectOpen(ChooseIn(program), FromUtf8(program.folder.PathOf("catch.png")));
        program.messages.Expect(saveQuestion, Button::No);
        const int key = EditPicture(program, "", [](QDialog& editor) {
            Click(editor, "cmdLoad");
            Close(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::Picture), "");
    }

    void remove_emptiesThePanelAndMarksTheChange()
    {
        ProgramWithPlace program;
        program.messages.Expect(saveQuestion, Button::No);
        const int key = EditPicture(program, "catch.png", Pictures::Png(2000, 1500), [](QDialog& editor) {
            Zoom(editor).setValue(60);
            Down(editor).setValue(20);
            Click(editor, "cmdRemove");
            QVERIFY(IsEmpty(editor));
            QCOMPARE(EnabledControls(editor), Names({"cmdLoad"}));
            QCOMPARE(Zoom(editor).value(), 100);
            QCOMPARE(Down(editor).value(), 0);
            QCOMPARE(Picture(editor).pos(), Frame(editor).topLeft());
            QCOMPARE(Focused(editor), "cmdCancel");
            QVERIFY(IsSaveEnabled(editor));
            Close(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::Picture), program.folder.PathOf("catch.png"));
    }

    void remove_saved_storesAnEmptyPath()
    {
        ProgramWithPlace program;
        const std::string picture = Pictures::Png(2000, 1500);
        const int key = EditPicture(program, "catch.png", picture, [](QDialog& editor) {
            Click(editor, "cmdRemove");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::Picture), "");
        QCOMPARE(program.folder.Read("catch.png"), picture); // the file itself is kept
        Edit(program, key, [](QDialog& editor) {
            ShowPageOf(editor, Find<QWidget>(editor, "frPic"));
            QVERIFY(IsEmpty(editor));
            QCOMPARE(EnabledControls(editor), Names({"cmdLoad"}));
            Close(editor);
        });
    }

    void remove_thenLoad_showsTheOtherPicture()
    {
        ProgramWithPlace program;
        program.folder.Write("other.png", Pictures::Png(30, 40));
        program.files.ExpectOpen(ChooseIn(program), FromUtf8(program.folder.PathOf("other.png")));
        const int key = EditPicture(program, "catch.png", Pictures::Png(2000, 1500), [](QDialog& editor) {
            Click(editor, "cmdRemove");
            Click(editor, "cmdLoad");
            QCOMPARE(Picture(editor).size(), QSize(30, 40));
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::Picture), program.folder.PathOf("other.png"));
    }

    void path_ofAnyValidName_isKept_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("blanks") << " a big  fish .png";
        QTest::newRow("accents") << QStringLiteral(u"Nud\u00E9l \u00DF.png");
        QTest::newRow("decomposed accent") << QStringLiteral(u"Nude\u0301l.png");
        QTest::newRow("Japanese") << QStringLiteral(u"\u9BDB\u306E\u5199\u771F.png");
        QTest::newRow("outside the Basic Multilingual Plane") << QStringLiteral(u"\U0001F41F.png");
        QTest::newRow("percent and hash") << "100%20 #1 50%.png";
        QTest::newRow("quotes") << "the 'big' one.png";
        QTest::newRow("reference") << "&amp;.png";
        QTest::newRow("no suffix") << "fish";
        QTest::newRow("for a dense display") << "fish@2x.png";
        QTest::newRow("brackets") << "fish[1].png";
        QTest::newRow("blank at the end") << "fish.png ";
        QTest::newRow("double quotes") << "the \"one\".png";
        QTest::newRow("markup") << "<b>.png";
        QTest::newRow("wildcards") << "fish*?.png";
        QTest::newRow("looks like a resource") << "qrc:fish.png";
    }

    void path_ofAnyValidName_isKept()
    {
        QFETCH(QString, name);
        if (!IsFileName(ToUtf8(name))) {
            NOT_ON_WINDOWS("files with such names");
        }
        ProgramWithPlace program;
        const std::string path = program.folder.PathOf(ToUtf8(name));
        program.folder.Write(ToUtf8(name), Pictures::Png(30, 40));
        program.files.ExpectOpen(ChooseIn(program), FromUtf8(path));
        const int key = EditPicture(program, "", [](QDialog& editor) {
            Click(editor, "cmdLoad");
            QCOMPARE(Picture(editor).size(), QSize(30, 40));
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::Picture), path);
        Edit(program, key, [](QDialog& editor) {
            ShowPageOf(editor, Find<QWidget>(editor, "frPic"));
            QCOMPARE(Picture(editor).size(), QSize(30, 40));
            Close(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::Picture), path);
    }

    void relativePath_isResolvedInTheProgramFolder()
    {
        ProgramWithPlace program;
        program.folder.MakeFolder("pictures");
        program.folder.Write("pictures/catch.png", Pictures::Png(30, 40));
        const int key = EditPicture(program, "pictures/catch.png", [](QDialog& editor) {
            QCOMPARE(Picture(editor).size(), QSize(30, 40));
            Close(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::Picture), "pictures/catch.png");
    }

    void missingFile_showsNothing_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("missing") << "/no such folder/fish.png";
        QTest::newRow("of another computer") << "C:\\Fish\\fish.jpg";
        QTest::newRow("relative") << "fish.png";
        QTest::newRow("blank") << " ";
        QTest::newRow("folder") << ".";
        QTest::newRow("wildcard") << "*.xml";
        QTest::newRow("very long") << QStringLiteral("/").repeated(3) + QStringLiteral("x").repeated(70000);
    }

    void missingFile_showsNothing()
    {
        QFETCH(QString, path);
        ProgramWithPlace program;
        const int key = EditPicture(program, ToUtf8(path), [](QDialog& editor) {
            QVERIFY(IsEmpty(editor));
            QCOMPARE(EnabledControls(editor), Names({"cmdLoad"}));
            ClickPage(editor, 0);
            Enter(editor, "txtTideLowHt", "0.5");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::Picture), ToUtf8(path));
    }

    void format_isShown_data()
    {
        QTest::addColumn<QString>("format");
        for (const char* format : {"bmp", "jpg", "tif", "ico", "png"}) {
            QTest::newRow(format) << format;
        }
    }

    void format_isShown()
    {
        QFETCH(QString, format);
        const QByteArray suffix = format.toLatin1();
        ProgramWithPlace program;
        EditPicture(program, ("CATCH." + suffix.toUpper()).constData(),
                    Pictures::Encoded(Pictures::Drawn(64, 32), suffix), [](QDialog& editor) {
                        QCOMPARE(Picture(editor).size(), QSize(64, 32));
                        QVERIFY(IsNear(Colour(editor, 25, 25), Qt::red));
                        QVERIFY(IsNear(Colour(editor, 75, 75), Qt::blue));
                        Close(editor);
                    });
    }

    void format_isDetectedFromTheContents()
    {
        ProgramWithPlace program;
        EditPicture(program, "catch.bmp", Pictures::Encoded(Pictures::Drawn(64, 32), "jpg"),
                    [](QDialog& editor) {
                        QCOMPARE(Picture(editor).size(), QSize(64, 32));
                        Close(editor);
                    });
    }

    void orientation_isApplied_data()
    {
        QTest::addColumn<int>("orientation");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QPoint>("red"); ///< a point in the quarter that is the upper left one in the file
        QTest::newRow("upright") << 1 << QSize(80, 40) << QPoint(25, 25);
        QTest::newRow("mirrored") << 2 << QSize(80, 40) << QPoint(75, 25);
        QTest::newRow("upside down") << 3 << QSize(80, 40) << QPoint(75, 75);
        QTest::newRow("rotated clockwise") << 6 << QSize(40, 80) << QPoint(75, 25);
        QTest::newRow("rotated counterclockwise") << 8 << QSize(40, 80) << QPoint(25, 75);
    }

    void orientation_isApplied()
    {
        QFETCH(int, orientation);
        QFETCH(QSize, size);
        QFETCH(QPoint, red);
        ProgramWithPlace program;
        EditPicture(
            program, "catch.jpg", Pictures::JpegWithOrientation(Pictures::Drawn(80, 40), orientation),
            [&](QDialog& editor) {
                QCOMPARE(Picture(editor).size(), size);
                for (const QPoint place : {QPoint(25, 25), QPoint(75, 25), QPoint(25, 75), QPoint(75, 75)}) {
                    QVERIFY(IsNear(Colour(editor, place.x(), place.y()), place == red ? Qt::red : Qt::blue));
                }
                Close(editor);
            });
    }

    void animation_showsItsFirstFrame()
    {
        ProgramWithPlace program;
        EditPicture(program, "catch.gif", Pictures::AnimatedGif(), [](QDialog& editor) {
            QCOMPARE(Picture(editor).size(), QSize(1, 1));
            QCOMPARE(Colour(editor, 0, 0), QColor(Qt::red));
            Close(editor);
        });
    }

    void halfTransparentPicture_isShown()
    {
        QImage picture(64, 32, QImage::Format_ARGB32);
        picture.fill(QColor(255, 0, 0, 128));
        ProgramWithPlace program;
        EditPicture(program, "catch.png", Pictures::Encoded(picture, "png"), [](QDialog& editor) {
            QCOMPARE(Picture(editor).size(), QSize(64, 32));
            const QColor seen = Colour(editor, 50, 50);
            QVERIFY(seen.red() > seen.green() + 60);
            Close(editor);
        });
    }

    void unknownFormat_inTheRecord_showsAMessageAndKeepsThePath()
    {
        ProgramWithPlace program;
        ExpectPictureProblem(program);
        const int key = EditPicture(program, "catch.wmf", "no picture at all", [](QDialog& editor) {
            QVERIFY(IsEmpty(editor));
            QCOMPARE(EnabledControls(editor), Names({"cmdLoad"}));
            ClickPage(editor, 0);
            Enter(editor, "txtTideLowHt", "0.5");
            SaveAndClose(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::LowTideHt), "0.5");
        QCOMPARE(program.StoredEntry(key, EntryField::Picture), program.folder.PathOf("catch.wmf"));
    }

    void unknownFormat_chosen_showsAMessageAndKeepsThePath()
    {
        ProgramWithPlace program;
        program.folder.Write("catch.wmf", "no picture at all");
        program.files.ExpectOpen(ChooseIn(program), FromUtf8(program.folder.PathOf("catch.wmf")));
        ExpectPictureProblem(program);
        const int key = EditPicture(program, "", [&](QDialog& editor) {
            Click(editor, "cmdLoad");
            QVERIFY(IsEmpty(editor));
            QCOMPARE(EnabledControls(editor), Names({"cmdRemove"}));
            QVERIFY(IsSaveEnabled(editor));
            Save(editor);
            Click(editor, "cmdRemove"); // the chosen path can be removed
            QCOMPARE(EnabledControls(editor), Names({"cmdLoad"}));
            program.messages.Expect(saveQuestion, Button::No);
            Close(editor);
        });
        QCOMPARE(program.StoredEntry(key, EntryField::Picture), program.folder.PathOf("catch.wmf"));
    }

    void problem_afterAPicture_leavesThePanelEmpty()
    {
        ProgramWithPlace program;
        program.folder.Write("broken.png", Pictures::Png(2000, 1500).substr(0, 40));
        program.files.ExpectOpen(ChooseIn(program), FromUtf8(program.folder.PathOf("broken.png")));
        ExpectPictureProblem(program);
        program.messages.Expect(saveQuestion, Button::No);
        EditPicture(program, "catch.png", Pictures::Png(2000, 1500), [](QDialog& editor) {
            Click(editor, "cmdRemove");
            Click(editor, "cmdLoad");
            QVERIFY(IsEmpty(editor));
            QCOMPARE(EnabledControls(editor), Names({"cmdRemove"}));
            Close(editor);
        });
    }
};

TEST_CLASS(tst_PictureFiles)
#include "tst_PictureFiles.moc"
