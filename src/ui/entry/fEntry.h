#pragma once

#include "ui/common/EditingDialog.h"

#include <cstdint>
#include <memory>

class EntryBinder;
class EntryCalculator;
class PickLists;
class QComboBox;

namespace Ui
{
class fEntry;
}

/// The window in which one log entry is added, changed or deleted. It works on a private copy of the
/// entry's record; every control writes its value into that copy when the user leaves it.
class fEntry : public EditingDialog
{
    Q_OBJECT

public:
    /// What `program` refers to must outlive the window.
    fEntry(const Program& program, QWidget* parent);
    fEntry(const fEntry&) = delete;
    fEntry& operator=(const fEntry&) = delete;
    ~fEntry() override;

    /// Edits the entry `iTarnoNo`, or a new one for 0, and returns when the window has been closed. With
    /// `bDelete` only asks whether to delete it, and does so; the window is not shown then. Returns at
    /// once, the user having been told, when there is no location or the entry cannot be read.
    void SetData(std::int16_t iTarnoNo, bool bDelete);

protected:
    Status Update(Record& record) override;
    bool TakeTyped() override;

private:
    bool LoadLocations();
    void LoadTheForm();
    void ShowExistingEntry();
    void ShowNewEntry();
    void SelectStoredLocation();
    void DeleteAfterQuestion();

    void sstEntry_Click();
    bool cboLocation_Validate();
    void ValueChanged(std::size_t position);
    void PhaseChanged();
    void LinesEdited();

    std::unique_ptr<Ui::fEntry> m_ui;
    std::int16_t m_entryNumber = 0;
    bool m_loading = false;
    QComboBox* m_cboLocation = nullptr;
    EntryBinder* m_binder = nullptr;
    std::unique_ptr<EntryCalculator> m_calculator;
    PickLists* m_pickLists = nullptr;
};
