#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <map>
#include <set>

class QAbstractButton;
class QKeyEvent;
class QMouseEvent;
class QWidget;

namespace Tarno
{

class RefusalNote;

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

    /// While `check` refuses, `refusal` is shown at the box and is its accessible description.
    void Add(QWidget* box, Check check, const QString& refusal = {});

    /// Sets the button "Save". Its click or mnemonic first runs LeaveAll, and takes effect even if only that
    /// enabled the button.
    void SetSaveButton(QAbstractButton* button);

    /// Reports that the user or an assistive tool has changed `box`. Without the focus it is checked now.
    void Edited(QWidget* box);

    /// Runs `show`, which shows another record in the boxes. That does not count as editing, and what was
    /// edited before is forgotten.
    void WhileShowing(const std::function<void()>& show);

    /// Runs the check of `box` and returns whether it accepted.
    bool RunCheck(QWidget* box);

    /// Runs the check of the focused box, if any, and returns whether the box may be left.
    bool Leave();

    /// Like Leave, but also for every box that was changed and lost the focus without a check, because an
    /// assistive tool moved the focus. Focuses a refused box.
    bool LeaveAll();

    /// Focuses the control that had the focus before the current button, if any.
    void ReturnFocus();

    bool eventFilter(QObject* receiver, QEvent* event) override;

Q_SIGNALS:
    /// The user has changed a box, which is not checked yet.
    void BoxEdited();

private:
    struct Guarded {
        Check check;
        QString refusal;
    };

    void FocusChanged(QWidget* old, QWidget* now);
    bool RefusesPress(const QMouseEvent& press);
    bool RefusesWheel(const QPoint& position);
    bool RefusesKey(const QKeyEvent& key);
    bool IsMnemonicOfDisabledSave(const QKeyEvent& key) const;
    void ShowPageOf(const QWidget* box);
    QWidget* FocusedBox() const;
    bool BelongsToWindow(const QObject* widget) const;

    QWidget* m_window;
    std::map<QWidget*, Guarded> m_boxes;
    std::set<QWidget*> m_unchecked; ///< changed since their last check, or refused by it
    RefusalNote* m_note;
    QPointer<QWidget> m_lastInput; ///< the last focused control that is no button
    QAbstractButton* m_save = nullptr;
    bool m_isShowing = false;
};

} // namespace Tarno
