#include "RememberedWindows.h"

#include "SortableList.h"

#include <QCryptographicHash>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QGuiApplication>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QStandardPaths>

#include <algorithm>
#include <utility>

namespace Tarno
{

namespace
{

constexpr QLatin1String geometry("geometry"); ///< when the window is not maximised
constexpr QLatin1String maximised("maximised");
constexpr QLatin1String details("fTarno/details");
constexpr QLatin1String selected("selected"); // groups of values by log
constexpr QLatin1String place("place");
constexpr QLatin1String backUps("backups");
constexpr QLatin1String failedBackUp("failedBackUp");

/// Calls `use` with the settings in `file`. Does nothing if another kind of file has that name, because
/// opening a pipe could block forever.
template <typename Use>
void WithSettings(const QString& file, Use&& use)
{
    const QFileInfo info(file);
    if (info.isFile() || !info.exists()) {
        QSettings settings(file, QSettings::IniFormat);
        use(settings);
    }
}

QString KeyOf(const QWidget& window, const QString& value)
{
    return window.objectName() + QLatin1Char('/') + value;
}

/// Identifies the log by its folder. The keys of settings are case-insensitive, paths may not be.
QString LogKey(QLatin1String group, const QString& folder)
{
    const QByteArray path = QFileInfo(folder).canonicalFilePath().toUtf8();
    return group + QLatin1Char('/') +
           QString::fromLatin1(QCryptographicHash::hash(path, QCryptographicHash::Sha1).toHex());
}

/// Restores the size, cut to the screen, and the position, if the window is completely on a screen there.
/// Does not use QWidget::restoreGeometry, which accepts damaged values.
void RestoreGeometry(QWidget& window, const QRect& saved)
{
    const QScreen* screen = QGuiApplication::screenAt(saved.center());
    if (screen != nullptr && screen->availableGeometry().contains(saved)) {
        window.setGeometry(saved);
    } else {
        window.resize(saved.size().boundedTo(window.screen()->availableGeometry().size()));
    }
}

QList<int> Numbers(const QSettings& settings, const QString& key)
{
    QList<int> numbers;
    for (const QVariant& number : settings.value(key).toList()) {
        numbers << number.toInt();
    }
    return numbers;
}

void SetNumbers(QSettings& settings, const QString& key, const QList<int>& numbers)
{
    settings.setValue(key, QVariantList(numbers.begin(), numbers.end()));
}

/// Whether the splitter can have `sizes`, with no part hidden.
bool AreSizes(const QList<int>& sizes, const QSplitter& splitter)
{
    constexpr int most = 100'000;
    return sizes.size() == splitter.count() &&
           std::all_of(sizes.begin(), sizes.end(), [](int size) { return size > 0 && size < most; });
}

void Restore(QWidget& window, const QSettings& settings)
{
    if (const QRect saved = settings.value(KeyOf(window, geometry)).toRect(); saved.isValid()) {
        RestoreGeometry(window, saved);
    }
    if (settings.value(KeyOf(window, maximised)).toBool()) {
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
    }
    for (SortableList* list : window.findChildren<SortableList*>()) {
        list->SetColumnWidths(Numbers(settings, KeyOf(window, list->objectName())));
    }
    for (QSplitter* splitter : window.findChildren<QSplitter*>()) {
        const QList<int> sizes = Numbers(settings, KeyOf(window, splitter->objectName()));
        if (AreSizes(sizes, *splitter)) {
            splitter->setSizes(sizes);
        }
    }
}

void Save(const QWidget& window, QSettings& settings)
{
    settings.setValue(KeyOf(window, geometry), window.normalGeometry());
    settings.setValue(KeyOf(window, maximised), window.isMaximized());
    for (const SortableList* list : window.findChildren<SortableList*>()) {
        const QList<int> widths = list->ChangedColumnWidths();
        const QString key = KeyOf(window, list->objectName());
        if (widths.isEmpty()) {
            settings.remove(key);
        } else {
            SetNumbers(settings, key, widths);
        }
    }
    for (const QSplitter* splitter : window.findChildren<QSplitter*>()) {
        if (const QList<int> sizes = splitter->sizes(); AreSizes(sizes, *splitter)) {
            SetNumbers(settings, KeyOf(window, splitter->objectName()), sizes);
        }
    }
}

/// Saves its parent, a window, whenever that is hidden.
class SaveOnHide final : public QObject
{
public:
    SaveOnHide(QWidget* window, QString file) : QObject(window), m_file(std::move(file))
    {
        window->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Hide && !event->spontaneous()) { // not when it is minimised
            WithSettings(m_file, [watched](QSettings& settings) {
                Save(*static_cast<const QWidget*>(watched), settings);
            });
        }
        return false;
    }

private:
    QString m_file;
};

} // namespace

QString RememberedWindows::DefaultFile()
{
    // not "tarno", which is the data folder on Windows
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QLatin1String("/tarno-state/windows.ini");
}

RememberedWindows::RememberedWindows(QString file) : m_file(std::move(file)) {}

void RememberedWindows::Remember(QWidget& window) const
{
    WithSettings(m_file, [&window](const QSettings& settings) { Restore(window, settings); });
    new SaveOnHide(&window, m_file);
}

bool RememberedWindows::AreDetailsShown() const
{
    bool shown = false;
    WithSettings(m_file, [&](const QSettings& settings) { shown = settings.value(details).toBool(); });
    return shown;
}

void RememberedWindows::SetDetailsShown(bool shown) const
{
    WithSettings(m_file, [&](QSettings& settings) { settings.setValue(details, shown); });
}

QString RememberedWindows::OfLog(QLatin1String name, const QString& log) const
{
    QString text;
    WithSettings(m_file,
                 [&](const QSettings& settings) { text = settings.value(LogKey(name, log)).toString(); });
    return text;
}

void RememberedWindows::SetOfLog(QLatin1String name, const QString& log, const QString& text) const
{
    WithSettings(m_file, [&](QSettings& settings) { settings.setValue(LogKey(name, log), text); });
}

QString RememberedWindows::SelectedRow(const QString& folder) const
{
    return OfLog(selected, folder);
}

void RememberedWindows::SetSelectedRow(const QString& folder, const QString& key) const
{
    SetOfLog(selected, folder, key);
}

QString RememberedWindows::Place(const QString& folder) const
{
    return OfLog(place, folder);
}

void RememberedWindows::SetPlace(const QString& folder, const QString& number) const
{
    SetOfLog(place, folder, number);
}

QString RememberedWindows::BackUpFolder(const QString& log) const
{
    const QString folder = OfLog(backUps, log);
    return folder.isEmpty() ? QDir::toNativeSeparators(log + QLatin1String("/backups")) : folder;
}

void RememberedWindows::SetBackUpFolder(const QString& log, const QString& folder) const
{
    SetOfLog(backUps, log, folder);
}

QString RememberedWindows::DayOfFailedBackUp(const QString& log) const
{
    return OfLog(failedBackUp, log);
}

void RememberedWindows::SetDayOfFailedBackUp(const QString& log, const QString& day) const
{
    SetOfLog(failedBackUp, log, day);
}

} // namespace Tarno
