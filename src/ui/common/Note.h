#pragma once

#include <QLabel>

#include <initializer_list>

namespace Tarno
{

/// A quiet remark about boxes nearby. It refuses nothing and takes no room without a text.
class Note : public QLabel
{
    Q_OBJECT

public:
    explicit Note(QWidget* parent = nullptr);

    /// Shows `text`, or hides the note if `text` is empty. Assistive tools read it with each of `boxes`.
    void Explain(const QString& text, std::initializer_list<QWidget*> boxes);
};

} // namespace Tarno
