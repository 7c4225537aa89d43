#pragma once

#include "core/Clock.h"

#include <QProgressDialog>

namespace Tarno
{

/// Shows a progress dialog with Cancel for work that takes longer than half a second.
class WaitDialog
{
public:
    /// `steps` is the expected number of calls of Advance, or 0 if unknown. `clock` must outlive the dialog.
    WaitDialog(const Clock& clock, QWidget* parent, const QString& text, int steps = 0);

    /// Call it after each step of the work. Returns false if the user cancelled.
    bool Advance() { return AdvanceTo(m_step + 1); }

    /// Like Advance, for work that knows which of the steps it has reached.
    bool AdvanceTo(int step);

private:
    const Clock& m_clock;
    std::chrono::steady_clock::time_point m_lastUpdate;
    QProgressDialog m_dialog;
    int m_step = 0;
};

} // namespace Tarno
