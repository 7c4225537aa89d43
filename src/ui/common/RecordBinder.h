#pragma once

#include "store/ImportBatch.h"
#include "ui/common/EditedRecord.h"

#include <QObject>
#include <QString>

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>

class QLineEdit;
class QPlainTextEdit;
class QWidget;

namespace Tarno
{

class LeaveGuard;
class OptionGroup;

/// Binds the text boxes and option groups of an editing window to its record in both directions: shows the
/// values of the record, and writes the value of a control back when the user leaves or clicks it.
class RecordBinder : public QObject
{
    Q_OBJECT

public:
    /// Converts a typed text to its stored form. If the text is refused, returns false and leaves it
    /// unchanged.
    using Check = std::function<bool(std::string& text)>;

    /// Binds controls of `window`, which owns the binder. Errors in their handlers are reported with the
    /// object name of the window as the module.
    RecordBinder(QWidget* window, EditedRecord& record, LeaveGuard& guard);

    /// Binds a single-line box. Without a check, every text is accepted. A text that equals the stored value
    /// is not checked, so stored and calculated values never block the box. While a text is refused,
    /// `refusal` is shown at the box and is its accessible description. `silentCheck` replaces a check that
    /// reports errors while the text is not finished.
    void BindBox(std::size_t position, QLineEdit* box, Check check = nullptr, const QString& refusal = {},
                 Check silentCheck = nullptr);
    /// Binds a multi-line box. Its line breaks are stored encoded.
    void BindLines(std::size_t position, QPlainTextEdit* box);
    /// Binds the option buttons `group`_0, `group`_1, ... on `page`. The index of the chosen button is
    /// stored.
    void BindOptions(std::size_t position, QWidget* page, const char* group);

    /// Shows the record in every control. An unknown code leaves its group without a choice.
    void ShowRecord();
    /// Empties every control without changing the record.
    void ClearControls();

    /// Shows the stored text `text` in the box at `position` and stores it without a check.
    void ShowAndStore(std::size_t position, std::string_view text);
    /// Chooses the option `code` at `position` and stores it.
    void ShowAndStoreCode(std::size_t position, int code);

    /// Returns the single-line box at `position`.
    QLineEdit* Box(std::size_t position) const { return m_boxes.at(position).box; }

    /// Stores the text of every multi-line box that differs from the record, and checks the boxes that
    /// LeaveGuard::LeaveAll does. Returns false if one of them refuses its text.
    bool WriteBack();

    /// Returns the values that the record would have if the focused box and the multi-line boxes were left
    /// now, but does nothing else. A text that is refused is replaced by the value of the record.
    StoredTexts TypedTexts() const;

Q_SIGNALS:
    /// A control was written back; the record may have changed.
    void WrittenBack();
    /// The text of the box at `position` was accepted, but is not stored yet.
    void Accepted(std::size_t position);
    /// The user changed the value at `position`.
    void ValueChanged(std::size_t position);
    /// The text of a multi-line box changed and is not stored yet.
    void LinesEdited();

private:
    struct LineBox {
        QLineEdit* box;
        Check check;
        Check silentCheck;
    };

    std::string Module() const;
    std::string Routine(const QObject* control, const char* event) const;
    bool Validate(std::size_t position);
    bool ValidateBox(std::size_t position, const LineBox& line);
    void ValidateLines(std::size_t position, const QPlainTextEdit* lines);
    void Store(std::size_t position, std::string_view text);

    QWidget* m_window;
    EditedRecord& m_record;
    LeaveGuard& m_guard;
    std::map<std::size_t, LineBox> m_boxes;
    std::map<std::size_t, QPlainTextEdit*> m_lines;
    std::map<std::size_t, OptionGroup*> m_options;
};

} // namespace Tarno
