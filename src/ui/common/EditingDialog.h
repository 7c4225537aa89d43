#pragma once

#include "store/cSQL.h"
#include "ui/common/EditedRecord.h"
#include "ui/common/Program.h"

#include <QDialog>

#include <string>
#include <vector>

class QPushButton;

namespace Tarno
{

class LeaveGuard;
class RecordBinder;

/// Base class of the windows that edit one record. It holds a private copy of the record, binds it to the
/// controls, checks boxes before they are left, enables "Save" by the changed flag, and asks about unsaved
/// changes on closing.
class EditingDialog : public QDialog
{
    Q_OBJECT

public:
    /// Asks about unsaved changes, then closes. Called by "Close", Esc and the close box.
    void reject() override;

    /// Returns the keys of the records that were saved, the last one at the end.
    const std::vector<std::string>& SavedKeys() const { return m_savedKeys; }

protected:
    using UpdateOperation = Status (cSQL::*)(Record&);

    /// `update` saves the record. What `program` refers to must outlive the window.
    EditingDialog(const Program& program, UpdateOperation update, QWidget* parent);

    /// Connects the buttons. Call once, after the controls were created.
    void ConnectButtons(QPushButton* save, QPushButton* close);

    const Program& CurrentProgram() const { return m_program; }

    EditedRecord& Edited() { return m_record; }

    RecordBinder& Binder() { return *m_binder; }

    LeaveGuard& Guard() { return *m_guard; }

    /// Saves the record if it has changed. Returns false if a box refuses its text or saving failed.
    bool SaveData();

    /// Enables "Save" if the changed flag is set, otherwise disables it.
    void UpdateSaveButton();

private:
    void AskAboutChanges();

    const Program& m_program;
    UpdateOperation m_update;
    EditedRecord m_record;
    std::vector<std::string> m_savedKeys;
    LeaveGuard* m_guard;
    RecordBinder* m_binder;
    QPushButton* m_save = nullptr;
};

} // namespace Tarno
