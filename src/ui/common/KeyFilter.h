#pragma once

#include <QString>
#include <QValidator>

class QLineEdit;

/// Lets only digits and some further characters be put into a box, by whatever way: what else is typed,
/// pasted, dropped or composed is left out. What the program shows there, and what the user takes away
/// from it, passes as it is.
class KeyFilter : public QValidator
{
    Q_OBJECT

public:
    /// Filters what is put into `box`, which owns the filter.
    KeyFilter(QLineEdit* box, QString besidesDigits);

    State validate(QString& input, int& position) const override;

    /// Puts `text` into `box` past its filter, if it has one.
    static void Show(QLineEdit* box, const QString& text);

    /// Whether a box is changing because of Show, not by the user's hand.
    static bool IsShowing() { return m_showing; }

private:
    bool Passes(QChar character) const;

    QString m_besidesDigits;
    static inline bool m_showing = false;
    QString m_before; ///< the box's text before what is being put in
};
