#include "ListingTest.h"
#include "support/TestClass.h"

#include <algorithm>
#include <map>

using namespace Tarno;

// The listing of locations: its rows, their order, and incomplete data files.

namespace
{

/// Clicks the list below its last row.
void ClickEmptySpace(QWidget& listing)
{
    const QWidget* view = List(listing).viewport();
    QTest::mouseClick(listing.windowHandle(), Qt::LeftButton, {},
                      view->mapTo(&listing, QPoint(view->width() / 2, view->height() - 3)));
}

} // namespace

class tst_fLocs : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void captions_areAsSpecified()
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

    void locations_areInFileOrder()
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
        QTest::newRow("unknown code") << "7"
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

    void sorting_isCaseInsensitiveAndStable()
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

    void sorting_keepsTheSelectionVisible()
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
            Click(listing, "cmdEdit"); // the dialog requires all values
            QCOMPARE(QApplication::activeModalWidget(), &listing);
            CloseListing(listing);
        });
    }

    void recordWithoutName_isListed()
    {
        TestProgram program;
        program.folder.Write("location.xml", "<data><location><LocNo>1</LocNo></location></data>");
        program.Start();
        ShowListing(program, [](QDialog& listing) {
            QCOMPARE(LocationNames(listing), (std::vector<std::string>{""}));
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
        ShowListing(program, [](QDialog& listing) {
            QCOMPARE(List(listing).RowCount(), 0);
            QVERIFY(List(listing).accessibleDescription().startsWith(
                QStringLiteral("Your locations could not be read. Nothing is written over location.xml.")));
            QVERIFY(!IsEnabled(listing, "cmdAdd"));
            Press(listing, Qt::Key_N, Qt::ControlModifier);
            QCOMPARE(QApplication::activeModalWidget(), &listing);
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
            // 7919 is prime, so every number occurs once
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
