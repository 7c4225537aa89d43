#include "FileExport.h"

#include "core/Error.h"
#include "core/SafeWriter.h"
#include "qt/Strings.h"

namespace Tarno
{

std::optional<QString> WriteExport(const Program& program, QWidget* parent, const FileQuestion& question,
                                   const std::string& bytes)
{
    auto file = program.files.Save(parent, question);
    if (!file) {
        return std::nullopt;
    }
    try {
        SafeWriter(program.operations).Write(ToUtf8(*file), bytes);
    } catch (const Error& error) {
        program.messages.Ask(parent, {.text = QStringLiteral("The file could not be written: ") + *file +
                                              QStringLiteral("\r\n") + FromUtf8(error.Description()),
                                      .title = QStringLiteral("Export Error"),
                                      .icon = Icon::Exclamation});
        return std::nullopt;
    }
    return file;
}

} // namespace Tarno
