#pragma once

#include "store/ReportSelection.h"
#include "ui/common/Program.h"

#include <QObject>

#include <cstdint>
#include <optional>

class QCheckBox;
class QComboBox;
class QPushButton;
class QWidget;

namespace Tarno
{

class FieldPicker;
class SaveFrame;

/// The saved reports of the report builder: choosing one, which shows its fields in the picker, saving the
/// fields in the picker under a name, and deleting.
class SavedReports : public QObject
{
    Q_OBJECT

public:
    /// The controls of the window that this works with.
    struct Controls {
        QWidget* covered; ///< what cannot be reached while the frame is open
        FieldPicker* picker;
        QCheckBox* chkSaved;
        QComboBox* cboSaved;
        QPushButton* cmdSave;
        QPushButton* cmdDelete;
        QPushButton* usualDefault; ///< the window's default button while the frame is closed
        SaveFrame* frame;
    };

    /// What `program` and `controls` refer to must outlive the object; `window` is its owner.
    SavedReports(const Program& program, const Controls& controls, QWidget* window);

    /// Shows the default report and lists the saved ones.
    void Load();
    /// Shows the report that is in use again, the default report if there is none.
    void Reload();

    /// Whether the report is a saved one: one is selected, and the box is ticked.
    bool IsInUse() const;
    /// The fields of the selected report as stored, even if the picker has been changed since. Throws Error
    /// SubscriptOutOfRange if the list of reports has no record at the position that the number means.
    ReportSelection StoredSelection() const;

Q_SIGNALS:
    /// The picker shows other fields, or another saved report is selected.
    void Changed();

private:
    void LoadDefaultReport();
    void LoadCustomReport();
    void LoadSavedReports();

    void chkSaved_Click();
    void cboSaved_Click();
    void cmdSave_Click();
    void cmdSavedOK_Click();
    void cmdSavedCancel_Click();
    void cmdDelete_Click();

    bool IsSelected() const;
    std::int16_t SelectedNumber() const;
    void CloseFrame() const;

    const Program& m_program;
    const Controls m_controls;
    QWidget* m_window;
    bool m_loading = false; ///< the controls are being filled for the first time
    /// A new report that could not be saved. The data access has kept it, so the next attempt replaces it
    /// instead of adding another one.
    std::optional<Record> m_newReport;
};

} // namespace Tarno
