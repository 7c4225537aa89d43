#pragma once

#include <QObject>

class QWidget;

namespace Tarno
{

/// Keeps every wrapped label of a window as high as its text needs at its width: a layout alone would cut it
/// off where the font is large or the window narrow.
class TextHeight : public QObject
{
    Q_OBJECT

public:
    /// Watches over the labels that `window`, which owns the watcher, has by now.
    explicit TextHeight(QWidget* window);

    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace Tarno
