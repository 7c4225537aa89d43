#include "fStatistics.h"

#include "GroupDelegate.h"
#include "LogContext.h"
#include "StatisticsRows.h"
#include "analysis/QuerySyntax.h"
#include "core/ErrorLog.h"
#include "qt/Strings.h"
#include "reports/ReportDesign.h"
#include "reports/arYearSheet.h"
#include "ui/common/GradeColours.h"
#include "ui/common/Handle.h"
#include "ui/common/Notices.h"
#include "ui/help/fHelp.h"
#include "ui/reports/fPreview.h"
#include "ui_fStatistics.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QShortcut>

#include <algorithm>

namespace Tarno
{

namespace
{

constexpr const char* storedRatingNote =
    "The rating is the one that is stored with the trip. You may have changed it by hand. ";
constexpr const char* comparisonsNote =
    "There are four comparisons. One of them can look like a connection by chance alone.";

/// Returns the words of the actions with their colours, as rich text.
QString Legend()
{
    QStringList parts;
    for (std::size_t action = 0; action < gradeColours.size(); ++action) {
        parts << QStringLiteral("<span style=\"color:%1\">\u25A0</span> %2")
                     .arg(gradeColours.at(action).name(), FromUtf8(FieldWords::action.at(action)));
    }
    return parts.join(QStringLiteral("&nbsp;&nbsp; "));
}

/// Shows a note, or hides its label if there is nothing to say.
void ShowNote(QLabel& label, const QString& text)
{
    label.setText(text);
    label.setVisible(!text.isEmpty());
}

} // namespace

fStatistics::fStatistics(const Program& program, const QString& query, QWidget* parent)
    : QDialog(parent), m_program(program), m_ui(std::make_unique<Ui::fStatistics>())
{
    m_ui->setupUi(this);
    SetUpLists();
    for (const GroupingTitle& title : Groupings()) {
        m_ui->cboGrouping->addItem(FromUtf8(title.title));
    }
    Trap("fStatistics", "Form_Load", [this] { m_context = ReadLogContext(m_program); });
    m_ui->queryBar->SetCompletion(
        [this] { return QueryCompletion([this] { return Trips(); }, m_context.places); });
    Connect();
    if (query.isEmpty()) {
        Trap("fStatistics", "ApplyQuery", [this] { ApplyQuery(); });
    } else {
        m_ui->queryBar->Search(query);
    }
    m_ui->lvwGroups->setFocus();
    program.windows.Remember(*this);
}

fStatistics::~fStatistics() = default;

void fStatistics::SetUpLists()
{
    m_ui->lblLegend->setText(Legend());
    m_ui->lvwGroups->SetHeadings(GroupHeadings());
    m_ui->lvwGroups->setItemDelegate(new GroupDelegate(m_groups, m_ui->lvwGroups));
    m_ui->lvwGroups->FitColumns({QStringLiteral("A place with a long name, a bay"),
                                 QStringLiteral("10 (few)"),
                                 QStringLiteral("1000.5"),
                                 {},
                                 {},
                                 QStringLiteral("100 % (100 to 100 %), and a scale of this"),
                                 QStringLiteral("2008-08-08")},
                                GroupColumn::Actions);
    m_ui->lvwCheck->SetHeadings(CheckHeadings());
    m_ui->lvwCheck->FitColumns({QStringLiteral("75 to 100 % lit"), {}, {}, {}, {}, {}}, 5);
    m_ui->lvwYear->SetHeadings(
        {QStringLiteral("Figure"), QStringLiteral("This year"), QStringLiteral("Year before")});
    m_ui->lvwYear->FitColumns({{}, QStringLiteral("1000.5"), QStringLiteral("1000.5")}, 0);
    m_ui->lvwLines->SetHeadings(LineHeadings());
    m_ui->lvwLines->FitColumns({{}, QStringLiteral("Targeted"), QStringLiteral("1000")}, 0);
}

void fStatistics::Connect()
{
    const auto click = [this](const QAbstractButton* button, auto body) {
        Handle(button, &QAbstractButton::clicked, "Click", this, std::move(body));
    };
    const auto choose = [this](const QComboBox* box, auto body) {
        Handle(box, &QComboBox::currentIndexChanged, "Click", this, std::move(body));
    };
    click(m_ui->cmdFind, [this] { m_ui->queryBar->Open(); });
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, m_ui->cmdFind,
            &QPushButton::click);
    click(m_ui->cmdShowTrips, [this] { ShowTripsOfGroup(); });
    click(m_ui->cmdYearSheet, [this] { PreviewYear(); });
    click(m_ui->cmdCopyLine, [this] { CopyLine(); });
    click(m_ui->cmdOpenList, [this] { OpenPickList(); });
    click(m_ui->cmdClose, [this] { reject(); });
    choose(m_ui->cboGrouping, [this] { ShowPage(); });
    choose(m_ui->cboCheck, [this] { ShowCheck(); });
    choose(m_ui->cboYear, [this] { ShowYear(); });
    Handle(m_ui->tabStatistics, &QTabWidget::currentChanged, "Click", this, [this] { ShowPage(); });
    Handle(m_ui->lvwGroups, &SortableList::OpenRequested, "DblClick", this, [this] { ShowTripsOfGroup(); });
    Handle(m_ui->queryBar, &QueryBar::QueryChanged, "Change", this, [this] { ApplyQuery(); });
    connect(m_ui->queryBar, &QueryBar::HelpRequested, this,
            [this] { ShowManual(this, QStringLiteral("find"), m_program.windows); });
    for (const auto leave : {&QueryBar::Entered, &QueryBar::Closed}) {
        connect(m_ui->queryBar, leave, this,
                [this] { m_ui->tabStatistics->currentWidget()->findChild<SortableList*>()->setFocus(); });
    }
}

