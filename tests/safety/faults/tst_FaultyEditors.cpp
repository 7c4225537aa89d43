// The editors of entries and locations while saving fails: what was typed stays in the window.

#include "safety/faults/Faults.h"
#include "support/TestClass.h"
#include "ui/locations/LocationTest.h"

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

/// An editor of one record, in which one box is changed.
struct Editor {
    const char* name;
    const char* file;
    const char* reportedAs;
    const char* box;
    std::size_t position; ///< of what the box shows in the record
    void (*open)(TestProgram&, int, const std::function<void(QDialog&)>&);
};

const std::vector<Editor> editors{
    {"entry", "tarno.xml", "EntryUpdate", "txtTideLowHt", EntryField::LowTideHt,
     [](TestProgram& program, int key, const std::function<void(QDialog&)>& steps) {
         Edit(program, key, steps);
     }},
    {"location", "location.xml", "LocationUpdate", "txtGMT", LocationField::LocGMT,
     [](TestProgram& program, int key, const std::function<void(QDialog&)>& steps) {
         EditLocation(program, key, steps);
     }},
};

/// Types into a box of the entry editor, whose boxes lie on several pages, or of the other one.
void Enter(QWidget& window, const Editor& editor, const char* box, const char* text)
{
    if (editor.file == "tarno.xml"s) {
        Enter(window, box, text);
    } else {
        Retype(window, box, text);
    }
}

/// The value in a record on the disk.
std::string Stored(const TestProgram& program, const Editor& editor, std::size_t record = 0)
{
    return program.Stored(editor.file).at(record).at(editor.position);
}

} // namespace

class tst_FaultyEditors : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void save_everyFault_keepsWhatWasTypedAndTheOldBytes_data() { AddEditors(); }

    void save_everyFault_keepsWhatWasTypedAndTheOldBytes()
    {
        QFETCH(int, index);
        const Editor& editor = editors[static_cast<std::size_t>(index)];
        ProgramWithPlace program;
        program.AddCompleteEntry();
        const std::string before = program.folder.Read(editor.file);
        const Texts names = program.folder.Names();
        editor.open(program, 1, [&](QDialog& window) {
            Enter(window, editor, editor.box, "7.5");
            for (const Fault& fault : AllFaults(stepsBefore)) {
                program.operations.Fail(fault.step, fault.error, fault.times);
                for (int tried = 0; tried < (fault.times == 1 ? 1 : 2); ++tried) {
                    program.reports.Expect("cSQL", editor.reportedAs, fault.error);
                    Save(window);
                    QVERIFY(window.isVisible());
                    QVERIFY2(IsSaveEnabled(window), fault.step.c_str());
                    QCOMPARE(BoxText(window, editor.box), "7.5"s);
                    QCOMPARE(program.folder.Read(editor.file), before);
                    QCOMPARE(program.folder.Names(), names);
                    QCOMPARE(program.sql.UnsavedFiles(), Texts{editor.file});
                }
                program.operations.Heal();
            }
            Save(window);
            QVERIFY(!IsSaveEnabled(window));
            QCOMPARE(program.sql.UnsavedFiles(), Texts());
            Close(window);
        });
        QCOMPARE(Stored(program, editor), "7.5"s);
        QCOMPARE(program.folder.Names(), names);
    }

    void save_folderNotSynchronised_isToldAndTheNextSaveSucceeds_data() { AddEditors(); }

    void save_folderNotSynchronised_isToldAndTheNextSaveSucceeds()
    {
        QFETCH(int, index);
        const Editor& editor = editors[static_cast<std::size_t>(index)];
        ProgramWithPlace program;
        program.AddCompleteEntry();
        const Texts names = program.folder.Names();
        editor.open(program, 1, [&](QDialog& window) {
            Enter(window, editor, editor.box, "7.5");
            for (const Fault& fault : AllFaults({"sync folder"})) {
                program.operations.Fail(fault.step, fault.error, fault.times);
                program.reports.Expect("cSQL", editor.reportedAs, fault.error);
                Save(window);
                QVERIFY(IsSaveEnabled(window));
                QCOMPARE(Stored(program, editor), "7.5"s);
                program.operations.Heal();
            }
            Save(window);
            QVERIFY(!IsSaveEnabled(window));
            Close(window);
        });
        QCOMPARE(program.sql.UnsavedFiles(), Texts());
        QCOMPARE(program.folder.Names(), names);
    }

    void save_ofANewRecord_everyFault_isThereOnceInTheEnd_data() { AddEditors(); }

    void save_ofANewRecord_everyFault_isThereOnceInTheEnd()
    {
        QFETCH(int, index);
        const Editor& editor = editors[static_cast<std::size_t>(index)];
        ProgramWithPlace program;
        program.AddCompleteEntry();
        const std::string before = program.folder.Read(editor.file);
        const std::size_t records = program.Stored(editor.file).size();
        editor.open(program, 0, [&](QDialog& window) {
            if (editor.file == "location.xml"s) {
                Retype(window, "txtLocName", "Zeehan"); // a location without a name is not saved
            }
            Enter(window, editor, editor.box, "7.5");
            for (const Fault& fault : AllFaults(stepsBefore)) {
                program.operations.Fail(fault.step, fault.error, fault.times);
                program.reports.Expect("cSQL", editor.reportedAs, fault.error);
                Save(window);
                QVERIFY2(IsSaveEnabled(window), fault.step.c_str());
                QCOMPARE(program.folder.Read(editor.file), before);
                program.operations.Heal();
            }
            Save(window);
            QVERIFY(!IsSaveEnabled(window));
            Close(window);
        });
        QCOMPARE(program.Stored(editor.file).size(), records + 1);
        QCOMPARE(Stored(program, editor, records), "7.5"s);
    }

    void close_yes_otherVersionCannotBeKept_keepsTheChangeForTheNextSave_data() { AddEditors(); }

    void close_yes_otherVersionCannotBeKept_keepsTheChangeForTheNextSave()
    {
        QFETCH(int, index);
        const Editor& editor = editors[static_cast<std::size_t>(index)];
        ProgramWithPlace program;
        program.AddCompleteEntry();
        const std::string theirs = "<data>cut short";
        program.messages.Expect(saveQuestion, Button::Yes);
        editor.open(program, 1, [&](QDialog& window) {
            Enter(window, editor, editor.box, "7.5");
            program.folder.Write(editor.file, theirs);
            program.operations.Fail("create", ErrorNumber::DiskFull);
            program.reports.Expect("cSQL", editor.reportedAs, ErrorNumber::DiskFull);
            Close(window);
            QVERIFY(!window.isVisible());
        });
        QCOMPARE(program.folder.Read(editor.file), theirs);
        QCOMPARE(program.sql.UnsavedFiles(), Texts{editor.file});
        ErrorReporter::Instance().SetShowMessage(nullptr); // what it says is tested elsewhere
        program.AddLocation("Zeehan");
        program.AddCompleteEntry();
        QCOMPARE(Stored(program, editor), "7.5"s);
        const std::string kept = editor.file;
        QCOMPARE(program.folder.Read(kept.substr(0, kept.find('.')) + "-kept-1.xml"), theirs);
    }

private:
    static void AddEditors()
    {
        QTest::addColumn<int>("index");
        for (std::size_t index = 0; index < editors.size(); ++index) {
            QTest::newRow(editors[index].name) << static_cast<int>(index);
        }
    }
};

TEST_CLASS(tst_FaultyEditors)
#include "tst_FaultyEditors.moc"
