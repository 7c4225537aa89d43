#include "Gpx.h"

#include "core/Conversions.h"
#include "core/Error.h"
#include "core/Text.h"
#include "core/Xml.h"
#include "exchange/PlaceName.h"
#include "exchange/TextEncoding.h"
#include "store/RecordLayouts.h"

#include <pugixml.hpp>

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <utility>

namespace Tarno
{

namespace
{

bool IsInRange(const EarthPosition& position)
{
    return std::abs(position.latitude) <= 90 && std::abs(position.longitude) <= 180;
}

std::optional<EarthPosition> PositionOf(std::string_view latitude, std::string_view longitude)
{
    try {
        const EarthPosition position{ToDouble(latitude), ToDouble(longitude)};
        return IsInRange(position) ? std::optional(position) : std::nullopt;
    } catch (const Error&) {
        return std::nullopt;
    }
}

std::string WithoutOuterBlanks(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\n";
    const auto first = std::min(text.find_first_not_of(blanks), text.size());
    return std::string(text.substr(first, text.find_last_not_of(blanks) + 1 - first));
}

std::string OnOneLine(std::string text)
{
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

std::string FromStored(const std::string& stored)
{
    return ReplaceAll(ReplaceAll(mMain::DecodeLineBreaks(stored), "\r\n", "\n"), "\r", "\n");
}

std::string ToStored(const std::string& text)
{
    return mMain::EncodeLineBreaks(ReplaceAll(text, "\n", "\r\n"));
}

/// Reads the way points below the root element, whose name space has the prefix `prefix` (with a colon).
class GpxReader
{
public:
    GpxReader(const pugi::xml_node& root, std::string prefix, GpxFile& file)
        : m_prefix(std::move(prefix)), m_file(file)
    {
        for (const pugi::xml_node& node : root.children()) {
            if (Is(node, "wpt")) {
                Add(node);
            } else if (Is(node, "rte")) {
                ++m_file.routes;
            } else if (Is(node, "trk")) {
                ++m_file.tracks;
            }
        }
    }

private:
    bool Is(const pugi::xml_node& node, std::string_view name) const
    {
        const std::string_view found = node.name();
        return found.starts_with(m_prefix) && found.substr(m_prefix.size()) == name;
    }

    std::string Text(const pugi::xml_node& point, const char* name) const
    {
        const std::string text = TextOf(point.child((m_prefix + name).c_str()));
        return WithoutOuterBlanks(ReplaceAll(ReplaceAll(text, "\r\n", "\n"), "\r", "\n"));
    }

    void Add(const pugi::xml_node& node)
    {
        const auto position = PositionOf(node.attribute("lat").value(), node.attribute("lon").value());
        if (!position) {
            ++m_file.pointsWithoutPosition;
            return;
        }
        std::string name = OnOneLine(Text(node, "name"));
        if (name.empty()) {
            name = FromDouble(position->latitude) + ", " + FromDouble(position->longitude);
        }
        if (!m_known.emplace(name, position->latitude, position->longitude).second) {
            ++m_file.repeatedPoints;
            return;
        }
        m_file.points.push_back({.name = std::move(name),
                                 .position = *position,
                                 .description = Text(node, "desc"),
                                 .comment = Text(node, "cmt")});
    }

    std::set<std::tuple<std::string, double, double>> m_known = {}; ///< names and positions of the points
    std::string m_prefix;
    GpxFile& m_file;
};

void AppendText(pugi::xml_node parent, const char* name, const std::string& text)
{
    if (!text.empty()) {
        parent.append_child(name).append_child(pugi::node_pcdata).set_value(XmlText(text).c_str());
    }
}

/// Finds locations by position and by name.
class KnownLocations
{
public:
    explicit KnownLocations(const RecordList& locations) : m_positions(PositionsOf(locations))
    {
        for (const RecordView& location : locations) {
            const std::string name = ComparedName(location.Text(LocationField::LocName));
            m_byName.emplace(name, location.Text(LocationField::LocNo));
        }
        m_byName.erase("");
    }

    std::string Find(const WayPoint& point) const
    {
        constexpr double near = 0.05;            // kilometres
        constexpr double nearLatitude = 0.00046; // degrees, slightly more than that
        double nearest = near;
        std::string found;
        for (const auto& [number, position] : m_positions) {
            if (std::abs(position.latitude - point.position.latitude) > nearLatitude) {
                continue;
            }
            if (const double apart = DistanceInKilometres(position, point.position); apart <= nearest) {
                nearest = apart;
                found = number;
            }
        }
        const auto named = m_byName.find(ComparedName(point.name));
        return !found.empty() || named == m_byName.end() ? found : named->second;
    }

private:
    Positions m_positions;
    std::map<std::string, std::string> m_byName;
};

} // namespace

std::vector<WayPoint> WayPointsOf(const RecordList& locations)
{
    std::vector<WayPoint> points;
    for (const RecordView& location : locations) {
        const auto position =
            PositionOf(location.Text(LocationField::LocLatt), location.Text(LocationField::LocLong));
        if (position) {
            points.push_back({.name = OnOneLine(FromStored(location.Text(LocationField::LocName))),
                              .position = *position,
                              .description = FromStored(location.Text(LocationField::LocDescription)),
                              .comment = FromStored(location.Text(LocationField::LocDirections))});
        }
    }
    return points;
}

std::string WriteGpx(const std::vector<WayPoint>& points)
{
    pugi::xml_document document;
    pugi::xml_node root = document.append_child("gpx");
    root.append_attribute("version") = "1.1";
    root.append_attribute("creator") = "Tarno";
    root.append_attribute("xmlns") = "http://www.topografix.com/GPX/1/1";
    for (const WayPoint& point : points) {
        pugi::xml_node node = root.append_child("wpt");
        const double longitude = point.position.longitude == 180 ? -180 : point.position.longitude;
        node.append_attribute("lat") = FromDouble(point.position.latitude).c_str();
        node.append_attribute("lon") = FromDouble(longitude).c_str();
        AppendText(node, "name", point.name); // the schema has this order
        AppendText(node, "cmt", point.comment);
        AppendText(node, "desc", point.description);
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + SerializeXml(document);
}

std::string GpxFile::Ignored() const
{
    std::string ignored;
    for (const auto& [count, one] : {std::pair(routes, "route"), std::pair(tracks, "track")}) {
        if (count > 0) {
            ignored += (ignored.empty() ? "" : ", ") + Counted(count, one);
        }
    }
    for (const auto& [count, why] : {std::pair(pointsWithoutPosition, " without a valid position"),
                                     std::pair(repeatedPoints, " of the same name and position")}) {
        if (count > 0) {
            ignored += (ignored.empty() ? "" : ", ") + Counted(count, "way point") + why;
        }
    }
    return ignored;
}

GpxFile ReadGpx(std::string_view bytes)
{
    GpxFile file;
    if (bytes.size() > GpxLimits::bytes) {
        file.problem = "The file is larger than " + std::to_string(GpxLimits::bytes / 1'000'000) + " MB.";
        return file;
    }
    auto decoded = DecodeText(bytes);
    if (!decoded) {
        file.problem = "The file begins with a Unicode mark, but does not contain such text.";
        return file;
    }
    pugi::xml_document document;
    if (const auto fault = ParseXmlInPlace(decoded->text, document)) {
        file.problem = "The file cannot be read. " +
                       DescribeXmlPosition(DecodeText(bytes)->text, fault->offset) + ": " +
                       std::string(fault->reason) + ".";
        return file;
    }
    const pugi::xml_node root = document.document_element();
    const std::string_view name = root.name();
    const std::size_t prefix = name.find(':') + 1; // 0 without one
    if (name.substr(prefix) != "gpx") {
        file.problem =
            "This is not a GPX file: its first element is \"" + XmlText(name.substr(0, 60)) + "\".";
        return file;
    }
    const GpxReader reader(root, std::string(name.substr(0, prefix)), file);
    if (file.points.size() > GpxLimits::points) {
        file.problem = "The file has more than " + std::to_string(GpxLimits::points) + " way points.";
        file.points.clear();
    }
    return file;
}

std::vector<std::string> MarkKnown(const std::vector<WayPoint>& points, const RecordList& locations)
{
    const KnownLocations known(locations);
    std::vector<std::string> numbers;
    numbers.reserve(points.size());
    for (const WayPoint& point : points) {
        numbers.push_back(known.Find(point));
    }
    return numbers;
}

std::string ProposedOffset(double longitude)
{
    constexpr double degreesAnHour = 15;
    return std::to_string(std::lround(longitude / degreesAnHour));
}

StoredTexts LocationOf(const WayPoint& point)
{
    StoredTexts location(LocationField::Count);
    location[LocationField::LocName] = point.name;
    location[LocationField::LocDirections] = ToStored(point.comment);
    location[LocationField::LocDescription] = ToStored(point.description);
    location[LocationField::LocLatt] = FromDouble(point.position.latitude);
    location[LocationField::LocLong] = FromDouble(point.position.longitude);
    location[LocationField::LocGMT] = ProposedOffset(point.position.longitude);
    return location;
}

} // namespace Tarno