RecordList fStatistics::Trips() const
{
    RecordList trips;
    if (m_program.sql.CanAddEntries()) {
        m_program.sql.EntryList(trips);
    }
    return trips;
}

/// Returns the trips that the query finds.
RecordList fStatistics::FoundTrips() const
{
    RecordList trips = Trips();
    if (m_isFound.size() == trips.size()) {
        auto isFound = m_isFound.begin();
        std::erase_if(trips, [&isFound](const RecordView&) { return !*isFound++; });
    }
    return trips;
}

void fStatistics::ApplyQuery()
{
    const RecordList trips = Trips();
    const Query& query = m_ui->queryBar->CurrentQuery();
    m_isFound.clear();
    if (query.HasTerms()) {
        if (m_searched.empty()) {
            for (const RecordView& trip : trips) {
                m_searched.emplace_back(trip, m_context.places);
            }
        }
        for (const SearchedTrip& trip : m_searched) {
            m_isFound.push_back(query.Matches(trip));
        }
    }
    const auto left = std::count(m_isFound.begin(), m_isFound.end(), false);
    m_ui->queryBar->ShowCount(trips.size() - static_cast<std::size_t>(left), trips.size(), 0);
    const QString hint = !m_program.sql.CanAddEntries()
                             ? UnreadableHint(QStringLiteral("Your log"), QStringLiteral("tarno.xml"))
                         : trips.empty()
                             ? QStringLiteral("There are no trips in your log yet.")
                             : QStringLiteral("No trip is found. Press Esc to show all trips again.");
    for (SortableList* list : {m_ui->lvwGroups, m_ui->lvwYear}) {
        list->SetHint(hint);
    }
    m_ui->lvwLines->SetHint(left == static_cast<std::ptrdiff_t>(trips.size())
                                ? hint
                                : QStringLiteral("Every line names an item of its pick list."));
    ShowPage();
}

/// Calculates and shows what the current page shows.
void fStatistics::ShowPage()
{
    const RecordList trips = FoundTrips();
    const QWidget* page = m_ui->tabStatistics->currentWidget();
    if (page == m_ui->tabGroups) {
        ShowGroups(trips);
    } else if (page == m_ui->tabForecast) {
        ShowChecks(trips);
    } else if (page == m_ui->tabYear) {
        ShowYears(trips);
    } else {
        ShowLines(trips);
    }
}

void fStatistics::ShowGroups(const RecordList& trips)
{
    const auto grouping = static_cast<std::size_t>(m_ui->cboGrouping->currentIndex());
    std::vector<TripGroup> groups = GroupTrips(trips, Groupings()[grouping].grouping, m_context);
    m_ui->lvwGroups->SetRows({}); // rows without a group could be painted
    m_groups = std::move(groups);
    m_ui->lvwGroups->SetRows(GroupRows(m_groups));
    m_ui->cmdShowTrips->setEnabled(!m_groups.empty());
    TripFigures all;
    for (const RecordView& trip : trips) {
        all.Add(FiguresOf(trip));
    }
    ShowNote(*m_ui->lblLeftOut, LeftOutOfHours(all));
}

