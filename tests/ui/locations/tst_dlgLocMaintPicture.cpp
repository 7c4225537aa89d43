#include "LocationTest.h"
#include "support/Pictures.h"
#include "support/TestClass.h"

#include <QScrollBar>
#include <QSlider>

#include <optional>

using namespace Tarno;

// The picture of a location.

class tst_dlgLocMaintPicture : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void picture_shownWithItsRecord()
    {
        TestProgram program;
        program.Start();
        program.folder.Write("small.png", Pictures::Png(100, 60));
        program.folder.Write("large.png", Pictures::Png(2000, 1500));
        program.AddLocation("Small", {{LocationField::LocPicture, program.folder.PathOf("small.png")}});
        program.AddLocation("Large", {{LocationField::LocPicture, "large.png"}});
        EditLocation(program, 1, [](QDialog& location) {
            ClickTab(location, 1);
            QCOMPARE(Find<QWidget>(location, "picLoc").size(), QSize(100, 60));
            QCOMPARE(EnabledControls(location), QStringList{QStringLiteral("cmdRemove")});
            Close(location);
        });
        EditLocation(program, 2, [](QDialog& location) {
            ClickTab(location, 1);
            QCOMPARE(Find<QWidget>(location, "picLoc").size(), QSize(2000, 1500));
            QCOMPARE(EnabledControls(location),
                     (QStringList{QStringLiteral("cmdRemove"), QStringLiteral("sldZoom"),
                                  QStringLiteral("hscPic"), QStringLiteral("vscPic")}));
            Close(location);
        });
    }

    void picture_missing_showsNothing()
    {
        ProgramWithLocation program({{LocationField::LocPicture, "gone.png"}});
        EditLocation(program, 1, [](QDialog& location) {
            ClickTab(location, 1);
            QCOMPARE(EnabledControls(location), QStringList{QStringLiteral("cmdLoad")});
            ClickTab(location, 0);
            Retype(location, "txtGMT", "8");
            SaveAndClose(location);
        });
        QCOMPARE(StoredLocation(program, 1).at(LocationField::LocPicture), "gone.png");
    }

    void picture_problem_showsAMessageAndKeepsThePath()
    {
        ProgramWithLocation program({{LocationField::LocPicture, "broken.png"}});
        program.folder.Write("broken.png", Pictures::Png(100, 60).substr(0, 30));
        program.messages.ExpectInformation(
            QStringLiteral("There is a problem with the image you are tring to load. It could be:\r\n"
                           "   - that the image is too large when opened (filesize)\r\n"
                           "   - you do not have sufficient memory to handle the iamge\r\n"
                           "   - you need to close other applications which are open"),
            QStringLiteral("Picture Problem"));
        EditLocation(program, 1, [](QDialog& location) {
            QCOMPARE(BoxText(location, "txtGMT"), "10");
            Retype(location, "txtGMT", "8");
            SaveAndClose(location);
        });
        QCOMPARE(StoredLocation(program, 1).at(LocationField::LocPicture), "broken.png");
    }

    void picture_loaded_isStored()
    {
        ProgramWithLocation program;
        program.folder.Write("map.png", Pictures::Png(100, 60));
        ExpectChosenPicture(program, program.folder.PathOf("map.png"));
        EditLocation(program, 1, [](QDialog& location) {
            ClickTab(location, 1);
            Click(location, "cmdLoad");
            QCOMPARE(Find<QWidget>(location, "picLoc").size(), QSize(100, 60));
            QCOMPARE(EnabledControls(location),
                     (QStringList{QStringLiteral("cmdRemove"), QStringLiteral("sldZoom")}));
            QCOMPARE(Focused(location), "cmdRemove");
            QVERIFY(IsSaveEnabled(location));
            Save(location);
            QVERIFY(!IsSaveEnabled(location));
            Close(location);
        });
        QCOMPARE(StoredLocation(program, 1).at(LocationField::LocPicture), program.folder.PathOf("map.png"));
    }

    void picture_cancelled_changesNothing()
    {
        ProgramWithLocation program;
        ExpectChosenPicture(program, std::nullopt);
        EditLocation(program, 1, [](QDialog& location) {
            ClickTab(location, 1);
            Click(location, "cmdLoad");
            QCOMPARE(EnabledControls(location), QStringList{QStringLiteral("cmdLoad")});
            QVERIFY(!IsSaveEnabled(location));
            Close(location);
        });
    }

    void picture_removed_isStoredEmpty()
    {
        ProgramWithLocation program({{LocationField::LocPicture, "map.png"}});
        program.folder.Write("map.png", Pictures::Png(2000, 1500));
        EditLocation(program, 1, [](QDialog& location) {
            ClickTab(location, 1);
            Click(location, "cmdRemove");
            QCOMPARE(EnabledControls(location), QStringList{QStringLiteral("cmdLoad")});
            QCOMPARE(Focused(location), "cmdCancel");
            QVERIFY(IsSaveEnabled(location));
            SaveAndClose(location);
        });
        QCOMPARE(StoredLocation(program, 1).at(LocationField::LocPicture), "");
        EditLocation(program, 1, [](QDialog& location) {
            ClickTab(location, 1);
            QCOMPARE(EnabledControls(location), QStringList{QStringLiteral("cmdLoad")});
            Close(location);
        });
    }

    void picture_zoomedAndScrolled()
    {
        ProgramWithLocation program({{LocationField::LocPicture, "map.png"}});
        program.folder.Write("map.png", Pictures::Png(4000, 3000));
        EditLocation(program, 1, [](QDialog& location) {
            ClickTab(location, 1);
            const auto& picture = Find<QWidget>(location, "picLoc");
            const QRect frame = Find<QWidget>(location, "frPic").contentsRect();
            Find<QSlider>(location, "sldZoom").setValue(50);
            QCOMPARE(picture.size(), QSize(2000, 1500));
            QVERIFY(Find<QWidget>(location, "imgLoc").isHidden());
            QCOMPARE(Find<QWidget>(location, "imgLoc").size(), QSize(4000, 3000));
            Find<QScrollBar>(location, "vscPic").setValue(20);
            QCOMPARE(picture.geometry().bottom(), frame.bottom());
            QCOMPARE(picture.geometry().left(), frame.left());
            Find<QScrollBar>(location, "hscPic").setValue(20);
            QCOMPARE(picture.geometry().bottomRight(), frame.bottomRight());
            Find<QSlider>(location, "sldZoom").setValue(0);
            QCOMPARE(picture.geometry(), QRect(frame.topLeft(), QSize(40, 30)));
            Close(location); // asks no question
        });
    }
};

TEST_CLASS(tst_dlgLocMaintPicture)
#include "tst_dlgLocMaintPicture.moc"
