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

/// Two lists, of the fields that are on the log report and of those that are not, with the buttons that move
/// fields between the lists and within the report, and the check box for descending order.
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
    /// Shows the default report: `fields` split by their flag, in file order.
    /// Throws Error: TypeMismatch if a field number is not a number, ObjectNotSet if a definition lacks a
    /// value.
    void ShowDefault(const RecordList& fields);
    /// Shows the report `selection`, in its order. Numbers that none of `fields` has are skipped. Throws what
    /// ShowDefault throws.
    void ShowSelection(const RecordList& fields, const ReportSelection& selection);

    /// The numbers of the fields on the report, in its order.
    std::vector<std::int32_t> Chosen() const;
    bool IsDescending() const;

    /// Names the first field of the report in the check box, which is disabled for an empty report. Changed
    /// is the time to call this.
    void ShowSortField();
    /// Sets the focus to the fields on the report.
    void FocusChosen();

Q_SIGNALS:
    /// The user moved fields.
    void Changed();

private:
    void Move(QListWidget* from, QListWidget* to);
    void MoveAll(QListWidget* from, QListWidget* to);
    void MoveBy(int rows);

    std::unique_ptr<Ui::FieldPicker> m_ui;
};

} // namespace Tarno
