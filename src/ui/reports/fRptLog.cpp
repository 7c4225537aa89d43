#include "fRptLog.h"

#include "BuilderModule.h"
#include "SavedReports.h"
#include "core/Conversions.h"
#include "core/ErrorLog.h"
#include "fCustom.h"
#include "qt/Strings.h"
#include "store/RecordLayouts.h"
#include "ui/common/Handle.h"
#include "ui_fRptLog.h"

#include <algorithm>
#include <utility>

namespace Tarno
{

fRptLog::fRptLog(const Program& program, QWidget* parent, std::optional<TripsFound> found)
    : QDialog(parent), m_program(program), m_found(std::move(found)), m_ui(std::make_unique<Ui::fRptLog>())
{
    m_ui->setupUi(this);
    m_saved = new SavedReports(program,
                               {.covered = m_ui->boxReport,
                                .picker = m_ui->fieldPicker,
                                .chkSaved = m_ui->chkSaved,
                                .cboSaved = m_ui->cboSaved,
                                .cmdSave = m_ui->cmdSave,
                                .cmdDelete = m_ui->cmdDelete,
                                .defaultButton = m_ui->cmdPreview,
                                .frame = m_ui->frSaved},
                               this);
    connect(m_ui->fieldPicker, &FieldPicker::Changed, this, &fRptLog::SetControls);
    connect(m_saved, &SavedReports::Changed, this, &fRptLog::SetControls);
    Handle(m_ui->cmdCustom, &QPushButton::clicked, "Click", this, [this] { cmdCustom_Click(); });
    Handle(m_ui->cmdPreview, &QPushButton::clicked, "Click", this, [this] { CreateReport(); });
    Handle(m_ui->cmdClose, &QPushButton::clicked, "Click", this, [this] { reject(); });
    Trap(builderModule, "Form_Load", [this] { Form_Load(); });
    program.windows.Remember(*this);
}

fRptLog::~fRptLog() = default;

void fRptLog::reject()
{
    if (m_ui->frSaved->isVisible()) {
        m_ui->frSaved->Cancel();
    } else {
        QDialog::reject();
    }
}

void fRptLog::Form_Load()
{
    m_saved->Load();
    LoadLocations();
    SetControls();
    m_ui->cmdSave->setEnabled(false); // disabled until the first change
}

void fRptLog::LoadLocations()
{
    Trap(builderModule, "LoadLocations", [this] {
        RecordList locations;
        if (m_program.sql.LocationList(locations) != succeeded) {
            return;
        }
        m_ui->cboLocation->clear();
        m_ui->cboLocation->addItem(QStringLiteral("All Locations"), 0);
        for (const RecordView& location : locations) {
            m_ui->cboLocation->addItem(ShownInOneLine(location.Text(LocationField::LocName)), location.Key());
        }
        m_ui->cboLocation->setCurrentIndex(0);
    });
}

void fRptLog::SetControls()
{
    Trap(builderModule, "SetControls", [this] {
        m_ui->cmdClose->setEnabled(true);
        m_ui->cmdPreview->setEnabled(!m_ui->fieldPicker->Chosen().empty());
        m_ui->fieldPicker->ShowSortField();
        m_ui->cmdSave->setEnabled(true);
        m_ui->cmdDelete->setEnabled(m_ui->cboSaved->currentIndex() >= 0);
        m_ui->cmdCustom->setEnabled(true);
    });
}

void fRptLog::cmdCustom_Click()
{
    fCustom(m_program, this).exec();
    m_saved->Reload();
    SetControls();
}

/// The location filter is the position in the list of locations, not the location's number; see
/// docs/quirks.md.
void fRptLog::CreateReport()
{
    Trap(builderModule, "CreateReport", [this] {
        RecordList fields;
        if (m_program.sql.FieldList(fields) != succeeded) {
            return;
        }
        const std::vector<std::int32_t> chosen = m_ui->fieldPicker->Chosen();
        const RecordList columns = DefinitionsOf(chosen, fields);
        ShowLogReport(
            m_program,
            {.selection = m_saved->IsInUse() ? m_saved->StoredSelection() : SelectionOf(chosen, fields),
             .columns = columns,
             .location = RoundToInt16(std::max(0, m_ui->cboLocation->currentIndex())),
             .descending = m_ui->fieldPicker->IsDescending(),
             .found = m_found},
            this);
    });
}

} // namespace Tarno
