#pragma once

#include <QButtonGroup>
#include <QObject>
#include <QString>

#include <optional>

class QAbstractButton;
class QWidget;

namespace Tarno
{

/// The option buttons `name`_0, `name`_1, ... of a window. At most one is chosen. Tab enters the group at
/// that button, and a letter chooses the next option that starts with it.
class OptionGroup : public QObject
{
    Q_OBJECT

public:
    /// Finds the buttons below `window`, which owns the group.
    OptionGroup(QWidget* window, const QString& name);

    int Count() const;
    /// Returns the index of the chosen button, if any.
    std::optional<int> Chosen() const;
    /// Chooses the button `index`, or none if that index does not exist. Does not emit Clicked.
    void Choose(std::optional<int> index);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// The user chose the button `index`.
    void Clicked(int index);

private:
    void SetTabStop();
    bool ChooseByLetter(QAbstractButton* focused, QChar letter);

    QButtonGroup m_buttons;
};

} // namespace Tarno
