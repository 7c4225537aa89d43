#include "FileExport.h"

#include "core/Error.h"
#include "core/SafeWriter.h"
#include "qt/Strings.h"

namespace Tarno
{

namespace
{

void ShowProblem(const Program& program, QWidget* parent, const QString& text)
{
    program.messages.Ask(parent,
                         {.text = text, .title = QStringLiteral("Export Error"), .icon = Icon::Exclamation});
}

/// Asks whether to replace the file if it exists.
bool ConfirmReplacing(const Program& program, QWidget* parent, const QString& file)
{
    return !program.operations.GetState(ToUtf8(file)).exists ||
           program.messages.Ask(parent, {.text = QStringLiteral("This file already exists: ") + file +
                                                 QStringLiteral("\r\n\r\nDo you want to replace it?"),
                                         .title = QStringLiteral("Replace File"),
                                         .icon = Icon::Question,
                                         .buttons = Buttons::YesNo,
                                         .byDefault = Button::No}) == Button::Yes;
}

} // namespace

std::optional<QString> WriteExport(const Program& program, QWidget* parent, const FileQuestion& question,
                                   const std::string& bytes)
{
    auto file = program.files.Save(parent, question);
    if (file && program.folder.MayBelongToLog(ToUtf8(*file))) {
        ShowProblem(program, parent,
                    QStringLiteral("This file may belong to your log: ") + *file +
                        QStringLiteral("\r\nNothing was written. Choose another name."));
        return std::nullopt;
    }
    if (!file || !ConfirmReplacing(program, parent, *file)) {
        return std::nullopt;
    }
    try {
        SafeWriter(program.operations).Write(ToUtf8(*file), bytes);
    } catch (const Error& error) {
        ShowProblem(program, parent,
                    QStringLiteral("The file could not be written: ") + *file + QStringLiteral("\r\n") +
                        FromUtf8(error.Description()));
        return std::nullopt;
    }
    return file;
}

} // namespace Tarno
