#include "EntryCommentsPage.h"

#include "EntryBindings.h"
#include "PickLists.h"
#include "ui_EntryCommentsPage.h"

namespace Tarno
{

EntryCommentsPage::EntryCommentsPage(QWidget* parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::EntryCommentsPage>())
{
    m_ui->setupUi(this);
    setFocusProxy(m_ui->txtTarget);
}

EntryCommentsPage::~EntryCommentsPage() = default;

void EntryCommentsPage::Attach(const Program& program, RecordBinder& binder, LeaveGuard& guard)
{
    BindEntryLines(binder, {{EntryField::TargetSpecies, m_ui->txtTarget},
                            {EntryField::BaitUsed, m_ui->txtBait},
                            {EntryField::Method, m_ui->txtMethods},
                            {EntryField::FishCaught, m_ui->txtCaught}});
    auto* lists = new PickLists(m_ui->lstList, program, guard);
    lists->Add(
        {"Species.txt", m_ui->lblEditTargets, m_ui->lblDDTarget, m_ui->txtTarget, PickList::Side::Right});
    lists->Add(
        {"Species.txt", m_ui->lblEditCaught, m_ui->lblDDCaught, m_ui->txtCaught, PickList::Side::Left});
    lists->Add({"Bait.txt", m_ui->lblEditBait, m_ui->lblDDBait, m_ui->txtBait, PickList::Side::Right});
    lists->Add(
        {"Methods.txt", m_ui->lblEditMethods, m_ui->lblDDMethods, m_ui->txtMethods, PickList::Side::Left});
}

} // namespace Tarno
