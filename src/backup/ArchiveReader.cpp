#include "Archive.h"
#include "ArchiveLayout.h"
#include "DeviceSource.h"
#include "core/Paths.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace Tarno
{

namespace
{

constexpr std::size_t blockSize = 65536;

struct CloseEntry {
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};

[[noreturn]] void FailDamaged(const ArchiveEntry& entry)
{
    throw ArchiveProblem(CitedName(entry.name) + " in the archive is damaged.");
}

} // namespace

struct ArchiveReader::Handle {
    Handle() = default;
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    ~Handle()
    {
        if (archive != nullptr) {
            zip_discard(archive);
        }
    }

    zip_t* archive = nullptr;
};

ArchiveReader::ArchiveReader(const std::string& path, const ArchiveLimits& limits)
    : m_handle(std::make_unique<Handle>())
{
    const QFileInfo info(ToPath(path));
    if (!info.exists()) {
        throw Error(ErrorNumber::FileNotFound);
    }
    auto file = std::make_unique<QFile>(ToPath(path));
    if (!info.isFile() || !file->open(QIODevice::ReadOnly)) { // opening a pipe could block forever
        throw Error(ErrorNumber::PathFileAccess);
    }
    const std::vector<ListedEntry> listed = ReadLayout(*file, limits);
    file->close();
    if (listed.empty()) {
        return; // libzip does not open every empty archive
    }
    zip_source_t* source = MakeSource(std::move(file));
    zip_error_t error;
    zip_error_init(&error);
    m_handle->archive = zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, &error);
    if (m_handle->archive == nullptr) {
        zip_source_free(source);
        throw ArchiveProblem("The archive is damaged: its parts contradict each other.");
    }
    // libzip must see the same entries as the checks
    const auto count = static_cast<std::uint64_t>(zip_get_num_entries(m_handle->archive, 0));
    for (std::uint64_t index = 0; index < listed.size(); ++index) {
        const ListedEntry& entry = listed[index];
        zip_stat_t found;
        zip_stat_init(&found);
        if (count != listed.size() || zip_stat_index(m_handle->archive, index, ZIP_FL_ENC_RAW, &found) != 0 ||
            found.name != entry.name || found.size != entry.size || found.comp_size != entry.compressedSize ||
            found.crc != entry.checksum) {
            throw ArchiveProblem("The archive is damaged: its parts contradict each other.");
        }
        if (!IsFolderName(entry.name)) {
            m_byName.emplace(entry.name, m_entries.size());
            m_entries.push_back({entry.name, entry.size, entry.checksum, index});
        }
    }
}

ArchiveReader::~ArchiveReader() = default;

const ArchiveEntry* ArchiveReader::Find(std::string_view name) const
{
    const auto found = m_byName.find(name);
    return found == m_byName.end() ? nullptr : &m_entries[found->second];
}

void ArchiveReader::Read(const ArchiveEntry& entry,
                         const std::function<void(std::string_view block)>& take) const
{
    const std::unique_ptr<zip_file_t, CloseEntry> file(zip_fopen_index(m_handle->archive, entry.index, 0));
    if (!file) {
        FailDamaged(entry);
    }
    std::string block(blockSize, '\0');
    std::uint64_t size = 0;
    while (true) {
        const zip_int64_t count = zip_fread(file.get(), block.data(), block.size());
        if (count < 0) {
            FailDamaged(entry); // also for a wrong checksum
        }
        size += static_cast<std::uint64_t>(count);
        if (size > entry.size || (count == 0 && size < entry.size)) {
            FailDamaged(entry);
        }
        if (count == 0) {
            return;
        }
        take(std::string_view(block).substr(0, static_cast<std::size_t>(count)));
    }
}

std::string ArchiveReader::ReadBytes(const ArchiveEntry& entry, std::uint64_t most) const
{
    if (entry.size > most) {
        throw ArchiveProblem(CitedName(entry.name) + " in the archive is too large.");
    }
    std::string bytes;
    Read(entry, [&](std::string_view block) { bytes += block; });
    return bytes;
}

void ArchiveReader::CheckAll(const Progress& progress) const
{
    double done = 0;
    for (const ArchiveEntry& entry : m_entries) {
        Read(entry, [](std::string_view) {});
        Report(progress, ++done / static_cast<double>(m_entries.size()));
    }
}

} // namespace Tarno
