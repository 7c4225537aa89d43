#include "IncludeWalk.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <regex>
#include <set>
#include <string_view>

namespace
{

namespace fs = std::filesystem;

/// From the top down.
constexpr std::array<std::string_view, 12> floors{
    "app",     "ui/main",   "ui/locations", "ui/entry", "reports", "reports/preview", "reports/engine",
    "ui/help", "ui/common", "store",        "astro",    "core"};

constexpr std::array<std::string_view, 3> floorsWithoutQt{"store", "astro", "core"};

constexpr std::string_view floorWithoutWidgets = "reports/engine";

/// The headers of Qt Core and Qt Gui that a report engine may need. What is missing here goes red until
/// somebody has looked where it comes from.
const std::set<std::string_view> coreAndGuiHeaders{
    "QBrush",
    "QBuffer",
    "QByteArray",
    "QChar",
    "QColor",
    "QDate",
    "QDateTime",
    "QFile",
    "QFileInfo",
    "QFont",
    "QFontDatabase",
    "QFontInfo",
    "QFontMetrics",
    "QFontMetricsF",
    "QGlyphRun",
    "QHash",
    "QImage",
    "QImageReader",
    "QIODevice",
    "QLatin1String",
    "QLineF",
    "QList",
    "QLocale",
    "QMap",
    "QMargins",
    "QMarginsF",
    "QPageLayout",
    "QPageSize",
    "QPaintDevice",
    "QPagedPaintDevice",
    "QPaintEngine",
    "QPainter",
    "QPainterPath",
    "QPdfWriter",
    "QPen",
    "QPicture",
    "QPixmap",
    "QPoint",
    "QPointF",
    "QRawFont",
    "QRect",
    "QRectF",
    "QSaveFile",
    "QScopeGuard",
    "QSet",
    "QSize",
    "QSizeF",
    "QStaticText",
    "QString",
    "QStringList",
    "QStringView",
    "QTextLayout",
    "QTextBoundaryFinder",
    "QTextOption",
    "QTextStream",
    "QTime",
    "QTransform",
    "QVariant",
    "QtGlobal",
    "QtMath",
};

struct Include {
    std::string name;
    bool angled = false;
};

template <typename Names>
bool Holds(const Names& names, std::string_view name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::vector<Include> IncludesOf(const fs::path& file)
{
    static const std::regex directive(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"].*)");
    static const std::regex formHeader(R"(\s*<header[^>]*>([^<]+)</header>.*)");
    std::vector<Include> includes;
    std::ifstream stream(file);
    std::smatch match;
    for (std::string line; std::getline(stream, line);) {
        if (std::regex_match(line, match, directive)) {
            includes.push_back({match[2], match[1] == "<"});
        } else if (file.extension() == ".ui" && std::regex_match(line, match, formHeader)) {
            includes.push_back({match[1], false});
        }
    }
    return includes;
}

/// What the build makes for the folder that includes it.
bool IsGenerated(const std::string& name)
{
    return (name.starts_with("ui_") && name.ends_with(".h")) || name.ends_with(".moc") ||
           name.starts_with("moc_");
}

/// What is wrong with an include in angle brackets on the floor `from`; empty when nothing is.
std::string AngledFault(const fs::path& sources, const std::string& from, const std::string& name)
{
    if (fs::exists(sources / name)) {
        return "is no foreign header";
    }
    const bool isQt = name.starts_with('Q') || name.starts_with('q');
    if (isQt && Holds(floorsWithoutQt, from)) {
        return "is Qt";
    }
    if (isQt && from == floorWithoutWidgets && coreAndGuiHeaders.count(name) == 0) {
        return "is not known to be in Qt Core or Qt Gui";
    }
    return {};
}

std::string QuotedFault(const fs::path& sources, const std::string& from, const std::string& name)
{
    const fs::path path(name);
    if (!path.has_parent_path()) {
        const bool isOwn = fs::exists(sources / from / name) || IsGenerated(name);
        return isOwn ? "" : "is not written with its full path";
    }
    const std::string to = path.parent_path().generic_string();
    const auto* target = std::find(floors.begin(), floors.end(), to);
    if (target == floors.end() || !fs::exists(sources / path)) {
        return "is not written with its full path";
    }
    return target < std::find(floors.begin(), floors.end(), from) ? "runs upwards" : "";
}

} // namespace

IncludeWalk WalkIncludes(const fs::path& sources)
{
    IncludeWalk walk;
    for (const auto& entry : fs::recursive_directory_iterator(sources)) {
        const std::string extension = entry.path().extension().string();
        if (extension == ".h" || extension == ".cpp" || extension == ".ui") {
            walk.files.push_back(fs::relative(entry.path(), sources).generic_string());
        }
    }
    std::sort(walk.files.begin(), walk.files.end());
    for (const std::string& file : walk.files) {
        const std::string from = fs::path(file).parent_path().generic_string();
        if (!Holds(floors, from)) {
            walk.violations.push_back(file + ": stands on no floor");
            continue;
        }
        for (const auto& [name, angled] : IncludesOf(sources / file)) {
            const std::string fault =
                angled ? AngledFault(sources, from, name) : QuotedFault(sources, from, name);
            if (!fault.empty()) {
                walk.violations.emplace_back(file).append(": ").append(name).append(" ").append(fault);
            }
        }
    }
    return walk;
}
