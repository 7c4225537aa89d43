#pragma once

#include <QString>
#include <QValidator>

class QLineEdit;

namespace Tarno
{

/// Lets the user put only digits and some further characters into a box: every other character that is typed,
/// pasted, dropped or composed is left out. Texts that the program sets, and deletions, are not filtered.
class KeyFilter : public QValidator
{
    Q_OBJECT

public:
    /// Filters what is put into `box`, which owns the filter.
    KeyFilter(QLineEdit* box, QString besidesDigits);

    State validate(QString& input, int& position) const override;

    /// Puts `text` into `box`, unfiltered and without its signals: they are for changes by the user.
    static void SetText(QLineEdit* box, const QString& text);

private:
    bool Passes(QChar character) const;

    QString m_besidesDigits;
    QString m_before; ///< the box's text before what is being put in
};

} // namespace Tarno
