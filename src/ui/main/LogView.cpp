#include "LogView.h"

#include "analysis/TripDescription.h"
#include "core/ErrorLog.h"
#include "qt/Strings.h"
#include "ui/common/Notices.h"
#include "ui/common/QueryBar.h"
#include "ui/common/SortableList.h"

#include <QApplication>
#include <QClipboard>

#include <algorithm>
#include <iterator>
#include <utility>

namespace Tarno
{

namespace
{

using RowState = TextTableModel::RowState;

} // namespace

LogView::LogView(const Program& program, SortableList& list, QueryBar& bar, QObject* parent)
    : QObject(parent), m_program(program), m_list(list), m_bar(bar)
{
    m_list.SetHeadings(LogHeadings());
    m_list.FitColumns(LogSamples(), StretchedLogColumn());
    m_list.SetRemark(QStringLiteral("You have just saved this trip. The search does not find it."));
    m_bar.SetCompletion([this] { return QueryCompletion([this] { return Trips(); }, Places()); });
    connect(&m_bar, &QueryBar::QueryChanged, this,
            [this] { Trap("fTarno", "ApplyQuery", [this] { ApplyQuery(); }); });
    connect(&m_bar, &QueryBar::Entered, &m_list, [this] { m_list.setFocus(); });
    connect(&m_bar, &QueryBar::Closed, &m_list, [this] { m_list.setFocus(); });
}

void LogView::LoadEntryList()
{
    auto contents = std::make_shared<Contents>();
    Trap("fTarno", "LoadEntryList", [&] {
        contents->rows = CurrentRows();
        contents->revision = m_program.sql.EntryRevision();
        contents->locations = LocationsOf(contents->rows);
    });
    m_contents = contents;
    ForgetRecords();
    m_list.SetLazyRows(
        {.count = contents->rows.size(),
         .key = [contents](std::size_t row) { return EntryRowKey(contents->rows[row].key); },
         .text = [this, contents](std::size_t row, int column) { return TextAt(*contents, row, column); }},
        States());
}

LogView::Row LogView::RowOf(const RecordView& trip)
{
    return {trip.Text(EntryField::TarnoNo),
            trip.Has(EntryField::LocNo) ? std::optional(trip.Text(EntryField::LocNo)) : std::nullopt, trip};
}

/// Returns the rows of the trips in the log.
std::vector<LogView::Row> LogView::CurrentRows() const
{
    const auto changed = m_program.sql.EntriesChangedSince(m_contents->revision);
    if (auto rows = changed ? UpdatedRows(*changed) : std::nullopt) {
        return std::move(*rows);
    }
    std::vector<Row> rows;
    const RecordList trips = Trips();
    std::transform(trips.begin(), trips.end(), std::back_inserter(rows), RowOf);
    return rows;
}

/// Returns the rows after these trips were changed, removed or appended. Returns nothing if trips may have
/// been added elsewhere.
std::optional<std::vector<LogView::Row>> LogView::UpdatedRows(const std::set<std::string>& changed) const
{
    std::vector<Row> rows = Rows();
    for (const std::string& key : changed) {
        const RecordView trip = m_program.sql.FindEntry(key);
        const auto row =
            std::find_if(rows.begin(), rows.end(), [&](const Row& one) { return one.key == key; });
        if (row != rows.end() && trip.Node()) {
            *row = RowOf(trip);
        } else if (row != rows.end()) {
            rows.erase(row);
        } else if (trip.Node()) {
            if (changed.size() > 1 || trip.Node().next_sibling()) {
                return std::nullopt;
            }
            rows.push_back(RowOf(trip));
        }
    }
    return rows;
}

/// Returns the name of each location by number. Asks once for each, in the order of the rows; unknown ones
/// are reported.
LogView::LocationNames LogView::LocationsOf(const std::vector<Row>& rows) const
{
    LocationNames locations;
    for (const Row& row : rows) {
        if (row.location && !locations.contains(*row.location)) {
            locations.emplace(*row.location, ShownInOneLine(m_program.sql.LocationNameGet(*row.location)));
        }
    }
    return locations;
}

QString LogView::TextAt(const Contents& contents, std::size_t row, int column) const
{
    const std::optional<std::string>& location = contents.rows[row].location;
    return LogText(TripAt(contents, row), column, location ? contents.locations.at(*location) : QString());
}

/// Returns the record of a row, without values if the trip was removed since the rows were loaded. Valid
/// until the next change of the log.
RecordView LogView::TripAt(const Contents& contents, std::size_t row) const
{
    return m_program.sql.EntryRevision() == contents.revision
               ? contents.rows[row].trip
               : m_program.sql.FindEntry(contents.rows[row].key);
}

void LogView::ApplyQuery()
{
    m_kept.clear();
    m_list.SetStates(States());
    Q_EMIT QueryChanged();
}

/// Returns the state of each row, or an empty list without a query, and shows the counts in the find bar.
std::vector<RowState> LogView::States()
{
    std::vector<RowState> states;
    std::size_t kept = 0;
    if (IsRestricted()) {
        FoldTrips();
        for (std::size_t row = 0; row < Rows().size(); ++row) {
            const bool isFound = m_bar.CurrentQuery().Matches(*m_searched[row]);
            const bool isKept = !isFound && m_kept.contains(Rows()[row].key);
            kept += isKept ? 1 : 0;
            states.push_back(isFound ? RowState::Shown : isKept ? RowState::Marked : RowState::Hidden);
        }
    }
    const auto hidden = std::count(states.begin(), states.end(), RowState::Hidden);
    m_bar.ShowCount(Rows().size() - kept - static_cast<std::size_t>(hidden), Rows().size(), kept);
    return states;
}

/// Prepares the trips for queries, if they have changed. Uses the rows that are shown, even if the log
/// contains others by now, because another program has added or removed trips.
void LogView::FoldTrips()
{
    if (m_searched.size() == Rows().size()) {
        return;
    }
    PlaceNames places = Places();
    auto changed = m_program.sql.EntriesChangedSince(m_foldedRevision);
    if (changed && places == m_foldedPlaces) {
        std::for_each(changed->begin(), changed->end(), [this](const auto& key) { m_folded.erase(key); });
    } else {
        changed.reset();
        m_folded.clear();
    }
    for (std::size_t row = 0; row < Rows().size(); ++row) {
        const auto known =
            changed ? m_folded.find(Rows()[row].key) : m_folded.end(); // else, keys may be equal
        m_searched.push_back(
            known != m_folded.end()
                ? &known->second
                : &m_folded.emplace(Rows()[row].key, SearchedTrip(TripAt(*m_contents, row), places))->second);
    }
    m_foldedPlaces = std::move(places);
    m_foldedRevision = m_program.sql.EntryRevision();
}

void LogView::ShowSaved(const std::vector<std::string>& keys)
{
    m_kept.insert(keys.begin(), keys.end());
    LoadEntryList();
    if (!keys.empty()) {
        m_list.SelectKey(EntryRowKey(keys.back()));
    }
}

void LogView::ForgetRecords()
{
    m_searched.clear(); // contains the names of the locations
    m_bar.ForgetTrips();
}

void LogView::ShowHint(bool anyLocation)
{
    m_list.SetHint(Hint(anyLocation));
}

/// Returns the text for an empty list.
QString LogView::Hint(bool anyLocation) const
{
    if (!m_program.sql.CanAddEntries()) {
        return UnreadableHint(QStringLiteral("Your log"), QStringLiteral("tarno.xml"));
    }
    if (!m_program.sql.CanAddLocations()) {
        return UnreadableHint(QStringLiteral("Your locations"), QStringLiteral("location.xml"));
    }
    if (!Rows().empty()) {
        return QStringLiteral("No trip is found. Press Esc to show all trips again.");
    }
    return anyLocation ? QStringLiteral("No trips yet. Click \"Add\" or press Ctrl+N to log the first one.")
                       : QStringLiteral("Your log is empty. Every trip needs a location. Click \"Locations\" "
                                        "to add one first.");
}

bool LogView::IsRestricted() const
{
    return m_bar.CurrentQuery().HasTerms();
}

std::optional<std::string> LogView::SelectedKey() const
{
    const auto row = m_list.SelectedKey();
    return row ? std::optional(ToUtf8(row->mid(1))) : std::nullopt;
}

std::optional<RecordView> LogView::SelectedTrip() const
{
    const auto key = SelectedKey();
    const auto row =
        std::find_if(Rows().begin(), Rows().end(), [&](const Row& one) { return one.key == key; });
    if (row == Rows().end()) {
        return std::nullopt;
    }
    const RecordView trip = TripAt(*m_contents, static_cast<std::size_t>(row - Rows().begin()));
    return trip.Node() ? std::optional(trip) : std::nullopt;
}

TripsFound LogView::Found()
{
    TripsFound found{.keys = {}, .query = IsRestricted() ? m_bar.Text() : QString()};
    for (const RecordView& trip : FoundTrips()) {
        found.keys.insert(trip.Text(EntryField::TarnoNo));
    }
    return found;
}

RecordList LogView::FoundTrips()
{
    const std::vector<RowState> states = States();
    RecordList trips;
    for (std::size_t row = 0; row < Rows().size(); ++row) {
        const RecordView trip = TripAt(*m_contents, row);
        if (trip.Node() && (states.empty() || states[row] == RowState::Shown)) {
            trips.push_back(trip);
        }
    }
    return trips;
}

void LogView::Copy() const
{
    if (const auto trip = SelectedTrip()) {
        CopyTrips({*trip});
    }
}

void LogView::CopyFound()
{
    CopyTrips(FoundTrips());
}

void LogView::CopyTrips(const RecordList& trips) const
{
    QApplication::clipboard()->setText(FromUtf8(TabSeparated(trips, Places())));
}

PlaceNames LogView::Places() const
{
    RecordList locations;
    if (m_program.sql.CanAddLocations()) { // otherwise, each call would report the unreadable file
        m_program.sql.LocationList(locations);
    }
    return PlaceNames(locations);
}

RecordList LogView::Trips() const
{
    RecordList trips;
    m_program.sql.EntryList(trips);
    return trips;
}

} // namespace Tarno
