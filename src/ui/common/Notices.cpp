#include "Notices.h"

#include "qt/Strings.h"

#include <QApplication>

namespace Tarno
{

namespace
{

/// Returns for example "trip number 12", for a record without other distinguishing values.
QString NumberedRecord(const char* kind, const RecordTitle& record)
{
    return QLatin1String(kind) + QStringLiteral(" number ") + FromUtf8(record.key);
}

} // namespace

QString DescribeRecord(const RecordTitle& record)
{
    using Kind = RecordTitle::Kind;
    const QString name = ShownInOneLine(record.name);
    const auto named = [&](const char* kind) {
        return name.isEmpty() ? NumberedRecord(kind, record) : QLatin1String(kind) + QLatin1Char(' ') + name;
    };
    switch (record.kind) {
    case Kind::Trip:
        return (record.date.empty() ? NumberedRecord("the trip", record)
                                    : QStringLiteral("the trip of ") + FromUtf8(record.date)) +
               (name.isEmpty() ? QString() : QStringLiteral(" at ") + name);
    case Kind::Location:
        return named("the location");
    case Kind::Column:
        return named("the column");
    case Kind::Report:
        return named("the report");
    }
    return {};
}

QString Listed(const QStringList& lines)
{
    constexpr qsizetype most = 10;
    QStringList listed = lines.mid(0, most);
    if (lines.size() > most) {
        listed << QStringLiteral("and %1 more").arg(lines.size() - most);
    }
    return listed.join(QStringLiteral("\r\n"));
}

QString UnreadableHint(const QString& contents, const QString& file)
{
    return contents + QStringLiteral(" could not be read. Nothing is written over ") + file +
           QStringLiteral(". Restore the file from a copy or correct it in a text editor, then start Tarno "
                          "again.");
}

bool ConfirmLosingChanges(const cSQL& sql, QWidget* parent, MessageBoxes& messages)
{
    QStringList changes;
    for (const UnsavedChange& change : sql.UnsavedChanges()) {
        changes << (change.isDeletion ? QStringLiteral("the deletion of ") : QString()) +
                       DescribeRecord(change.record) + FromUtf8(" (" + change.file + ")");
    }
    if (changes.isEmpty()) {
        return true;
    }
    const QString text = QStringLiteral("These changes could not be saved:\r\n\r\n") + Listed(changes) +
                         QStringLiteral("\r\n\r\nIf you exit now, you will lose them. To keep them, click "
                                        "\"No\" and save another change.\r\n\r\nExit anyway?");
    return messages.Ask(parent, {.text = text,
                                 .title = QStringLiteral("Changes Not Saved"),
                                 .icon = Icon::Exclamation,
                                 .buttons = Buttons::YesNo,
                                 .byDefault = Button::No}) == Button::Yes;
}

void ShowConflict(const ConflictNotice& conflict, MessageBoxes& messages)
{
    const QString record = DescribeRecord(conflict.record);
    QString text;
    if (conflict.keptAs.empty()) {
        text = QStringLiteral("Another program has deleted ") + record +
               QStringLiteral(", which you have changed.\r\n\r\nYour version was restored.");
    } else if (conflict.isDeletedHere) {
        text = QStringLiteral("Another program has changed ") + record +
               QStringLiteral(", which you have deleted.\r\n\r\nIt remains deleted. The other program's "
                              "version is stored in:\r\n") +
               FromUtf8(conflict.keptAs);
    } else {
        text =
            QStringLiteral("You and another program have both changed ") + record +
            QStringLiteral(".\r\n\r\nYour version was saved. The other program's version is stored in:\r\n") +
            FromUtf8(conflict.keptAs);
    }
    messages.ShowInformation(QApplication::activeWindow(), text, QStringLiteral("Tarno"));
}

void ShowFileProblems(const cSQL& sql, const QString& folder, QWidget* parent, MessageBoxes& messages)
{
    QStringList files;
    for (const FileProblem& problem : sql.FileProblems()) {
        files << FromUtf8(problem.file + ": " + problem.reason);
    }
    QStringList records;
    for (const RecordTitle& record : sql.ShortRecords()) {
        records << DescribeRecord(record);
    }
    QStringList paragraphs;
    if (!files.isEmpty()) {
        paragraphs << QStringLiteral("Tarno could not read these files in ") + folder + QStringLiteral(":")
                   << Listed(files)
                   << QStringLiteral("Nothing is written over them. Restore each file from a copy or correct "
                                     "it in a text editor, then start Tarno again.");
    }
    if (!records.isEmpty()) {
        paragraphs << QStringLiteral("Values are missing in:") << Listed(records)
                   << QStringLiteral("Missing values are shown as empty. You can delete these records. To "
                                     "edit them, first add the missing values in a text editor.");
    }
    if (!paragraphs.isEmpty()) {
        messages.ShowInformation(parent, paragraphs.join(QStringLiteral("\r\n\r\n")),
                                 QStringLiteral("Tarno"));
    }
}

} // namespace Tarno
