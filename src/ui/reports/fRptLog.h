#pragma once

#include "ui/common/Program.h"

#include <QDialog>

#include <memory>

namespace Tarno
{

class SavedReports;

namespace Ui
{
class fRptLog;
}

/// The report builder: the user chooses the fields of the log report, their order and a location. The report
/// is sorted by its first field. A set of fields can be saved as a named report.
class fRptLog : public QDialog
{
    Q_OBJECT

public:
    /// The members of `program` must outlive the window.
    fRptLog(const Program& program, QWidget* parent);
    fRptLog(const fRptLog&) = delete;
    fRptLog& operator=(const fRptLog&) = delete;
    ~fRptLog() override;

    /// Handles the close box and Esc: closes the frame for saving if it is open, otherwise the window.
    void reject() override;

private:
    void Form_Load();
    void LoadLocations();
    void SetControls();
    void CreateReport();
    void cmdCustom_Click();

    const Program& m_program;
    std::unique_ptr<Ui::fRptLog> m_ui;
    SavedReports* m_saved;
};

} // namespace Tarno
