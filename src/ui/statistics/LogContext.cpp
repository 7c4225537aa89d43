#include "LogContext.h"

#include "core/ErrorLog.h"
#include "qt/Strings.h"
#include "ui/entry/PickLists.h"

namespace Tarno
{

namespace
{

LineItems ItemsOf(const ProgramFolder& folder, const char* file)
{
    LineItems items;
    Trap("fStatistics", "ReadPickList", [&] {
        std::vector<std::string> lines;
        for (const QString& line : ReadPickList(folder, file)) {
            lines.push_back(ToUtf8(line));
        }
        items = LineItems(lines);
    });
    return items;
}

} // namespace

LogContext ReadLogContext(const Program& program)
{
    RecordList locations;
    if (program.sql.CanAddLocations()) { // otherwise, the unreadable file was reported at the start
        program.sql.LocationList(locations);
    }
    const auto items = [&](EntryField::Position field) { return ItemsOf(program.folder, PickListOf(field)); };
    return {.places = PlaceNames(locations),
            .positions = PositionsOf(locations),
            .species = items(EntryField::FishCaught),
            .baits = items(EntryField::BaitUsed),
            .methods = items(EntryField::Method)};
}

const char* PickListOf(EntryField::Position field)
{
    switch (field) {
    case EntryField::BaitUsed:
        return "Bait.txt";
    case EntryField::Method:
        return "Methods.txt";
    default:
        return "Species.txt";
    }
}

} // namespace Tarno
