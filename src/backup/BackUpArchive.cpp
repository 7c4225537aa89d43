#include "ArchiveNames.h"
#include "BackUpParts.h"
#include "LogPictures.h"
#include "Restore.h"
#include "core/Error.h"
#include "core/Text.h"
#include "store/EntryFields.h"
#include "store/LogFiles.h"
#include "store/RecordLayouts.h"

#include <algorithm>
#include <set>

namespace Tarno
{

LogSummary Summarize(const RecordList& trips, const RecordList& locations)
{
    LogSummary summary{trips.size(), locations.size(), {}};
    for (const RecordView& trip : trips) {
        summary.lastTrip = std::max(summary.lastTrip, trip.Text(EntryField::StartDate));
    }
    return summary;
}

BackUpArchive::BackUpArchive(const std::string& path)
    : m_archive(path), m_trips(LogFiles::trips), m_locations(LogFiles::locations)
{
    if (const ArchiveEntry* entry = m_archive.Find(noteName)) {
        BackUpNote note = ReadNote(m_archive.ReadBytes(*entry));
        if (note.version > BackUpNote().version) {
            throw ArchiveProblem("A newer version of Tarno has made this back-up.");
        }
        m_time = std::move(note.time);
        m_pictures = std::move(note.pictures);
    }
    const auto read = [&](const char* name) {
        if (const ArchiveEntry* entry = m_archive.Find(name)) {
            m_files.emplace(name, m_archive.ReadBytes(*entry));
        }
    };
    for (const LogFile& file : LogFiles::data) {
        read(file.name);
    }
    for (const char* name : LogFiles::pickLists) {
        read(name);
    }
    if (!m_files.contains(LogFiles::trips.name) || !m_files.contains(LogFiles::locations.name)) {
        throw ArchiveProblem("This is not a back-up of Tarno: it has no " +
                             std::string(m_files.contains(LogFiles::trips.name) ? LogFiles::locations.name
                                                                                : LogFiles::trips.name) +
                             '.');
    }
    if (const std::string problem = ProblemOf(m_files); !problem.empty()) {
        throw ArchiveProblem("The back-up is damaged: " + problem);
    }
    m_trips.LoadBytes(m_files.at(LogFiles::trips.name));
    m_locations.LoadBytes(m_files.at(LogFiles::locations.name));
}

const ArchiveEntry* BackUpArchive::PictureOf(const std::string& stored) const
{
    const auto noted = m_pictures.find(stored);
    const std::string name = noted != m_pictures.end() ? noted->second : ReplaceAll(stored, "\\", "/");
    return IsInPictureFolder(name) ? m_archive.Find(name) : nullptr;
}

std::size_t BackUpArchive::PictureCount() const
{
    std::set<const ArchiveEntry*> entries;
    for (const std::string& stored : StoredPictures(Trips(), Locations())) {
        entries.insert(PictureOf(stored));
    }
    entries.erase(nullptr);
    return entries.size();
}

} // namespace Tarno
