#include "PictureTest.h"
#include "support/Pictures.h"
#include "support/TestClass.h"
#include "ui/entry/PicturePanel.h"

#include <QStyleOptionSlider>

#include <utility>

using namespace Tarno;

// The picture panel: its controls, zooming and scrolling.

namespace
{

QScrollBar& Across(const QWidget& editor)
{
    return Find<QScrollBar>(editor, "hscPic");
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

    void largePicture_leavesTheFrameVisible()
    {
        ProgramWithPlace program;
        program.messages.Expect(saveQuestion, Button::No);
        EditPicture(program, "catch.png", Pictures::Png(2000, 1500), [](QDialog& editor) {
            const auto edges = [&] {
                QWidget& frame = *Find<QFrame>(editor, "frPic").parentWidget();
                const QImage shown = frame.grab().toImage();
                const int last = shown.width() - 1;
                const int lowest = shown.height() - 1;
                return shown.copy(last, 0, 1, lowest + 1) == shown.copy(0, 0, 1, lowest + 1) &&
                       shown.copy(0, lowest, last + 1, 1).pixelColor(last / 2, 0) ==
                           shown.pixelColor(last / 2, 0);
            };
            QVERIFY(edges());
            Click(editor, "cmdRemove");
            QVERIFY(edges());
            Close(editor);
        });
    }

    void buttons_haveRoomForTheirCaptions()
    {
        ProgramWithPlace program;
        EditPicture(program, "", [](QDialog& editor) {
            for (const char* name : {"cmdLoad", "cmdRemove"}) {
                const auto& button = Find<QAbstractButton>(editor, name);
                const QFontMetrics font = button.fontMetrics();
                QVERIFY(button.width() >=
                        font.size(Qt::TextShowMnemonic, button.text()).width() + 3 * font.averageCharWidth());
            }
            Close(editor);
        });
    }

    void tab_followsTheForm()
    {
        ProgramWithPlace program;
        EditPicture(program, "catch.png", Pictures::Png(2000, 1500), [](QDialog& editor) {
            Down(editor).setFocus();
            for (const char* next : {"hscPic", "sldZoom", "cmdRemove"}) {
                Press(editor, Qt::Key_Tab);
                QCOMPARE(editor.focusWidget()->objectName(), QLatin1String(next));
            }
            Close(editor);
        });
    }

    void source_holdsThePictureAtItsNaturalSize()
    {
        ProgramWithPlace program;
        EditPicture(program, "catch.png", Pictures::Png(2000, 1500), [](QDialog& editor) {
            QCOMPARE(Source(editor).parentWidget(), &Find<QWidget>(editor, "frPic"));
            QVERIFY(Source(editor).isHidden());
            QVERIFY(!Picture(editor).isHidden());
            QCOMPARE(Source(editor).size(), QSize(2000, 1500));
            Zoom(editor).setValue(50);
            Down(editor).setValue(20);
            QCOMPARE(Source(editor).geometry(), QRect(Frame(editor).topLeft(), QSize(2000, 1500)));
            Close(editor);
        });
    }

    void source_withoutPicture_coversTheEmptyPanel()
    {
        ProgramWithPlace program;
        program.messages.Expect(saveQuestion, Button::No);
        EditPicture(program, "catch.png", Pictures::Png(2000, 1500), [](QDialog& editor) {
            Click(editor, "cmdRemove");
            QVERIFY(Source(editor).isHidden());
            QCOMPARE(Source(editor).geometry(), Picture(editor).geometry());
            QCOMPARE(Source(editor).size(), Frame(editor).size() - QSize(1, 1));
            editor.resize(editor.size() + QSize(200, 200));
            QTRY_COMPARE_WITH_TIMEOUT(Source(editor).size(), Frame(editor).size() - QSize(1, 1),
                                      awaitTimeout);
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
            Close(editor); // no question: zooming and scrolling do not change the entry
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
        QTest::newRow("zero is one") << 0 << 1 << QSize(20, 15);
    }

    void zoom_sizesThePicture()
    {
        QFETCH(int, zoom);
        QFETCH(int, slider);
        QFETCH(QSize, size);
        ProgramWithPlace program;
        EditPicture(program, "catch.png", Pictures::Png(2001, 1502), [&](QDialog& editor) {
            // several values in turn, to check that rounding errors do not add up
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

    void zoom_resetsTheScrollBars()
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

    void zoom_releasedUnmoved_resetsTheScrollBars()
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
        const QSize size = frame + QSize(400, 600); // 20 and 30 pixels per step
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

    void scrolling_byDragging_movesThePicture()
    {
        ProgramWithPlace program;
        EditPicture(program, "catch.png", Pictures::Png(4000, 3000), [](QDialog& editor) {
            QScrollBar& bar = Down(editor);
            bar.setSliderDown(true);
            bar.setSliderPosition(20);
            QCOMPARE(Picture(editor).geometry().bottom(), Frame(editor).bottom());
            bar.setSliderPosition(0);
            QCOMPARE(Picture(editor).geometry().top(), Frame(editor).top());
            bar.setSliderDown(false);
            Close(editor);
        });
    }

    void window_enlarged_updatesTheControls()
    {
        const QSize size = FrameSize() + QSize(40, 60);
        ProgramWithPlace program;
        EditPicture(program, "catch.png", Pictures::Png(size.width(), size.height()), [&](QDialog& editor) {
            QCOMPARE(EnabledControls(editor), Names({"cmdRemove", "sldZoom", "hscPic", "vscPic"}));
            Down(editor).setValue(20);
            Across(editor).setValue(20);
            editor.resize(editor.size() + QSize(200, 200));
            QTRY_COMPARE_WITH_TIMEOUT(EnabledControls(editor), Names({"cmdRemove"}), awaitTimeout);
            QCOMPARE(Picture(editor).geometry(), QRect(Frame(editor).topLeft(), size));
            Close(editor);
        });
    }

    void buttons_failing_reportTheWindowAsModule()
    {
        TestProgram program;
        program.Start();
        program.folder.Write("catch.png", Pictures::Png(100, 60));
        Record entry;
        program.sql.EntryGet(0, entry);
        entry.SetText(EntryField::Picture, "catch.png");
        EditedRecord edited;
        edited.Begin(std::move(entry));
        QDialog window;
        window.setObjectName(QStringLiteral("fPictures"));
        PicturePanel panel(&window);
        panel.Attach(program.program, edited, EntryField::Picture, QStringLiteral("picCatch"),
                     QStringLiteral("imgCatch"), &window);
        panel.ShowRecord();
        panel.resize(400, 300);
        window.resize(400, 300);
        window.show();
        AwaitActive(window);
        edited.Begin({}); // a record without a picture value
        program.reports.Expect("fPictures", "cmdRemove_Click", ErrorNumber::ObjectNotSet);
        Click(window, "cmdRemove");
        Find<QWidget>(window, "cmdLoad").setEnabled(true);
        program.reports.Expect("fPictures", "cmdLoad_Click", ErrorNumber::ObjectNotSet);
        program.files.ExpectOpen(ChooseIn(program), FromUtf8(program.folder.PathOf("catch.png")));
        Click(window, "cmdLoad");
        QVERIFY(window.isVisible());
    }
};

TEST_CLASS(tst_PicturePanel)
#include "tst_PicturePanel.moc"
