#pragma once

#include <QString>
#include <QValidator>

class QLineEdit;

namespace Tarno
{

/// Removes every character except digits and a given set from text that the user types, pastes, drops or
/// composes in a box. Text set by the program and deletions are not filtered.
class KeyFilter : public QValidator
{
    Q_OBJECT

public:
    /// Installs the filter on `box`, which owns it.
    KeyFilter(QLineEdit* box, QString furtherCharacters);

    State validate(QString& input, int& position) const override;

    /// Sets the text of `box` without filtering it and without emitting signals, which are reserved for
    /// changes by the user.
    static void SetText(QLineEdit* box, const QString& text);

private:
    bool Passes(QChar character) const;

    QString m_furtherCharacters;
    QString m_before; ///< the text of the box before the current input
};

} // namespace Tarno
