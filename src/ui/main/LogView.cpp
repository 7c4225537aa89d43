#include "LogView.h"

#include "LogColumns.h"
#include "analysis/TripDescription.h"
#include "core/ErrorLog.h"
#include "qt/Strings.h"
#include "ui/common/Notices.h"
#include "ui/common/QueryBar.h"
#include "ui/common/SortableList.h"

#include <QApplication>
#include <QClipboard>

#include <algorithm>
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
    std::vector<TextTableModel::Row> rows;
    m_keys.clear();
    ForgetRecords();
    Trap("fTarno", "LoadEntryList", [&] {
        const RecordList trips = Trips();
        AddLogRows(rows, trips,
                   [this](const std::string& number) { return m_program.sql.LocationNameGet(number); });
        std::transform(trips.begin(), trips.end(), std::back_inserter(m_keys),
                       [](const RecordView& trip) { return trip.Text(EntryField::TarnoNo); });
    });
    m_list.SetRows(std::move(rows), States());
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
        for (std::size_t row = 0; row < m_keys.size(); ++row) {
            const bool isFound = m_bar.CurrentQuery().Matches(m_searched[row]);
            const bool isKept = !isFound && m_kept.contains(m_keys[row]);
            kept += isKept ? 1 : 0;
            states.push_back(isFound ? RowState::Shown : isKept ? RowState::Marked : RowState::Hidden);
        }
    }
    const auto hidden = std::count(states.begin(), states.end(), RowState::Hidden);
    m_bar.ShowCount(m_keys.size() - kept - static_cast<std::size_t>(hidden), m_keys.size(), kept);
    return states;
}

/// Prepares the trips for queries. Uses the rows that are shown, even if the log contains others by now,
/// because another program has added or removed trips.
void LogView::FoldTrips()
{
    if (m_searched.size() == m_keys.size()) {
        return;
    }
    const PlaceNames places = Places();
    const RecordList trips = Trips();
    auto next = trips.begin();
    for (const std::string& key : m_keys) {
        const auto found = std::find_if(
            next, trips.end(), [&](const RecordView& trip) { return trip.Text(EntryField::TarnoNo) == key; });
        m_searched.emplace_back(found == trips.end() ? RecordView({}) : *found, places);
        next = found == trips.end() ? next : found + 1;
    }
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
    if (!m_keys.empty()) {
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
    const RecordList trips = key ? Trips() : RecordList();
    const auto found = std::find_if(trips.begin(), trips.end(), [&](const RecordView& trip) {
        return trip.Text(EntryField::TarnoNo) == *key;
    });
    return found == trips.end() ? std::nullopt : std::optional(*found);
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
    std::set<std::string> keys;
    for (std::size_t row = 0; row < m_keys.size(); ++row) {
        if (states.empty() || states[row] == RowState::Shown) {
            keys.insert(m_keys[row]);
        }
    }
    RecordList trips = Trips();
    std::erase_if(trips,
                  [&](const RecordView& trip) { return !keys.contains(trip.Text(EntryField::TarnoNo)); });
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
