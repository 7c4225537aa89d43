#pragma once

#include "store/cSQL.h"
#include "ui/common/EditedRecord.h"
#include "ui/common/Program.h"

#include <QDialog>

#include <string>

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

    /// Returns the key of the record, or an empty text if none was loaded. A new record has the key "0" until
    /// it is saved.
    std::string Key() const { return m_record.Count() > 0 ? m_record.Text(0) : std::string(); }

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

    /// Enables "Save" if the changed flag is set, otherwise disables it.
    void UpdateSaveButton();

private:
    void SaveData();
    void AskAboutChanges();

    const Program& m_program;
    UpdateOperation m_update;
    EditedRecord m_record;
    LeaveGuard* m_guard;
    RecordBinder* m_binder;
    QPushButton* m_save = nullptr;
};

} // namespace Tarno
