#include "dlgPeaks.h"

#include "core/Conversions.h"
#include "core/Error.h"
#include "core/SafeWriter.h"
#include "qt/Strings.h"
#include "ui/common/Handle.h"
#include "ui_dlgPeaks.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace Tarno
{

namespace
{

/// Returns the date in a box, or nullopt if it is not a date.
std::optional<std::chrono::sys_days> DateIn(const QLineEdit& box)
{
    try {
        return ToDate(ToUtf8(box.text()));
    } catch (const Error&) {
        return std::nullopt;
    }
}

} // namespace

dlgPeaks::dlgPeaks(const Program& program, PeakEventsRequest request, QWidget* parent)
    : QDialog(parent),
      m_program(program),
      m_request(std::move(request)),
      m_ui(std::make_unique<Ui::dlgPeaks>())
{
    constexpr std::chrono::days proposed(30);
    constexpr std::chrono::sys_days lastDay(std::chrono::year(9999) / 12 / 31);
    m_ui->setupUi(this);
    m_ui->lblPlaceName->setText(FromUtf8(m_request.name));
    m_ui->txtFrom->setText(FromUtf8(FromDate(m_request.first)));
    const auto last = std::min(std::chrono::sys_days(m_request.last) + proposed, lastDay);
    m_ui->txtTo->setText(FromUtf8(FromDate(last)));
    for (const QLineEdit* box : {m_ui->txtFrom, m_ui->txtTo}) {
        Handle(box, &QLineEdit::textChanged, "Change", this, [this] { CheckRange(); });
    }
    Handle(m_ui->cmdExport, &QAbstractButton::clicked, "Click", this, [this] { Export(); });
    Handle(m_ui->cmdClose, &QAbstractButton::clicked, "Click", this, [this] { reject(); });
    CheckRange();
    program.windows.Remember(*this);
}

dlgPeaks::~dlgPeaks() = default;

/// Takes over the range, or explains why it cannot be exported.
void dlgPeaks::CheckRange()
{
    constexpr std::chrono::days most(3660);
    const auto first = DateIn(*m_ui->txtFrom);
    const auto last = DateIn(*m_ui->txtTo);
    const QString problem =
        !first || !last  ? QStringLiteral("Enter both dates as year-month-day, for example 2026-03-31.")
        : *last < *first ? QStringLiteral("The last day is before the first one.")
        : *last - *first >= most ? QStringLiteral("Choose at most ten years.")
                                 : QString();
    if (problem.isEmpty()) {
        m_request.first = *first;
        m_request.last = *last;
    }
    m_ui->lblProblem->setText(problem);
    m_ui->lblProblem->setVisible(!problem.isEmpty());
    m_ui->cmdExport->setEnabled(problem.isEmpty());
}

void dlgPeaks::Export()
{
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
