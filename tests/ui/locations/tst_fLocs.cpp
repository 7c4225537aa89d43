#include "LocationTest.h"
#include "support/TestClass.h"
#include "ui/common/Icons.h"
#include "ui/common/SortableList.h"
#include "ui/locations/fLocs.h"

#include <QHeaderView>

#include <algorithm>

namespace
{

/// Opens the listing and runs `steps` in it, which have to close it.
template <typename Steps>
void ShowListing(TestProgram& program, Steps&& steps)
{
    WhileOpen(
        "fLocs", [&] { fLocs(program.program, nullptr).exec(); }, std::forward<Steps>(steps));
}

SortableList& List(const QWidget& listing)
{
    return Find<SortableList>(listing, "lvwLocs");
}

/// The text in a cell of the list.
std::string Cell(const QWidget& listing, int row, int column)
{
    return ToUtf8(List(listing).model()->index(row, column).data().toString());
}

std::vector<std::string> Column(const QWidget& listing, int column)
{
    std::vector<std::string> texts;
    for (int row = 0; row < List(listing).RowCount(); ++row) {
        texts.push_back(Cell(listing, row, column));
    }
    return texts;
}

std::vector<std::string> LocationNames(const QWidget& listing)
{
    return Column(listing, 0);
}

std::string Selected(const QWidget& listing)
{
    return ToUtf8(List(listing).SelectedKey().value_or(QString()));
}

void ClickHeading(QWidget& listing, int column)
{
    const QHeaderView* header = List(listing).header();
    const QPoint middle(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                        header->height() / 2);
    QTest::mouseClick(listing.windowHandle(), Qt::LeftButton, {},
                      header->viewport()->mapTo(&listing, middle));
}

QPoint PlaceOf(const QWidget& listing, int row)
{
    const SortableList& list = List(listing);
    return list.viewport()->mapTo(&listing, list.visualRect(list.model()->index(row, 0)).center());
}

void ClickRow(QWidget& listing, int row)
{
    QTest::mouseClick(listing.windowHandle(), Qt::LeftButton, {}, PlaceOf(listing, row));
}

void DoubleClickRow(QWidget& listing, int row)
{
    QTest::mouseDClick(listing.windowHandle(), Qt::LeftButton, {}, PlaceOf(listing, row));
}

/// A click on the part of the list that holds no row.
void ClickEmptySpace(QWidget& listing)
{
    const QWidget* view = List(listing).viewport();
    QTest::mouseClick(listing.windowHandle(), Qt::LeftButton, {},
                      view->mapTo(&listing, QPoint(view->width() / 2, view->height() - 3)));
}

/// The columns whose heading shows an arrow, each with "+" when it points up, "-" when it points down.
std::string Arrows(const QWidget& listing)
{
    const auto drawn = [](const QIcon& icon) { return icon.pixmap(32).toImage(); };
    std::string arrows;
    const QAbstractItemModel* model = List(listing).model();
    for (int column = 0; column < model->columnCount(); ++column) {
        const auto icon = model->headerData(column, Qt::Horizontal, Qt::DecorationRole).value<QIcon>();
        if (!icon.isNull()) {
            const bool up = drawn(icon) == drawn(DrawnIcon(QLatin1String("sort-ascending")));
            const bool down = drawn(icon) == drawn(DrawnIcon(QLatin1String("sort-descending")));
            arrows += std::to_string(column) + (up && !down ? "+" : down && !up ? "-" : "?");
        }
    }
    return arrows;
}

bool IsEnabled(const QWidget& listing, const char* button)
{
    return Find<QWidget>(listing, button).isEnabled();
}

void CloseListing(QWidget& listing)
{
    Click(listing, "cmdOK");
}

} // namespace

