#include "EntryTest.h"
#include "support/Pictures.h"
#include "support/Platform.h"
#include "support/TestClass.h"

#include <QScrollBar>
#include <QSlider>
#include <QStyleOptionSlider>

namespace
{

FileQuestion ChooseIn(const TestProgram& program)
{
    return {.title = QStringLiteral("Select the image to display"),
            .filter = QStringLiteral("*.bmp,*.jpg,*.tif,*.gif,*.ico,*.wmf "
                                     "(*.bmp *.jpg *.tif *.gif *.ico *.wmf);;All Files (*)"),
            .folder = FromUtf8(program.folder.Path() + '/'),
            .fileName = QStringLiteral("Image Files")};
}

void ExpectPictureProblem(TestProgram& program)
{
    program.messages.ExpectTold(
        QStringLiteral("There is a problem with the image you are tring to load. It could be:\r\n"
                       "   - that the image is too large when opened (filesize)\r\n"
                       "   - you do not have sufficient memory to handle the iamge\r\n"
                       "   - you need to close other applications which are open"),
        QStringLiteral("Picture Problem"));
}

/// Opens the editor for an entry whose picture is `path` and runs `steps` on its page "Picture".
template <typename Steps>
int EditPicture(ProgramWithPlace& program, const std::string& path, Steps&& steps)
{
    const int key = program.AddCompleteEntry({{EntryField::Picture, path}});
    Edit(program, key, [&](QDialog& editor) {
        ShowPageOf(editor, Find<QWidget>(editor, "frPic"));
        steps(editor);
    });
    return key;
}

/// What is written into the file `name` of the program folder is the picture of the entry.
template <typename Steps>
int EditPicture(ProgramWithPlace& program, const char* name, const std::string& bytes, Steps&& steps)
{
    program.folder.Write(name, bytes);
    return EditPicture(program, program.folder.PathOf(name), std::forward<Steps>(steps));
}

QSlider& Zoom(const QWidget& editor)
{
    return Find<QSlider>(editor, "sldZoom");
}

QScrollBar& Across(const QWidget& editor)
{
    return Find<QScrollBar>(editor, "hscPic");
}

QScrollBar& Down(const QWidget& editor)
{
    return Find<QScrollBar>(editor, "vscPic");
}

QWidget& Picture(const QWidget& editor)
{
    return Find<QWidget>(editor, "picCatch");
}

/// Where the picture can be seen, in the coordinates of its parent.
QRect Frame(const QWidget& editor)
{
    return Find<QWidget>(editor, "frPic").contentsRect();
}

bool IsEnabled(const QWidget& editor, const char* control)
{
    return Find<QWidget>(editor, control).isEnabled();
}

/// "load", "remove", "zoom", "across" and "down", as far as they are enabled.
QStringList EnabledControls(const QWidget& editor)
{
    QStringList enabled;
    for (const char* control : {"cmdLoad", "cmdRemove", "sldZoom", "hscPic", "vscPic"}) {
        if (IsEnabled(editor, control)) {
            enabled.append(QLatin1String(control));
        }
    }
    return enabled;
}

QStringList Names(std::initializer_list<const char*> names)
{
    QStringList list;
    for (const char* name : names) {
        list.append(QLatin1String(name));
    }
    return list;
}

/// The panel holds no picture: whatever is painted is the frame.
bool IsEmpty(const QWidget& editor)
{
    const QImage seen = Picture(editor).grab().toImage();
    for (int y = 0; y < seen.height(); y += 7) {
        for (int x = 0; x < seen.width(); x += 7) {
            if (seen.pixel(x, y) != seen.pixel(0, 0)) {
                return false;
            }
        }
    }
    return Picture(editor).size() == Frame(editor).size() - QSize(1, 1);
}

/// The colour of the picture at a place given in hundredths of its width and height.
QColor Colour(const QWidget& editor, int across, int down)
{
    const QImage seen = Picture(editor).grab().toImage();
    return seen.pixelColor(seen.width() * across / 100, seen.height() * down / 100);
}

bool IsNear(const QColor& colour, const QColor& expected)
{
    return qAbs(colour.red() - expected.red()) < 40 && qAbs(colour.green() - expected.green()) < 40 &&
           qAbs(colour.blue() - expected.blue()) < 40;
}

/// The inner size of the editor's picture frame.
QSize FrameSize()
{
    ProgramWithPlace program;
    QSize size;
    EditPicture(program, "", [&](QDialog& editor) {
        size = Frame(editor).size();
        Close(editor);
    });
    return size;
}

} // namespace

