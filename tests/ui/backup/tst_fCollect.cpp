// The window that copies pictures to the folder of the log.

#include "BackUpTest.h"
#include "support/TestClass.h"
#include "ui/backup/fCollect.h"

#include <QPushButton>

using namespace Tarno;
using namespace std::chrono_literals;
using namespace std::string_literals;

namespace
{

/// A log with pictures in its folder, elsewhere and nowhere.
class ScatteredPictures : public ProgramWithPicture
{
public:
    ScatteredPictures()
    {
        camera.Write("trout.jpg", std::string(2'100'000, 'x'));
        camera.Write("map.png", std::string(900, 'x'));
        AddTrip("2026-11-04", trout);
        AddTrip("2026-11-05", gone);
        AddTrip("2026-11-06", inFolder);
        AddLocation("Lake Eucumbene", {{LocationField::LocPicture, map}});
    }

    /// Returns the stored pictures of all trips, then those of all locations.
    Texts Pictures() const
    {
        Texts pictures;
        for (const auto& trip : Stored("tarno.xml")) {
            pictures.push_back(trip.at(EntryField::Picture));
        }
        for (const auto& location : Stored("location.xml")) {
            pictures.push_back(location.at(LocationField::LocPicture));
        }
        return pictures;
    }

    TemporaryFolder camera;
    std::string trout = camera.PathOf("trout.jpg");
    std::string gone = camera.PathOf("gone.jpg");
    std::string map = camera.PathOf("map.png");
    std::string inFolder = folder.PathOf("pictures/snapper.jpg");
};

/// The window on the screen.
class ShownPictures : public fCollect
{
public:
    explicit ShownPictures(const TestProgram& program) : fCollect(program.program, nullptr)
    {
        show();
        AwaitActive(*this);
    }
};

} // namespace

class tst_fCollect : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void window_showsThePlan()
    {
        const ScatteredPictures program;
        const ShownPictures window(program);
        QCOMPARE(Rows(window, "lvwPictures"),
                 (Texts{program.trout + " | pictures/trout.jpg | 2.1 MB",
                        program.inFolder + " | pictures/snapper.jpg | not copied",
                        program.map + " | pictures/map.png | 900 bytes", program.gone + " |  | not found"}));
        QCOMPARE(LabelText(window, "lblTotal"),
                 "3 pictures, 2.1 MB to copy. 1 picture was not found and stays as it is."s);
        QCOMPARE(window.focusWidget(), &Find<QWidget>(window, "lvwPictures"));
    }

    void sizes_areSortedAsNumbers()
    {
        const ScatteredPictures program;
        const ShownPictures window(program);
        Find<SortableList>(window, "lvwPictures").model()->sort(2);
        QCOMPARE(Rows(window, "lvwPictures"),
                 (Texts{program.gone + " |  | not found",
                        program.inFolder + " | pictures/snapper.jpg | not copied",
                        program.map + " | pictures/map.png | 900 bytes",
                        program.trout + " | pictures/trout.jpg | 2.1 MB"}));
    }

    void collect_copiesThePictures_asOneStep()
    {
        ScatteredPictures program;
        const Texts before = program.Pictures();
        program.ExpectInformation(
            "3 pictures collected. Edit > Undo takes the new names back; the copies stay.");
        const ShownPictures window(program);
        Click(window, "cmdCollect");
        QVERIFY(!window.isVisible());
        QCOMPARE(program.Pictures(), (Texts{"pictures/snapper.jpg", "", "pictures/trout.jpg", program.gone,
                                            "pictures/snapper.jpg", "", "pictures/map.png"}));
        QCOMPARE(program.folder.Read("pictures/trout.jpg"), program.camera.Read("trout.jpg"));
        QCOMPARE(program.sql.Undo().status, UndoStatus::Done);
        QCOMPARE(program.Pictures(), before);
        QCOMPARE(program.folder.Read("pictures/map.png"), program.camera.Read("map.png"));
    }

    void failure_changesNothing()
    {
        ScatteredPictures program;
        const Texts before = program.Pictures();
        program.ExpectProblem(
            "The pictures could not be collected.\r\nThe disk is full.\r\nNothing was changed.",
            "Collect Error");
        const ShownPictures window(program);
        program.operations.Fail("sync file", ErrorNumber::DiskFull);
        Click(window, "cmdCollect");
        QVERIFY(window.isVisible());
        QCOMPARE(program.Pictures(), before);
        QVERIFY(!std::filesystem::exists(ToPath(program.folder.PathOf("pictures/trout.jpg"))));
    }

    void cancel_changesNothing()
    {
        ScatteredPictures program;
        const Texts before = program.Pictures();
        const ShownPictures window(program);
        program.clock.step = 1s; // the progress appears at once
        WhileOpen(
            "dlgWait", [&] { Click(window, "cmdCollect"); },
            [](QDialog& wait) { Press(wait, Qt::Key_Escape); });
        QVERIFY(window.isVisible());
        QCOMPARE(program.Pictures(), before);
        QVERIFY(!std::filesystem::exists(ToPath(program.folder.PathOf("pictures/trout.jpg"))));
    }

    void nothingToCollect_canOnlyBeClosed()
    {
        const ProgramWithPicture program;
        const ShownPictures window(program);
        QCOMPARE(ToUtf8(Find<QWidget>(window, "lvwPictures").accessibleDescription()),
                 "All pictures are in the folder of your log already."s);
        QVERIFY(!Find<QPushButton>(window, "cmdCollect").isEnabled());
        QVERIFY(!Find<QWidget>(window, "lblTotal").isVisible());
        Click(window, "cmdClose");
        QVERIFY(!window.isVisible());
    }

    void onlyMissingPictures_areNotCollected()
    {
        ProgramWithPicture program;
        program.AddTrip("2026-11-04", "/nowhere/a.jpg");
        program.AddTrip("2026-11-05", "/nowhere/b.jpg");
        const ShownPictures window(program);
        QCOMPARE(LabelText(window, "lblTotal"), "2 pictures were not found and stay as they are."s);
        QVERIFY(!Find<QPushButton>(window, "cmdCollect").isEnabled());
    }
};

TEST_CLASS(tst_fCollect)
#include "tst_fCollect.moc"
