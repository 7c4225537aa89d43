// typist FOLDER STATE
//
// Types into the first trip of the log in FOLDER, with drafts in the folder STATE. Prints "written" once
// there is a draft, then waits until it is killed.

#include "qt/Strings.h"
#include "support/DraftTest.h"
#include "ui/entry/fEntry.h"

#include <QPlainTextEdit>

#include <iostream>

using namespace Tarno;

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    if (argc != 3) {
        return 2;
    }
    TestProgram parts;
    const ProgramFolder folder(argv[1]);
    cSQL sql(folder, parts.operations);
    Drafts drafts(argv[2], parts.draftOperations);
    const Program program{folder,         sql,         parts.descs,    parts.settings, parts.clock,
                          parts.messages, parts.files, parts.programs, parts.printers, parts.operations,
                          parts.windows,  drafts};
    if (sql.Init() != succeeded) {
        return 1;
    }
    fEntry editor(program, nullptr);
    QTimer::singleShot(0, &editor, [&] {
        Find<QPlainTextEdit>(editor, "txtObbos").setPlainText(QStringLiteral("A great day"));
        PassDraftTime(editor);
        std::cout << "written" << std::endl;
    });
    editor.SetData(1, false);
    return 1;
}
