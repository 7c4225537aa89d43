#include "EntryCommentsPage.h"

#include "EntryBindings.h"
#include "LineProposals.h"
#include "PickLists.h"
#include "ui_EntryCommentsPage.h"

#include <array>

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
    struct Lines {
        EntryField::Position field;
        PickList pickList;
    };

    using Side = PickList::Side;
    const std::array boxes{
        Lines{EntryField::TargetSpecies,
              {"Species.txt", m_ui->lblEditTargets, m_ui->lblDDTarget, m_ui->txtTarget, Side::Right}},
        Lines{EntryField::FishCaught,
              {"Species.txt", m_ui->lblEditCaught, m_ui->lblDDCaught, m_ui->txtCaught, Side::Left}},
        Lines{EntryField::BaitUsed,
              {"Bait.txt", m_ui->lblEditBait, m_ui->lblDDBait, m_ui->txtBait, Side::Right}},
        Lines{EntryField::Method,
              {"Methods.txt", m_ui->lblEditMethods, m_ui->lblDDMethods, m_ui->txtMethods, Side::Left}}};
    auto* lists = new PickLists(m_ui->lstList, program, guard);
    for (const auto& [field, pickList] : boxes) {
        BindEntryLines(binder, {{field, pickList.box}});
        lists->Add(pickList);
        auto* proposals =
            m_proposals.emplace_back(std::make_unique<LineProposals>(program, field, pickList.file)).get();
        new TextCompleter(pickList.box, [proposals](const QString& line, int cursor) {
            return proposals->For(line, cursor);
        });
    }
}

void EntryCommentsPage::ForgetLines()
{
    for (const auto& proposals : m_proposals) {
        proposals->Forget();
    }
}

} // namespace Tarno
