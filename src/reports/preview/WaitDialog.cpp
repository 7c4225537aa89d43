#include "WaitDialog.h"

#include <QCoreApplication>

namespace
{

constexpr int moment = 500; // milliseconds before the dialog appears
constexpr int rhythm = 50;  // milliseconds between two looks at the user

} // namespace

WaitDialog::WaitDialog(QWidget* parent, const QString& text, int steps)
    : m_dialog(text, QStringLiteral("Cancel"), 0, steps, parent)
{
    m_dialog.setObjectName(QStringLiteral("dlgWait"));
    m_dialog.setWindowTitle(QStringLiteral("Tarno"));
    m_dialog.setWindowModality(Qt::ApplicationModal);
    m_dialog.setMinimumDuration(moment);
    m_dialog.reset();
    m_sinceShown.start();
}

bool WaitDialog::GoesOn()
{
    ++m_step;
    if (m_sinceShown.elapsed() >= (m_dialog.isVisible() ? rhythm : moment)) {
        m_dialog.show();
        m_dialog.setValue(m_dialog.maximum() > 0 ? m_step : 0);
        QCoreApplication::processEvents();
        m_sinceShown.restart();
    }
    return !m_dialog.wasCanceled();
}
