#pragma once

#include <QString>

class QWidget;

namespace Tarno
{

/// Remembers the windows between runs of the program, in a file of its own. Values that are damaged or no
/// longer fit are ignored. If the file cannot be read or written, nothing is remembered and nothing reported.
class RememberedWindows
{
public:
    /// Returns the file in the user's configuration folder. It is not in the data folder on any platform.
    static QString DefaultFile();

    /// Creates the file and its folder when there is something to remember.
    explicit RememberedWindows(QString file);

    /// Restores size, position, column widths and splitters of `window`, and remembers them whenever it is
    /// hidden. The object name identifies the window. Call it once, before the window is shown and after its
    /// lists have got their columns.
    void Remember(QWidget& window) const;

    /// Whether the user wants to see the details of the selected trip beside the log.
    bool AreDetailsShown() const;
    void SetDetailsShown(bool shown) const;

    /// Returns the key of the row that was selected last in the log in `folder`, or an empty string.
    QString SelectedRow(const QString& folder) const;
    void SetSelectedRow(const QString& folder, const QString& key) const;

    /// Returns the number of the place that was chosen last in the calendar of the log in `folder`, or an
    /// empty string.
    QString Place(const QString& folder) const;
    void SetPlace(const QString& folder, const QString& number) const;

    /// Returns the folder for back-ups that was chosen last for the log in the folder `log`, otherwise the
    /// folder "backups" there. It need not exist.
    QString BackUpFolder(const QString& log) const;
    void SetBackUpFolder(const QString& log, const QString& folder) const;

    /// Returns the day, "yyyy-mm-dd", on which the user was told last that the automatic back-up of the log
    /// failed, or an empty string.
    QString DayOfFailedBackUp(const QString& log) const;
    void SetDayOfFailedBackUp(const QString& log, const QString& day) const;

private:
    /// A text that is remembered for each log.
    QString OfLog(QLatin1String name, const QString& log) const;
    void SetOfLog(QLatin1String name, const QString& log, const QString& text) const;

    QString m_file;
};

} // namespace Tarno