/// Closes the window with the query of the selected group.
void fStatistics::ShowTripsOfGroup()
{
    if (const auto key = m_ui->lvwGroups->SelectedKey()) {
        m_wantedQuery =
            FromUtf8(BothQueries(ToUtf8(m_ui->queryBar->Text()), m_groups.at(GroupOfRow(*key)).query));
        accept();
    }
}

void fStatistics::ShowChecks(const RecordList& trips)
{
    m_checks = CheckForecasts(trips);
    const int selected = std::max(m_ui->cboCheck->currentIndex(), 0);
    {
        const QSignalBlocker blocker(m_ui->cboCheck);
        m_ui->cboCheck->clear();
        for (const ForecastCheck& check : m_checks) {
            m_ui->cboCheck->addItem(FromUtf8(check.title));
        }
        m_ui->cboCheck->setCurrentIndex(selected);
    }
    ShowCheck();
}

void fStatistics::ShowCheck()
{
    const int selected = m_ui->cboCheck->currentIndex();
    const ForecastCheck& check = m_checks.at(static_cast<std::size_t>(selected));
    m_ui->lvwCheck->SetRows(CheckRows(check));
    m_ui->lblVerdict->setText(FromUtf8(check.sentence));
    ShowNote(*m_ui->lblTau, CorrelationText(check));
    m_ui->lblCheckNote->setText(QLatin1String(selected == 0 ? storedRatingNote : "") +
                                QLatin1String(comparisonsNote));
}

void fStatistics::ShowYears(const RecordList& trips)
{
    const QString selected = m_ui->cboYear->currentText();
    {
        const QSignalBlocker blocker(m_ui->cboYear);
        m_ui->cboYear->clear();
        for (const int year : YearsOf(trips)) {
            m_ui->cboYear->addItem(QString::number(year), year);
        }
        m_ui->cboYear->setCurrentIndex(std::max(m_ui->cboYear->findText(selected), 0));
    }
    ShowYear();
}

void fStatistics::ShowYear()
{
    const bool isAny = m_ui->cboYear->count() > 0;
    m_ui->cmdYearSheet->setEnabled(isAny);
    const int year = m_ui->cboYear->currentData().toInt();
    const YearSummary summary = SummarizeYear(FoundTrips(), year, m_context);
    m_ui->lvwYear->SetRows(isAny ? YearRows(summary) : std::vector<TextTableModel::Row>());
    ShowNote(*m_ui->lblYearLeftOut, isAny ? LeftOutOfHours(summary.figures) : QString());
}

void fStatistics::PreviewYear()
{
    const int year = m_ui->cboYear->currentData().toInt();
    arYearSheet sheet(m_program.printers.DefaultPage(), SummarizeYear(FoundTrips(), year, m_context));
    sheet.PageHeader.Controls[QStringLiteral("lblPrinted")].Text = PrintedOn(m_program.clock);
    if (!m_isFound.empty()) {
        sheet.AddFooter(m_ui->queryBar->Text());
    }
    fPreview(m_program, sheet, this).ShowReport();
}

void fStatistics::ShowLines(const RecordList& trips)
{
    m_lines = UnmatchedLines(trips, m_context);
    m_ui->lvwLines->SetRows(LineRows(m_lines));
    m_ui->cmdCopyLine->setEnabled(!m_lines.empty());
    m_ui->cmdOpenList->setEnabled(!m_lines.empty());
}

const UnmatchedLine* fStatistics::SelectedLine() const
{
    const auto key = m_ui->lvwLines->SelectedKey();
    return key ? &m_lines.at(key->toULongLong()) : nullptr;
}

void fStatistics::CopyLine() const
{
    if (const UnmatchedLine* line = SelectedLine()) {
        QApplication::clipboard()->setText(FromUtf8(line->line));
    }
}

void fStatistics::OpenPickList()
{
    if (const UnmatchedLine* line = SelectedLine()) {
        m_program.programs.EditText(FromUtf8(m_program.folder.FindPath(PickListOf(line->field))));
    }
}

void fStatistics::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && m_ui->queryBar->isVisible()) {
        m_ui->queryBar->Close();
    } else {
        QDialog::keyPressEvent(event);
    }
}

} // namespace Tarno
