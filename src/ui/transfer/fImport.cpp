#include "fImport.h"

#include "core/ErrorLog.h"
#include "core/Text.h"
#include "qt/Strings.h"
#include "ui/common/Handle.h"
#include "ui/reports/WaitDialog.h"
#include "ui_fImport.h"

#include <QFileInfo>
#include <QLocale>

#include <algorithm>
#include <utility>

namespace Tarno
{

namespace
{

using DateOrder = TableForms::DateOrder;

QString InWords(RowStatus status)
{
    switch (status) {
    case RowStatus::New:
        return QStringLiteral("New");
    case RowStatus::AlreadyThere:
        return QStringLiteral("Already there");
    case RowStatus::Refused:
        break;
    }
    return QStringLiteral("Refused");
}

QString InWords(TextEncoding encoding)
{
    switch (encoding) {
    case TextEncoding::Utf8:
    case TextEncoding::Utf8WithMark:
        return QStringLiteral("UTF-8");
    case TextEncoding::Utf16:
        return QStringLiteral("UTF-16");
    case TextEncoding::Windows1252:
        break;
    }
    return QStringLiteral("Windows-1252");
}

/// Describes how a file was read, for example "trips.csv: 12 rows below the headings, separated by
/// commas, in UTF-8".
QString Described(const CsvFile& file, const QString& path)
{
    const QString separator = file.separator == ','   ? QStringLiteral("commas")
                              : file.separator == ';' ? QStringLiteral("semicolons")
                              : file.separator == '\t'
                                  ? QStringLiteral("tabs")
                                  : QStringLiteral("\"%1\"").arg(QLatin1Char(file.separator));
    const std::size_t rows = file.rows.empty() ? 0 : file.rows.size() - 1;
    return QFileInfo(path).fileName() + QStringLiteral(": ") + FromUtf8(Counted(rows, "row")) +
           QStringLiteral(" below the headings, separated by ") + separator + QStringLiteral(", in ") +
           InWords(file.encoding);
}

std::string CellAt(const CsvRows& rows, std::size_t row, std::size_t column)
{
    return row < rows.size() && column < rows[row].size() ? rows[row][column] : std::string();
}

} // namespace

fImport::fImport(const Program& program, CsvFile file, const QString& path, QWidget* parent)
    : QDialog(parent), m_program(program), m_ui(std::make_unique<Ui::fImport>()), m_file(std::move(file))
{
    m_ui->setupUi(this);
    m_ui->lblFile->setText(Described(m_file, path));
    m_ui->lvwTrips->SetHeadings({QStringLiteral("Row"), QStringLiteral("Result"), QStringLiteral("From"),
                                 QStringLiteral("Location"), QStringLiteral("Why")});
    m_ui->lvwTrips->FitColumns({QStringLiteral("10000"),
                                QStringLiteral("Already there"),
                                QStringLiteral("2008-08-08"),
                                QStringLiteral("Pittwater, Barrenjoey"),
                                {}},
                               4);
    m_ui->lvwTrips->SetHint(QStringLiteral("The file has no rows below the headings."));
    m_ui->lvwColumns->SetHeadings({QStringLiteral("Column"), QStringLiteral("Value"),
                                   QStringLiteral("Becomes"), QStringLiteral("Read as")});
    m_ui->lvwColumns->FitColumns({QStringLiteral("Pressure reading"),
                                  QStringLiteral("Pittwater, Barrenjoey"),
                                  QStringLiteral("Species encountered"),
                                  {}},
                                 3);
    m_ui->lvwColumns->SetHint(QStringLiteral("The file has no headings."));
    FillBoxes();
    Trap("fImport", "Form_Load", [this] {
        RecordList fields;
        m_program.sql.FieldList(fields);
        m_mapping = ProposeMapping(m_file.rows.empty() ? CsvRow() : m_file.rows.front(), fields);
    });
    Connect();
    m_ui->lvwTrips->setFocus();
    program.windows.Remember(*this);
}

fImport::~fImport() = default;

void fImport::FillBoxes()
{
    m_ui->cboField->addItem(QStringLiteral("(ignored)"));
    for (const TableColumn& column : TableColumns()) {
        m_ui->cboField->addItem(FromUtf8(column.caption));
    }
    m_ui->cboDates->addItem(QStringLiteral("day, month, year"), int(DateOrder::DayMonthYear));
    m_ui->cboDates->addItem(QStringLiteral("month, day, year"), int(DateOrder::MonthDayYear));
    m_ui->cboDates->addItem(QStringLiteral("year, month, day"), int(DateOrder::YearMonthDay));
    m_ui->cboDates->setCurrentIndex(m_ui->cboDates->findData(int(TableForms::Of(QLocale()).dates)));
}

void fImport::Connect()
{
    Handle(m_ui->cboField, &QComboBox::activated, "Click", this, [this] { ChooseField(); });
    Handle(m_ui->cboDates, &QComboBox::currentIndexChanged, "Click", this, [this] { PlanOrClose(); });
    Handle(m_ui->lvwTrips, &SortableList::SelectionChanged, "Click", this, [this] { ShowColumns(); });
    Handle(m_ui->lvwColumns, &SortableList::SelectionChanged, "Click", this, [this] { ShowColumn(); });
    Handle(m_ui->cmdImport, &QAbstractButton::clicked, "Click", this, [this] { Import(); });
    Handle(m_ui->cmdClose, &QAbstractButton::clicked, "Click", this, [this] { reject(); });
}

bool fImport::Plan()
{
    m_program.sql.ReadChangesOfOthers();
    RecordList trips;
    RecordList locations;
    m_program.sql.EntryList(trips);
    m_program.sql.LocationList(locations);
    WaitDialog wait(m_program.clock, isVisible() ? this : parentWidget(),
                    QStringLiteral("Reading the trips..."), static_cast<int>(m_file.rows.size()));
    bool isCancelled = false;
    m_candidates = ReadTrips(m_file.rows, m_mapping, Forms(), [&] {
        isCancelled = !wait.Advance();
        return !isCancelled;
    });
    if (!isCancelled) {
        m_plan = PlanImport(m_candidates, trips, locations);
        ShowRows();
        ShowColumns();
    }
    return !isCancelled;
}

/// Plans again after a choice of the user. A user who cancels that does not want to import.
void fImport::PlanOrClose()
{
    if (!Plan()) {
        reject();
    }
}

TableForms fImport::Forms() const
{
    TableForms forms = TableForms::Of(QLocale());
    forms.dates = static_cast<DateOrder>(m_ui->cboDates->currentData().toInt());
    return forms;
}

void fImport::ShowRows()
{
    std::vector<TextTableModel::Row> rows;
    rows.reserve(m_plan.rows.size());
    for (std::size_t number = 0; number < m_plan.rows.size(); ++number) {
        const PlannedRow& planned = m_plan.rows[number];
        const TripCandidate& candidate = m_candidates.at(number);
        const bool isThere = planned.status == RowStatus::AlreadyThere;
        const auto line = static_cast<double>(m_file.lines.at(planned.row));
        rows.push_back({QString::number(number),
                        {QString::number(planned.row), InWords(planned.status),
                         FromUtf8(candidate.trip.at(EntryField::StartDate)),
                         ShownInOneLine(candidate.place.at(LocationField::LocName)),
                         (isThere ? QStringLiteral("Trip number ") : QString()) + FromUtf8(planned.reason)},
                        {line}});
    }
    m_ui->lvwTrips->SetRows(std::move(rows));
    ShowSummary();
}

void fImport::ShowSummary()
{
    const std::size_t count = m_plan.Count(RowStatus::New);
    m_ui->lblSummary->setText(QStringLiteral("%1 new, %2 already there, %3 refused")
                                  .arg(FromUtf8(Counted(count, "trip")))
                                  .arg(m_plan.Count(RowStatus::AlreadyThere))
                                  .arg(m_plan.Count(RowStatus::Refused)));
    const bool isDateMissing = !IsMapped(m_mapping, "StartDate");
    const bool isPlaceMissing = !IsMapped(m_mapping, "Location") && !IsMapped(m_mapping, "LocNo");
    const bool hasNumbers = m_program.sql.HasNumbersFor(m_plan.batch);
    m_ui->lblMissing->setText(
        !hasNumbers ? QStringLiteral("Your log has too few numbers left for so many trips or locations. The "
                                     "highest number is 32767.")
        : isDateMissing ? QStringLiteral("No column becomes the start date. Choose it on the page Columns.")
                        : QStringLiteral("No column becomes the location. Choose it on the page Columns."));
    m_ui->lblMissing->setVisible(!hasNumbers || isDateMissing || isPlaceMissing);
    QStringList places;
    for (const PlannedPlace& place : m_plan.places) {
        places << ShownInOneLine(place.name);
    }
    m_ui->lblPlaces->setText(QStringLiteral("New locations: ") + places.join(QLatin1String(", ")));
    m_ui->lblPlaces->setVisible(!places.isEmpty());
    m_ui->cmdImport->setEnabled(count > 0 && hasNumbers);
    m_ui->cmdImport->setText(QStringLiteral("&Import ") + FromUtf8(Counted(count, "Trip")));
}

/// Returns the row of the table whose values are shown on the page Columns: the selected one, otherwise the
/// first one.
std::size_t fImport::ShownRow() const
{
    const auto key = m_ui->lvwTrips->SelectedKey();
    return key ? m_plan.rows.at(key->toULongLong()).row : 1;
}

void fImport::ShowColumns()
{
    const std::size_t shown = ShownRow();
    std::vector<TextTableModel::Row> rows;
    for (std::size_t column = 0; column < m_mapping.size(); ++column) {
        const std::string value = CellAt(m_file.rows, shown, column);
        QStringList cells{FromUtf8(CellAt(m_file.rows, 0, column)), FromUtf8(value)};
        if (const auto& mapped = m_mapping[column]) {
            const TableColumn& field = TableColumns().at(*mapped);
            const CellReading reading = ReadCell(field, value, Forms());
            cells << FromUtf8(field.caption)
                  << (reading.refusal.empty() ? ShownInOneLine(reading.stored) : FromUtf8(reading.refusal));
        } else {
            cells << QStringLiteral("(ignored)") << QString();
        }
        rows.push_back({QString::number(column), cells, {}});
    }
    m_ui->lvwColumns->SetRows(std::move(rows));
    m_ui->lblRow->setText(
        QStringLiteral("The values are those of row %1, which is selected on the page Trips.").arg(shown));
    m_ui->lblRow->setVisible(!m_plan.rows.empty());
    ShowColumn();
}

/// Shows what the selected column becomes.
void fImport::ShowColumn()
{
    const auto key = m_ui->lvwColumns->SelectedKey();
    m_ui->cboField->setEnabled(key.has_value());
    if (key) {
        const auto& mapped = m_mapping.at(key->toULongLong());
        m_ui->cboField->setCurrentIndex(mapped ? static_cast<int>(*mapped) + 1 : 0);
    }
}

/// Takes over what the selected column becomes. No other column becomes the same.
void fImport::ChooseField()
{
    const auto key = m_ui->lvwColumns->SelectedKey();
    if (!key) {
        return;
    }
    const int chosen = m_ui->cboField->currentIndex();
    const auto field = chosen > 0 ? std::optional(static_cast<std::size_t>(chosen) - 1) : std::nullopt;
    if (field) {
        std::replace(m_mapping.begin(), m_mapping.end(), field, std::optional<std::size_t>());
    }
    m_mapping.at(key->toULongLong()) = field;
    PlanOrClose();
}

/// Asks whether to add locations for which the table has no coordinates.
bool fImport::ConfirmPlaces()
{
    QStringList places;
    for (const PlannedPlace& place : m_plan.places) {
        if (place.latitude.empty() || place.longitude.empty()) {
            places << ShownInOneLine(place.name);
        }
    }
    return places.isEmpty() ||
           m_program.messages.Ask(
               this, {.text = QStringLiteral("The table has no coordinates for these locations:\r\n\r\n") +
                              places.join(QLatin1String("\r\n")) +
                              QStringLiteral("\r\n\r\nAdd them without coordinates? Sun and moon times need "
                                             "coordinates. You can enter them later."),
                      .title = QStringLiteral("New Locations"),
                      .icon = Icon::Question,
                      .buttons = Buttons::YesNo,
                      .byDefault = Button::Yes}) == Button::Yes;
}

void fImport::Import()
{
    if (!ConfirmPlaces()) {
        return;
    }
    const std::size_t count = m_plan.batch.trips.size();
    const Status status = m_program.sql.Import(m_plan.batch);
    for (const ImportedTrip& trip : m_plan.batch.trips) {
        m_savedKeys.push_back(trip.values.front());
    }
    if (status == succeeded) {
        m_program.messages.ShowInformation(
            this,
            FromUtf8(Counted(count, "trip")) +
                QStringLiteral(" imported. Edit > Undo takes the import back."),
            QStringLiteral("Tarno"));
    }
    accept();
}

} // namespace Tarno
