#pragma once

#include "core/Clock.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace Tarno
{

/// A local date and the time of the day.
struct LocalTime {
    std::chrono::year_month_day date;
    std::chrono::minutes time;
};

/// Returns the present time.
LocalTime LocalTimeOf(const Clock& clock);

/// Returns for example "2026-11-22 18:30".
std::string ToText(const LocalTime& time);

enum class BackUpKind {
    ByHand,
    Automatic,    ///< removed when newer ones have made it dispensable
    BeforeRestore ///< the files that a restore has replaced
};

/// Returns the name of a new back-up, for example "tarno-2026-11-22-1830.zip",
/// "tarno-2026-11-22-1830-automatic.zip" or "tarno-2026-11-22-1830-before-restore.zip". If `taken`, the names
/// in its folder, has this name in any case of letters, "-2" or a higher number precedes the suffix.
std::string BackUpName(BackUpKind kind, const LocalTime& time, const std::vector<std::string>& taken);

/// A back-up as its name describes it.
struct NamedBackUp {
    std::string name;
    BackUpKind kind = BackUpKind::ByHand;
    std::string time;    ///< "2026-11-22 18:30"
    unsigned number = 1; ///< of those of the same kind and minute

    bool operator<(const NamedBackUp& other) const;
};

/// Returns the back-ups among `names`, the names in a folder, the oldest first. Ignores all other names.
std::vector<NamedBackUp> BackUpsAmong(const std::vector<std::string>& names);

/// Returns the names of the automatic back-ups among `names`, the oldest first.
std::vector<std::string> AutomaticBackUps(const std::vector<std::string>& names);

/// Returns those of `names`, the back-ups of a log, that can be removed: automatic back-ups other than the
/// last ten and the last one of each month. Never returns another name. The result is sorted.
std::vector<std::string> ExpiredBackUps(const std::vector<std::string>& names);

} // namespace Tarno
