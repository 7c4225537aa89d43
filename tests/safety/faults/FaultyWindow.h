#pragma once

#include "safety/faults/Faults.h"
#include "support/TestProgram.h"
#include "support/Windows.h"

#include <QLineEdit>

#include <functional>

/// What a user saves in a window.
struct FormToSave {
    const char* file;
    const char* routine; ///< of cSQL
    const char* box;     ///< holds what was typed
    const char* button;  ///< saves it
    std::function<bool()> isOpen;
    std::size_t records;  ///< in the file when it is saved
    std::size_t record;   ///< index of the one that is saved
    std::size_t position; ///< of what was typed in the record
};

/// Saves in `window` with every fault, then without one. Until that succeeds, the form has to stay open with
/// what was typed, and the file has to keep its old bytes unless only the folder was not synchronised.
inline void CheckFaultySaves(TestProgram& program, QDialog& window, const FormToSave& form)
{
    const QString typed = Find<QLineEdit>(window, form.box).text();
    const std::string before = program.folder.Read(form.file);
    const std::vector<std::string> names = program.folder.Names();
    const auto isStored = [&] {
        const auto stored = program.Stored(form.file);
        return stored.size() == form.records && stored[form.record].at(form.position) == typed.toStdString();
    };
    for (const Fault& fault : AllFaults(saveSteps, allErrors)) {
        if (fault.effect == GoesUnnoticed) {
            continue;
        }
        fault.Inject(program.operations);
        program.reports.Expect("cSQL", form.routine, fault.error);
        Click(window, form.button);
        QVERIFY2(form.isOpen(), fault.Description().c_str());
        QVERIFY(Find<QWidget>(window, form.button).isEnabled());
        QCOMPARE(Find<QLineEdit>(window, form.box).text(), typed);
        QVERIFY(fault.effect == Fails ? program.folder.Read(form.file) == before : isStored());
        QCOMPARE(program.folder.Names(), names);
        QCOMPARE(program.sql.UnsavedFiles(), std::vector<std::string>{form.file});
        program.operations.Heal();
    }
    Click(window, form.button);
    QVERIFY(!form.isOpen());
    QVERIFY(isStored());
    QCOMPARE(program.folder.Names(), names);
    QCOMPARE(program.sql.UnsavedFiles(), std::vector<std::string>());
}
