#pragma once

#include <QHeaderView>

namespace Tarno
{

/// The header of a list. Paints the icons of its headings at the end instead of before the text. Every
/// heading leaves the room free, so an icon moves no text.
class IconAtEndHeader : public QHeaderView
{
    Q_OBJECT

public:
    explicit IconAtEndHeader(QWidget* parent);

protected:
    void initStyleOptionForIndex(QStyleOptionHeader* option, int column) const override;
    void paintSection(QPainter* painter, const QRect& section, int column) const override;

private:
    int Margin() const;
    int IconSize() const;
};

} // namespace Tarno
