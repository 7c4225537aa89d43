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

/// Manages the saved reports of the report builder: shows the fields of the selected report in the picker,
/// saves the fields in the picker under a name, and deletes reports.
class SavedReports : public QObject
{
    Q_OBJECT

public:
    /// The controls of the window that this class uses.
    struct Controls {
        QWidget* covered; ///< is disabled while the frame is open
        FieldPicker* picker;
        QCheckBox* chkSaved;
        QComboBox* cboSaved;
        QPushButton* cmdSave;
        QPushButton* cmdDelete;
        QPushButton* defaultButton; ///< the window's default button while the frame is closed
        SaveFrame* frame;
    };

    /// The members of `program` and `controls` must outlive the object. `window` becomes its owner.
    SavedReports(const Program& program, const Controls& controls, QWidget* window);

    /// Shows the default report and lists the saved ones.
    void Load();
    /// Shows the saved report in use again, or the default report if none is in use.
    void Reload();

    /// Returns whether a saved report is selected and the box is ticked.
    bool IsInUse() const;
    /// Returns the fields of the selected report as stored, even if the picker has been changed since. Throws
    /// Error SubscriptOutOfRange if its number is not the position of a report in the file.
    ReportSelection StoredSelection() const;

Q_SIGNALS:
    /// Emitted when the picker shows other fields or another saved report is selected.
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
    bool m_loading = false; ///< whether the controls are being filled for the first time
    /// A new report that could not be saved. cSQL still holds it in memory, so the next attempt updates it
    /// instead of adding another one.
    std::optional<Record> m_newReport;
};

} // namespace Tarno
