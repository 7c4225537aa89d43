#pragma once

#include "store/cSQL.h"
#include "ui/common/EditedRecord.h"
#include "ui/common/Program.h"

#include <QDialog>

#include <cstdint>
#include <string>
#include <vector>

class QPushButton;

namespace Tarno
{

class DraftKeeper;
class LeaveGuard;
class RecordBinder;

/// Base class of the windows that edit one record. It holds a private copy of the record, binds it to the
/// controls, checks boxes before they are left, enables "Save" by the changed flag, asks about unsaved
/// changes on closing, and keeps a draft of them until then.
class EditingDialog : public QDialog
{
    Q_OBJECT

public:
    /// Asks about unsaved changes, then closes. Called by "Close", Esc and the close box.
    void reject() override;

    /// Closes without a question and removes the draft.
    void done(int result) override;

    /// Returns the keys of the records that were saved, the last one at the end.
    const std::vector<std::string>& SavedKeys() const { return m_savedKeys; }

protected:
    /// `kind` is Trip or Location. What `program` refers to must outlive the window.
    EditingDialog(const Program& program, RecordTitle::Kind kind, QWidget* parent);

    /// Connects the buttons. Call once, after the controls were created.
    void ConnectButtons(QPushButton* save, QPushButton* close);

    const Program& CurrentProgram() const { return m_program; }

    /// Takes over the record that is to be edited, unchanged.
    void BeginRecord(Record record);

    /// After BeginRecord with the record of the draft, takes over the values of the draft.
    void ContinueDraftOf(const Draft& draft);

    /// Returns the key of the record to edit for the draft: 0, a new one, if it has none in the log.
    std::int16_t KeyFor(const Draft& draft) const;

    /// Returns the values that the record would have if the focused control were left now. Shows nothing.
    virtual StoredTexts TypedTexts();

    EditedRecord& Edited() { return m_record; }

    RecordBinder& Binder() { return *m_binder; }

    LeaveGuard& Guard() { return *m_guard; }

    /// Saves the record if it has changed. Returns false if a box refuses its text or saving failed.
    bool SaveData();

    /// Enables "Save" if the changed flag is set, otherwise disables it.
    void UpdateSaveButton();

private:
    using UpdateOperation = Status (cSQL::*)(Record&);

    void AskAboutChanges();
    void NoteChange();

    const Program& m_program;
    UpdateOperation m_update;
    EditedRecord m_record;
    std::vector<std::string> m_savedKeys;
    LeaveGuard* m_guard;
    RecordBinder* m_binder;
    DraftKeeper* m_draft;
    QPushButton* m_save = nullptr;
};

} // namespace Tarno
