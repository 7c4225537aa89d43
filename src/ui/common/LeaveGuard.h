#pragma once

#include <QObject>

#include <functional>
#include <map>

class QAbstractButton;
class QKeyEvent;
class QWidget;

namespace Tarno
{

/// Runs the check of the focused box before any other action in its window: a click, Tab, a mnemonic or
/// shortcut, Enter, Esc, a page tab, the close box. If the check refuses the text, the action is discarded
/// and the box keeps the focus.
class LeaveGuard : public QObject
{
    Q_OBJECT

public:
    /// Stores or refuses the text of the box and returns whether the box may be left. Must be idempotent.
    using Check = std::function<bool()>;

    /// Guards the boxes of `window` while it is visible. `window` owns the guard.
    explicit LeaveGuard(QWidget* window);

    void Add(QWidget* box, Check check);

    /// Sets the button "Save". If it is disabled, its click or mnemonic first runs the check of the focused
    /// box, and takes effect if the check enabled the button.
    void SetSaveButton(QAbstractButton* button);

    /// Runs the check of the focused box, if any, and returns whether the box may be left.
    bool Leave();

    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    bool RefusesPress(const QPoint& position);
    bool RefusesWheel(const QPoint& position);
    bool RefusesKey(const QKeyEvent& key);
    bool IsMnemonicOfDisabledSave(const QKeyEvent& key) const;
    QWidget* FocusedBox() const;
    bool BelongsToWindow(const QObject* widget) const;

    QWidget* m_window;
    std::map<QWidget*, Check> m_checks;
    QAbstractButton* m_save = nullptr;
};

} // namespace Tarno
