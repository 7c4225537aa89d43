// typist FOLDER STATE
//
// Types one text after the other into the first trip of the log in FOLDER, with drafts in the folder STATE,
// and saves every third one, until it is killed. Prints the number of each text when it is in a draft or in
// the log.

#include "qt/Strings.h"
#include "support/DraftTest.h"
#include "ui/entry/fEntry.h"

#include <QPlainTextEdit>
#include <QPushButton>

#include <iostream>

using namespace Tarno;

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    if (argc != 4) {
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
        HoldDraft(editor);
        for (int number = std::stoi(argv[3]);; ++number) {
            Find<QPlainTextEdit>(editor, "txtObbos").setPlainText(QString::number(number));
            if (number % 3 == 0) {
                Find<QPushButton>(editor, "cmdOK").click();
            } else {
                PassDraftTime(editor);
            }
            std::cout << number << std::endl;
        }
    });
    editor.SetData(1, false);
    return 1;
}
