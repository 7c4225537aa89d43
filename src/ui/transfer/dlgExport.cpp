#include "dlgExport.h"

#include "core/Text.h"
#include "exchange/TripTable.h"
#include "qt/Strings.h"
#include "ui/common/FileExport.h"
#include "ui/common/Handle.h"
#include "ui_dlgExport.h"

#include <QLocale>

#include <array>
#include <utility>

namespace Tarno
{

namespace
{

enum Separator { Comma, Semicolon, Tab };

constexpr std::array separators{',', ';', '\t'};

} // namespace

dlgExport::dlgExport(const Program& program, TripsFound found, QWidget* parent)
    : QDialog(parent), m_program(program), m_found(std::move(found)), m_ui(std::make_unique<Ui::dlgExport>())
{
    m_ui->setupUi(this);
    const bool isRestricted = !m_found.query.isEmpty();
    m_ui->optFound->setEnabled(isRestricted);
    m_ui->optFound->setChecked(isRestricted);
    m_ui->optFound->setText(isRestricted ? QStringLiteral("Trips &found: %1").arg(m_found.keys.size())
                                         : QStringLiteral("Trips &found"));
    // where the comma is the decimal sign, spreadsheets expect the semicolon
    const bool usesDecimalComma = QLocale().decimalPoint() == QLatin1String(",");
    m_ui->cboSeparator->setCurrentIndex(usesDecimalComma ? Semicolon : Comma);
    SetControls();
    Handle(m_ui->optFound, &QAbstractButton::toggled, "Click", this, [this] { SetControls(); });
    Handle(m_ui->cmdExport, &QAbstractButton::clicked, "Click", this, [this] { Export(); });
    Handle(m_ui->cmdClose, &QAbstractButton::clicked, "Click", this, [this] { reject(); });
    program.windows.Remember(*this);
}

dlgExport::~dlgExport() = default;

void dlgExport::SetControls()
{
    m_ui->cmdExport->setEnabled(!m_ui->optFound->isChecked() || !m_found.keys.empty());
}

void dlgExport::Export()
{
    RecordList trips;
    RecordList locations;
    if (m_program.sql.EntryList(trips) != succeeded || m_program.sql.LocationList(locations) != succeeded) {
        return;
    }
    if (m_ui->optFound->isChecked()) {
        std::erase_if(trips, [this](const RecordView& trip) {
            return !m_found.keys.contains(trip.Text(EntryField::TarnoNo));
        });
    }
    const auto separator = static_cast<std::size_t>(m_ui->cboSeparator->currentIndex());
    const auto file = WriteExport(m_program, this,
                                  {.title = QStringLiteral("Export Trips"),
                                   .filter = QStringLiteral("CSV (*.csv)"),
                                   .folder = FromUtf8(m_program.folder.GetAppPath() + '/'),
                                   .fileName = QStringLiteral("trips.csv"),
                                   .suffix = QStringLiteral(".csv")},
                                  WriteCsv(TripRows(trips, locations), separators.at(separator)));
    if (file) {
        m_program.messages.ShowInformation(
            this, QStringLiteral("Exported %1 to ").arg(FromUtf8(Counted(trips.size(), "trip"))) + *file,
            QStringLiteral("Tarno"));
        accept();
    }
}

} // namespace Tarno
