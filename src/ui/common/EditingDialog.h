#pragma once

#include "store/cSQL.h"
#include "ui/common/EditedRecord.h"
#include "ui/common/Program.h"

#include <QDialog>

class QPushButton;

namespace Tarno
{

class LeaveGuard;
class RecordBinder;

/// What the windows that edit one record have in common: a private copy of the record, what binds it to the
/// controls, a guard over the boxes, "Save" enabled as the changed flag says, and the question about changes
/// on closing.
class EditingDialog : public QDialog
{
    Q_OBJECT

public:
    /// "Close": asks about changes, then closes; Esc and the close box come here as well.
    void reject() override;

protected:
    using UpdateOperation = Status (cSQL::*)(Record&);

    /// `update` saves the record. What `program` refers to must outlive the window.
    EditingDialog(const Program& program, UpdateOperation update, QWidget* parent);

    /// To be called when the window has its controls.
    void Prepare(QPushButton* save, QPushButton* close);

    const Program& CurrentProgram() const { return m_program; }

    EditedRecord& Edited() { return m_record; }

    RecordBinder& Binder() { return *m_binder; }

    LeaveGuard& Guard() { return *m_guard; }

    /// Enables "Save" as the changed flag says.
    void EnableSave();

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
