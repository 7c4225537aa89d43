#pragma once

#include "analysis/CalendarDay.h"
#include "analysis/Similarity.h"
#include "analysis/TripText.h"
#include "ui/common/Program.h"

#include <QDialog>

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class QComboBox;

namespace Tarno
{

class SortableList;
class fEntry;

namespace Ui
{
class fCalendar;
}

/// The calendar: forecasts for a place by month and day, the trips logged on a day, and trips on days like
/// it.
class fCalendar : public QDialog
{
    Q_OBJECT

public:
    /// What `program` refers to must outlive the window.
    fCalendar(const Program& program, QWidget* parent);
    fCalendar(const fCalendar&) = delete;
    fCalendar& operator=(const fCalendar&) = delete;
    ~fCalendar() override;

    /// Returns the keys of the trips that were saved from here.
    const std::vector<std::string>& SavedKeys() const { return m_savedKeys; }

private:
    std::array<std::pair<QComboBox*, EntryField::Position>, 5> ConditionBoxes() const;
    RecordList Trips() const;
    RecordList Locations() const;
    void FillConditions();
    void Connect();
    void LoadLog();
    void LoadPlaces();
    void ChoosePlace();
    void ShowDate(std::chrono::year_month_day date);
    void ShowDay();
    void ShowTripsOfDay();
    void ShowSimilarTrips();
    Conditions WantedConditions() const;
    void ActivateDay();
    void OpenTrip(const SortableList& list);
    void AddTrip();
    void Edit(const std::function<void(fEntry& editor)>& edit);

    const Program& m_program;
    std::unique_ptr<Ui::fCalendar> m_ui;
    PlaceNames m_places;
    Positions m_positions;
    LocationTexts m_location; ///< of the chosen place
    std::string m_place;      ///< its number
    TripDays m_tripDays;
    std::vector<Conditions> m_conditions; ///< of the trips, in the order of the log
    std::vector<std::string> m_savedKeys;
};

} // namespace Tarno
