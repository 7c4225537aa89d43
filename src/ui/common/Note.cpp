#include "Note.h"

namespace Tarno
{

namespace
{

/// Returns a grey between the colours of text and background, which is readable on both light and dark ones.
QColor Grey(const QPalette& colours)
{
    constexpr double share = 0.7; // of the text
    const QColor text = colours.color(QPalette::WindowText);
    const QColor background = colours.color(QPalette::Window);
    const auto mix = [](double one, double other) { return share * one + (1 - share) * other; };
    return QColor::fromRgbF(static_cast<float>(mix(text.redF(), background.redF())),
                            static_cast<float>(mix(text.greenF(), background.greenF())),
                            static_cast<float>(mix(text.blueF(), background.blueF())));
}

} // namespace

Note::Note(QWidget* parent) : QLabel(parent)
{
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, Grey(colours));
    setPalette(colours);
    setTextFormat(Qt::PlainText);
    hide();
}

void Note::Explain(const QString& text)
{
    setText(text);
    setHidden(text.isEmpty());
    parentWidget()->setAccessibleDescription(text);
}

} // namespace Tarno
