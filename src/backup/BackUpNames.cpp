#include "BackUpNames.h"

#include "core/Conversions.h"
#include "core/Text.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <tuple>
#include <utility>

namespace Tarno
{

namespace
{

constexpr std::string_view prefix = "tarno-";
constexpr std::string_view suffix = ".zip";
constexpr std::string_view automatic = "-automatic";

std::string_view WordOf(BackUpKind kind)
{
    return kind == BackUpKind::Automatic       ? automatic
           : kind == BackUpKind::BeforeRestore ? std::string_view("-before-restore")
                                               : std::string_view();
}

/// Whether `text` has digits where `pattern` has zeros, and otherwise the same letters.
bool Matches(std::string_view text, std::string_view pattern)
{
    return std::equal(text.begin(), text.end(), pattern.begin(), pattern.end(), [](char letter, char wanted) {
        return wanted == '0' ? letter >= '0' && letter <= '9' : letter == wanted;
    });
}

/// Returns the kind of the back-up whose name ends with `rest`, and removes its word from `rest`.
BackUpKind TakeKind(std::string_view& rest)
{
    for (const BackUpKind kind : {BackUpKind::Automatic, BackUpKind::BeforeRestore}) {
        if (rest.starts_with(WordOf(kind))) {
            rest.remove_prefix(WordOf(kind).size());
            return kind;
        }
    }
    return BackUpKind::ByHand;
}

/// Returns the back-up with exactly this name, or nothing if it is not the name of one.
std::optional<NamedBackUp> BackUpOf(const std::string& name)
{
    constexpr std::string_view pattern = "0000-00-00-0000";
    std::string_view rest = name;
    if (!rest.starts_with(prefix) || !rest.ends_with(suffix)) {
        return std::nullopt;
    }
    rest.remove_prefix(prefix.size());
    rest.remove_suffix(suffix.size());
    const std::string minute(rest.substr(0, pattern.size()));
    rest.remove_prefix(minute.size());
    if (!Matches(minute, pattern)) {
        return std::nullopt;
    }
    NamedBackUp found{name, TakeKind(rest),
                      minute.substr(0, 10) + ' ' + minute.substr(11, 2) + ':' + minute.substr(13), 1};
    if (rest.empty()) {
        return found;
    }
    const auto [end, failure] = std::from_chars(rest.data() + 1, rest.data() + rest.size(), found.number);
    const bool isNumber = rest.front() == '-' && rest.size() > 1 && rest[1] != '0' &&
                          failure == std::errc() && end == rest.data() + rest.size() && found.number > 1;
    return isNumber ? std::optional(found) : std::nullopt;
}

/// Returns the automatic back-ups, the oldest first.
std::vector<NamedBackUp> AutomaticAmong(const std::vector<std::string>& names)
{
    std::vector<NamedBackUp> found = BackUpsAmong(names);
    std::erase_if(found, [](const NamedBackUp& one) { return one.kind != BackUpKind::Automatic; });
    return found;
}

std::string_view MonthOf(const NamedBackUp& backUp)
{
    return std::string_view(backUp.time).substr(0, 7);
}

} // namespace

LocalTime LocalTimeOf(const Clock& clock)
{
    return {clock.Today(), clock.TimeOfDay()};
}

std::string ToText(const LocalTime& time)
{
    const auto minutes = static_cast<int>(time.time.count());
    return FromDate(time.date) + ' ' + ZeroPadded(minutes / 60, 2) + ':' + ZeroPadded(minutes % 60, 2);
}

std::string BackUpName(BackUpKind kind, const LocalTime& time, const std::vector<std::string>& taken)
{
    const auto minutes = static_cast<int>(time.time.count());
    const std::string first = std::string(prefix) + FromDate(time.date) + '-' + ZeroPadded(minutes / 60, 2) +
                              ZeroPadded(minutes % 60, 2) + std::string(WordOf(kind));
    std::string name = first + std::string(suffix);
    for (int number = 2;
         std::any_of(taken.begin(), taken.end(),
                     [&](const std::string& other) { return EqualIgnoringCase(name, other); });
         ++number) {
        name = first + '-' + std::to_string(number) + std::string(suffix);
    }
    return name;
}

bool NamedBackUp::operator<(const NamedBackUp& other) const
{
    return std::tie(time, number, name) < std::tie(other.time, other.number, other.name);
}

std::vector<NamedBackUp> BackUpsAmong(const std::vector<std::string>& names)
{
    std::vector<NamedBackUp> found;
    for (const std::string& name : names) {
        if (const auto one = BackUpOf(name)) {
            found.push_back(*one);
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

std::vector<std::string> ExpiredBackUps(const std::vector<std::string>& names)
{
    constexpr std::size_t kept = 10;
    const std::vector<NamedBackUp> all = AutomaticAmong(names);
    std::vector<std::string> expired;
    for (std::size_t index = 0; index + kept < all.size(); ++index) {
        if (MonthOf(all[index]) == MonthOf(all[index + 1])) { // not the last one of its month
            expired.push_back(all[index].name);
        }
    }
    return expired;
}

std::vector<std::string> AutomaticBackUps(const std::vector<std::string>& names)
{
    std::vector<std::string> automatic;
    for (const NamedBackUp& one : AutomaticAmong(names)) {
        automatic.push_back(one.name);
    }
    return automatic;
}

} // namespace Tarno
