#pragma once

#include "store/cSQL.h"
#include "ui/common/EditedRecord.h"
#include "ui/common/Program.h"

#include <QDialog>

class LeaveGuard;
class QPushButton;

/// What the windows that edit one record have in common: a private copy of the record, a guard over its
/// boxes, "Save" enabled as the changed flag says, and the question about changes on closing.
class EditingDialog : public QDialog
{
    Q_OBJECT

public:
    /// "Close": asks about changes, then closes; Esc and the close box come here as well.
    void reject() override;

protected:
    /// What `program` refers to must outlive the window.
    EditingDialog(const Program& program, QWidget* parent);

    /// To be called when the window has its controls and its name.
    void Prepare(QPushButton* save, QPushButton* close);

    const Program& CurrentProgram() const { return m_program; }

    EditedRecord& Edited() { return m_record; }

    LeaveGuard& Guard() { return *m_guard; }

    /// Enables "Save" as the changed flag says.
    void EnableSave();

    /// Hands the record over to the data access.
    virtual Status Update(Record& record) = 0;
    /// Takes over into the record what stands in the controls and has not been left yet. Returns false when a
    /// control holds what it refuses; nothing is saved or closed then.
    virtual bool TakeTyped() = 0;

private:
    void SaveData();
    void AskAboutChanges();

    const Program& m_program;
    EditedRecord m_record;
    LeaveGuard* m_guard;
    QPushButton* m_save = nullptr;
};
