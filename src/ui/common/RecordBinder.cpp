#include "RecordBinder.h"

#include "Handle.h"
#include "KeyFilter.h"
#include "LeaveGuard.h"
#include "OptionGroup.h"
#include "core/Conversions.h"
#include "core/ErrorLog.h"
#include "qt/Strings.h"

#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>

#include <utility>

namespace Tarno
{

namespace
{

/// Colours a refused box light orange, with text that is readable in a dark palette too, or resets its
/// colours.
void ShowRefused(QWidget* box, bool refused)
{
    QPalette colours;
    if (refused) {
        colours.setColor(QPalette::Base, QColor(255, 224, 192));
        colours.setColor(QPalette::Text, Qt::black);
    }
    box->setPalette(colours);
}

void Show(QLineEdit* box, std::string_view stored)
{
    KeyFilter::SetText(box, FromUtf8(stored));
    ShowRefused(box, false);
}

/// Returns the text of the box. toPlainText would convert no-break spaces to ordinary ones.
QString TypedLines(const QPlainTextEdit* lines)
{
    return lines->document()
        ->toRawText()
        .replace(QChar::ParagraphSeparator, QLatin1Char('\n'))
        .replace(QChar::LineSeparator, QLatin1Char('\n'));
}

std::optional<int> CodeOf(std::string_view stored)
{
    try {
        return ToInt16(stored);
    } catch (const Error&) {
        return std::nullopt;
    }
}

} // namespace

RecordBinder::RecordBinder(QWidget* window, EditedRecord& record, LeaveGuard& guard)
    : QObject(window), m_window(window), m_record(record), m_guard(guard)
{
}

std::string RecordBinder::Module() const
{
    return ToUtf8(m_window->objectName());
}

std::string RecordBinder::Routine(const QObject* control, const char* event) const
{
    return ToUtf8(control->objectName()) + event;
}

void RecordBinder::BindBox(std::size_t position, QLineEdit* box, Check check, const QString& refusal,
                           Check silentCheck)
{
    LineBox& line = m_boxes[position];
    line = {box, std::move(check), std::move(silentCheck)};
    if (!line.silentCheck) {
        line.silentCheck = line.check;
    }
    m_guard.Add(
        box, [this, position] { return Validate(position); }, refusal);
    connect(box, &QLineEdit::textChanged, this, [this, box] { m_guard.Edited(box); });
}

void RecordBinder::BindLines(std::size_t position, QPlainTextEdit* box)
{
    m_lines[position] = box;
    Handle(box, &QPlainTextEdit::textChanged, "Change", this, [this] { Q_EMIT LinesEdited(); });
    m_guard.Add(box, [this, position, box] {
        Trap(Module(), Routine(box, "_Validate"), [&] {
            ValidateLines(position, box);
            Q_EMIT WrittenBack();
        });
        return true;
    });
}

void RecordBinder::BindOptions(std::size_t position, QWidget* page, const char* group)
{
    auto* options = new OptionGroup(page, QLatin1String(group));
    m_options[position] = options;
    connect(options, &OptionGroup::Clicked, this, [this, position, group](int index) {
        Trap(Module(), std::string(group) + "_Click", [&] {
            if (CodeOf(m_record.Text(position)) != index) { // "03" already means option 3
                Store(position, std::to_string(index));
            }
            Q_EMIT WrittenBack();
        });
    });
}

void RecordBinder::ShowRecord()
{
    for (const auto& [position, line] : m_boxes) {
        Show(line.box, m_record.Text(position));
    }
    for (const auto& [position, lines] : m_lines) {
        lines->setPlainText(ShownLines(m_record.Text(position)));
    }
    for (const auto& [position, options] : m_options) {
        options->Choose(CodeOf(m_record.Text(position)));
    }
}

void RecordBinder::ClearControls()
{
    for (const auto& [position, line] : m_boxes) {
        Show(line.box, "");
    }
    for (const auto& [position, lines] : m_lines) {
        lines->clear();
    }
    for (const auto& [position, options] : m_options) {
        options->Choose(std::nullopt);
    }
}

void RecordBinder::ShowAndStore(std::size_t position, std::string_view text)
{
    if (const auto lines = m_lines.find(position); lines != m_lines.end()) {
        lines->second->setPlainText(ShownLines(text));
    } else {
        Show(Box(position), text);
    }
    m_record.Store(position, text);
}

void RecordBinder::ShowAndStoreCode(std::size_t position, int code)
{
    m_options.at(position)->Choose(code);
    m_record.Store(position, std::to_string(code));
}

bool RecordBinder::Validate(std::size_t position)
{
    const LineBox& line = m_boxes.at(position);
    bool mayLeave = true;
    Trap(Module(), Routine(line.box, "_Validate"), [&] {
        mayLeave = ValidateBox(position, line);
        if (mayLeave) {
            Q_EMIT WrittenBack();
        }
    });
    return mayLeave;
}

bool RecordBinder::ValidateBox(std::size_t position, const LineBox& line)
{
    std::string text = ToUtf8(line.box->text());
    if (line.check && text != m_record.Text(position) && !line.check(text)) {
        ShowRefused(line.box, true);
        QApplication::beep();
        return false;
    }
    if (ToUtf8(line.box->text()) != text) {
        KeyFilter::SetText(line.box, FromUtf8(text));
    }
    ShowRefused(line.box, false);
    Q_EMIT Accepted(position);
    Store(position, ToUtf8(line.box->text()));
    return true;
}

bool RecordBinder::WriteBack()
{
    const bool mayLeave = m_guard.LeaveAll(); // first, because an open pick list adds its lines
    for (const auto& [position, lines] : m_lines) {
        ValidateLines(position, lines);
    }
    return mayLeave;
}

StoredTexts RecordBinder::TypedTexts() const
{
    StoredTexts texts = m_record.Texts();
    for (const auto& [position, line] : m_boxes) {
        std::string text = ToUtf8(line.box->text());
        if (line.box == m_window->focusWidget() && text != texts.at(position) &&
            (!line.silentCheck || line.silentCheck(text))) {
            texts.at(position) = XmlText(text);
        }
    }
    for (const auto& [position, lines] : m_lines) {
        const QString text = TypedLines(lines);
        if (text != ShownLines(texts.at(position))) {
            texts.at(position) = XmlText(StoredLines(text));
        }
    }
    return texts;
}

void RecordBinder::ValidateLines(std::size_t position, const QPlainTextEdit* lines)
{
    // a hand-written value may contain plain line breaks, which are kept unless the user changes the text
    const QString text = TypedLines(lines);
    if (text != ShownLines(m_record.Text(position))) {
        Store(position, StoredLines(text));
    }
}

void RecordBinder::Store(std::size_t position, std::string_view text)
{
    if (m_record.Store(position, text)) {
        Q_EMIT ValueChanged(position);
    }
}

} // namespace Tarno
