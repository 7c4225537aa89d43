#include "fCalendar.h"

#include "MonthSheet.h"
#include "analysis/DayDescription.h"
#include "core/Conversions.h"
#include "core/Error.h"
#include "core/ErrorLog.h"
#include "core/Text.h"
#include "dlgPeaks.h"
#include "qt/Strings.h"
#include "store/RecordLayouts.h"
#include "ui/common/Handle.h"
#include "ui/common/ValueTable.h"
#include "ui/entry/fEntry.h"
#include "ui_fCalendar.h"

#include <QKeyEvent>

#include <algorithm>
#include <iterator>

namespace Tarno
{

namespace
{

constexpr std::size_t mostSimilar = 10;

QString RowKey(const std::string& trip)
{
    return QLatin1Char('K') + FromUtf8(trip);
}

/// Returns the first line of a text and how many more there are.
QString InShort(const std::string& lines)
{
    const QString text = FromUtf8(lines);
    const auto more = text.count(QLatin1Char('\n'));
    return text.section(QLatin1Char('\n'), 0, 0) +
           (more > 0 ? QStringLiteral(" (+%1)").arg(more) : QString());
}

QString InOneLine(const std::vector<std::string>& texts)
{
    QStringList parts;
    for (const std::string& text : texts) {
        parts << FromUtf8(text);
    }
    return parts.join(QLatin1String(", "));
}

} // namespace

fCalendar::fCalendar(const Program& program, QWidget* parent)
    : QDialog(parent), m_program(program), m_ui(std::make_unique<Ui::fCalendar>())
{
    m_ui->setupUi(this);
    MakeReadable(*m_ui->txtDay);
    m_ui->lvwTrips->SetHeadings(
        {QStringLiteral("From"), QStringLiteral("Location"), QStringLiteral("Action")});
    m_ui->lvwTrips->FitColumns({QStringLiteral("2008-08-08"), {}, QStringLiteral("Good")}, 1);
    m_ui->lvwTrips->SetHint(QStringLiteral("No trip was logged on this day."));
    m_ui->lvwSimilar->SetHeadings({QStringLiteral("From"), QStringLiteral("Location"),
                                   QStringLiteral("Action"), QStringLiteral("Caught"),
                                   QStringLiteral("Why")});
    m_ui->lvwSimilar->FitColumns({QStringLiteral("2008-08-08"),
                                  QStringLiteral("Pittwater, B"),
                                  QStringLiteral("Good"),
                                  QStringLiteral("Flathead 41"),
                                  {}},
                                 4);
    m_ui->lvwSimilar->SetHint(QStringLiteral("There are no trips in your log yet."));
    for (SortableList* list : {m_ui->lvwTrips, m_ui->lvwSimilar}) {
        list->setMinimumWidth(0); // on a small screen, the lists scroll instead of the window
    }
    m_ui->monthGrid->SetToday(program.clock.Today());
    FillConditions();
    Connect();
    Trap("fCalendar", "Form_Load", [this] {
        LoadLog();
        LoadPlaces();
        ShowDate(m_program.clock.Today());
    });
    m_ui->monthGrid->setFocus();
    program.windows.Remember(*this);
}

fCalendar::~fCalendar() = default;

/// Returns the boxes for the conditions and the codes that they contain.
std::array<std::pair<QComboBox*, EntryField::Position>, 5> fCalendar::ConditionBoxes() const
{
    return {{{m_ui->cboTide, EntryField::TideStart},
             {m_ui->cboWindDir, EntryField::WindDir},
             {m_ui->cboWindStr, EntryField::WindStrength},
             {m_ui->cboWeather, EntryField::Weather},
             {m_ui->cboClarity, EntryField::WaterClarity}}};
}

/// Fills the boxes for conditions with "Any" and the words of their codes.
void fCalendar::FillConditions()
{
    for (const auto& [box, field] : ConditionBoxes()) {
        box->addItem(QStringLiteral("Any"));
        for (const std::string_view word : entryFields.at(field).words) {
            box->addItem(FromUtf8(word));
        }
        Handle(box, &QComboBox::currentIndexChanged, "Click", this, [this] { ShowSimilarTrips(); });
    }
}

void fCalendar::Connect()
{
    const auto click = [this](const QAbstractButton* button, auto body) {
        Handle(button, &QAbstractButton::clicked, "Click", this, std::move(body));
    };
    const auto press = [this](int key, Qt::KeyboardModifiers modifiers = {}) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        QCoreApplication::sendEvent(m_ui->monthGrid, &event);
    };
    click(m_ui->cmdPrevious, [press] { press(Qt::Key_PageUp); });
    click(m_ui->cmdNext, [press] { press(Qt::Key_PageDown); });
    click(m_ui->cmdToday, [press] { press(Qt::Key_Home); });
    click(m_ui->cmdNewTrip, [this] { AddTrip(); });
    click(m_ui->cmdMonthSheet, [this] {
        ShowMonthSheet(m_program, m_ui->monthGrid->Month(),
                       m_ui->lblMonth->text() + QStringLiteral(", ") + m_ui->cboPlace->currentText(), this);
    });
    click(m_ui->cmdExport, [this] {
        dlgPeaks(m_program,
                 {.location = m_location,
                  .number = m_place,
                  .name = ToUtf8(m_ui->cboPlace->currentText()),
                  .first = m_ui->monthGrid->Date(),
                  .last = m_ui->monthGrid->Date()},
                 this)
            .exec();
    });
    click(m_ui->cmdClose, [this] { reject(); });
    Handle(m_ui->cboPlace, &QComboBox::currentIndexChanged, "Click", this, [this] {
        ChoosePlace();
        m_program.windows.SetPlace(FromUtf8(m_program.folder.GetAppPath()), FromUtf8(m_place));
        ShowDate(m_ui->monthGrid->Date());
    });
    connect(m_ui->monthGrid, &MonthGrid::DateWanted, this,
            [this](auto date) { Trap("fCalendar", "ShowDate", [&] { ShowDate(date); }); });
    connect(m_ui->monthGrid, &MonthGrid::Activated, this,
            [this] { Trap("fCalendar", "ActivateDay", [this] { ActivateDay(); }); });
    for (SortableList* list : {m_ui->lvwTrips, m_ui->lvwSimilar}) {
        Handle(list, &SortableList::OpenRequested, "DblClick", this, [this, list] { OpenTrip(*list); });
    }
}

