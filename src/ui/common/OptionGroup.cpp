#include "OptionGroup.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QWidget>

namespace Tarno
{

OptionGroup::OptionGroup(QWidget* window, const QString& name) : QObject(window)
{
    for (int index = 0;; ++index) {
        auto* button = window->findChild<QAbstractButton*>(name + QLatin1Char('_') + QString::number(index));
        if (button == nullptr) {
            break;
        }
        m_buttons.addButton(button, index);
        button->installEventFilter(this);
    }
    SetTabStop();
    connect(&m_buttons, &QButtonGroup::idToggled, this, &OptionGroup::SetTabStop);
    connect(&m_buttons, &QButtonGroup::idClicked, this, &OptionGroup::Clicked);
}

int OptionGroup::Count() const
{
    return static_cast<int>(m_buttons.buttons().size());
}

std::optional<int> OptionGroup::Chosen() const
{
    const int id = m_buttons.checkedId();
    return id < 0 ? std::nullopt : std::optional(id);
}

void OptionGroup::Choose(std::optional<int> index)
{
    QAbstractButton* wanted = index ? m_buttons.button(*index) : nullptr;
    if (wanted != nullptr) {
        wanted->setChecked(true);
    } else if (QAbstractButton* chosen = m_buttons.checkedButton(); chosen != nullptr) {
        // an exclusive group does not allow its checked button to be unchecked
        m_buttons.setExclusive(false);
        chosen->setChecked(false);
        m_buttons.setExclusive(true);
    }
}

/// Makes the chosen button the only one that Tab reaches, or the first if none is chosen. Qt makes it the
/// button that had the focus last.
void OptionGroup::SetTabStop()
{
    const QAbstractButton* stop =
        m_buttons.checkedButton() != nullptr ? m_buttons.checkedButton() : m_buttons.button(0);
    for (QAbstractButton* button : m_buttons.buttons()) {
        const int policy = button->focusPolicy() & ~Qt::TabFocus;
        button->setFocusPolicy(static_cast<Qt::FocusPolicy>(policy | (button == stop ? Qt::TabFocus : 0)));
    }
}

/// Clicks the next option after `focused` that starts with `letter`. Returns false if there is none.
bool OptionGroup::ChooseByLetter(QAbstractButton* focused, QChar letter)
{
    for (int step = 1; step <= Count(); ++step) {
        QAbstractButton* button = m_buttons.button((m_buttons.id(focused) + step) % Count());
        if (button->isEnabled() &&
            button->text().remove(QLatin1Char('&')).startsWith(letter, Qt::CaseInsensitive)) {
            button->setFocus();
            button->click();
            return true;
        }
    }
    return false;
}

bool OptionGroup::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusOut) {
        SetTabStop();
    } else if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool isLetter = key->text().size() == 1 && key->text().front().isLetter() &&
                              (key->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == 0;
        return isLetter && ChooseByLetter(static_cast<QAbstractButton*>(watched), key->text().front());
    }
    return false;
}

} // namespace Tarno