class tst_PicturePanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void controls_haveTheirTextsAndRanges()
    {
        ProgramWithPlace program;
        EditPicture(program, "", [](QDialog& editor) {
            const auto caption = [&](const char* button) {
                return ToUtf8(Find<QAbstractButton>(editor, button).text().remove(QLatin1Char('&')));
            };
            QCOMPARE(caption("cmdLoad"), "Load a picture/map");
            QCOMPARE(caption("cmdRemove"), "Remove");
            QCOMPARE(Find<QWidget>(editor, "cmdRemove").toolTip(),
                     QStringLiteral("Remove the current image"));
            QCOMPARE(Zoom(editor).toolTip(), QStringLiteral("Zoom the image"));
            QCOMPARE(Zoom(editor).minimum(), 0);
            QCOMPARE(Zoom(editor).maximum(), 100);
            for (const QScrollBar* bar : {&Across(editor), &Down(editor)}) {
                QCOMPARE(bar->minimum(), 0);
                QCOMPARE(bar->maximum(), 20);
            }
            Close(editor);
        });
    }

    void noPicture_leavesThePanelEmpty()
    {
        ProgramWithPlace program;
        EditPicture(program, "", [](QDialog& editor) {
            QVERIFY(IsEmpty(editor));
            QCOMPARE(EnabledControls(editor), Names({"cmdLoad"}));
            QCOMPARE(Picture(editor).pos(), Frame(editor).topLeft());
            Close(editor);
        });
    }

    void picture_shownWithItsRecord_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QStringList>("enabled");
        QTest::newRow("small") << QSize(100, 60) << Names({"cmdRemove"});
        QTest::newRow("one pixel") << QSize(1, 1) << Names({"cmdRemove"});
        QTest::newRow("larger in both directions")
            << QSize(2000, 1500) << Names({"cmdRemove", "sldZoom", "hscPic", "vscPic"});
        QTest::newRow("wide only") << QSize(2000, 60) << Names({"cmdRemove", "hscPic"});
        QTest::newRow("high only") << QSize(100, 1500) << Names({"cmdRemove", "vscPic"});
    }

    void picture_shownWithItsRecord()
    {
        QFETCH(QSize, size);
        QFETCH(QStringList, enabled);
        ProgramWithPlace program;
        EditPicture(program, "catch.png", Pictures::Png(size.width(), size.height()), [&](QDialog& editor) {
            QCOMPARE(Picture(editor).size(), size);
            QCOMPARE(Picture(editor).pos(), Frame(editor).topLeft());
            QCOMPARE(EnabledControls(editor), enabled);
            Close(editor);
        });
    }

    void barsAndSlider_dependOnTheFrame_data()
    {
        QTest::addColumn<QSize>("beyondTheFrame");
        QTest::addColumn<QStringList>("enabled");
        QTest::newRow("just fits") << QSize(-1, -1) << Names({"cmdRemove"});
        QTest::newRow("one pixel higher") << QSize(-1, 0) << Names({"cmdRemove", "vscPic"});
        QTest::newRow("one pixel wider") << QSize(0, -1) << Names({"cmdRemove", "hscPic"});
        QTest::newRow("one pixel each way")
            << QSize(0, 0) << Names({"cmdRemove", "sldZoom", "hscPic", "vscPic"});
    }

    void barsAndSlider_dependOnTheFrame()
    {
        QFETCH(QSize, beyondTheFrame);
        QFETCH(QStringList, enabled);
        const QSize size = FrameSize() + beyondTheFrame;
        ProgramWithPlace program;
        EditPicture(program, "catch.png", Pictures::Png(size.width(), size.height()), [&](QDialog& editor) {
            QCOMPARE(EnabledControls(editor), enabled);
            Close(editor);
        });
    }

    void opened_startsAtNaturalSizeAndTopLeft()
    {
        ProgramWithPlace program;
        const int key = EditPicture(program, "catch.png", Pictures::Png(1600, 1200), [](QDialog& editor) {
            Zoom(editor).setValue(80);
            Down(editor).setValue(20);
            QVERIFY(Picture(editor).y() < 0);
            Close(editor); // asks nothing: zoom and scrolling are no changes
        });
        Edit(program, key, [](QDialog& editor) {
            ShowPageOf(editor, Find<QWidget>(editor, "frPic"));
            QCOMPARE(Zoom(editor).value(), 100);
            QCOMPARE(Picture(editor).geometry(), QRect(Frame(editor).topLeft(), QSize(1600, 1200)));
            Close(editor);
        });
    }

    void zoom_sizesThePicture_data()
    {
        QTest::addColumn<int>("zoom");
        QTest::addColumn<int>("slider");
        QTest::addColumn<QSize>("size");
        QTest::newRow("whole") << 100 << 100 << QSize(2001, 1502);
        QTest::newRow("half") << 50 << 50 << QSize(1001, 751);
        QTest::newRow("a third") << 33 << 33 << QSize(660, 496);
        QTest::newRow("one") << 1 << 1 << QSize(20, 15);
        QTest::newRow("nothing is one") << 0 << 1 << QSize(20, 15);
    }

    void zoom_sizesThePicture()
    {
        QFETCH(int, zoom);
        QFETCH(int, slider);
        QFETCH(QSize, size);
        ProgramWithPlace program;
        EditPicture(program, "catch.png", Pictures::Png(2001, 1502), [&](QDialog& editor) {
            // by way of other values: rounding does not add up
            for (const int value : {77, 3, 0, 61, zoom}) {
                Zoom(editor).setValue(value);
            }
            QCOMPARE(Zoom(editor).value(), slider);
            QCOMPARE(Picture(editor).size(), size);
            QVERIFY(IsNear(Colour(editor, 25, 25), Qt::red));
            QVERIFY(IsNear(Colour(editor, 75, 75), Qt::blue));
            Zoom(editor).setValue(100);
            QCOMPARE(Picture(editor).size(), QSize(2001, 1502));
            Close(editor);
        });
    }

    void zoom_byKeyboardToTheEnd_isOnePercent()
    {
        ProgramWithPlace program;
        EditPicture(program, "catch.png", Pictures::Png(2000, 1500), [](QDialog& editor) {
            Zoom(editor).setFocus();
            Press(editor, Qt::Key_Home);
            QCOMPARE(Zoom(editor).value(), 1);
            QCOMPARE(Picture(editor).size(), QSize(20, 15));
            Press(editor, Qt::Key_Home);
            QCOMPARE(Zoom(editor).value(), 1);
            QCOMPARE(Picture(editor).size(), QSize(20, 15));
            Press(editor, Qt::Key_End);
            QCOMPARE(Picture(editor).size(), QSize(2000, 1500));
            Close(editor);
        });
    }

    void zoom_startsScrollingOver()
    {
        ProgramWithPlace program;
        EditPicture(program, "catch.png", Pictures::Png(4000, 3000), [](QDialog& editor) {
            Across(editor).setValue(20);
            Down(editor).setValue(7);
            Zoom(editor).setValue(90);
            QCOMPARE(Across(editor).value(), 0);
            QCOMPARE(Down(editor).value(), 0);
            QCOMPARE(Picture(editor).pos(), Frame(editor).topLeft());
            Close(editor);
        });
    }

    void zoom_letGoUnmoved_startsScrollingOver()
    {
        ProgramWithPlace program;
        EditPicture(program, "catch.png", Pictures::Png(4000, 3000), [](QDialog& editor) {
            QSlider& zoom = Zoom(editor);
            QStyleOptionSlider option;
            option.initFrom(&zoom);
            option.orientation = zoom.orientation();
            option.minimum = zoom.minimum();
            option.maximum = zoom.maximum();
            option.sliderPosition = option.sliderValue = zoom.value();
            option.upsideDown = zoom.orientation() == Qt::Vertical;
            const QPoint handle =
                zoom.style()
                    ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, &zoom)
                    .center();
            Across(editor).setValue(20);
            Down(editor).setValue(7);
            QVERIFY(Picture(editor).pos() != Frame(editor).topLeft());
            QTest::mousePress(&zoom, Qt::LeftButton, {}, handle);
            QVERIFY(zoom.isSliderDown());
            QCOMPARE(Down(editor).value(), 7);
            QTest::mouseRelease(&zoom, Qt::LeftButton, {}, handle);
            QCOMPARE(zoom.value(), 100);
            QCOMPARE(Across(editor).value(), 0);
            QCOMPARE(Down(editor).value(), 0);
            QCOMPARE(Picture(editor).geometry(), QRect(Frame(editor).topLeft(), QSize(4000, 3000)));
            Close(editor);
        });
    }

    void zoom_smallerThanTheFrame_disablesTheBars()
    {
        ProgramWithPlace program;
        EditPicture(program, "catch.png", Pictures::Png(2000, 1500), [](QDialog& editor) {
            Down(editor).setValue(20);
            Zoom(editor).setValue(10);
            QCOMPARE(EnabledControls(editor), Names({"cmdRemove", "sldZoom"}));
            QCOMPARE(Down(editor).value(), 0);
            QCOMPARE(Picture(editor).geometry(), QRect(Frame(editor).topLeft(), QSize(200, 150)));
            Zoom(editor).setValue(100);
            QCOMPARE(EnabledControls(editor), Names({"cmdRemove", "sldZoom", "hscPic", "vscPic"}));
            Close(editor);
        });
    }

    void scrolling_movesByTwentieths_data()
    {
        QTest::addColumn<int>("position");
        for (const int position : {0, 1, 10, 19, 20}) {
            QTest::addRow("%d", position) << position;
        }
    }

    void scrolling_movesByTwentieths()
    {
        QFETCH(int, position);
        const QSize frame = FrameSize();
        const QSize size = frame + QSize(400, 600); // 20 and 30 pixels a step
        ProgramWithPlace program;
        EditPicture(program, "catch.png", Pictures::Png(size.width(), size.height()), [&](QDialog& editor) {
            QCOMPARE(Frame(editor).size(), frame);
            Across(editor).setValue(position);
            QCOMPARE(Picture(editor).pos(), Frame(editor).topLeft() - QPoint(20 * position, 0));
            Down(editor).setValue(position);
            QCOMPARE(Picture(editor).pos(), Frame(editor).topLeft() - QPoint(20 * position, 30 * position));
            QCOMPARE(Picture(editor).geometry().bottomRight() == Frame(editor).bottomRight(), position == 20);
            QCOMPARE(Picture(editor).size(), size);
            Close(editor);
        });
    }

    void window_enlarged_followsTheRules()
    {
        const QSize size = FrameSize() + QSize(40, 60);
        ProgramWithPlace program;
        EditPicture(program, "catch.png", Pictures::Png(size.width(), size.height()), [&](QDialog& editor) {
            QCOMPARE(EnabledControls(editor), Names({"cmdRemove", "sldZoom", "hscPic", "vscPic"}));
            Down(editor).setValue(20);
            Across(editor).setValue(20);
            editor.resize(editor.size() + QSize(200, 200));
            QTRY_COMPARE_WITH_TIMEOUT(EnabledControls(editor), Names({"cmdRemove"}), patience);
            QCOMPARE(Picture(editor).geometry(), QRect(Frame(editor).topLeft(), size));
            Close(editor);
        });
    }

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
        // the same picture, shown with its record
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
            Close(editor); // asks nothing
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
        QCOMPARE(program.folder.Read("catch.png"), picture); // the file is the user's
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
        QTest::newRow("beyond the first plane") << QStringLiteral(u"\U0001F41F.png");
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

    void relativePath_isTakenFromTheProgramFolder()
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

    void fileThatIsNotThere_showsNothing_data()
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

    void fileThatIsNotThere_showsNothing()
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

    void format_isToldByTheContents()
    {
        ProgramWithPlace program;
        EditPicture(program, "catch.bmp", Pictures::Encoded(Pictures::Drawn(64, 32), "jpg"),
                    [](QDialog& editor) {
                        QCOMPARE(Picture(editor).size(), QSize(64, 32));
                        Close(editor);
                    });
    }

    void orientation_isHonoured_data()
    {
        QTest::addColumn<int>("orientation");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QPoint>("red"); ///< a place in the quarter that was the upper left one
        QTest::newRow("upright") << 1 << QSize(80, 40) << QPoint(25, 25);
        QTest::newRow("mirrored") << 2 << QSize(80, 40) << QPoint(75, 25);
        QTest::newRow("upside down") << 3 << QSize(80, 40) << QPoint(75, 75);
        QTest::newRow("turned to the right") << 6 << QSize(40, 80) << QPoint(75, 25);
        QTest::newRow("turned to the left") << 8 << QSize(40, 80) << QPoint(25, 75);
    }

    void orientation_isHonoured()
    {
        QFETCH(int, orientation);
        QFETCH(QSize, size);
        QFETCH(QPoint, red);
        ProgramWithPlace program;
        EditPicture(
            program, "catch.jpg", Pictures::JpegHeld(Pictures::Drawn(80, 40), orientation),
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

    void unknownFormat_shownWithItsRecord_isSaidAndThePathKept()
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

    void unknownFormat_chosen_isSaidAndThePathKept()
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
            Click(editor, "cmdRemove"); // what was chosen can be taken away again
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

TEST_CLASS(tst_PicturePanel)
#include "tst_PicturePanel.moc"
