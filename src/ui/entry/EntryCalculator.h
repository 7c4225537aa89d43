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

/// Fills the calculated frames of the entry editor. Dates are texts as their boxes hold them, places are
/// numbers of locations. Errors are reported through ErrorLog.
class EntryCalculator
{
public:
    /// The references must outlive the object; messages appear over `window`.
    EntryCalculator(const Program& program, RecordBinder& binder, MoonPhaseEditor& moonPhase,
                    QWidget* window);

    void DoTheCalcs(const std::string& date, std::optional<std::int32_t> place);
    /// Moon phase and prediction; leaves the record's phase unsigned.
    void DoMoonPhase(const std::string& date);
    /// Sun, moon and peak times. Does nothing without a place. If the place lacks its coordinates or time
    /// zone, a message says so and the boxes stay as they are.
    void DoRiseSet(const std::string& date, std::optional<std::int32_t> place);

private:
    const Program& m_program;
    RecordBinder& m_binder;
    MoonPhaseEditor& m_moonPhase;
    QWidget* m_window;
};

} // namespace Tarno
