#include "IncludeWalk.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <regex>
#include <set>
#include <string_view>

namespace Tarno
{

namespace
{

namespace fs = std::filesystem;

enum class Qt { None, Core, CoreAndGui, All };

struct Layer {
    std::string_view folder;
    int level; ///< folders of the same level do not include each other
    Qt uses;
};

/// From the top down.
constexpr std::array layers{
    Layer{"app", 11, Qt::All},
    Layer{"ui/main", 10, Qt::All},
    Layer{"ui/locations", 9, Qt::All},
    Layer{"ui/calendar", 9, Qt::All},
    Layer{"ui/statistics", 9, Qt::All},
    Layer{"ui/transfer", 9, Qt::All},
    Layer{"ui/backup", 9, Qt::All},
    Layer{"ui/entry", 8, Qt::All},
    Layer{"ui/reports", 8, Qt::All},
    Layer{"ui/help", 7, Qt::All},
    Layer{"ui/common", 6, Qt::All},
    Layer{"reports", 5, Qt::CoreAndGui},
    Layer{"reports/engine", 4, Qt::CoreAndGui},
    Layer{"backup", 5, Qt::Core},
    Layer{"exchange", 4, Qt::Core},
    Layer{"analysis", 3, Qt::Core},
    Layer{"qt", 2, Qt::CoreAndGui},
    Layer{"store", 2, Qt::None},
    Layer{"astro", 2, Qt::None},
    Layer{"core", 1, Qt::None},
};

const Layer* LayerOf(std::string_view folder)
{
    const auto* found = std::find_if(layers.begin(), layers.end(),
                                     [&](const Layer& layer) { return layer.folder == folder; });
    return found == layers.end() ? nullptr : found;
}

/// The headers that layers with a part of Qt may include. The test refuses all others, so add a header here
/// only after checking its module.
const std::set<std::string_view> coreHeaders{
    "QBuffer",
    "QByteArray",
    "QCache",
    "QChar",
    "QCoreApplication",
    "QCryptographicHash",
    "QDate",
    "QDateTime",
    "QDir",
    "QFile",
    "QFileInfo",
    "QHash",
    "QIODevice",
    "QLatin1String",
    "QLineF",
    "QList",
    "QLocale",
    "QLockFile",
    "QMap",
    "QMargins",
    "QMarginsF",
    "QPoint",
    "QPointF",
    "QRect",
    "QRectF",
    "QSaveFile",
    "QScopeGuard",
    "QSet",
    "QSize",
    "QSizeF",
    "QString",
    "QStringBuilder",
    "QStringList",
    "QStringView",
    "QTextBoundaryFinder",
    "QTextStream",
    "QTime",
    "QVariant",
    "QtGlobal",
    "QtMath",
};
const std::set<std::string_view> guiHeaders{
    "QBrush",       "QColor",        "QFont",        "QFontDatabase", "QFontInfo",
    "QFontMetrics", "QFontMetricsF", "QGlyphRun",    "QIcon",         "QImage",
    "QImageReader", "QPageLayout",   "QPageSize",    "QPaintDevice",  "QPagedPaintDevice",
    "QPaintEngine", "QPainter",      "QPainterPath", "QPdfWriter",    "QPen",
    "QPicture",     "QPixmap",       "QRawFont",     "QStaticText",   "QTextLayout",
    "QTextOption",  "QTransform",
};

struct Include {
    std::string name;
    bool angled = false;
};

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

/// Whether the build generates the header `name` for the folder that includes it.
bool IsGenerated(const std::string& name)
{
    return (name.starts_with("ui_") && name.ends_with(".h")) || name.ends_with(".moc") ||
           name.starts_with("moc_");
}

/// Returns what is wrong with an include in angle brackets in the layer `from`, or an empty text.
std::string AngledFault(const fs::path& sources, const Layer& from, const std::string& name)
{
    if (fs::exists(sources / name)) {
        return "is not an external header";
    }
    const bool isQt = name.starts_with('Q') || name.starts_with('q');
    if (isQt && from.uses == Qt::None) {
        return "is Qt";
    }
    const bool isCore = coreHeaders.count(name) > 0;
    if (isQt && from.uses == Qt::Core && !isCore) {
        return "is not known to be in Qt Core";
    }
    if (isQt && from.uses == Qt::CoreAndGui && !isCore && guiHeaders.count(name) == 0) {
        return "is not known to be in Qt Core or Qt Gui";
    }
    return {};
}

/// The same for an include in quotes.
std::string QuotedFault(const fs::path& sources, const Layer& from, const std::string& name)
{
    const fs::path path(name);
    if (!path.has_parent_path()) {
        const bool isOwn = fs::exists(sources / from.folder / name) || IsGenerated(name);
        return isOwn ? "" : "is not written with its full path";
    }
    const Layer* to = LayerOf(path.parent_path().generic_string());
    if (to == nullptr || !fs::exists(sources / path)) {
        return "is not written with its full path";
    }
    return to == &from || to->level < from.level ? ""
           : to->level == from.level             ? "is on the same level"
                                                 : "is on a higher level";
}

} // namespace

std::vector<std::string> Layers()
{
    std::vector<std::string> folders;
    for (const Layer& layer : layers) {
        folders.emplace_back(layer.folder);
    }
    return folders;
}

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
        const Layer* from = LayerOf(fs::path(file).parent_path().generic_string());
        if (from == nullptr) {
            walk.violations.push_back(file + ": not part of any layer");
            continue;
        }
        for (const auto& [name, angled] : IncludesOf(sources / file)) {
            const std::string fault =
                angled ? AngledFault(sources, *from, name) : QuotedFault(sources, *from, name);
            if (!fault.empty()) {
                walk.violations.emplace_back(file).append(": ").append(name).append(" ").append(fault);
            }
        }
    }
    return walk;
}

} // namespace Tarno
