#pragma once

#include "ui/common/EditedRecord.h"
#include "ui/common/Program.h"

class EntryBinder;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QWidget;

/// Fills the calculated frames of the entry editor from its start date and location, and keeps the
/// record's moon phase in step with its two controls. Errors are reported through ErrorLog.
class EntryCalculator
{
public:
    /// Finds the controls below `window` by their names; the references must outlive the object.
    EntryCalculator(QWidget* window, const Program& program, EditedRecord& record, EntryBinder& binder);

    void DoTheCalcs();
    /// Moon phase and prediction, from the date alone; leaves the record's phase unsigned.
    void DoMoonPhase();
    /// Sun, moon and peak times. Without a location nothing happens; one that lacks its coordinates or
    /// time zone is said and leaves the boxes as they are.
    void DoRiseSet();
    /// Takes the moon controls over into the record: the percentage, with "-" in front while waning.
    /// Returns whether that changed it.
    bool PhaseChange();
    /// The percentage times 1 or -1, as it is written after a change of the start date.
    void SignPhase();

    /// Shows the record's moon phase. A text that is no number leaves the box empty.
    void ShowPhase();

private:
    QWidget* m_window;
    const Program& m_program;
    EditedRecord& m_record;
    EntryBinder& m_binder;
    QComboBox* m_cboLocation;
    QLineEdit* m_txtMoon;
    QCheckBox* m_chkMoon;
};
