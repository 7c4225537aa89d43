#pragma once

#include "LogReport.h"
#include "ui/common/Program.h"

#include <QDialog>

#include <memory>
#include <optional>

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
    /// Reports all trips, or only those `found`. The members of `program` must outlive the window.
    fRptLog(const Program& program, QWidget* parent, std::optional<TripsFound> found = {});
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
    std::optional<TripsFound> m_found;
    std::unique_ptr<Ui::fRptLog> m_ui;
    SavedReports* m_saved;
};

} // namespace Tarno
