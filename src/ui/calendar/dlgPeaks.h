#pragma once

#include "exchange/PeakEvents.h"
#include "ui/common/Program.h"

#include <QDialog>

#include <memory>

namespace Tarno
{

namespace Ui
{
class dlgPeaks;
}

/// Exports the major and minor times of a place to an iCalendar file. The user chooses the days.
class dlgPeaks : public QDialog
{
    Q_OBJECT

public:
    /// Proposes the days of `request`. What `program` refers to must outlive the window.
    dlgPeaks(const Program& program, PeakEventsRequest request, QWidget* parent);
    dlgPeaks(const dlgPeaks&) = delete;
    dlgPeaks& operator=(const dlgPeaks&) = delete;
    ~dlgPeaks() override;

private:
    void CheckRange();
    void Export();

    const Program& m_program;
    PeakEventsRequest m_request;
    std::unique_ptr<Ui::dlgPeaks> m_ui;
};

} // namespace Tarno