/// Returns the trips, or none if their file could not be read, which was reported at the start.
RecordList fCalendar::Trips() const
{
    RecordList trips;
    if (m_program.sql.CanAddEntries()) {
        m_program.sql.EntryList(trips);
    }
    return trips;
}

RecordList fCalendar::Locations() const
{
    RecordList locations;
    if (m_program.sql.CanAddLocations()) {
        m_program.sql.LocationList(locations);
    }
    return locations;
}

/// Reads what is shown of the trips and the locations.
void fCalendar::LoadLog()
{
    const RecordList trips = Trips();
    const RecordList locations = Locations();
    m_places = PlaceNames(locations);
    m_positions = PositionsOf(locations);
    m_tripDays = TripDays(trips);
    m_conditions.clear();
    std::transform(trips.begin(), trips.end(), std::back_inserter(m_conditions), ConditionsOf);
}

/// Fills the list of places and chooses the one that was chosen last, otherwise that of the last trip.
void fCalendar::LoadPlaces()
{
    const RecordList locations = Locations();
    const QSignalBlocker blocker(m_ui->cboPlace);
    for (const RecordView& location : locations) {
        m_ui->cboPlace->addItem(ShownInOneLine(location.Text(LocationField::LocName)),
                                FromUtf8(location.Text(LocationField::LocNo)));
    }
    const QString folder = FromUtf8(m_program.folder.GetAppPath());
    const QString last = m_conditions.empty() ? QString() : FromUtf8(m_conditions.back().place);
    const int remembered = m_ui->cboPlace->findData(m_program.windows.Place(folder));
    const int lastUsed = m_ui->cboPlace->findData(last);
    m_ui->cboPlace->setCurrentIndex(remembered >= 0 ? remembered : std::max(lastUsed, 0));
    m_ui->cmdNewTrip->setEnabled(!locations.empty() && m_program.sql.CanAddEntries());
    ChoosePlace();
}

void fCalendar::ChoosePlace()
{
    m_place = ToUtf8(m_ui->cboPlace->currentData().toString());
    m_location = {};
    for (const RecordView& location : Locations()) {
        if (location.Text(LocationField::LocNo) == m_place) {
            m_location = TextsOf(location);
            break;
        }
    }
    const auto position = m_positions.find(m_place);
    m_ui->monthGrid->SetSouthern(position != m_positions.end() && position->second.latitude < 0);
}

void fCalendar::ShowDate(std::chrono::year_month_day date)
{
    m_ui->monthGrid->ShowMonth(date, m_location, m_place, m_tripDays);
    m_ui->lblMonth->setText(FromUtf8(LongDate(date)).section(QLatin1Char(' '), 2));
    ShowDay();
}

