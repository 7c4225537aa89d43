#include "LocationTest.h"
#include "support/TestClass.h"
#include "support/UnsavedFiles.h"

using namespace Tarno;

// Saving, closing and deleting in the location dialog, and records that it cannot show.

class tst_dlgLocMaintSave : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void newLocation_getsTheNextKey()
    {
        TestProgram program;
        program.Start();
        for (const char* name : {"One", "Two", "Three"}) {
            program.AddLocation(name);
        }
        program.sql.LocationDelete(2);
        EditLocation(program, 0, [](QDialog& location) {
            Type(location, "Four");
            SaveAndClose(location);
        });
        QCOMPARE(StoredLocation(program, 4).at(LocationField::LocName), "Four");
        QCOMPARE(program.Stored("location.xml").size(), 3U);
    }

    void newLocation_savedTwice_isStoredOnce()
    {
        ProgramWithLocation program;
        EditLocation(program, 0, [](QDialog& location) {
            Type(location, "Palm");
            Save(location);
            Retype(location, "txtDescription", "Sand");
            SaveAndClose(location);
        });
        QCOMPARE(program.Stored("location.xml").size(), 2U);
        QCOMPARE(StoredLocation(program, 2).at(LocationField::LocDescription), "Sand");
    }

    void save_isEnabledByAChangeOnly()
    {
        ProgramWithLocation program;
        const std::size_t stepsBefore = program.operations.Steps().size();
        EditLocation(program, 1, [](QDialog& location) {
            QVERIFY(!IsSaveEnabled(location));
            for (const char* box :
                 {"txtLocName", "txtDescription", "txtDirections", "txtLatt", "txtLong", "txtGMT"}) {
                Click(location, box);
                QVERIFY(!IsSaveEnabled(location));
            }
            Retype(location, "txtGMT", "10"); // the original text
            Press(location, Qt::Key_Tab);
            QVERIFY(!IsSaveEnabled(location));
            ClickMark(location, "optAccess_1"); // already chosen
            QVERIFY(!IsSaveEnabled(location));
            Save(location);
            Close(location);
        });
        QCOMPARE(program.operations.Steps().size(), stepsBefore);
    }

    void save_leavesTheDialogOpen()
    {
        ProgramWithLocation program;
        EditLocation(program, 1, [&](QDialog& location) {
            Retype(location, "txtLocName", "Palm Beach");
            Click(location, "txtDescription");
            Save(location);
            QVERIFY(location.isVisible());
            QVERIFY(!IsSaveEnabled(location));
            QCOMPARE(StoredLocation(program, 1).at(LocationField::LocName), "Palm Beach");
            Close(location); // asks no question
        });
    }

    void save_disabled_storesTheLastInput_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<int>("position");
        QTest::addColumn<bool>("byKey");
        QTest::newRow("box of one line, click") << "txtGMT" << int(LocationField::LocGMT) << false;
        QTest::newRow("box of one line, Alt+S") << "txtGMT" << int(LocationField::LocGMT) << true;
        QTest::newRow("box of several lines, click")
            << "txtDirections" << int(LocationField::LocDirections) << false;
        QTest::newRow("box of several lines, Alt+S")
            << "txtDirections" << int(LocationField::LocDirections) << true;
    }

    void save_disabled_storesTheLastInput()
    {
        QFETCH(QString, box);
        QFETCH(int, position);
        QFETCH(bool, byKey);
        ProgramWithLocation program;
        EditLocation(program, 1, [&](QDialog& location) {
            Retype(location, box.toLatin1(), "8.5");
            QVERIFY(!IsSaveEnabled(location));
            if (byKey) {
                Press(location, Qt::Key_S, Qt::AltModifier);
            } else {
                Save(location);
            }
            QTRY_COMPARE_WITH_TIMEOUT(StoredLocation(program, 1).at(std::size_t(position)), "8.5",
                                      awaitTimeout);
            QVERIFY(!IsSaveEnabled(location));
            Close(location);
        });
    }

    void save_failed_keepsTheChange()
    {
        ProgramWithLocation program;
        const std::string before = program.folder.Read("location.xml");
        EditLocation(program, 1, [&](QDialog& location) {
            Retype(location, "txtGMT", "8");
            program.operations.Fail("create", ErrorNumber::DiskFull);
            program.reports.Expect("cSQL", "LocationUpdate", ErrorNumber::DiskFull);
            Save(location);
            QVERIFY(location.isVisible());
            QVERIFY(IsSaveEnabled(location));
            QCOMPARE(BoxText(location, "txtGMT"), "8");
            QCOMPARE(program.folder.Read("location.xml"), before);
            Save(location);
            QVERIFY(!IsSaveEnabled(location));
            QCOMPARE(StoredLocation(program, 1).at(LocationField::LocGMT), "8");
            Close(location);
        });
    }

    void close_unchanged_asksNothing_data()
    {
        QTest::addColumn<QString>("by");
        for (const char* by : {"button", "Esc", "close box"}) {
            QTest::newRow(by) << by;
        }
    }

    void close_unchanged_asksNothing()
    {
        QFETCH(QString, by);
        ProgramWithLocation program;
        EditLocation(program, 1, [&](QDialog& location) {
            Click(location, "txtGMT");
            if (by == QLatin1String("button")) {
                Close(location);
            } else if (by == QLatin1String("Esc")) {
                Press(location, Qt::Key_Escape);
            } else {
                location.close();
            }
            QVERIFY(!location.isVisible());
        });
    }

    void close_changed_asks_data()
    {
        QTest::addColumn<QString>("by");
        QTest::addColumn<QString>("box");
        QTest::addColumn<bool>("yes");
        for (const char* by : {"button", "Esc", "close box"}) {
            for (const char* box : {"txtGMT", "txtLocName"}) {
                for (const bool yes : {true, false}) {
                    QTest::addRow("%s, %s, %s", by, box, yes ? "Yes" : "No") << by << box << yes;
                }
            }
        }
    }

    void close_changed_asks()
    {
        QFETCH(QString, by);
        QFETCH(QString, box);
        QFETCH(bool, yes);
        ProgramWithLocation program;
        const std::string before = program.folder.Read("location.xml");
        program.messages.Expect(saveQuestion, yes ? Button::Yes : Button::No);
        EditLocation(program, 1, [&](QDialog& location) {
            Retype(location, box.toLatin1(), "8");
            if (by == QLatin1String("button")) {
                Close(location);
            } else if (by == QLatin1String("Esc")) {
                Press(location, Qt::Key_Escape);
            } else {
                location.close();
            }
            QVERIFY(!location.isVisible());
        });
        const auto position = box == QLatin1String("txtGMT") ? LocationField::LocGMT : LocationField::LocName;
        QCOMPARE(StoredLocation(program, 1).at(position) == "8", yes);
        QCOMPARE(program.folder.Read("location.xml") == before, !yes);
    }

    void close_yesButNotSaved_closesAndKeepsTheChangeForTheNextSave()
    {
        ProgramWithLocation program;
        program.messages.Expect(saveQuestion, Button::Yes);
        EditLocation(program, 1, [&](QDialog& location) {
            Retype(location, "txtGMT", "8");
            program.operations.Fail("create", ErrorNumber::DiskFull);
            program.reports.Expect("cSQL", "LocationUpdate", ErrorNumber::DiskFull);
            Close(location);
            QVERIFY(!location.isVisible());
        });
        QCOMPARE(StoredLocation(program, 1).at(LocationField::LocGMT), "10");
        QCOMPARE(UnsavedFiles(program.sql), std::vector<std::string>{"location.xml"});
        program.AddLocation("Zeehan");
        QCOMPARE(StoredLocation(program, 1).at(LocationField::LocGMT), "8");
    }

    void deleteMode_asksAndIsNeverShown_data()
    {
        QTest::addColumn<int>("answer");
        QTest::newRow("Yes") << int(Button::Yes);
        QTest::newRow("No") << int(Button::No);
        QTest::newRow("Cancel") << int(Button::Cancel);
    }

    void deleteMode_asksAndIsNeverShown()
    {
        QFETCH(int, answer);
        ProgramWithLocation program;
        program.AddLocation("Zeehan");
        const std::string before = program.folder.Read("location.xml");
        program.messages.Expect(deleteLocationQuestion, static_cast<Button>(answer));
        WithoutWindow([&] { dlgLocMaint(program.program, nullptr).SetData(1, true); });
        const bool yes = answer == int(Button::Yes);
        QCOMPARE(program.Stored("location.xml").size(), yes ? 1U : 2U);
        QCOMPARE(StoredLocation(program, 1).empty(), yes);
        QCOMPARE(program.folder.Read("location.xml") == before, !yes);
    }

    void unknownLocation_isReported_data()
    {
        QTest::addColumn<bool>("toDelete");
        QTest::newRow("to edit") << false;
        QTest::newRow("to delete") << true;
    }

    void unknownLocation_isReported()
    {
        QFETCH(bool, toDelete);
        ProgramWithLocation program;
        program.reports.Expect("cSQL", "LocationGet", ErrorNumber::ObjectNotSet);
        WithoutWindow([&] { dlgLocMaint(program.program, nullptr).SetData(7, toDelete); });
    }

    void recordWithFewerChildren_canBeDeletedButNotEdited()
    {
        const std::string file = "<data><location><LocNo>1</LocNo><LocName>Short</LocName></location></data>";
        TestProgram program;
        program.folder.Write("location.xml", file);
        program.Start();
        program.reports.Expect("dlgLocMaint", "SetData", ErrorNumber::ObjectNotSet);
        WithoutWindow([&] { dlgLocMaint(program.program, nullptr).SetData(1, false); });
        QCOMPARE(program.folder.Read("location.xml"), file);
        program.messages.Expect(deleteLocationQuestion, Button::Yes);
        WithoutWindow([&] { dlgLocMaint(program.program, nullptr).SetData(1, true); });
        QVERIFY(program.Stored("location.xml").empty());
    }
};

TEST_CLASS(tst_dlgLocMaintSave)
#include "tst_dlgLocMaintSave.moc"
