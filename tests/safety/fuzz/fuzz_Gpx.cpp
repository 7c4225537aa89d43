#include "Require.h"
#include "exchange/Gpx.h"
#include "store/RecordLayouts.h"

#include <cmath>

using namespace Tarno;

namespace
{

void CheckPoint(const WayPoint& point, const WayPoint& again)
{
    Require(std::abs(point.position.latitude) <= 90 && std::abs(point.position.longitude) <= 180,
            "a position is in range");
    Require(point.name.find_first_of("\r\n") == std::string::npos, "a name is one line");
    Require(point.name == again.name && point.description == again.description &&
                point.comment == again.comment,
            "texts are read unchanged");
    Require(point.position.latitude == again.position.latitude &&
                (point.position.longitude == again.position.longitude || point.position.longitude == 180),
            "a position is read unchanged");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const GpxFile file = ReadGpx(BytesOf(data, size));
    Require(file.problem.empty() || (file.points.empty() && file.problem.ends_with('.')),
            "a problem is a sentence");
    const GpxFile again = ReadGpx(WriteGpx(file.points));
    Require(again.problem.empty() && again.points.size() == file.points.size() && again.Ignored().empty(),
            "a written file is read completely");
    for (std::size_t index = 0; index < file.points.size(); ++index) {
        CheckPoint(file.points[index], again.points[index]);
        Require(LocationOf(file.points[index]).size() == LocationField::Count, "a way point is a location");
    }
    Require(MarkKnown(file.points, {}).size() == file.points.size(), "every way point is known or not");
    return 0;
}