class tst_fLocs : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void captions_areAsKnown()
    {
        TestProgram program;
        program.Start();
        ShowListing(program, [](QDialog& listing) {
            QCOMPARE(listing.windowTitle(), QStringLiteral("Location Listing"));
            const std::map<const char*, std::string> captions{{"cmdAdd", "Add"},
                                                              {"cmdEdit", "Edit"},
                                                              {"cmdDelete", "Delete"},
                                                              {"cmdPrint", "Print"},
                                                              {"cmdOK", "Close"}};
            for (const auto& [name, caption] : captions) {
                QCOMPARE(ToUtf8(Find<QAbstractButton>(listing, name).text().remove(QLatin1Char('&'))),
                         caption);
            }
            CloseListing(listing);
        });
    }

    void locations_standInFileOrder()
    {
        TestProgram program;
        program.Start();
        for (const char* name : {"Zeehan", "albany", "Mandurah"}) {
            program.AddLocation(name);
        }
        ShowListing(program, [](QDialog& listing) {
            QCOMPARE(LocationNames(listing), (std::vector<std::string>{"Zeehan", "albany", "Mandurah"}));
            QCOMPARE(Arrows(listing), "");
            CloseListing(listing);
        });
    }

    void row_showsItsLocation_data()
    {
        QTest::addColumn<QString>("access");
        QTest::addColumn<QString>("dst");
        QTest::addColumn<QString>("accessShown");
        QTest::addColumn<QString>("dstShown");
        QTest::newRow("land") << "0"
                              << "0"
                              << "Land Based"
                              << "No";
        QTest::newRow("boat") << "1"
                              << "1"
                              << "Boat Only"
                              << "Yes";
        QTest::newRow("both") << "2"
                              << ""
                              << "Both"
                              << "No";
        QTest::newRow("neither") << ""
                                 << "x"
                                 << "Not Set"
                                 << "No";
        QTest::newRow("no code") << "7"
                                 << "0"
                                 << "Not Set"
                                 << "No";
    }

    void row_showsItsLocation()
    {
        QFETCH(QString, access);
        QFETCH(QString, dst);
        QFETCH(QString, accessShown);
        QFETCH(QString, dstShown);
        TestProgram program;
        program.Start();
        program.AddLocation("Pittwater", {{LocationField::LocAccess, ToUtf8(access)},
                                          {LocationField::LocDST, ToUtf8(dst)},
                                          {LocationField::LocGMT, "9.5"}});
        ShowListing(program, [&](QDialog& listing) {
            const QAbstractItemModel* model = List(listing).model();
            const std::vector<std::string> headings{"Location",  "Access",   "Latitude",
                                                    "Longitude", "GMT Diff", "DST"};
            const std::vector<std::string> cells{"Pittwater", ToUtf8(accessShown), "-33.8", "151.25",
                                                 "9.5",       ToUtf8(dstShown)};
            QCOMPARE(model->columnCount(), 6);
            for (int column = 0; column < 6; ++column) {
                QCOMPARE(ToUtf8(model->headerData(column, Qt::Horizontal).toString()),
                         headings[std::size_t(column)]);
                QCOMPARE(Cell(listing, 0, column), cells[std::size_t(column)]);
            }
            CloseListing(listing);
        });
    }

    void name_ofSeveralLines_showsInOne()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Victor Harbor~CL~Granite Island");
        ShowListing(program, [](QDialog& listing) {
            QCOMPARE(Cell(listing, 0, 0), "Victor Harbor Granite Island");
            CloseListing(listing);
        });
    }

    void firstRow_isSelected()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Zeehan");
        program.AddLocation("Albany");
        ShowListing(program, [](QDialog& listing) {
            QCOMPARE(Selected(listing), "1K");
            ClickRow(listing, 1);
            QCOMPARE(Selected(listing), "2K");
            ClickEmptySpace(listing);
            QCOMPARE(Selected(listing), "2K");
            CloseListing(listing);
        });
    }

    void emptyFile_clicked_enablesAddOnly()
    {
        TestProgram program;
        program.Start();
        ShowListing(program, [](QDialog& listing) {
            QCOMPARE(List(listing).RowCount(), 0);
            ClickEmptySpace(listing);
            QVERIFY(IsEnabled(listing, "cmdAdd"));
            QVERIFY(!IsEnabled(listing, "cmdEdit"));
            QVERIFY(!IsEnabled(listing, "cmdDelete"));
            CloseListing(listing);
        });
    }

    void someLocation_enablesEverything()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("Zeehan");
        ShowListing(program, [](QDialog& listing) {
            ClickRow(listing, 0);
            for (const char* button : {"cmdAdd", "cmdEdit", "cmdDelete", "cmdPrint", "cmdOK"}) {
                QVERIFY2(IsEnabled(listing, button), button);
            }
            CloseListing(listing);
        });
    }

    void heading_sortsAndReverses()
    {
        TestProgram program;
        program.Start();
        for (const char* name : {"Mandurah", "Zeehan", "Albany"}) {
            program.AddLocation(name);
        }
        ShowListing(program, [](QDialog& listing) {
            ClickHeading(listing, 0);
            QCOMPARE(LocationNames(listing), (std::vector<std::string>{"Albany", "Mandurah", "Zeehan"}));
            QCOMPARE(Arrows(listing), "0+");
            ClickHeading(listing, 0);
            QCOMPARE(LocationNames(listing), (std::vector<std::string>{"Zeehan", "Mandurah", "Albany"}));
            QCOMPARE(Arrows(listing), "0-");
            ClickHeading(listing, 0);
            QCOMPARE(Arrows(listing), "0+");
            CloseListing(listing);
        });
    }

    void heading_ofAnotherColumn_sortsAscending()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("A", {{LocationField::LocAccess, "0"}});
        program.AddLocation("B", {{LocationField::LocAccess, "2"}});
        ShowListing(program, [](QDialog& listing) {
            ClickHeading(listing, 0);
            ClickHeading(listing, 0);
            ClickHeading(listing, 1);
            QCOMPARE(Column(listing, 1), (std::vector<std::string>{"Both", "Land Based"}));
            QCOMPARE(Arrows(listing), "1+");
            CloseListing(listing);
        });
    }

    void sorting_isCaseBlindAndKeepsEqualRowsInFileOrder()
    {
        TestProgram program;
        program.Start();
        program.AddLocation("bondi", {{LocationField::LocGMT, "1"}});
        program.AddLocation("Coogee");
        program.AddLocation("Bondi", {{LocationField::LocGMT, "2"}});
        program.AddLocation("albany");
        ShowListing(program, [](QDialog& listing) {
            ClickHeading(listing, 0);
            QCOMPARE(LocationNames(listing),
                     (std::vector<std::string>{"albany", "bondi", "Bondi", "Coogee"}));
            ClickHeading(listing, 0);
            QCOMPARE(LocationNames(listing),
                     (std::vector<std::string>{"Coogee", "bondi", "Bondi", "albany"}));
            CloseListing(listing);
        });
    }

    void sorting_keepsTheSelectionInSight()
    {
        TestProgram program;
        program.Start();
        for (int number = 100; number < 200; ++number) {
            program.AddLocation("Place " + std::to_string(number));
        }
        ShowListing(program, [](QDialog& listing) {
            ClickRow(listing, 2);
            ClickHeading(listing, 0);
            ClickHeading(listing, 0);
            QCOMPARE(Selected(listing), "3K");
            const SortableList& list = List(listing);
            QCOMPARE(list.currentIndex().row(), 97);
            QVERIFY(list.viewport()->rect().intersects(list.visualRect(list.currentIndex())));
            CloseListing(listing);
        });
    }

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
            QCOMPARE(Selected(listing), "1K");
            CloseListing(listing);
        });
        QCOMPARE(StoredLocation(program, 2).at(LocationField::LocName), "Albany");
    }

    void edited_showsTheNewNameInItsPlace()
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
            QCOMPARE(Selected(listing), "1K");
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

    void deletion_ofALocationInUse_leavesItsEntriesAlone()
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

    void keyTooLarge_isReportedAndTheListGoesOn()
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

    void recordWithFewerChildren_isListed()
    {
        TestProgram program;
        program.folder.Write("location.xml",
                             "<data><location><LocNo>1</LocNo><LocName>Short</LocName></location>"
                             "<location><LocNo>2</LocNo><LocName>Long</LocName><a/><b/><c/><d>-33.8</d>"
                             "<e/><f/><g/><h/></location></data>");
        program.Start();
        program.reports.Expect("dlgLocMaint", "SetData", ErrorNumber::ObjectNotSet);
        ShowListing(program, [](QDialog& listing) {
            QCOMPARE(LocationNames(listing), (std::vector<std::string>{"Short", "Long"}));
            QCOMPARE(Cell(listing, 0, 1), "Not Set");
            QCOMPARE(Cell(listing, 0, 2), "");
            QCOMPARE(Cell(listing, 1, 2), "-33.8");
            Click(listing, "cmdEdit"); // the dialog needs all of them
            QCOMPARE(QApplication::activeModalWidget(), &listing);
            CloseListing(listing);
        });
    }

    void recordWithoutName_isReported()
    {
        TestProgram program;
        program.folder.Write("location.xml", "<data><location><LocNo>1</LocNo></location></data>");
        program.Start();
        program.reports.Expect("fLocs", "LoadLocations", ErrorNumber::ObjectNotSet);
        ShowListing(program, [](QDialog& listing) {
            QVERIFY(IsEnabled(listing, "cmdAdd"));
            CloseListing(listing);
        });
    }

    void damagedFile_isReportedAndNeverWritten()
    {
        const std::string damaged = "<data><location><LocNo>1</LocNo><LocName>Zee";
        TestProgram program;
        program.folder.Write("location.xml", damaged);
        program.Start();
        program.reports.Expect("cSQL", "LocationList", ErrorNumber::ObjectNotSet);
        program.reports.Expect("cSQL", "LocationUpdate", ErrorNumber::ObjectNotSet);
        program.reports.Expect("cSQL", "LocationList", ErrorNumber::ObjectNotSet);
        program.messages.Expect(saveQuestion, Button::No);
        ShowListing(program, [](QDialog& listing) {
            QCOMPARE(List(listing).RowCount(), 0);
            WhileOpen(
                "dlgLocMaint", [&] { Click(listing, "cmdAdd"); },
                [](QDialog& location) {
                    Type(location, "Albany");
                    Save(location);
                    QVERIFY(location.isVisible());
                    QVERIFY(IsSaveEnabled(location));
                    Close(location);
                });
            CloseListing(listing);
        });
        QCOMPARE(program.folder.Read("location.xml"), damaged);
    }

    void twoThousandLocations_areListedAndSorted()
    {
        constexpr int count = 2000;
        std::vector<std::string> names;
        std::string file = "<data>";
        for (int number = 1; number <= count; ++number) {
            // 7919 is a prime, so every number comes once
            const std::string name = "Place " + std::to_string(10000 + number * 7919 % 2003);
            names.push_back(name);
            file += "<location><LocNo>" + std::to_string(number) + "</LocNo><LocName>" + name +
                    "</LocName><a/><b/><c/><d/><e/><f/><g/><h/></location>";
        }
        TestProgram program;
        program.folder.Write("location.xml", file + "</data>");
        program.Start();
        ShowListing(program, [&](QDialog& listing) {
            QCOMPARE(LocationNames(listing), names);
            ClickHeading(listing, 0);
            std::sort(names.begin(), names.end());
            QCOMPARE(LocationNames(listing), names);
            ClickHeading(listing, 0);
            std::reverse(names.begin(), names.end());
            QCOMPARE(LocationNames(listing), names);
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

    void listing_closes_data()
    {
        QTest::addColumn<QString>("by");
        for (const char* by : {"button", "Esc", "close box"}) {
            QTest::newRow(by) << by;
        }
    }

    void listing_closes()
    {
        QFETCH(QString, by);
        TestProgram program;
        program.Start();
        ShowListing(program, [&](QDialog& listing) {
            if (by == QLatin1String("button")) {
                CloseListing(listing);
            } else if (by == QLatin1String("Esc")) {
                Press(listing, Qt::Key_Escape);
            } else {
                listing.close();
            }
            QVERIFY(!listing.isVisible());
        });
    }
};

TEST_CLASS(tst_fLocs)
#include "tst_fLocs.moc"
