#include "SaveFrame.h"

#include "ui/common/Handle.h"
#include "ui_SaveFrame.h"

namespace Tarno
{

SaveFrame::SaveFrame(QWidget* parent) : QFrame(parent), m_ui(std::make_unique<Ui::SaveFrame>())
{
    m_ui->setupUi(this);
    hide();
    Handle(m_ui->txtSaved, &QLineEdit::textChanged, "Change", this, [this] { txtSaved_Change(); });
    Handle(m_ui->chkNew, &QCheckBox::clicked, "Click", this, [this] { chkNew_Click(); });
    connect(m_ui->cmdSavedOK, &QPushButton::clicked, this, &SaveFrame::Confirmed);
    connect(m_ui->cmdSavedCancel, &QPushButton::clicked, this, &SaveFrame::Cancelled);
}

SaveFrame::~SaveFrame() = default;

void SaveFrame::Open(const std::optional<QString>& selected, bool anySaved)
{
    m_selected = selected;
    m_ui->chkNew->setChecked(!anySaved);
    m_ui->chkNew->setEnabled(anySaved);
    m_ui->txtSaved->clear();
    chkNew_Click();
    txtSaved_Change();
    show();
    raise();
    m_ui->cmdSavedOK->setDefault(true);
    m_ui->txtSaved->setFocus();
    m_ui->txtSaved->selectAll();
}

void SaveFrame::Cancel()
{
    m_ui->cmdSavedCancel->click();
}

bool SaveFrame::IsNew() const
{
    return m_ui->chkNew->isChecked();
}

QString SaveFrame::Description() const
{
    return m_ui->txtSaved->text();
}

void SaveFrame::txtSaved_Change()
{
    m_ui->cmdSavedOK->setEnabled(!m_ui->txtSaved->text().isEmpty());
}

void SaveFrame::chkNew_Click()
{
    if (!m_ui->chkNew->isChecked() && m_selected) {
        m_ui->txtSaved->setText(*m_selected);
    }
}

} // namespace Tarno
