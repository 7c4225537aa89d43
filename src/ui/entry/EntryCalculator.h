#pragma once

#include "ui/common/Program.h"

#include <cstdint>
#include <optional>
#include <string>

class QWidget;

namespace Tarno
{

class MoonPhaseEditor;
class RecordBinder;

/// Fills the frames of the entry editor that contain calculated values. Dates have the format of the date
/// boxes. Errors are reported through ErrorLog.
class EntryCalculator
{
public:
    /// The references must outlive the object. Messages appear over `window`.
    EntryCalculator(const Program& program, RecordBinder& binder, MoonPhaseEditor& moonPhase,
                    QWidget* window);

    /// Returns whether rise, set and peak times were calculated.
    bool DoTheCalcs(const std::string& date, std::optional<std::int32_t> locationNumber);
    /// Calculates moon phase and prediction. Stores the phase without a sign.
    void DoMoonPhase(const std::string& date);
    /// Calculates rise, set and peak times, and returns whether it could. Does nothing without a location. If
    /// the location has no coordinates or time zone, shows a message and leaves the boxes unchanged.
    bool DoRiseSet(const std::string& date, std::optional<std::int32_t> locationNumber);

private:
    const Program& m_program;
    RecordBinder& m_binder;
    MoonPhaseEditor& m_moonPhase;
    QWidget* m_window;
};

} // namespace Tarno
