#include "KeyFilter.h"

#include <QLineEdit>
#include <QSignalBlocker>

#include <algorithm>
#include <utility>

namespace Tarno
{

KeyFilter::KeyFilter(QLineEdit* box, QString furtherCharacters)
    : QValidator(box), m_furtherCharacters(std::move(furtherCharacters)), m_before(box->text())
{
    box->setValidator(this);
    connect(box, &QLineEdit::textChanged, this, [this](const QString& text) { m_before = text; });
}

void KeyFilter::SetText(QLineEdit* box, const QString& text)
{
    const QSignalBlocker blocker(box);
    const QValidator* validator = box->validator();
    box->setValidator(nullptr);
    box->setText(text);
    box->setValidator(validator);
    if (box->window()->focusWidget() != box) {
        box->setCursorPosition(0); // a long text shows its beginning
    }
    if (auto* filter = box->findChild<KeyFilter*>(); filter != nullptr) {
        filter->m_before = box->text();
    }
}

bool KeyFilter::Passes(QChar character) const
{
    return (character >= QLatin1Char('0') && character <= QLatin1Char('9')) ||
           m_furtherCharacters.contains(character);
}

QValidator::State KeyFilter::validate(QString& input, int& position) const
{
    // the inserted text is what remains between the unchanged prefix and suffix
    qsizetype front = 0;
    const qsizetype shorter = std::min(input.size(), m_before.size());
    while (front < shorter && input[front] == m_before[front]) {
        ++front;
    }
    qsizetype behind = 0;
    while (behind < shorter - front && input.back() == m_before.back() &&
           input[input.size() - 1 - behind] == m_before[m_before.size() - 1 - behind]) {
        ++behind;
    }
    QString inserted = input.mid(front, input.size() - front - behind);
    const qsizetype length = inserted.size();
    inserted.removeIf([this](QChar character) { return !Passes(character); });
    if (inserted.size() == length) {
        return Acceptable;
    }
    if (inserted.isEmpty()) {
        return Invalid;
    }
    input = input.left(front) + inserted + input.right(behind);
    position = static_cast<int>(front + inserted.size());
    return Acceptable;
}

} // namespace Tarno
