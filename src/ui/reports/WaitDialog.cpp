#include "WaitDialog.h"

#include <QCoreApplication>

#include <limits>

namespace Tarno
{

using namespace std::chrono_literals;

namespace
{

constexpr auto delay = 500ms;         // before the dialog appears
constexpr auto updateInterval = 50ms; // between event-loop passes while it is visible

} // namespace

WaitDialog::WaitDialog(const Clock& clock, QWidget* parent, const QString& text, int steps)
    : m_clock(clock), m_lastUpdate(clock.Now()), m_dialog(text, QStringLiteral("Cancel"), 0, steps, parent)
{
    m_dialog.setObjectName(QStringLiteral("dlgWait"));
    m_dialog.setWindowTitle(QStringLiteral("Tarno"));
    m_dialog.setWindowModality(Qt::ApplicationModal);
    m_dialog.setMinimumDuration(std::numeric_limits<int>::max()); // Advance shows it
    m_dialog.reset();
    // Esc only hides the dialog if the shortcut of its button does not get the key first
    QObject::connect(&m_dialog, &QDialog::rejected, &m_dialog, &QProgressDialog::cancel);
}

bool WaitDialog::AdvanceTo(int step)
{
    m_step = step;
    const auto now = m_clock.Now();
    if (now - m_lastUpdate >= (m_dialog.isVisible() ? updateInterval : delay)) {
        m_dialog.show();
        m_dialog.setValue(m_dialog.maximum() > 0 ? m_step : 0);
        QCoreApplication::processEvents();
        m_lastUpdate = now;
    }
    return !m_dialog.wasCanceled();
}

} // namespace Tarno
