#pragma once

#include <QObject>

class QWidget;

namespace Tarno
{

/// Keeps every word-wrapped label of a window high enough for its text. A layout alone would clip the text
/// with a large font or in a narrow window.
class TextHeight : public QObject
{
    Q_OBJECT

public:
    /// Watches the labels that `window` has at the time of the call. `window` owns the object.
    explicit TextHeight(QWidget* window);

    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace Tarno
