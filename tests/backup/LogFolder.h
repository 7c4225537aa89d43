#pragma once

#include "backup/BackUp.h"
#include "backup/LogPictures.h"
#include "backup/Restore.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "store/LogFiles.h"
#include "support/ScriptedFileOperations.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace Tarno
{

constexpr LocalTime testTime{std::chrono::year(2026) / 11 / 22, std::chrono::minutes(18 * 60 + 5)};

/// Names of files below a folder, with their contents.
using Contents = std::map<std::string, std::string>;

inline Contents ContentsOfFolder(const std::string& folder)
{
    Contents contents;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(ToPath(folder))) {
        const std::u8string name = entry.path().lexically_relative(ToPath(folder)).generic_u8string();
        if (entry.is_regular_file()) {
            contents.emplace(std::string(name.begin(), name.end()), ReadWholeFile(FromPath(entry.path())));
        }
    }
    return contents;
}

/// A data folder with an empty log, or with the sample log.
struct LogFolder {
    enum class Log { Empty, Sample };

    explicit LogFolder(Log log = Log::Empty)
    {
        CopyFiles(TARNO_SHIPPED_DATA);
        if (log == Log::Sample) {
            CopyFiles(TARNO_SHIPPED_DATA "/sample");
            folder.MakeFolder("pictures");
            for (const char* name : {"snapper.png", "trout.png", "pittwater.png"}) {
                folder.Write(std::string("pictures/") + name,
                             ReadWholeFile(std::string(TARNO_SHIPPED_DATA "/sample/pictures/") + name));
            }
        }
    }

    std::string Path() const { return folder.Path(); }

    /// Replaces a text in a data file.
    void Replace(const char* file, const std::string& from, const std::string& to) const
    {
        const std::string bytes = folder.Read(file);
        QVERIFY2(bytes.find(from) != std::string::npos, from.c_str());
        folder.Write(file, ReplaceAll(bytes, from, to));
    }

    /// Returns what the folder contains, except back-ups.
    Contents State() const
    {
        Contents contents = ContentsOfFolder(folder.Path());
        std::erase_if(contents, [](const auto& file) { return file.first.starts_with("backups/"); });
        return contents;
    }

    /// Returns the stored pictures of the log.
    std::vector<std::string> Pictures()
    {
        DataFile trips(LogFiles::trips);
        DataFile locations(LogFiles::locations);
        trips.Load(program, operations);
        locations.Load(program, operations);
        return StoredPictures(trips.Records().List(), locations.Records().List());
    }

    BackUpResult BackUpTo(const std::string& path, BackUpPictures pictures = BackUpPictures::Include)
    {
        return BackUp(program, operations, path,
                      {.pictures = pictures, .time = testTime, .program = "Tarno 1.0.0"});
    }

    RestoreResult Restore(const std::string& path)
    {
        return RestoreBackUp(path, program, operations, testTime, "Tarno 1.0.0");
    }

    TemporaryFolder folder;
    ProgramFolder program{folder.Path()};
    ScriptedFileOperations operations;

private:
    void CopyFiles(const std::string& from) const
    {
        for (const auto& entry : std::filesystem::directory_iterator(ToPath(from))) {
            const std::string name = FromPath(entry.path().filename());
            if (entry.is_regular_file() && !name.starts_with('.')) {
                folder.Write(name, ReadWholeFile(FromPath(entry.path())));
            }
        }
    }
};

} // namespace Tarno
