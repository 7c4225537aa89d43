#pragma once

#include "NewTripValues.h"
#include "ui/common/EditingDialog.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace Tarno
{

namespace Ui
{
class fEntry;
}

/// The window in which one log entry is added, changed or deleted. It works on a private copy of the record.
/// Every control writes its value into that copy when the user leaves it.
class fEntry : public EditingDialog
{
    Q_OBJECT

public:
    /// What `program` refers to must outlive the window.
    fEntry(const Program& program, QWidget* parent);
    fEntry(const fEntry&) = delete;
    fEntry& operator=(const fEntry&) = delete;
    ~fEntry() override;

    /// Edits the entry `iTarnoNo`, or a new one for 0, and returns when the window is closed. With `bDelete`,
    /// only asks whether to delete the entry and never shows the window. If there is no location or the entry
    /// cannot be read, shows a message and returns.
    void SetData(std::int16_t iTarnoNo, bool bDelete);

    /// Edits a new entry with the place, times, target species, bait and methods of `entry`, and returns when
    /// the window is closed. It counts as changed, so it can be saved as it is.
    void RepeatTrip(const Record& entry);

    /// Like RepeatTrip, with the given values.
    void AddTrip(const NewTripValues& trip);

    /// Edits the entry of the draft with the values of the draft, a new one if it is not in the log, and
    /// returns when the window is closed. It counts as changed.
    void ContinueDraft(const Draft& draft);

protected:
    StoredTexts TypedTexts() override;

private:
    bool LoadEntry(std::int16_t iTarnoNo);
    bool LoadTheForm(const std::optional<NewTripValues>& newTrip);
    void Begin(bool changed);
    void SaveAndAddNext();
    void DeleteAfterQuestion(std::int16_t iTarnoNo);
    void sstEntry_Click();

    std::unique_ptr<Ui::fEntry> m_ui;
};

} // namespace Tarno
