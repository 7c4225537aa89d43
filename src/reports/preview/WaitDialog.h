#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>

/// Keeps the user company during work that may last: after a moment a dialog appears that shows that the
/// program works and lets the user cancel.
class WaitDialog
{
public:
    /// `steps` is how often GoesOn will be called; 0 when that is not known.
    WaitDialog(QWidget* parent, const QString& text, int steps = 0);

    /// To be called after each step of the work; returns false when the user cancelled.
    bool GoesOn();

private:
    QProgressDialog m_dialog;
    QElapsedTimer m_sinceShown;
    int m_step = 0;
};
