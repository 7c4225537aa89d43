#include "EditingDialog.h"

#include "LeaveGuard.h"
#include "core/ErrorLog.h"
#include "qt/Strings.h"

#include <QPushButton>

EditingDialog::EditingDialog(const Program& program, QWidget* parent)
    : QDialog(parent), m_program(program), m_guard(new LeaveGuard(this))
{
}

void EditingDialog::Prepare(QPushButton* save, QPushButton* close)
{
    m_save = save;
    m_guard->AddWakened(save);
    connect(save, &QPushButton::clicked, this, [this] {
        Trap(ToUtf8(objectName()), "cmdOK_Click", [this] {
            if (m_guard->Leave()) {
                SaveData();
            }
        });
    });
    connect(close, &QPushButton::clicked, this, &EditingDialog::reject);
}

void EditingDialog::EnableSave()
{
    m_save->setEnabled(m_record.IsChanged());
}

void EditingDialog::SaveData()
{
    Trap(ToUtf8(objectName()), "SaveData", [this] {
        if (TakeTyped() && m_record.IsChanged() && Update(m_record.Record()) == succeeded) {
            m_record.SetChanged(false);
            m_save->setEnabled(false);
        }
    });
}

void EditingDialog::reject()
{
    bool mayClose = m_guard->Leave();
    if (mayClose) {
        Trap(ToUtf8(objectName()), "cmdCancel_Click", [&] {
            mayClose = TakeTyped();
            if (mayClose) {
                AskAboutChanges();
            }
        });
    }
    if (mayClose) {
        QDialog::reject();
    }
}

void EditingDialog::AskAboutChanges()
{
    if (!m_record.IsChanged()) {
        return;
    }
    const Button answer =
        m_program.messages.Ask(this, {.text = QStringLiteral("You have changed data in this screen.\r\n"
                                                             "Do you want to save the changes?"),
                                      .title = QStringLiteral("Save Changes"),
                                      .icon = Icon::Question,
                                      .buttons = Buttons::YesNo,
                                      .byDefault = Button::Yes});
    if (answer == Button::Yes) {
        SaveData();
    }
}
