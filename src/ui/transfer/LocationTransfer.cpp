#include "LocationTransfer.h"

#include "ImportFile.h"
#include "core/Conversions.h"
#include "core/Text.h"
#include "exchange/Gpx.h"
#include "fWayPoints.h"
#include "qt/Strings.h"
#include "store/RecordLayouts.h"
#include "ui/common/FileExport.h"

#include <QFileInfo>

#include <map>

namespace Tarno
{

namespace
{

TextTableModel::Row RowOf(const WayPoint& point, std::size_t index, bool isChecked)
{
    const auto& [latitude, longitude] = point.position;
    return {QString::number(index),
            {FromUtf8(point.name), FromUtf8(FromDouble(latitude)), FromUtf8(FromDouble(longitude))},
            {},
            isChecked};
}

/// Describes what was read, for example "club.gpx: 12 way points. Ignored: 2 tracks."
QString Described(const GpxFile& file, const QString& path)
{
    const std::string ignored = file.Ignored();
    return QFileInfo(path).fileName() + QStringLiteral(": ") +
           FromUtf8(Counted(file.points.size(), "way point")) + QLatin1Char('.') +
           (ignored.empty() ? QString()
                            : QStringLiteral(" Ignored: ") + FromUtf8(ignored) + QLatin1Char('.'));
}

/// Returns a row for each way point. Those that the log does not have yet are checked.
std::vector<TextTableModel::Row> RowsOf(const std::vector<WayPoint>& points, const RecordList& locations)
{
    std::map<std::string, QString> names;
    for (const RecordView& location : locations) {
        names.emplace(location.Text(LocationField::LocNo),
                      ShownInOneLine(location.Text(LocationField::LocName)));
    }
    const std::vector<std::string> known = MarkKnown(points, locations);
    std::vector<TextTableModel::Row> rows;
    for (std::size_t index = 0; index < points.size(); ++index) {
        const bool isNew = known[index].empty();
        TextTableModel::Row& row = rows.emplace_back(RowOf(points[index], index, isNew));
        row.cells << FromUtf8(ProposedOffset(points[index].position.longitude))
                  << (isNew ? QString() : names.at(known[index]));
    }
    return rows;
}

bool Export(const Program& program, QWidget* window, const std::vector<WayPoint>& points)
{
    const auto file = WriteExport(program, window,
                                  {.title = QStringLiteral("Export Locations"),
                                   .filter = QStringLiteral("GPX (*.gpx)"),
                                   .folder = FromUtf8(program.folder.GetAppPath() + '/'),
                                   .fileName = QStringLiteral("locations.gpx"),
                                   .suffix = QStringLiteral(".gpx")},
                                  WriteGpx(points));
    if (file) {
        program.messages.ShowInformation(
            window,
            QStringLiteral("Exported %1 to ").arg(FromUtf8(Counted(points.size(), "location"))) + *file,
            QStringLiteral("Tarno"));
    }
    return file.has_value();
}

bool Import(const Program& program, QWidget* window, const std::vector<WayPoint>& points)
{
    ImportBatch batch;
    for (const WayPoint& point : points) {
        batch.locations.push_back(LocationOf(point));
    }
    if (!program.sql.HasNumbersFor(batch)) {
        program.messages.Ask(window, {.text = QStringLiteral("Your log has too few numbers left for so many "
                                                             "locations. The highest number is 32767."),
                                      .title = QStringLiteral("Import Error"),
                                      .icon = Icon::Exclamation});
        return false;
    }
    if (program.sql.Import(batch) == succeeded) {
        program.messages.ShowInformation(window,
                                         FromUtf8(Counted(points.size(), "location")) +
                                             QStringLiteral(" imported. Edit > Undo takes the import back."),
                                         QStringLiteral("Tarno"));
    }
    return true;
}

std::vector<WayPoint> Chosen(const std::vector<WayPoint>& points, const std::vector<std::size_t>& chosen)
{
    std::vector<WayPoint> found;
    found.reserve(chosen.size());
    for (const std::size_t index : chosen) {
        found.push_back(points.at(index));
    }
    return found;
}

const QStringList headings{QStringLiteral("Name"), QStringLiteral("Latitude"), QStringLiteral("Longitude")};
const QStringList samples{QStringLiteral("Pittwater, Barrenjoey"), QStringLiteral("-33.123456"),
                          QStringLiteral("-151.123456")};

} // namespace

void ExportLocations(const Program& program, QWidget* parent)
{
    RecordList locations;
    if (program.sql.LocationList(locations) != succeeded) {
        return;
    }
    const std::vector<WayPoint> points = WayPointsOf(locations);
    QString note =
        QStringLiteral("The locations become way points in a GPX file for chart plotters and maps.");
    if (const std::size_t without = locations.size() - points.size(); without > 0) {
        note += QStringLiteral(" Left out: ") + FromUtf8(Counted(without, "location")) +
                QStringLiteral(" without coordinates.");
    }
    std::vector<TextTableModel::Row> rows;
    rows.reserve(points.size());
    for (const WayPoint& point : points) {
        rows.push_back(RowOf(point, rows.size(), true));
    }
    fWayPoints(
        program,
        {.title = QStringLiteral("Export Locations"),
         .note = note,
         .headings = headings,
         .samples = samples,
         .rows = std::move(rows),
         .hint = QStringLiteral("No location has coordinates. Enter them in the list of locations (Ctrl+L)."),
         .verb = QStringLiteral("&Export")},
        [&](QWidget* window, const std::vector<std::size_t>& chosen) {
            return Export(program, window, Chosen(points, chosen));
        },
        parent)
        .exec();
}

void ImportLocations(const Program& program, QWidget* parent)
{
    const auto chosenFile = AskForImport(program, parent, QStringLiteral("Import Locations"),
                                         QStringLiteral("GPX (*.gpx);;All files (*)"));
    if (!chosenFile) {
        return;
    }
    const GpxFile file = ReadGpx(chosenFile->bytes);
    if (!file.problem.empty()) {
        ShowImportProblem(program, parent, chosenFile->path, file.problem);
        return;
    }
    program.sql.ReadChangesOfOthers();
    RecordList locations;
    program.sql.LocationList(locations);
    fWayPoints(
        program,
        {.title = QStringLiteral("Import Locations"),
         .note = Described(file, chosenFile->path) +
                 QStringLiteral(
                     " The hours from GMT are proposed from the longitude. You can change them later."),
         .headings = headings + QStringList{QStringLiteral("GMT Diff"), QStringLiteral("Already There")},
         .samples = samples + QStringList{QStringLiteral("-10"), QStringLiteral("Pittwater, Barrenjoey")},
         .rows = RowsOf(file.points, locations),
         .hint = QStringLiteral("The file has no way points with a valid position."),
         .verb = QStringLiteral("&Import")},
        [&](QWidget* window, const std::vector<std::size_t>& chosen) {
            return Import(program, window, Chosen(file.points, chosen));
        },
        parent)
        .exec();
}

} // namespace Tarno
