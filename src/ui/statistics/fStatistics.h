#pragma once

#include "analysis/ForecastCheck.h"
#include "analysis/SearchedTrip.h"
#include "analysis/TripGroups.h"
#include "analysis/UnmatchedLines.h"
#include "ui/common/Program.h"

#include <QDialog>

#include <memory>
#include <optional>
#include <vector>

namespace Tarno
{

namespace Ui
{
class fStatistics;
}

/// The statistics of the log, or of the trips that a query finds: groups of trips, how the forecast and the
/// action went together, the years, and the lines that name no item of a pick list.
class fStatistics : public QDialog
{
    Q_OBJECT

public:
    /// Starts with `query`. What `program` refers to must outlive the window.
    fStatistics(const Program& program, const QString& query, QWidget* parent);
    fStatistics(const fStatistics&) = delete;
    fStatistics& operator=(const fStatistics&) = delete;
    ~fStatistics() override;

    /// Returns the query of the group that the user wants to see in the log, if any.
    const std::optional<QString>& WantedQuery() const { return m_wantedQuery; }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void SetUpLists();
    void Connect();
    void ApplyQuery();
    RecordList Trips() const;
    RecordList FoundTrips() const;
    void ShowPage();
    void ShowGroups(const RecordList& trips);
    void ShowTripsOfGroup();
    void ShowChecks(const RecordList& trips);
    void ShowCheck();
    void ShowYears(const RecordList& trips);
    void ShowYear();
    void PreviewYear();
    void ShowLines(const RecordList& trips);
    const UnmatchedLine* SelectedLine() const;
    void CopyLine() const;
    void OpenPickList();

    const Program& m_program;
    std::unique_ptr<Ui::fStatistics> m_ui;
    LogContext m_context;
    std::vector<SearchedTrip>
        m_searched;              ///< the trips of the log, in its order; empty until a query needs them
    std::vector<bool> m_isFound; ///< by trip; empty if no query restricts them
    std::vector<TripGroup> m_groups;
    std::vector<ForecastCheck> m_checks;
    std::vector<UnmatchedLine> m_lines;
    std::optional<QString> m_wantedQuery;
};

} // namespace Tarno
