#include "EditingDialog.h"

#include "DraftKeeper.h"
#include "Handle.h"
#include "LeaveGuard.h"
#include "RecordBinder.h"
#include "core/Conversions.h"
#include "core/ErrorLog.h"
#include "qt/Strings.h"

#include <QPushButton>

#include <algorithm>
#include <optional>
#include <utility>

namespace Tarno
{

EditingDialog::EditingDialog(const Program& program, RecordTitle::Kind kind, QWidget* parent)
    : QDialog(parent),
      m_program(program),
      m_update(kind == RecordTitle::Kind::Trip ? &cSQL::EntryUpdate : &cSQL::LocationUpdate),
      m_guard(new LeaveGuard(this)),
      m_binder(new RecordBinder(this, m_record, *m_guard))
{
    const auto typed = [this] {
        StoredTexts texts = TypedTexts();
        const bool isChanged = m_record.IsChanged() || texts != m_record.Texts();
        return isChanged ? std::optional(std::move(texts)) : std::nullopt;
    };
    m_draft = new DraftKeeper(program, kind, typed, this);
    connect(m_binder, &RecordBinder::WrittenBack, this, &EditingDialog::UpdateSaveButton);
    connect(m_binder, &RecordBinder::LinesEdited, this, &EditingDialog::NoteChange);
    connect(m_guard, &LeaveGuard::BoxEdited, this, &EditingDialog::NoteChange);
}

void EditingDialog::BeginRecord(Record record)
{
    m_record.Begin(std::move(record));
    m_draft->Begin(m_record.Texts());
}

void EditingDialog::ContinueDraftOf(const Draft& draft)
{
    const std::size_t count = std::min(draft.values.size(), m_record.Count());
    for (std::size_t position = 1; position < count; ++position) {
        m_record.Store(position, draft.values[position]);
    }
    m_draft->Continue(draft);
}

std::int16_t EditingDialog::KeyFor(const Draft& draft) const
{
    const DraftState state = StateOf(draft, m_program.sql);
    const bool isNew = state == DraftState::NewRecord || state == DraftState::RecordDeleted;
    return isNew ? std::int16_t{0} : ToInt16(draft.key);
}

StoredTexts EditingDialog::TypedTexts()
{
    return m_binder->TypedTexts();
}

void EditingDialog::NoteChange()
{
    if (isVisible()) {
        m_draft->NoteChange();
    }
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
    if (m_record.IsChanged()) {
        NoteChange();
    }
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
            m_draft->Discard();
            m_draft->Begin(m_record.Texts());
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

void EditingDialog::done(int result)
{
    m_draft->Discard();
    QDialog::done(result);
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
