#pragma once

#include "ui/common/EditingDialog.h"

#include <cstdint>
#include <memory>

namespace Tarno
{

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

private:
    void LoadTheForm(std::int16_t iTarnoNo);
    void DeleteAfterQuestion(std::int16_t iTarnoNo);
    void sstEntry_Click();

    std::unique_ptr<Ui::fEntry> m_ui;
};

} // namespace Tarno
