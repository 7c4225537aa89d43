#include "EditingDialog.h"

#include "Handle.h"
#include "LeaveGuard.h"
#include "RecordBinder.h"
#include "core/ErrorLog.h"
#include "qt/Strings.h"

#include <QPushButton>

namespace Tarno
{

EditingDialog::EditingDialog(const Program& program, UpdateOperation update, QWidget* parent)
    : QDialog(parent),
      m_program(program),
      m_update(update),
      m_guard(new LeaveGuard(this)),
      m_binder(new RecordBinder(this, m_record, *m_guard))
{
    connect(m_binder, &RecordBinder::WrittenBack, this, &EditingDialog::UpdateSaveButton);
}

void EditingDialog::ConnectButtons(QPushButton* save, QPushButton* close)
{
    m_save = save;
    m_guard->SetSaveButton(save);
    Handle(save, &QPushButton::clicked, "Click", this, [this] { SaveData(); });
    connect(close, &QPushButton::clicked, this, &EditingDialog::reject);
}

void EditingDialog::UpdateSaveButton()
{
    m_save->setEnabled(m_record.IsChanged());
}

bool EditingDialog::SaveData()
{
    bool written = false;
    Trap(ToUtf8(objectName()), "SaveData", [&] {
        written = m_binder->WriteBack();
        if (written && m_record.IsChanged() && (m_program.sql.*m_update)(m_record.Copy()) == succeeded) {
            const bool hasFocus = m_save->hasFocus();
            m_record.SetChanged(false);
            m_savedKeys.push_back(m_record.Text(0));
            m_save->setEnabled(false);
            if (hasFocus) { // otherwise "Close" would get the focus
                m_guard->ReturnFocus();
            }
        }
    });
    return written && !m_record.IsChanged();
}

void EditingDialog::reject()
{
    bool mayClose = true;
    Trap(ToUtf8(objectName()), "cmdCancel_Click", [&] {
        mayClose = m_binder->WriteBack();
        if (mayClose) {
            AskAboutChanges();
        }
    });
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

} // namespace Tarno
