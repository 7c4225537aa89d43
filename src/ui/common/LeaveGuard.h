#pragma once

#include <QObject>

#include <functional>
#include <map>

class QAbstractButton;
class QKeyEvent;
class QWidget;

namespace Tarno
{

/// Runs the check of the box that has the focus before anything else in its window acts: a click, Tab, a
/// mnemonic or a control's own shortcut, Enter, Esc, a page tab, the close box. A check that refuses swallows
/// that action, so the box keeps the focus and nothing happens.
class LeaveGuard : public QObject
{
    Q_OBJECT

public:
    /// Takes the box's text over, or refuses it; returns whether the box may be left. Running it again
    /// without a change in between must change nothing.
    using Check = std::function<bool()>;

    /// Guards the boxes of `window`, which owns the guard, while it is shown.
    explicit LeaveGuard(QWidget* window);

    void Add(QWidget* box, Check check);

    /// The button "Save", which may be disabled until the text of the box with the focus is written back: its
    /// click or mnemonic first runs the check, and counts if that enabled the button.
    void SetSaveButton(QAbstractButton* button);

    /// Runs the check of the box that has the focus, if any; returns whether it may be left.
    bool Leave();

    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    bool RefusesPress(const QPoint& position);
    bool RefusesWheel(const QPoint& position);
    bool RefusesKey(const QKeyEvent& key);
    bool IsMnemonicOfDisabledSave(const QKeyEvent& key) const;
    QWidget* FocusedBox() const;
    bool IsOwn(const QObject* widget) const;

    QWidget* m_window;
    std::map<QWidget*, Check> m_checks;
    QAbstractButton* m_save = nullptr;
};

} // namespace Tarno
