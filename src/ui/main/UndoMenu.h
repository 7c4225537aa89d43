#pragma once

#include "ui/common/Program.h"

#include <QObject>

#include <string>

class QAction;

namespace Tarno
{

/// The commands "Undo" and "Redo" of changes of trips and locations. Their texts name the next change.
class UndoMenu : public QObject
{
    Q_OBJECT

public:
    /// Connects the actions of a window, which owns the object. `program` must outlive it.
    UndoMenu(const Program& program, QAction* undo, QAction* redo, QWidget* window);

    /// Updates texts and states of the actions. Call this after every change of the log.
    void Update();

    void Undo();
    void Redo();

Q_SIGNALS:
    /// A command starts.
    void Started();
    /// A command has run. `trip` is the key of the trip that was restored or changed, or empty.
    void Finished(const std::string& trip);

private:
    void Run(const char* routine, UndoResult (cSQL::*run)(), const QString& word);
    void Show(const UndoResult& result, const QString& word);

    const Program& m_program;
    QAction* m_undo;
    QAction* m_redo;
    QWidget* m_window;
};

} // namespace Tarno