void fCalendar::ShowDay()
{
    const CalendarDay& day = m_ui->monthGrid->Selected().day;
    m_ui->cmdExport->setEnabled(day.times.has_value());
    m_ui->txtDay->clear();
    QTextCursor cursor(m_ui->txtDay->document());
    InsertValues(cursor, DescribeForecast(day));
    m_ui->txtDay->moveCursor(QTextCursor::Start);
    ShowTripsOfDay();
    ShowSimilarTrips();
}

void fCalendar::ShowTripsOfDay()
{
    const RecordList trips = Trips();
    std::vector<TextTableModel::Row> rows;
    for (const TripDays::Trip& logged : m_tripDays.On(m_ui->monthGrid->Date())) {
        for (const RecordView& trip : trips) {
            if (trip.Text(EntryField::TarnoNo) == logged.key) {
                rows.push_back(
                    {RowKey(logged.key),
                     {FromUtf8(trip.Text(EntryField::StartDate)), FromUtf8(m_places.Of(logged.place)),
                      FromUtf8(ReadableText(trip, EntryField::FishAction, m_places))}});
                break;
            }
        }
    }
    m_ui->lvwTrips->SetRows(std::move(rows));
}

Conditions fCalendar::WantedConditions() const
{
    const CalendarDay& day = m_ui->monthGrid->Selected().day;
    Conditions wanted{.date = day.date,
                      .moonAge = MoonAge(day.moon.percent, day.moon.waxing),
                      .rating = day.moon.prediction,
                      .place = m_place};
    for (const auto& [box, field] : ConditionBoxes()) {
        if (box->currentIndex() > 0) {
            wanted.codes.emplace(field, box->currentIndex() - 1);
        }
    }
    return wanted;
}

void fCalendar::ShowSimilarTrips()
{
    const RecordList trips = Trips();
    std::vector<TextTableModel::Row> rows;
    const Conditions wanted = WantedConditions();
    const std::size_t ofThisDay = m_tripDays.On(*wanted.date).size(); // they are listed already
    for (const SimilarTrip& similar :
         RankSimilar(wanted, m_conditions, m_positions, mostSimilar + ofThisDay)) {
        const bool isOfThisDay = m_conditions[similar.index].date == wanted.date;
        if (similar.index >= trips.size() || isOfThisDay || rows.size() == mostSimilar) {
            continue;
        }
        const RecordView& trip = trips[similar.index];
        rows.push_back(
            {RowKey(trip.Text(EntryField::TarnoNo)),
             {FromUtf8(trip.Text(EntryField::StartDate)), FromUtf8(m_places.Of(trip.Text(EntryField::LocNo))),
              FromUtf8(ReadableText(trip, EntryField::FishAction, m_places)),
              InShort(ReadableText(trip, EntryField::FishCaught, m_places)), InOneLine(similar.reasons)}});
    }
    const std::size_t count = m_conditions.size();
    m_ui->lblFew->setText(
        count >= mostSimilar || count == 0
            ? QString()
            : QStringLiteral("Your log has only %1.").arg(FromUtf8(Counted(count, "trip"))));
    m_ui->lblFew->setVisible(!m_ui->lblFew->text().isEmpty());
    m_ui->lvwSimilar->SetRows(std::move(rows));
    m_ui->lvwSimilar->setCurrentIndex(m_ui->lvwSimilar->model()->index(0, 0));
}

/// Opens the only trip of the day, or goes to the list of several ones.
void fCalendar::ActivateDay()
{
    m_ui->tabDay->setCurrentIndex(0);
    if (m_ui->lvwTrips->RowCount() == 1) {
        OpenTrip(*m_ui->lvwTrips);
    } else if (m_ui->lvwTrips->RowCount() > 1) {
        m_ui->lvwTrips->setFocus();
    }
}

void fCalendar::OpenTrip(const SortableList& list)
{
    if (const auto key = list.SelectedKey()) {
        const std::int16_t number = ToInt16(ToUtf8(key->mid(1)));
        Edit([number](fEntry& editor) { editor.SetData(number, false); });
    }
}

void fCalendar::AddTrip()
{
    const std::string date = FromDate(m_ui->monthGrid->Date());
    Edit([&](fEntry& editor) { editor.AddTrip({.date = date, .location = m_place}); });
}

/// Lets the user edit a trip, then shows the log again.
void fCalendar::Edit(const std::function<void(fEntry& editor)>& edit)
{
    fEntry editor(m_program, this);
    edit(editor);
    m_savedKeys.insert(m_savedKeys.end(), editor.SavedKeys().begin(), editor.SavedKeys().end());
    LoadLog();
    ShowDate(m_ui->monthGrid->Date());
    activateWindow(); // some window managers activate no window when two close at once
}

} // namespace Tarno
