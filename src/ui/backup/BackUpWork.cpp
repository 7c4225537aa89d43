#include "BackUpWork.h"

#include "qt/Strings.h"
#include "ui/common/Notices.h"
#include "ui/reports/WaitDialog.h"

#include <QLocale>

#include <algorithm>

namespace Tarno
{

bool RunWithProgress(const Program& program, QWidget* parent, const QString& text,
                     const std::function<void(const Progress& progress)>& work)
{
    constexpr int steps = 1000;
    WaitDialog wait(program.clock, parent, text, steps);
    try {
        work([&](double done) {
            // the last step would close the dialog
            return wait.AdvanceTo(std::min(static_cast<int>(done * steps), steps - 1));
        });
    } catch (const Cancelled&) {
        return false;
    }
    return true;
}

QString ReasonOf(const Error& error)
{
    const std::string description = error.Description();
    if (description == Describe(error.Number())) {
        switch (error.Number()) {
        case ErrorNumber::DiskFull:
            return QStringLiteral("The disk is full.");
        case ErrorNumber::FileNotFound:
            return QStringLiteral("The file does not exist.");
        case ErrorNumber::PathNotFound:
            return QStringLiteral("The folder does not exist.");
        case ErrorNumber::PathFileAccess:
            return QStringLiteral("You may not read or write there, or the disk is read-only.");
        case ErrorNumber::PermissionDenied:
            return QStringLiteral("Another program is using the files.");
        case ErrorNumber::DeviceInputOutput:
            return QStringLiteral("The disk could not be read or written.");
        default:
            break;
        }
    }
    return FromUtf8(description.ends_with('.') ? description : description + '.');
}

void ShowProblem(const Program& program, QWidget* parent, const QString& text, const QString& title)
{
    program.messages.Ask(parent, {.text = text, .title = title, .icon = Icon::Exclamation});
}

QString ListedMissing(const std::vector<std::string>& pictures, const QString& consequence)
{
    QStringList lines;
    for (const std::string& picture : pictures) {
        lines << FromUtf8(picture);
    }
    return lines.isEmpty() ? QString()
                           : QStringLiteral("\r\n\r\nThese pictures do not exist or cannot be read, so ") +
                                 consequence + QStringLiteral(":\r\n") + Listed(lines);
}

QString SizeInWords(std::uint64_t bytes)
{
    return QLocale().formattedDataSize(static_cast<qint64>(bytes), 1, QLocale::DataSizeSIFormat);
}

} // namespace Tarno
