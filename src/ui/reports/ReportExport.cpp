#include "ReportExport.h"

#include "WaitDialog.h"
#include "core/ErrorLog.h"
#include "core/SafeWriter.h"
#include "qt/Strings.h"
#include "reports/engine/PdfWriter.h"
#include "reports/engine/RtfWriter.h"

namespace Tarno
{

namespace
{

constexpr std::string_view module = "mMain";

/// Asks for a file name and returns it, always with the suffix ".pdf" (see docs/quirks.md). Returns nothing
/// if the user cancelled.
std::optional<QString> ChosenFile(const Program& program, const FileQuestion& question, QWidget* parent)
{
    std::optional<QString> file = program.files.Save(parent, question);
    if (file && !file->endsWith(QLatin1String(".pdf"))) {
        *file += QLatin1String(".pdf");
    }
    return file;
}

/// Returns whether the file was written. Otherwise a message has named it.
bool WriteFile(const Program& program, const QString& file, const QByteArray& bytes, QWidget* parent)
{
    try {
        SafeWriter(program.operations)
            .Write(ToUtf8(file), std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
        return true;
    } catch (const Error&) {
        program.messages.Ask(
            parent, {.text = QStringLiteral("Unable to write to the file ") + file +
                             QStringLiteral("\r\nPlease ensure you have selected a valid directory and "
                                            "file for writing."),
                     .title = QStringLiteral("Export Error"),
                     .icon = Icon::Exclamation});
        return false;
    }
}

} // namespace

std::optional<QString> mMain::RTFExport(const Program& program, const Document& document, QWidget* parent)
{
    std::optional<QString> written;
    Trap(module, "RTFExport", [&] {
        const auto file = ChosenFile(program,
                                     {.title = QStringLiteral("Save Report to RTF"),
                                      .filter = QStringLiteral("Rich Text Format (*.rtf)"),
                                      .folder = FromUtf8(program.folder.GetAppPath() + '/'),
                                      .fileName = QStringLiteral("RTF Files"),
                                      .suffix = QStringLiteral(".rtf")},
                                     parent);
        if (file && WriteFile(program, *file, RtfBytes(document), parent)) {
            written = file;
        }
    });
    return written;
}

std::optional<QString> mMain::PDFExport(const Program& program, const Document& document, QWidget* parent)
{
    std::optional<QString> written;
    Trap(module, "PDFExport", [&] {
        const auto file = ChosenFile(program,
                                     {.title = QStringLiteral("Save Report to PDF"),
                                      .filter = QStringLiteral("PDF Documents (*.pdf)"),
                                      .folder = FromUtf8(program.folder.GetAppPath() + '/'),
                                      .fileName = QStringLiteral("PDF Files"),
                                      .suffix = QStringLiteral(".pdf")},
                                     parent);
        if (!file) {
            return;
        }
        WaitDialog wait(program.clock, parent, QStringLiteral("Writing the report..."),
                        static_cast<int>(document.pages.size()));
        const QByteArray bytes = PdfBytes(document, [&wait](int /*pages*/) { return wait.Advance(); });
        if (!bytes.isEmpty() && WriteFile(program, *file, bytes, parent)) {
            written = file;
        }
    });
    return written;
}

} // namespace Tarno
