// The editors of entries and locations when saving fails: what was typed stays in the window.

#include "safety/faults/FaultyWindow.h"
#include "support/TestClass.h"
#include "ui/locations/LocationTest.h"

class tst_FaultyEditors : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<std::size_t>("records"); // afterwards
        QTest::newRow("new record") << 0 << std::size_t(2);
        QTest::newRow("stored record") << 1 << std::size_t(1);
    }

    void entry_everyFault_keepsWhatWasTyped_andStoresItOnceInTheEnd()
    {
        QFETCH_GLOBAL(int, key);
        QFETCH_GLOBAL(std::size_t, records);
        ProgramWithPlace program;
        program.AddCompleteEntry();
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtTideLowHt", "7.5");
            CheckFaultySaves(program, editor,
                             {"tarno.xml", "EntryUpdate", "txtTideLowHt", "cmdOK",
                              [&] { return IsSaveEnabled(editor); }, records, records - 1,
                              EntryField::LowTideHt});
            Close(editor);
        });
    }

    void location_everyFault_keepsWhatWasTyped_andStoresItOnceInTheEnd()
    {
        QFETCH_GLOBAL(int, key);
        QFETCH_GLOBAL(std::size_t, records);
        ProgramWithPlace program;
        EditLocation(program, key, [&](QDialog& editor) {
            Retype(editor, "txtLocName", "Zeehan"); // a new location needs a name
            Retype(editor, "txtGMT", "7.5");
            CheckFaultySaves(program, editor,
                             {"location.xml", "LocationUpdate", "txtGMT", "cmdOK",
                              [&] { return IsSaveEnabled(editor); }, records, records - 1,
                              LocationField::LocGMT});
            Close(editor);
        });
    }
};

TEST_CLASS(tst_FaultyEditors)
#include "tst_FaultyEditors.moc"
