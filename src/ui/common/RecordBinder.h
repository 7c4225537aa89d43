#pragma once

#include "ui/common/EditedRecord.h"

#include <QObject>
#include <QString>

#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>

class QLineEdit;
class QPlainTextEdit;
class QWidget;

namespace Tarno
{

class LeaveGuard;
class OptionGroup;

/// Keeps the text boxes and option groups of an editing window and its record in step, both ways: shows
/// the record's values, and writes a control's value back when the user leaves or clicks it.
class RecordBinder : public QObject
{
    Q_OBJECT

public:
    /// Brings a typed text into the stored form; returns false, the text unchanged, when it is refused.
    using Check = std::function<bool(std::string& text)>;

    /// Binds controls of `window`, which owns the binder. Errors in their handlers are reported under the
    /// name of the window.
    RecordBinder(QWidget* window, EditedRecord& record, LeaveGuard& guard);

    /// Binds a box of one line; without a check any text is accepted. A box whose text is the stored one is
    /// not checked, so that stored and calculated values can always be left. While a text is refused,
    /// `refusal` is shown at the box and is its description for assistive tools.
    void BindBox(std::size_t position, QLineEdit* box, Check check = nullptr, const QString& refusal = {});
    /// Binds a box of several lines, whose line breaks are stored encoded.
    void BindLines(std::size_t position, QPlainTextEdit* box);
    /// Binds the option buttons `group`_0, `group`_1, ... on `page`; the index of the chosen one is stored.
    void BindOptions(std::size_t position, QWidget* page, const char* group);

    /// Shows the record in every control. A code outside its group leaves the group unset.
    void ShowRecord();
    /// Empties every control; the record stays as it is.
    void ShowNothing();

    /// Shows `text` in the box of one line at `position` and writes it into the record, unchecked.
    void Put(std::size_t position, std::string_view text);
    /// Chooses the option `code` at `position` and writes it into the record.
    void PutCode(std::size_t position, int code);

    /// The box of one line at `position`.
    QLineEdit* Box(std::size_t position) const { return m_boxes.at(position).box; }

    /// Checks and stores the text of the box at `position` as if the user left it; returns whether it was
    /// accepted.
    bool Validate(std::size_t position);
    /// Writes every box of several lines back that differs from the record. Returns false, and shows the box,
    /// when one of a single line still holds a text that was refused.
    bool WriteBack();

Q_SIGNALS:
    /// A control's value was compared with the record, which may have changed.
    void WrittenBack();
    /// The text of the box at `position` has been accepted and shown, and is not stored yet.
    void Accepted(std::size_t position);
    /// The user changed the value at `position`.
    void ValueChanged(std::size_t position);
    /// The text of a box of several lines changed, before it reaches the record.
    void LinesEdited();

private:
    struct LineBox {
        QLineEdit* box;
        Check check;
        QString refusal;
    };

    std::string Module() const;
    std::string Routine(const QObject* control, const char* event) const;
    bool ValidateBox(std::size_t position, const LineBox& line);
    void ValidateLines(std::size_t position, const QPlainTextEdit* lines);
    void Store(std::size_t position, std::string_view text);
    void GoTo(QWidget* box);

    QWidget* m_window;
    EditedRecord& m_record;
    LeaveGuard& m_guard;
    std::map<std::size_t, LineBox> m_boxes;
    std::set<std::size_t> m_refused; ///< the boxes whose text was refused last
    std::map<std::size_t, QPlainTextEdit*> m_lines;
    std::map<std::size_t, OptionGroup*> m_options;
};

} // namespace Tarno
