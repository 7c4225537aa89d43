#pragma once

#include "ui/common/Program.h"

#include <QDialog>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

class QListWidget;
class QPushButton;

namespace Ui
{
class fRptLog;
}

/// The window in which the log report is put together: its fields and their order, which the first field
/// sorts, the location that it covers, and the reports that were saved under a name.
class fRptLog : public QDialog
{
    Q_OBJECT

public:
    /// What `program` refers to must outlive the window.
    fRptLog(const Program& program, QWidget* parent);
    fRptLog(const fRptLog&) = delete;
    fRptLog& operator=(const fRptLog&) = delete;
    ~fRptLog() override;

    /// The close box and Esc: they close the window, or only the frame for saving while that is open.
    void reject() override;

private:
    /// The fields of a report in its order, "," between them: their data names and their numbers.
    struct Selection {
        std::string names;
        std::string numbers;
    };

    void On(QPushButton* button, std::string_view routine, void (fRptLog::*run)());

    void LoadDefaultReport();
    void LoadCustomReport();
    void LoadSavedReports();
    void LoadLocations();
    void SetControls();
    void CreateReport();

    void Move(QListWidget* from, QListWidget* to);
    void MoveAll(QListWidget* from, QListWidget* to);
    void MoveBy(int rows);

    void cmdMove_Click();
    void cmdMoveAll_Click();
    void cmdBack_Click();
    void cmdBackAll_Click();
    void cmdUp_Click();
    void cmdDn_Click();
    void chkSaved_Click();
    void cboSaved_Click();
    void cmdSave_Click();
    void txtSaved_Change();
    void chkNew_Click();
    void cmdSavedOK_Click();
    void cmdSavedCancel_Click();
    void cmdDelete_Click();
    void cmdCustom_Click();

    RecordList ListedFields() const;
    Selection StoredForm(const RecordList& listed) const;
    Selection ReportedFields(const RecordList& listed) const;
    std::int16_t SavedNumber() const;
    void OpenFrame(bool open);

    const Program& m_program;
    std::unique_ptr<Ui::fRptLog> m_ui;
    bool m_loading = false; ///< the window is being filled for the first time
    std::optional<Record>
        m_newReport; ///< its saving failed: the next try replaces it instead of adding another
};
