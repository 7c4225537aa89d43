#pragma once

#include "LogColumns.h"
#include "analysis/Query.h"
#include "analysis/TripText.h"
#include "ui/common/Program.h"
#include "ui/common/TextTableModel.h"
#include "ui/reports/LogReport.h"

#include <QObject>

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace Tarno
{

class QueryBar;
class SortableList;

/// Shows the trips of the log in a list, restricted to those that the query of a find bar finds. Records are
/// identified by their keys, because a change of the log can invalidate every RecordView.
class LogView : public QObject
{
    Q_OBJECT

public:
    /// The references must outlive the object.
    LogView(const Program& program, SortableList& list, QueryBar& bar, QObject* parent);

    /// Shows the trips of the log. Errors are reported through ErrorLog, and the list is then empty.
    void LoadEntryList();

    /// Loads the list after these trips were saved, and selects the last one. Until the query changes, they
    /// are shown even if it does not find them, but marked.
    void ShowSaved(const std::vector<std::string>& keys);

    /// Forgets everything that refers to the records. Call this after every command that may change them.
    void ForgetRecords();

    /// Shows in an empty list why it is empty.
    void ShowHint(bool anyLocation);

    /// Returns the number of trips in the log, found or not.
    std::size_t TripCount() const { return Rows().size(); }

    /// Whether a query restricts the list.
    bool IsRestricted() const;

    std::optional<std::string> SelectedKey() const;

    /// Returns the record of the selected trip, valid until the next change of the log.
    std::optional<RecordView> SelectedTrip() const;

    /// Returns the trips that the query finds, for a report.
    TripsFound Found();

    /// Copies the selected trip, or those that the query finds, to the clipboard as text separated by tabs.
    void Copy() const;
    void CopyFound();

    /// Returns the names of the locations.
    PlaceNames Places() const;

Q_SIGNALS:
    /// The user has changed the query.
    void QueryChanged();

private:
    struct Row {
        std::string key;
        std::optional<std::string> location;
        RecordView trip; ///< valid at Contents::revision
    };

    using LocationNames = std::unordered_map<std::string, QString>;

    /// What the list shows until it is loaded again.
    struct Contents {
        std::vector<Row> rows = {}; ///< in file order
        RecordTable::Revision revision = {};
        LocationNames locations = {}; ///< by number
    };

    const std::vector<Row>& Rows() const { return m_contents->rows; }

    static Row RowOf(const RecordView& trip);
    void ApplyQuery();
    std::vector<TextTableModel::RowState> States();
    void FoldTrips();
    QString Hint(bool anyLocation) const;
    void CopyTrips(const RecordList& trips) const;
    RecordList Trips() const;
    RecordList FoundTrips();
    std::vector<Row> CurrentRows() const;
    std::optional<std::vector<Row>> UpdatedRows(const std::set<std::string>& changed) const;
    LocationNames LocationsOf(const std::vector<Row>& rows) const;
    QString TextAt(const Contents& contents, std::size_t row, int column) const;
    RecordView TripAt(const Contents& contents, std::size_t row) const;

    const Program& m_program;
    SortableList& m_list;
    QueryBar& m_bar;
    std::shared_ptr<const Contents> m_contents = std::make_shared<Contents>();
    std::set<std::string> m_kept;
    std::vector<const SearchedTrip*> m_searched; ///< of all rows; empty until a query needs them
    std::unordered_multimap<std::string, SearchedTrip> m_folded; ///< by key, as at m_foldedRevision
    RecordTable::Revision m_foldedRevision;
    PlaceNames m_foldedPlaces;
};

} // namespace Tarno
