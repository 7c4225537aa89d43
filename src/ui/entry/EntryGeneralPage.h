#pragma once

#include "NewTripValues.h"
#include "ui/common/EditedRecord.h"
#include "ui/common/Program.h"

#include <QWidget>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace Tarno
{

class EntryCalculator;
class LeaveGuard;
class MoonPhaseEditor;
class RecordBinder;
class ClickLabel;

namespace Ui
{
class EntryGeneralPage;
}

/// The page "General" of the entry editor: dates and times, location, tide, action, and the values calculated
/// from start date and location.
class EntryGeneralPage : public QWidget
{
    Q_OBJECT

public:
    explicit EntryGeneralPage(QWidget* parent = nullptr);
    EntryGeneralPage(const EntryGeneralPage&) = delete;
    EntryGeneralPage& operator=(const EntryGeneralPage&) = delete;
    ~EntryGeneralPage() override;

    /// Binds the controls to `record`. Call once. The references must outlive the page.
    void Attach(const Program& program, EditedRecord& record, RecordBinder& binder, LeaveGuard& guard);

    /// Fills the list of locations. Returns whether there is at least one.
    bool LoadLocations();
    /// Shows the values that the binder does not show, location and moon phase, and calculates missing ones.
    void ShowExistingEntry();
    /// Shows and stores the date, times and location of a new entry, and calculates the others. The controls
    /// must be empty.
    void ShowNewEntry(const NewTripValues& trip);
    /// Focuses the start date and selects it.
    void StartEditing();
    /// Stores the selected location, if any.
    void StoreLocation();
    /// Replaces the location in the values of an entry by the selected one, if any.
    void AddSelectedLocation(StoredTexts& entry) const;

Q_SIGNALS:
    /// A value was stored without the binder.
    void WrittenBack();

private:
    void BindControls();
    void BindStep(ClickLabel* label, std::size_t field, int days);
    void StepDate(std::size_t field, int days);
    void OrderDates();
    void ShowDuration();
    void ShowWhetherTimesFit(bool fit);
    void StartDateChanged();
    void SelectLocation(const std::string& number);
    bool cboLocation_Validate();
    std::string StartDate() const;
    std::optional<std::int32_t> SelectedLocation() const;

    std::unique_ptr<Ui::EntryGeneralPage> m_ui;
    const Program* m_program = nullptr;
    EditedRecord* m_record = nullptr;
    RecordBinder* m_binder = nullptr;
    LeaveGuard* m_guard = nullptr;
    std::unique_ptr<MoonPhaseEditor> m_moonPhase;
    std::unique_ptr<EntryCalculator> m_calculator;
};

} // namespace Tarno
