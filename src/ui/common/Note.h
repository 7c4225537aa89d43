#pragma once

#include <QLabel>

namespace Tarno
{

/// A quiet remark about the group that contains it. It refuses nothing and takes no room without a text.
class Note : public QLabel
{
    Q_OBJECT

public:
    explicit Note(QWidget* parent = nullptr);

    /// Shows `text`, or hides the note if `text` is empty. Assistive tools read it with the group. The
    /// descriptions of boxes are reserved for refusals.
    void Explain(const QString& text);
};

} // namespace Tarno
