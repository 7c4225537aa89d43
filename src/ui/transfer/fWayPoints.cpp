#include "fWayPoints.h"

#include "core/Text.h"
#include "qt/Strings.h"
#include "ui/common/Handle.h"
#include "ui_fWayPoints.h"

#include <utility>

namespace Tarno
{

fWayPoints::fWayPoints(const Program& program, Contents contents, const Transfer& transfer, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::fWayPoints>()), m_verb(std::move(contents.verb))
{
    m_ui->setupUi(this);
    setWindowTitle(contents.title);
    m_ui->lblNote->setText(contents.note);
    m_ui->lvwPoints->SetHeadings(contents.headings);
    m_ui->lvwPoints->FitColumns(contents.samples, 0);
    m_ui->lvwPoints->SetHint(contents.hint);
    const bool hasRows = !contents.rows.empty();
    m_ui->lvwPoints->SetRows(std::move(contents.rows));
    m_ui->cmdAll->setEnabled(hasRows);
    m_ui->cmdNone->setEnabled(hasRows);
    SetControls();
    Connect(transfer);
    m_ui->lvwPoints->setFocus();
    program.windows.Remember(*this);
}

fWayPoints::~fWayPoints() = default;

void fWayPoints::Connect(const Transfer& transfer)
{
    Handle(m_ui->lvwPoints, &SortableList::ChecksChanged, "Click", this, [this] { SetControls(); });
    Handle(m_ui->cmdAll, &QAbstractButton::clicked, "Click", this,
           [this] { m_ui->lvwPoints->CheckAll(true); });
    Handle(m_ui->cmdNone, &QAbstractButton::clicked, "Click", this,
           [this] { m_ui->lvwPoints->CheckAll(false); });
    Handle(m_ui->cmdTransfer, &QAbstractButton::clicked, "Click", this, [this, transfer] {
        std::vector<std::size_t> chosen;
        for (const QString& key : m_ui->lvwPoints->CheckedKeys()) {
            chosen.push_back(key.toULongLong());
        }
        if (transfer(this, chosen)) {
            accept();
        }
    });
    Handle(m_ui->cmdClose, &QAbstractButton::clicked, "Click", this, [this] { reject(); });
}

void fWayPoints::SetControls()
{
    const std::size_t chosen = m_ui->lvwPoints->CheckedKeys().size();
    m_ui->cmdTransfer->setText(m_verb + QLatin1Char(' ') + FromUtf8(Counted(chosen, "Location")));
    m_ui->cmdTransfer->setEnabled(chosen > 0);
}

} // namespace Tarno
