#include "OptionGroup.h"

#include <QAbstractButton>
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
    }
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

} // namespace Tarno
