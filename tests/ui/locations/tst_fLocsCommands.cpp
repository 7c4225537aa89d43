#include "ListingTest.h"
#include "support/TestClass.h"

using namespace Tarno;

// The commands of the listing: adding, editing and deleting locations.

namespace
{

void DoubleClickRow(QWidget& listing, int row)
{
    QTest::mouseDClick(listing.windowHandle(), Qt::LeftButton, {}, PlaceOf(listing, row));
}

} // namespace

class tst_fLocsCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void locationToEdit_isTheSelectedOne_data()
    {
        QTest::addColumn<QString>("by");
        for (const char* by : {"button", "double click", "Enter", "F2"}) {
            QTest::newRow(by) << by;
        }
    }

    void locationToEdit_isTheSelectedOne()
    {
        QFETCH(QString, by);
        TestProgram program;
        program.Start();
        for (const char* name : {"Mandurah", "Zeehan", "Albany"}) {
            program.AddLocation(name);
        }
        ShowListing(program, [&](QDialog& listing) {
            ClickHeading(listing, 0);
            ClickRow(listing, 2); // Zeehan
            const auto open = [&] {
                if (by == QLatin1String("button")) {
                    Click(listing, "cmdEdit");
                } else if (by == QLatin1String("double click")) {
                    DoubleClickRow(listing, 2);
                } else {
                    Press(listing, by == QLatin1String("F2") ? Qt::Key_F2 : Qt::Key_Return);
                }
            };
            WhileOpen("dlgLocMaint", open, [](QDialog& location) {
                QCOMPARE(location.objectName(), QStringLiteral("dlgLocMaint"));
                QCOMPARE(LinesText(location, "txtLocName"), "Zeehan");
                Close(location);
            });
            QCOMPARE(LocationNames(listing), (std::vector<std::string>{"Albany", "Mandurah", "Zeehan"}));
            QCOMPARE(Arrows(listing), "0+");
            QCOMPARE(Selected(listing), "2K");
            CloseListing(listing);
        });
    }

    void doubleClick_onEmptySpace_opensNothing()
    {
        TestProgram program;
        program.Start();
        ShowListing(program, [](QDialog& listing) {
            const QWidget* view = List(listing).viewport();
            QTest::mouseDClick(listing.windowHandle(), Qt::LeftButton, {},
                               view->mapTo(&listing, view->rect().center()));
            QCOMPARE(QApplication::activeModalWidget(), &listing);
            CloseListing(listing);
        });
    }

    void newLocation_isAppended_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("button") << false;
        QTest::newRow("Ctrl+N") << true;
    }

    void newLocation_isAppended()
    {
        QFETCH(bool, byKey);
        TestProgram program;
        program.Start();
        program.AddLocation("Zeehan");
        ShowListing(program, [&](QDialog& listing) {
            const auto open = [&] {
                if (byKey) {
                    Press(listing, Qt::Key_N, Qt::ControlModifier);
                } else {
                    Click(listing, "cmdAdd");
                }
            };
            WhileOpen("dlgLocMaint", open, [](QDialog& location) {
                QCOMPARE(LinesText(location, "txtLocName"), "");
                Type(location, "Albany");
                SaveAndClose(location);
            });
            QCOMPARE(LocationNames(listing), (std::vector<std::string>{"Zeehan", "Albany"}));
            QCOMPARE(Selected(listing), "2K");
            ClickRow(listing, 0);
            WhileOpen(
                "dlgLocMaint", [&] { Click(listing, "cmdAdd"); }, [](QDialog& location) { Close(location); });
            QCOMPARE(Selected(listing), "1K");
            CloseListing(listing);
        });
        QCOMPARE(StoredLocation(program, 2).at(LocationField::LocName), "Albany");
    }

    void edited_showsTheNewName()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Mandurah");
        program.AddLocation("Albany");
        ShowListing(program, [](QDialog& listing) {
            ClickHeading(listing, 0);
            ClickRow(listing, 0);
            WhileOpen(
                "dlgLocMaint", [&] { Click(listing, "cmdEdit"); },
                [](QDialog& location) {
                    Retype(location, "txtLocName", "Zeehan");
                    SaveAndClose(location);
                });
            QCOMPARE(LocationNames(listing), (std::vector<std::string>{"Mandurah", "Zeehan"}));
            QCOMPARE(Selected(listing), "2K");
            CloseListing(listing);
        });
    }

    void nothingToEdit_opensNothing()
    {
        TestProgram program;
        program.Start();
        ShowListing(program, [](QDialog& listing) {
            for (const Qt::Key key : {Qt::Key_Return, Qt::Key_F2, Qt::Key_Delete}) {
                Press(listing, key);
                QVERIFY(listing.isVisible());
            }
            QCOMPARE(QApplication::activeModalWidget(), &listing);
            CloseListing(listing);
        });
    }

    void deletion_confirmed_removesTheRow_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("button") << false;
        QTest::newRow("Del") << true;
    }

    void deletion_confirmed_removesTheRow()
    {
        QFETCH(bool, byKey);
        TestProgram program;
        program.Start();
        for (const char* name : {"Mandurah", "Zeehan", "Albany"}) {
            program.AddLocation(name);
        }
        ShowListing(program, [&](QDialog& listing) {
            ClickRow(listing, 1);
            program.messages.Expect(deleteLocationQuestion, Button::Yes, [&] {
                QCOMPARE(LocationNames(listing).size(), 3U);
                QCOMPARE(QApplication::activeModalWidget(), &listing); // the dialog is not shown
            });
            if (byKey) {
                Press(listing, Qt::Key_Delete);
            } else {
                Click(listing, "cmdDelete");
            }
            QCOMPARE(LocationNames(listing), (std::vector<std::string>{"Mandurah", "Albany"}));
            QCOMPARE(Selected(listing), "3K");
            CloseListing(listing);
        });
        QCOMPARE(program.Stored("location.xml").size(), 2U);
        QVERIFY(StoredLocation(program, 2).empty());
    }

    void deletion_declined_leavesTheLocation_data()
    {
        QTest::addColumn<bool>("no");
        QTest::newRow("No") << true;
        QTest::newRow("Cancel") << false;
    }

    void deletion_declined_leavesTheLocation()
    {
        QFETCH(bool, no);
        TestProgram program;
        program.Start();
        program.AddLocation("Mandurah");
        const std::string before = program.folder.Read("location.xml");
        program.messages.Expect(deleteLocationQuestion, no ? Button::No : Button::Cancel);
        ShowListing(program, [](QDialog& listing) {
            Click(listing, "cmdDelete");
            QCOMPARE(LocationNames(listing), std::vector<std::string>{"Mandurah"});
            CloseListing(listing);
        });
        QCOMPARE(program.folder.Read("location.xml"), before);
    }

    void deletion_ofALocationInUse_keepsItsEntries()
    {
        ProgramWithPlace program;
        program.AddCompleteEntry();
        program.AddCompleteEntry();
        const std::string before = program.folder.Read("tarno.xml");
        program.messages.Expect(deleteLocationQuestion, Button::Yes);
        ShowListing(program, [](QDialog& listing) {
            Click(listing, "cmdDelete");
            CloseListing(listing);
        });
        QVERIFY(program.Stored("location.xml").empty());
        QCOMPARE(program.folder.Read("tarno.xml"), before);
    }

    void deletion_ofTheLast_disablesTheButtons()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Mandurah");
        program.messages.Expect(deleteLocationQuestion, Button::Yes);
        ShowListing(program, [](QDialog& listing) {
            Click(listing, "cmdDelete");
            QCOMPARE(List(listing).RowCount(), 0);
            QVERIFY(IsEnabled(listing, "cmdAdd"));
            QVERIFY(!IsEnabled(listing, "cmdEdit"));
            QVERIFY(!IsEnabled(listing, "cmdDelete"));
            CloseListing(listing);
        });
    }

    void deletion_notSaved_isReported()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Mandurah");
        const std::string before = program.folder.Read("location.xml");
        program.operations.Fail("create", ErrorNumber::DiskFull);
        program.reports.Expect("cSQL", "LocationDelete", ErrorNumber::DiskFull);
        program.messages.Expect(deleteLocationQuestion, Button::Yes);
        ShowListing(program, [](QDialog& listing) {
            Click(listing, "cmdDelete");
            QVERIFY(IsEnabled(listing, "cmdAdd"));
            CloseListing(listing);
        });
        QCOMPARE(program.folder.Read("location.xml"), before);
    }

    void keyTooLarge_isReportedAndTheListStaysUsable()
    {
        TestProgram program;
        program.folder.Write(
            "location.xml",
            "<data><location><LocNo>40000</LocNo><LocName>Far</LocName><a/><b/><c/><d/><e/><f/><g/><h/>"
            "</location><location><LocNo>2</LocNo><LocName>Near</LocName><a/><b/><c/><d/><e/><f/><g/><h/>"
            "</location></data>");
        program.Start();
        program.reports.Expect("fLocs", "Edit", ErrorNumber::Overflow);
        program.reports.Expect("fLocs", "Delete", ErrorNumber::Overflow);
        ShowListing(program, [](QDialog& listing) {
            QCOMPARE(LocationNames(listing), (std::vector<std::string>{"Far", "Near"}));
            Click(listing, "cmdEdit");
            Click(listing, "cmdDelete");
            ClickRow(listing, 1);
            WhileOpen(
                "dlgLocMaint", [&] { Click(listing, "cmdEdit"); },
                [](QDialog& location) { Close(location); });
            CloseListing(listing);
        });
    }

    void newLocation_isOfferedToEntries()
    {
        TestProgram program;
        program.Start();
        ShowListing(program, [](QDialog& listing) {
            WhileOpen(
                "dlgLocMaint", [&] { Click(listing, "cmdAdd"); },
                [](QDialog& location) {
                    Type(location, "Albany");
                    Retype(location, "txtLatt", "-35");
                    Retype(location, "txtLong", "117.9");
                    Retype(location, "txtGMT", "8");
                    SaveAndClose(location);
                });
            CloseListing(listing);
        });
        program.messages.Expect(saveQuestion, Button::No);
        Edit(program, 0, [](QDialog& editor) {
            QCOMPARE(Place(editor), "Albany");
            Enter(editor, "txtTideLowHt", "1");
            Close(editor);
        });
    }
};

TEST_CLASS(tst_fLocsCommands)
#include "tst_fLocsCommands.moc"
