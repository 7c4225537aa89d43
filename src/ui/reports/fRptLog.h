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

/// The window in which the log report is built: its fields, their order and the location that it covers. The
/// first field sorts the report. Fields can be saved as a report with a name.
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
