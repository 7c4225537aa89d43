#include "EntryTest.h"
#include "support/TestClass.h"

#include <QGroupBox>
#include <QLabel>
#include <QLayout>

#include <algorithm>

using namespace Tarno;

namespace
{

/// Opens a complete entry, runs `steps`, and closes it.
template <typename Steps>
void InspectEditor(Steps&& steps)
{
    ProgramWithPlace program;
    Edit(program, program.AddCompleteEntry(), [&](QDialog& editor) {
        steps(editor);
        Close(editor);
    });
}

/// Returns the index of the page that contains the control, or -1.
int PageOf(const QDialog& editor, const QWidget& control)
{
    for (int index = 0; index < Pages(editor).count(); ++index) {
        if (Pages(editor).widget(index)->isAncestorOf(&control)) {
            return index;
        }
    }
    return -1;
}

/// Returns a caption without its mnemonic marker.
std::string Plain(QString caption)
{
    return ToUtf8(caption.remove(QLatin1Char('&')));
}

/// Returns the name of the control, or that of its group for an option button.
std::string GroupName(const std::string& control)
{
    return control.starts_with("opt") ? control.substr(0, control.find('_')) : control;
}

} // namespace

class tst_fEntryPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void window_isCalledLogEntry()
    {
        InspectEditor([](QDialog& editor) {
            QCOMPARE(ToUtf8(editor.windowTitle()), "Tarno Log Entry");
            QVERIFY(editor.isModal());
        });
    }

    void pages_haveTheirCaptionsInOrder()
    {
        InspectEditor([](QDialog& editor) {
            std::vector<std::string> captions;
            captions.reserve(static_cast<std::size_t>(Pages(editor).count()));
            for (int index = 0; index < Pages(editor).count(); ++index) {
                captions.push_back(Plain(Pages(editor).tabText(index)));
            }
            QCOMPARE(captions, (std::vector<std::string>{"General", "Weather", "Comments", "Picture"}));
        });
    }

    void frame_isOnItsPageWithItsCaption_data()
    {
        QTest::addColumn<QString>("frame");
        QTest::addColumn<int>("page");
        QTest::addColumn<QString>("caption");
        const auto row = [](const char* frame, int page, const char* caption) {
            QTest::newRow(frame) << frame << page << caption;
        };
        row("frWhen", 0, "When You Fished:");
        row("frTides", 0, "The Tide When You:");
        row("frTidesStart", 0, "Started:");
        row("frTidesFinish", 0, "Finished:");
        row("frTideTimes", 0, "Tide Times:");
        row("frTideHeights", 0, "Tide Heights:");
        row("frSunMoon", 0, "* Sun And Moon Data:");
        row("frPeakTimes", 0, "* Peak Activity Times:");
        row("frPrediction", 0, "* Prediction Was:");
        row("frAction", 0, "Fishing Action Was:");
        row("frWeather", 1, "The Weather Was:");
        row("frWater", 1, "The Water Was:");
        row("frWindStrength", 1, "Wind Strength:");
        row("frWindDir", 1, "Wind Direction:");
        row("frTemps", 1, "Temperatures:");
        row("frPressure", 1, "Air Pressure:");
        row("frObbos", 1, "Other Observations (hatches, baitfish, etc):");
        row("frTarget", 2, "Species You Targetted:");
        row("frCaught", 2, "Species You Encountered/Caught:");
        row("frBait", 2, "Bait/Lure/Fly You Used:");
        row("frMethod", 2, "Methods You Used:");
    }

    void frame_isOnItsPageWithItsCaption()
    {
        QFETCH(QString, frame);
        QFETCH(int, page);
        QFETCH(QString, caption);
        InspectEditor([&](QDialog& editor) {
            const auto& box = Find<QGroupBox>(editor, frame.toLatin1());
            QCOMPARE(PageOf(editor, box), page);
            QCOMPARE(ToUtf8(box.title()), caption.toStdString());
        });
    }

    void control_isInItsFrame_data()
    {
        QTest::addColumn<QString>("frame");
        QTest::addColumn<QString>("control");
        const auto rows = [](const char* frame, std::initializer_list<const char*> controls) {
            for (const char* control : controls) {
                QTest::newRow(control) << frame << control;
            }
        };
        rows("frWhen", {"txtStart", "txtEnd", "txtTStart", "txtTEnd", "lblStPlus", "lblStMinus", "lblEndPlus",
                        "lblEndMinus"});
        rows("frTidesStart", {"optTideSt_0", "optTideSt_3"});
        rows("frTidesFinish", {"optTideEnd_0", "optTideEnd_3"});
        rows("frTides", {"frTidesStart", "frTidesFinish"});
        rows("frTideTimes", {"txtTideLow", "txtTideHigh"});
        rows("frTideHeights", {"txtTideLowHt", "txtTideHighHt"});
        rows("frSunMoon", {"txtSunRise", "txtSunSet", "txtMoonRise", "txtMoonSet", "txtMoon", "chkMoon"});
        rows("frPeakTimes", {"txtMajor1", "txtMajor2", "txtMinor1", "txtMinor2"});
        rows("frPrediction", {"optPrediction_0", "optPrediction_3"});
        rows("frAction", {"optAction_0", "optAction_3"});
        rows("frWeather", {"optWeather_0", "optWeather_6"});
        rows("frWater", {"optClarity_0", "optClarity_2"});
        rows("frWindStrength", {"optWindStr_0", "optWindStr_3"});
        rows("frWindDir", {"optWindDir_0", "optWindDir_7"});
        rows("frTemps", {"txtAirTemp", "txtWaterTemp"});
        rows("frPressure", {"txtPressure", "optPressure_0", "optPressure_1"});
        rows("frObbos", {"txtObbos"});
        rows("frTarget", {"txtTarget"});
        rows("frCaught", {"txtCaught"});
        rows("frBait", {"txtBait"});
        rows("frMethod", {"txtMethods"});
        rows("pageGeneral", {"cboLocation"});
        rows("pageComments", {"lstList"});
        rows("pagePicture", {"frPic", "vscPic", "hscPic", "sldZoom", "cmdLoad", "cmdRemove"});
    }

    void control_isInItsFrame()
    {
        QFETCH(QString, frame);
        QFETCH(QString, control);
        InspectEditor([&](QDialog& editor) {
            QVERIFY(Find<QWidget>(editor, frame.toLatin1())
                        .isAncestorOf(&Find<QWidget>(editor, control.toLatin1())));
        });
    }

    void columns_ofTheGeneralPage_endLevel()
    {
        InspectEditor([](QDialog& editor) {
            const auto bottom = [&](const char* frame) {
                return Find<QWidget>(editor, frame).geometry().bottom();
            };
            QCOMPARE(bottom("frTides"), bottom("frAction"));
            QCOMPARE(bottom("frTideHeights"), bottom("frAction"));
            QCOMPARE(bottom("frSunMoon"), bottom("frPeakTimes"));
            QCOMPARE(bottom("frSunMoon"), bottom("frPrediction"));
        });
    }

    void generalPage_usesTheRoomOfALargerWindow()
    {
        InspectEditor([](QDialog& editor) {
            const auto& frame = Find<QWidget>(editor, "frSunMoon");
            const QRect before = frame.geometry();
            constexpr QSize larger(200, 100);
            editor.resize(editor.size() + larger);
            QVERIFY(frame.y() > before.y());
            QVERIFY(frame.width() > before.width());
            const QWidget& page = Find<QWidget>(editor, "pageGeneral");
            QCOMPARE(frame.geometry().bottom(),
                     page.contentsRect().bottom() - page.layout()->contentsMargins().bottom());
        });
    }

    void options_haveTheirCaptionsByIndex_data()
    {
        QTest::addColumn<QString>("group");
        QTest::addColumn<QString>("captions");
        const auto row = [](const char* group, const char* captions) {
            QTest::newRow(group) << group << captions;
        };
        row("optTideSt", "Top,Run Out,Bottom,Run In");
        row("optTideEnd", "Top,Run Out,Bottom,Run In");
        row("optWindDir", "N,NE,E,SE,S,SW,W,NW");
        row("optWindStr", "Calm,Light,Moderate,Strong");
        row("optWeather", "Stormy,Rainy,Showery,Overcast,Cloudy,Few Clouds,Clear");
        row("optClarity", "Clear,Cloudy,Muddy");
        row("optAction", "Slow,Fair,Good,Hot!");
        row("optPrediction", "Poor,Fair,Good,Best");
        row("optPressure", "Rising,Falling");
    }

    void options_haveTheirCaptionsByIndex()
    {
        QFETCH(QString, group);
        QFETCH(QString, captions);
        InspectEditor([&](QDialog& editor) {
            QStringList found;
            for (int index = 0;; ++index) {
                const auto* button =
                    editor.findChild<QAbstractButton*>(group + QLatin1Char('_') + QString::number(index));
                if (button == nullptr) {
                    break;
                }
                found << FromUtf8(Plain(button->text()));
            }
            QCOMPARE(found.join(QLatin1Char(',')), captions);
        });
    }

    void label_hasItsText_data()
    {
        QTest::addColumn<QString>("frame");
        QTest::addColumn<QString>("text");
        const auto row = [](const char* frame, const char* text) {
            QTest::addRow("%s in %s", text, frame) << frame << text;
        };
        row("pageGeneral", "Location:");
        row("frTideTimes", "Low Tide At:");
        row("frTideTimes", "High Tide At:");
        row("frTideHeights", "Low:");
        row("frTideHeights", "High:");
        row("frSunMoon", "Moon Phase (%Lit)");
        row("frPeakTimes", "Major:");
        row("frPeakTimes", "Minor:");
        row("frTemps", "Air:");
        row("frTemps", "Water:");
    }

    void label_hasItsText()
    {
        QFETCH(QString, frame);
        QFETCH(QString, text);
        InspectEditor([&](QDialog& editor) {
            const auto labels = Find<QWidget>(editor, frame.toLatin1()).findChildren<QLabel*>();
            QCOMPARE(std::count_if(
                         labels.begin(), labels.end(),
                         [&](const QLabel* label) { return Plain(label->text()) == text.toStdString(); }),
                     1);
        });
    }

    void button_hasItsCaption_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("caption");
        QTest::newRow("save") << "cmdOK"
                              << "Save";
        QTest::newRow("close") << "cmdCancel"
                               << "Close";
        QTest::newRow("load") << "cmdLoad"
                              << "Load a picture/map";
        QTest::newRow("remove") << "cmdRemove"
                                << "Remove";
        QTest::newRow("moon") << "chkMoon"
                              << "Waxing";
    }

    void button_hasItsCaption()
    {
        QFETCH(QString, button);
        QFETCH(QString, caption);
        InspectEditor([&](QDialog& editor) {
            QCOMPARE(Plain(Find<QAbstractButton>(editor, button.toLatin1()).text()), caption.toStdString());
        });
    }

    void toolTip_isShown_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<QString>("toolTip");
        const auto rows = [](const char* toolTip, std::initializer_list<const char*> controls) {
            for (const char* control : controls) {
                QTest::newRow(control) << control << toolTip;
            }
        };
        rows("The data in this frame is calculated for you", {"frSunMoon", "frPeakTimes", "frPrediction"});
        rows("Date in yyyy-mm-dd format", {"txtStart", "txtEnd"});
        rows("Time in hh:mm format",
             {"txtTStart", "txtTEnd", "txtTideHigh", "txtTideLow", "txtSunRise", "txtSunSet", "txtMoonRise",
              "txtMoonSet", "txtMajor1", "txtMajor2", "txtMinor1", "txtMinor2"});
        rows("Increase start date", {"lblStPlus"});
        rows("Decrease start date", {"lblStMinus"});
        rows("Increase end date", {"lblEndPlus"});
        rows("Decrease end date", {"lblEndMinus"});
    }

    void toolTip_isShown()
    {
        QFETCH(QString, control);
        QFETCH(QString, toolTip);
        InspectEditor(
            [&](QDialog& editor) { QCOMPARE(Find<QWidget>(editor, control.toLatin1()).toolTip(), toolTip); });
    }

    void note_isVisibleOnTheFirstPageOnly()
    {
        InspectEditor([](QDialog& editor) {
            const auto& note = Find<QLabel>(editor, "lblNote");
            QCOMPARE(ToUtf8(note.text()),
                     "Data in frames with * is calculated for you - but you can change it.");
            QVERIFY(note.isVisible());
            for (const int page : {1, 2, 3}) {
                ClickPage(editor, page);
                QCOMPARE(Pages(editor).currentIndex(), page);
                QVERIFY(!note.isVisible());
            }
            ClickPage(editor, 0);
            QVERIFY(note.isVisible());
        });
    }

    void page_clicked_focusesItsFirstControl_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<QString>("control");
        QTest::newRow("General") << 0 << "txtStart";
        QTest::newRow("Weather") << 1 << "optWeather_0";
        QTest::newRow("Comments") << 2 << "txtTarget";
        QTest::newRow("Picture") << 3 << "cmdCancel";
    }

    void page_clicked_focusesItsFirstControl()
    {
        QFETCH(int, page);
        QFETCH(QString, control);
        InspectEditor([&](QDialog& editor) {
            ClickPage(editor, page == 0 ? 1 : 0);
            ClickPage(editor, page);
            QCOMPARE(Pages(editor).currentIndex(), page);
            QCOMPARE(Focused(editor), control.toStdString());
            QCOMPARE(Chosen(editor, "optWeather"), 6); // focus alone chooses nothing
        });
    }

    void page_byCtrlTab_focusesItsFirstControl()
    {
        InspectEditor([](QDialog& editor) {
            Press(editor, Qt::Key_Tab, Qt::ControlModifier);
            QCOMPARE(Pages(editor).currentIndex(), 1);
            QCOMPARE(Focused(editor), "optWeather_0");
        });
    }

    void tab_cyclesThroughTheVisiblePageOnly_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<QStringList>("stops");
        const auto row = [](const char* name, int page, const char* stops) {
            QTest::newRow(name) << page << QString::fromLatin1(stops).split(QLatin1Char(' '));
        };
        // a group has one tab stop, its chosen button
        row("General", 0,
            "txtStart txtTStart txtEnd txtTEnd cboLocation optTideSt optTideEnd txtTideLow txtTideHigh "
            "txtTideLowHt txtTideHighHt optAction txtSunRise txtSunSet txtMoonRise txtMoonSet txtMoon "
            "chkMoon "
            "txtMajor1 txtMajor2 txtMinor1 txtMinor2 optPrediction");
        row("Weather", 1,
            "optWeather optWindDir optWindStr optClarity txtAirTemp txtWaterTemp txtPressure optPressure "
            "txtObbos");
        row("Comments", 2, "txtTarget txtCaught txtBait txtMethods");
        // the only enabled control without a picture
        row("Picture", 3, "cmdLoad");
    }

    void tab_cyclesThroughTheVisiblePageOnly()
    {
        QFETCH(int, page);
        QFETCH(QStringList, stops);
        InspectEditor([&](QDialog& editor) {
            ClickPage(editor, page == 0 ? 1 : 0);
            ClickPage(editor, page);
            QStringList found;
            const std::string first = GroupName(Focused(editor)); // a group is entered at its chosen button
            do {
                found << FromUtf8(GroupName(Focused(editor)));
                Press(editor, Qt::Key_Tab);
            } while (GroupName(Focused(editor)) != first && found.size() < 60);
            // controls outside the page: its tab and the buttons of the window
            for (const char* other : {"qt_tabwidget_tabbar", "cmdOK", "cmdCancel"}) {
                found.removeAll(QLatin1String(other));
            }
            found.sort();
            stops.sort();
            QCOMPARE(found, stops);
        });
    }

    void secondEntry_opensOnTheFirstPage()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        for (int time = 0; time < 2; ++time) {
            Edit(program, key, [](QDialog& editor) {
                QCOMPARE(Pages(editor).currentIndex(), 0);
                QVERIFY(Find<QWidget>(editor, "lblNote").isVisible());
                ClickPage(editor, 2);
                Close(editor);
            });
        }
    }
};

TEST_CLASS(tst_fEntryPages)
#include "tst_fEntryPages.moc"
