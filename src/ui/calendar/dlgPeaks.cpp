#include "dlgPeaks.h"

#include "core/Error.h"
#include "core/SafeWriter.h"
#include "qt/Strings.h"
#include "ui/common/Handle.h"
#include "ui_dlgPeaks.h"

#include <utility>

namespace Tarno
{

namespace
{

QDate ToQDate(std::chrono::year_month_day date)
{
    return {static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day()))};
}

std::chrono::year_month_day FromQDate(const QDate& date)
{
    return std::chrono::year(date.year()) / date.month() / date.day();
}

} // namespace

dlgPeaks::dlgPeaks(const Program& program, PeakEventsRequest request, QWidget* parent)
    : QDialog(parent),
      m_program(program),
      m_request(std::move(request)),
      m_ui(std::make_unique<Ui::dlgPeaks>())
{
    constexpr int daysProposed = 30;
    m_ui->setupUi(this);
    m_ui->lblPlaceName->setText(FromUtf8(m_request.name));
    for (QDateEdit* box : {m_ui->dtFrom, m_ui->dtTo}) {
        box->setDateRange(QDate(1, 1, 1), QDate(9999, 12, 31));
        Handle(box, &QDateEdit::dateChanged, "Change", this, [this] { CheckRange(); });
    }
    m_ui->dtFrom->setDate(ToQDate(m_request.first));
    m_ui->dtTo->setDate(std::min(ToQDate(m_request.last).addDays(daysProposed), m_ui->dtTo->maximumDate()));
    Handle(m_ui->cmdExport, &QAbstractButton::clicked, "Click", this, [this] { Export(); });
    Handle(m_ui->cmdClose, &QAbstractButton::clicked, "Click", this, [this] { reject(); });
    CheckRange();
    program.windows.Remember(*this);
}

dlgPeaks::~dlgPeaks() = default;

/// Explains why a range cannot be exported.
void dlgPeaks::CheckRange()
{
    constexpr int mostDays = 3660;
    const auto days = m_ui->dtFrom->date().daysTo(m_ui->dtTo->date()) + 1;
    const QString problem = days < 1          ? QStringLiteral("The last day is before the first one.")
                            : days > mostDays ? QStringLiteral("Choose at most ten years.")
                                              : QString();
    m_ui->lblProblem->setText(problem);
    m_ui->lblProblem->setVisible(!problem.isEmpty());
    m_ui->cmdExport->setEnabled(problem.isEmpty());
}

void dlgPeaks::Export()
{
    m_request.first = FromQDate(m_ui->dtFrom->date());
    m_request.last = FromQDate(m_ui->dtTo->date());
    m_request.onlyGoodDays = m_ui->chkGoodDays->isChecked();
    const auto file = m_program.files.Save(this, {.title = QStringLiteral("Export Major and Minor Times"),
                                                  .filter = QStringLiteral("iCalendar (*.ics)"),
                                                  .folder = FromUtf8(m_program.folder.GetAppPath() + '/'),
                                                  .fileName = QStringLiteral("peaks.ics"),
                                                  .suffix = QStringLiteral(".ics")});
    if (!file) {
        return;
    }
    const std::vector<CalendarEvent> events = PeakEvents(m_request);
    const std::chrono::sys_days today(m_program.clock.Today());
    try {
        SafeWriter(m_program.operations).Write(ToUtf8(*file), ICalendar(events, today));
    } catch (const Error& error) {
        m_program.messages.Ask(this, {.text = QStringLiteral("The file could not be written: ") + *file +
                                              QStringLiteral("\r\n") + FromUtf8(error.Description()),
                                      .title = QStringLiteral("Export Error"),
                                      .icon = Icon::Exclamation});
        return;
    }
    m_program.messages.ShowInformation(
        this, QStringLiteral("%1 events were written to ").arg(events.size()) + *file,
        QStringLiteral("Tarno"));
    accept();
}

} // namespace Tarno
