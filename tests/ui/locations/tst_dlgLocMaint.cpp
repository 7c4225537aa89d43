#include "LocationTest.h"
#include "support/Pictures.h"
#include "support/TestClass.h"

#include <QClipboard>
#include <QGroupBox>
#include <QLabel>

#include <map>

using namespace Tarno;

// The location dialog: its texts, and the values that it shows and stores.

class tst_dlgLocMaint : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void texts_areAsSpecified()
    {
        ProgramWithLocation program;
        EditLocation(program, 1, [](QDialog& location) {
            QCOMPARE(location.windowTitle(), QStringLiteral("Location Maintenance"));
            const std::map<const char*, const char*> labels{
                {"lblLocName", "Location:"},
                {"lblDirections", "Directions:"},
                {"lblDescription", "Description:"},
                {"lblLatt", "Latitude:"},
                {"lblLattNote",
                 "North is positive, South is negative. Enter decimal degrees, eg -33.8 = 33 deg 48 "
                 "minutes South"},
                {"lblLong", "Longitude:"},
                {"lblLongNote",
                 "East is positive, West is negative. Enter decimal degrees, eg 151.25 = 151 deg 15 "
                 "minutes East"},
                {"lblGMT", "GMT Diff:"},
                {"lblHours", "hours"}};
            for (const auto& [name, text] : labels) {
                QCOMPARE(ToUtf8(Find<QLabel>(location, name).text()), text);
            }
            const std::map<const char*, const char*> buttons{{"optAccess_0", "Land Based"},
                                                             {"optAccess_1", "Boat Only"},
                                                             {"optAccess_2", "Both"},
                                                             {"chkDST", "Use DST for this location"},
                                                             {"cmdOK", "Save"},
                                                             {"cmdCancel", "Close"},
                                                             {"cmdLoad", "Load a picture/map"}};
            for (const auto& [name, text] : buttons) {
                QCOMPARE(ToUtf8(Find<QAbstractButton>(location, name).text().remove(QLatin1Char('&'))), text);
            }
            QCOMPARE(Find<QGroupBox>(location, "frAccess").title(), QStringLiteral("This Spot Is:"));
            QCOMPARE(Find<QWidget>(location, "cmdRemove").toolTip(),
                     QStringLiteral("Remove the current image"));
            QCOMPARE(Find<QWidget>(location, "sldZoom").toolTip(), QStringLiteral("Zoom the image"));
            Close(location);
        });
    }

    void record_isShown()
    {
        ProgramWithLocation program;
        EditLocation(program, 1, [](QDialog& location) {
            QCOMPARE(LinesText(location, "txtLocName"), "Pittwater");
            QCOMPARE(LinesText(location, "txtDirections"), "Left\nthen right");
            QCOMPARE(LinesText(location, "txtDescription"), "Deep");
            QCOMPARE(Chosen(location, "optAccess"), 1);
            QCOMPARE(BoxText(location, "txtLatt"), "-33.8");
            QCOMPARE(BoxText(location, "txtLong"), "151.25");
            QCOMPARE(BoxText(location, "txtGMT"), "10");
            QVERIFY(IsChecked(location, "chkDST"));
            QCOMPARE(EnabledControls(location), QStringList{QStringLiteral("cmdLoad")});
            Close(location);
        });
    }

    void opened_showsTheFirstPageAndItsFirstBox()
    {
        ProgramWithLocation program;
        EditLocation(program, 1, [](QDialog& location) {
            QCOMPARE(Tabs(location).currentIndex(), 0);
            QCOMPARE(Focused(location), "txtLocName");
            QVERIFY(Tabs(location).widget(0)->isAncestorOf(&Find<QWidget>(location, "chkDST")));
            QVERIFY(Tabs(location).widget(1)->isAncestorOf(&Find<QWidget>(location, "picLoc")));
            Close(location);
        });
    }

    void newLocation_isEmpty_data()
    {
        QTest::addColumn<bool>("blankHasValues");
        QTest::newRow("blank record as it ships") << false;
        QTest::newRow("blank record with values") << true;
    }

    void newLocation_isEmpty()
    {
        QFETCH(bool, blankHasValues);
        ProgramWithLocation program;
        if (blankHasValues) {
            program.folder.Write("locationblank.xml",
                                 "<data><location><LocNo>0</LocNo><LocName>Somewhere</LocName>"
                                 "<LocDirections>Left</LocDirections><LocDescription>Deep</LocDescription>"
                                 "<LocAccess>1</LocAccess><LocLatt>-33.8</LocLatt><LocLong>151.25</LocLong>"
                                 "<LocGMT>10</LocGMT><LocDST>1</LocDST><LocPicture/></location></data>");
            program.Start();
        }
        EditLocation(program, 0, [&](QDialog& location) {
            for (const char* box : {"txtLocName", "txtDirections", "txtDescription"}) {
                QCOMPARE(LinesText(location, box), "");
            }
            for (const char* box : {"txtLatt", "txtLong", "txtGMT"}) {
                QCOMPARE(BoxText(location, box), "");
            }
            QCOMPARE(Chosen(location, "optAccess"), -1);
            QVERIFY(!IsChecked(location, "chkDST"));
            QVERIFY(!IsSaveEnabled(location));
            if (blankHasValues) {
                location.done(QDialog::Rejected); // "Close" would ask about the template values
            } else {
                Close(location);
            }
        });
        QCOMPARE(program.Stored("location.xml").size(), 1U);
    }

    void value_edited_isStored_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("stored");
        QTest::newRow("name") << "txtLocName"
                              << "Palm Beach" << int(LocationField::LocName) << "Palm Beach";
        QTest::newRow("directions") << "txtDirections"
                                    << "North" << int(LocationField::LocDirections) << "North";
        QTest::newRow("description") << "txtDescription"
                                     << "Rocks" << int(LocationField::LocDescription) << "Rocks";
        QTest::newRow("access") << "optAccess_2"
                                << "" << int(LocationField::LocAccess) << "2";
        QTest::newRow("access, first") << "optAccess_0"
                                       << "" << int(LocationField::LocAccess) << "0";
        QTest::newRow("latitude") << "txtLatt"
                                  << "-12.5" << int(LocationField::LocLatt) << "-12.5";
        QTest::newRow("longitude") << "txtLong"
                                   << "9" << int(LocationField::LocLong) << "9";
        QTest::newRow("hours") << "txtGMT"
                               << "-9.5" << int(LocationField::LocGMT) << "-9.5";
        QTest::newRow("emptied") << "txtGMT"
                                 << "" << int(LocationField::LocGMT) << "";
        QTest::newRow("daylight saving") << "chkDST"
                                         << "" << int(LocationField::LocDST) << "0";
    }

    void value_edited_isStored()
    {
        QFETCH(QString, control);
        QFETCH(QString, typed);
        QFETCH(int, position);
        QFETCH(QString, stored);
        ProgramWithLocation program;
        std::vector<std::string> expected = StoredLocation(program, 1);
        expected[std::size_t(position)] = ToUtf8(stored);
        EditLocation(program, 1, [&](QDialog& location) {
            if (control.startsWith(QLatin1String("txt"))) {
                Retype(location, control.toLatin1(), typed.toLatin1());
                QVERIFY(!IsSaveEnabled(location));
                Press(location, Qt::Key_Tab);
            } else {
                ClickMark(location, control.toLatin1());
            }
            QVERIFY(IsSaveEnabled(location));
            Save(location);
            QCOMPARE(StoredLocation(program, 1), expected);
            Close(location);
        });
    }

    void everyValue_ofANewLocation_isStored()
    {
        ProgramWithLocation program;
        program.folder.Write("map.png", Pictures::Png(40, 30));
        ExpectChosenPicture(program, program.folder.PathOf("map.png"));
        EditLocation(program, 0, [](QDialog& location) {
            Retype(location, "txtLocName", "Name");
            Retype(location, "txtDirections", "Directions");
            Retype(location, "txtDescription", "Description");
            ClickMark(location, "optAccess_2");
            Retype(location, "txtLatt", "-1.5");
            Retype(location, "txtLong", "2.5");
            Retype(location, "txtGMT", "3.5");
            ClickMark(location, "chkDST");
            ClickTab(location, 1);
            Click(location, "cmdLoad");
            SaveAndClose(location);
        });
        QCOMPARE(StoredLocation(program, 2),
                 (std::vector<std::string>{"2", "Name", "Directions", "Description", "2", "-1.5", "2.5",
                                           "3.5", "1", program.folder.PathOf("map.png")}));
    }

    void linesOfText_areStoredEncoded()
    {
        ProgramWithLocation program;
        EditLocation(program, 1, [](QDialog& location) {
            for (const char* box : {"txtLocName", "txtDirections", "txtDescription"}) {
                Retype(location, box, "First");
                Press(location, Qt::Key_Return);
                Press(location, Qt::Key_Return);
                Type(location, "Last & <least>");
            }
            SaveAndClose(location);
        });
        for (const auto position :
             {LocationField::LocName, LocationField::LocDirections, LocationField::LocDescription}) {
            QCOMPARE(StoredLocation(program, 1).at(position), "First~CL~~CL~Last & <least>");
        }
        EditLocation(program, 1, [](QDialog& location) {
            for (const char* box : {"txtLocName", "txtDirections", "txtDescription"}) {
                QCOMPARE(LinesText(location, box), "First\n\nLast & <least>");
            }
            Close(location); // asks no question
        });
    }

    void range_exceeded_isNoted_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("within");
        QTest::addColumn<QString>("beyond");
        QTest::addColumn<QString>("note");
        QTest::newRow("latitude") << "txtLatt"
                                  << "-90"
                                  << "90.1"
                                  << "Latitude is between -90 and 90";
        QTest::newRow("longitude") << "txtLong"
                                   << "180"
                                   << "-180.5"
                                   << "Longitude is between -180 and 180";
        QTest::newRow("hours") << "txtGMT"
                               << "-14"
                               << "14.5"
                               << "GMT Diff is between -14 and 14 hours";
    }

    void range_exceeded_isNoted()
    {
        QFETCH(QString, box);
        QFETCH(QString, within);
        QFETCH(QString, beyond);
        QFETCH(QString, note);
        ProgramWithLocation program;
        EditLocation(program, 1, [&](QDialog& location) {
            const auto& shown = Find<QLabel>(location, "lblRange");
            const auto& edited = Find<QWidget>(location, box.toLatin1());
            for (const QString& text : {within, QStringLiteral("--"), QString()}) {
                Retype(location, box.toLatin1(), text.toLatin1());
                QVERIFY(!shown.isVisible());
            }
            Retype(location, box.toLatin1(), beyond.toLatin1());
            QCOMPARE(shown.text(), note);
            QVERIFY(shown.isVisible());
            QCOMPARE(Find<QWidget>(location, "frPosition").accessibleDescription(), note);
            QVERIFY(edited.palette().color(QPalette::Base) == location.palette().color(QPalette::Base));
            SaveAndClose(location);
        });
        EditLocation(program, 1, [&](QDialog& location) { // was stored, and is noted when it is shown again
            QCOMPARE(BoxText(location, box.toLatin1()), ToUtf8(beyond));
            QVERIFY(Find<QLabel>(location, "lblRange").isVisible());
            Close(location);
        });
    }

    void keyFilter_acceptsNumbersAndFourMoreCharacters_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("kept");
        QTest::newRow("letter") << "a"
                                << "";
        QTest::newRow("number") << "-33.8"
                                << "-33.8";
        QTest::newRow("every digit") << "0123456789"
                                     << "0123456789";
        QTest::newRow("percent") << "%"
                                 << "%";
        QTest::newRow("the codes 35 to 39") << "#$%&'"
                                            << "#$%'";
        QTest::newRow("their neighbours") << "\"()!"
                                          << "";
        QTest::newRow("plus, comma, blank, slash, exponent") << "+1, 2/3e4"
                                                             << "1234";
        QTest::newRow("within letters") << "1a5b1"
                                        << "151";
    }

    void keyFilter_acceptsNumbersAndFourMoreCharacters()
    {
        QFETCH(QString, typed);
        QFETCH(QString, kept);
        ProgramWithLocation program;
        EditLocation(program, 1, [&](QDialog& location) {
            for (const char* box : {"txtLatt", "txtLong", "txtGMT"}) {
                Retype(location, box, typed.toLatin1());
                QCOMPARE(BoxText(location, box), ToUtf8(kept));
            }
            SaveAndClose(location);
        });
        QCOMPARE(StoredLocation(program, 1).at(LocationField::LocGMT), ToUtf8(kept));
    }

    void keyFilter_filtersWhatIsPasted()
    {
        ProgramWithLocation program;
        QApplication::clipboard()->setText(QStringLiteral(u"33\u00B0 48.5' S\n"));
        EditLocation(program, 1, [](QDialog& location) {
            Retype(location, "txtLatt", "-");
            Press(location, Qt::Key_V, Qt::ControlModifier);
            QCOMPARE(BoxText(location, "txtLatt"), "-3348.5'");
            Press(location, Qt::Key_Backspace);
            QCOMPARE(BoxText(location, "txtLatt"), "-3348.5");
            QApplication::clipboard()->setText(QStringLiteral("south"));
            Press(location, Qt::Key_V, Qt::ControlModifier);
            QCOMPARE(BoxText(location, "txtLatt"), "-3348.5");
            SaveAndClose(location);
        });
        QCOMPARE(StoredLocation(program, 1).at(LocationField::LocLatt), "-3348.5");
    }

    void keyFilter_doesNotChangeStoredTexts()
    {
        ProgramWithLocation program({{LocationField::LocLatt, "33 deg S"}});
        EditLocation(program, 1, [](QDialog& location) {
            QCOMPARE(BoxText(location, "txtLatt"), "33 deg S");
            Click(location, "txtLatt");
            Press(location, Qt::Key_End);
            Type(location, "x5");
            QCOMPARE(BoxText(location, "txtLatt"), "33 deg S5");
            Press(location, Qt::Key_Backspace);
            Press(location, Qt::Key_Tab);
            QVERIFY(!IsSaveEnabled(location));
            Close(location);
        });
    }

    void texts_notCoordinates_areStoredAsTyped()
    {
        ProgramWithLocation program;
        EditLocation(program, 1, [](QDialog& location) {
            Retype(location, "txtLatt", "--..");
            Retype(location, "txtLong", "999999.9");
            Retype(location, "txtGMT", "#%'");
            SaveAndClose(location);
        });
        const std::vector<std::string> stored = StoredLocation(program, 1);
        QCOMPARE(stored.at(LocationField::LocLatt), "--..");
        QCOMPARE(stored.at(LocationField::LocLong), "999999.9");
        QCOMPARE(stored.at(LocationField::LocGMT), "#%'");
    }

    void access_invalidCode_choosesNothingAndIsKept_data()
    {
        QTest::addColumn<QString>("code");
        QTest::newRow("not set") << "";
        QTest::newRow("after the last") << "3";
        QTest::newRow("far out of range") << "70000";
        QTest::newRow("negative") << "-1";
        QTest::newRow("word") << "Both";
    }

    void access_invalidCode_choosesNothingAndIsKept()
    {
        QFETCH(QString, code);
        ProgramWithLocation program({{LocationField::LocAccess, ToUtf8(code)}});
        EditLocation(program, 1, [](QDialog& location) {
            QCOMPARE(Chosen(location, "optAccess"), -1);
            Retype(location, "txtDescription", "Sand");
            SaveAndClose(location);
        });
        QCOMPARE(StoredLocation(program, 1).at(LocationField::LocDescription), "Sand");
        QCOMPARE(StoredLocation(program, 1).at(LocationField::LocAccess), ToUtf8(code));
        EditLocation(program, 1, [](QDialog& location) {
            ClickMark(location, "optAccess_0");
            SaveAndClose(location);
        });
        QCOMPARE(StoredLocation(program, 1).at(LocationField::LocAccess), "0");
    }

    void access_everyCode_choosesItsButton()
    {
        for (int code = 0; code < 3; ++code) {
            ProgramWithLocation program({{LocationField::LocAccess, std::to_string(code)}});
            EditLocation(program, 1, [&](QDialog& location) {
                QCOMPARE(Chosen(location, "optAccess"), code);
                Close(location);
            });
        }
    }

    void access_focusAlone_choosesNothing()
    {
        ProgramWithLocation program({{LocationField::LocAccess, ""}});
        EditLocation(program, 1, [](QDialog& location) {
            Click(location, "txtDirections");
            for (int step = 0; step < 8; ++step) {
                Press(location, Qt::Key_Tab);
            }
            QCOMPARE(Chosen(location, "optAccess"), -1);
            QVERIFY(!IsSaveEnabled(location));
            Close(location);
        });
    }

    void dst_isTickedForCodeOneOnly_data()
    {
        QTest::addColumn<QString>("flag");
        QTest::addColumn<bool>("ticked");
        QTest::newRow("1") << "1" << true;
        QTest::newRow("0") << "0" << false;
        QTest::newRow("empty") << "" << false;
        QTest::newRow("word") << "yes" << false;
    }

    void dst_isTickedForCodeOneOnly()
    {
        QFETCH(QString, flag);
        QFETCH(bool, ticked);
        ProgramWithLocation program({{LocationField::LocDST, ToUtf8(flag)}});
        EditLocation(program, 1, [&](QDialog& location) {
            QCOMPARE(IsChecked(location, "chkDST"), ticked);
            Retype(location, "txtDescription", "Sand");
            SaveAndClose(location);
        });
        QCOMPARE(StoredLocation(program, 1).at(LocationField::LocDST), ToUtf8(flag));
    }

    void dst_isStoredAsZeroOrOne()
    {
        ProgramWithLocation program({{LocationField::LocDST, ""}});
        EditLocation(program, 1, [&](QDialog& location) {
            ClickMark(location, "chkDST");
            Save(location);
            QCOMPARE(StoredLocation(program, 1).at(LocationField::LocDST), "1");
            ClickMark(location, "chkDST");
            Save(location);
            QCOMPARE(StoredLocation(program, 1).at(LocationField::LocDST), "0");
            Close(location);
        });
    }
};

TEST_CLASS(tst_dlgLocMaint)
#include "tst_dlgLocMaint.moc"
