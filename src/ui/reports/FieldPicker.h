#pragma once

#include "store/Record.h"
#include "store/ReportSelection.h"

#include <QWidget>

#include <cstdint>
#include <memory>
#include <vector>

class QListWidget;

namespace Tarno
{

namespace Ui
{
class FieldPicker;
}

/// Chooses the fields of the log report: one list of the fields on the report and one of the others, buttons
/// to move and reorder fields, and a check box for descending order.
class FieldPicker : public QWidget
{
    Q_OBJECT

public:
    explicit FieldPicker(QWidget* parent = nullptr);
    FieldPicker(const FieldPicker&) = delete;
    FieldPicker& operator=(const FieldPicker&) = delete;
    ~FieldPicker() override;

    /// Empties both lists.
    void Clear();
    /// Shows the default report: splits `fields` by their default flag, in file order.
    /// Throws Error: TypeMismatch if a field number is not a number, ObjectNotSet if a definition lacks a
    /// value.
    void ShowDefault(const RecordList& fields);
    /// Shows the report `selection` in its order. Skips unknown field numbers. Throws the same errors as
    /// ShowDefault.
    void ShowSelection(const RecordList& fields, const ReportSelection& selection);

    /// Returns the numbers of the fields on the report, in its order.
    std::vector<std::int32_t> Chosen() const;
    bool IsDescending() const;

    /// Shows the first field of the report in the caption of the check box, or disables the check box if the
    /// report is empty. Call this after Changed.
    void ShowSortField();
    /// Sets the focus to the fields on the report.
    void FocusChosen();

Q_SIGNALS:
    /// Emitted when the user has moved fields.
    void Changed();

private:
    void Move(QListWidget* from, QListWidget* to);
    void MoveAll(QListWidget* from, QListWidget* to);
    void MoveBy(int rows);

    std::unique_ptr<Ui::FieldPicker> m_ui;
};

} // namespace Tarno
