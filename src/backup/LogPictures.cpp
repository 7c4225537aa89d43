#include "LogPictures.h"

#include "core/Paths.h"
#include "store/EntryFields.h"
#include "store/RecordLayouts.h"

#include <QFile>

#include <filesystem>
#include <set>
#include <system_error>

namespace Tarno
{

namespace fs = std::filesystem;

std::vector<std::string> StoredPictures(const RecordList& trips, const RecordList& locations)
{
    std::vector<std::string> pictures;
    std::set<std::string> known;
    const auto add = [&](const RecordList& records, std::size_t position) {
        for (const RecordView& record : records) {
            const std::string stored = record.Text(position);
            if (!stored.empty() && known.insert(stored).second) {
                pictures.push_back(stored);
            }
        }
    };
    add(trips, EntryField::Picture);
    add(locations, LocationField::LocPicture);
    return pictures;
}

std::string PicturePath(const std::string& folder, const std::string& stored)
{
    return FromPath(ToPath(folder) / ToPath(stored));
}

bool IsReadablePicture(const std::string& path)
{
    std::error_code ignored;
    return fs::is_regular_file(ToPath(path), ignored) && QFile(ToPath(path)).open(QIODevice::ReadOnly);
}

std::optional<std::string> NameInFolder(const std::string& folder, const std::string& stored)
{
    const fs::path base = fs::absolute(ToPath(folder)).lexically_normal();
    const fs::path file = (base / ToPath(stored)).lexically_normal();
    const fs::path relative = file.lexically_relative(base);
    if (relative.empty() || *relative.begin() == ".." || *relative.begin() == ".") {
        return std::nullopt;
    }
    const std::u8string name = relative.generic_u8string();
    return std::string(name.begin(), name.end());
}

bool IsInPictureFolder(std::string_view name)
{
    return name.starts_with(std::string(pictureFolder) + '/');
}

std::string WantedName(const std::string& folder, const std::string& stored)
{
    const auto name = NameInFolder(folder, stored);
    return name && IsInPictureFolder(*name)
               ? *name
               : std::string(pictureFolder) + '/' + FromPath(ToPath(PicturePath(folder, stored)).filename());
}

} // namespace Tarno
