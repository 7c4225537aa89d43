#pragma once

#include <QComboBox>

namespace Tarno
{

/// A combo box that ends a long text with an ellipsis and shows the whole text in a tool tip. Its texts do
/// not make it wider.
class ChoiceBox : public QComboBox
{
    Q_OBJECT

public:
    explicit ChoiceBox(QWidget* parent = nullptr);

    void showPopup() override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString ShownText() const;
};

} // namespace Tarno
