#include "UndoMenu.h"

#include "core/ErrorLog.h"
#include "core/Text.h"
#include "qt/Strings.h"
#include "ui/common/Notices.h"

#include <QAction>
#include <QKeySequence>
#include <QWidget>

#include <optional>

namespace Tarno
{

namespace
{

/// Returns for example "Delete of 2024-10-05 Pittwater", "Edit of 3 records", "Import of 12 trips" or "Import
/// of 1 location".
QString DescribeChange(const ChangeTitle& change)
{
    if (change.kind == ChangeKind::Import) {
        return QStringLiteral("Import of ") + FromUtf8(change.trips > 0
                                                           ? Counted(change.trips, "trip")
                                                           : Counted(change.locations, "location"));
    }
    if (const std::size_t count = change.trips + change.locations;
        change.kind == ChangeKind::Edit && count > 1) {
        return QStringLiteral("Edit of %1 records").arg(count);
    }
    const QString kind = change.kind == ChangeKind::Add    ? QStringLiteral("Add")
                         : change.kind == ChangeKind::Edit ? QStringLiteral("Edit")
                                                           : QStringLiteral("Delete");
    const QString record =
        (FromUtf8(change.record.date) + QLatin1Char(' ') + ShownInOneLine(change.record.name)).trimmed();
    return kind + QStringLiteral(" of ") + (record.isEmpty() ? DescribeRecord(change.record) : record);
}

void ShowNext(QAction* action, const QString& word, const std::optional<ChangeTitle>& next)
{
    QString text = word;
    if (next) {
        text += QLatin1Char(' ') + DescribeChange(*next).replace(QLatin1Char('&'), QLatin1String("&&"));
    }
    action->setText(text);
    action->setEnabled(next.has_value());
}

} // namespace

UndoMenu::UndoMenu(const Program& program, QAction* undo, QAction* redo, QWidget* window)
    : QObject(window), m_program(program), m_undo(undo), m_redo(redo), m_window(window)
{
    redo->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)});
    connect(undo, &QAction::triggered, this, &UndoMenu::Undo);
    connect(redo, &QAction::triggered, this, &UndoMenu::Redo);
}

void UndoMenu::Update()
{
    ShowNext(m_undo, QStringLiteral("&Undo"), m_program.sql.NextUndo());
    ShowNext(m_redo, QStringLiteral("&Redo"), m_program.sql.NextRedo());
}

void UndoMenu::Undo()
{
    Run("Undo", &cSQL::Undo, QStringLiteral("undone"));
}

void UndoMenu::Redo()
{
    Run("Redo", &cSQL::Redo, QStringLiteral("redone"));
}

void UndoMenu::Run(const char* routine, UndoResult (cSQL::*run)(), const QString& word)
{
    Q_EMIT Started();
    std::string trip;
    cSQL& sql =
        m_program.sql; // outside of the lambda, where the sanitizer of GCC 12 takes its object for `this`
    Trap("fTarno", routine, [&] {
        const UndoResult result = (sql.*run)();
        if (result.change.record.kind == RecordTitle::Kind::Trip) {
            trip = result.key;
        }
        Show(result, word);
    });
    Q_EMIT Finished(trip);
}

/// Explains why nothing has changed. `word` is "undone" or "redone".
void UndoMenu::Show(const UndoResult& result, const QString& word)
{
    const QString record = DescribeRecord(result.change.record);
    QString reason;
    if (result.status == UndoStatus::ChangedByOther) {
        reason = QStringLiteral("another program has changed or deleted ") + record +
                 QStringLiteral(" since. Nothing was changed.");
    } else if (result.status == UndoStatus::InUse) {
        reason = QStringLiteral("a trip uses ") + record + QLatin1Char('.');
    } else {
        return;
    }
    m_program.messages.ShowInformation(
        m_window,
        QStringLiteral("\"%1\" was not %2, because ").arg(DescribeChange(result.change), word) + reason,
        QStringLiteral("Tarno"));
}

} // namespace Tarno
