#include "Archive.h"
#include "ArchiveNames.h"
#include "DeviceSource.h"
#include "core/Paths.h"
#include "core/SafeWriter.h"

#include <QBuffer>
#include <QFile>

#include <cerrno>
#include <system_error>
#include <utility>

namespace Tarno
{

namespace
{

constexpr double writing = 0.5; // the share of the work; the rest is reading back

/// Discards the archive unless it was closed.
struct Discard {
    void operator()(zip_t* archive) const { zip_discard(archive); }
};

using Zip = std::unique_ptr<zip_t, Discard>;

/// Throws what has failed in libzip.
[[noreturn]] void Throw(const zip_error_t& error)
{
    switch (zip_error_code_zip(&error)) {
    case ZIP_ER_CANCELLED:
        throw Cancelled();
    case ZIP_ER_WRITE:
        throw Error(ErrorNumber::DiskFull);
    case ZIP_ER_MEMORY:
        throw Error(ErrorNumber::OutOfMemory);
    case ZIP_ER_TMPOPEN:
        throw Error(ErrorNumber::PathFileAccess);
    default:
        throw Error(ErrorNumber::DeviceInputOutput);
    }
}

Zip NewArchive(const std::string& path)
{
    zip_source_t* target = MakeTarget(path);
    zip_error_t error;
    zip_error_init(&error);
    Zip archive(zip_open_from_source(target, ZIP_CREATE | ZIP_EXCL, &error));
    if (!archive) {
        zip_source_free(target);
        Throw(error);
    }
    return archive;
}

void Add(zip_t* archive, const std::string& name, zip_source_t* source)
{
    const zip_int64_t index = zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8);
    if (index < 0) {
        zip_source_free(source);
        Throw(*zip_get_error(archive));
    }
    constexpr zip_uint32_t fast = 3; // level 6 takes twice as long for a log and saves a seventh
    zip_set_file_compression(archive, static_cast<zip_uint64_t>(index),
                             IsCompressedPicture(name) ? ZIP_CM_STORE : ZIP_CM_DEFLATE, fast);
}

/// Connects the callbacks of libzip with a Progress. An exception of the Progress cancels.
struct Callbacks {
    explicit Callbacks(Progress to) : progress(std::move(to)) {}

    void Connect(zip_t* archive)
    {
        constexpr double precision = 0.001;
        zip_register_progress_callback_with_state(
            archive, precision,
            [](zip_t*, double done, void* self) { static_cast<Callbacks*>(self)->Call(done); }, nullptr,
            this);
        zip_register_cancel_callback_with_state(
            archive, [](zip_t*, void* self) { return static_cast<Callbacks*>(self)->isCancelled ? 1 : 0; },
            nullptr, this);
    }

    void Call(double done)
    {
        try {
            isCancelled = isCancelled || !progress(done);
        } catch (...) { // must not pass through libzip
            isCancelled = true;
        }
    }

    Progress progress;
    bool isCancelled = false;
};

} // namespace

void Report(const Progress& progress, double done)
{
    if (progress && !progress(done)) {
        throw Cancelled();
    }
}

Progress PartOf(const Progress& progress, double from, double to)
{
    return !progress ? progress : [=](double done) { return progress(from + (to - from) * done); };
}

void ArchiveWriter::AddBytes(const std::string& name, std::string bytes)
{
    m_entries.push_back({name, std::move(bytes), {}});
}

void ArchiveWriter::AddFile(const std::string& name, const std::string& path)
{
    m_entries.push_back({name, {}, path});
}

void ArchiveWriter::Write(const std::string& path, const Progress& progress)
{
    const std::string target = Resolved(path);
    if (!m_operations.GetState(target).isReplaceable) {
        throw Error(ErrorNumber::PathFileAccess);
    }
    if (!m_operations.GetState(FolderOf(target)).exists) {
        throw Error(ErrorNumber::PathNotFound);
    }
    SafeWriter writer(m_operations);
    const std::string temporary = SafeWriter::TemporaryOf(target);
    try {
        std::vector<Written> written(m_entries.size());
        WriteTo(temporary, written, PartOf(progress, 0, writing));
        m_operations.SyncFile(temporary);
        CheckWritten(temporary, written, PartOf(progress, writing, 1));
        writer.PutInPlace(temporary, target);
    } catch (...) {
        writer.TryRemove(temporary);
        throw;
    }
    m_operations.SyncFolder(FolderOf(target));
}

void ArchiveWriter::WriteTo(const std::string& path, std::vector<Written>& written,
                            const Progress& progress) const
{
    Zip archive = NewArchive(path);
    for (std::size_t index = 0; index < m_entries.size(); ++index) {
        const Entry& entry = m_entries[index];
        std::unique_ptr<QIODevice> device;
        if (entry.path.empty()) {
            auto buffer = std::make_unique<QBuffer>();
            buffer->setData(
                QByteArray::fromRawData(entry.bytes.data(), static_cast<qsizetype>(entry.bytes.size())));
            device = std::move(buffer);
        } else {
            device = std::make_unique<QFile>(ToPath(entry.path));
        }
        Written& noted = written[index];
        Add(archive.get(), entry.name,
            MakeSource(std::move(device), [&noted](std::uint64_t size, const std::string& hash) {
                noted = {size, hash};
            }));
    }
    Callbacks callbacks(progress);
    if (progress) {
        callbacks.Connect(archive.get());
    }
    if (zip_close(archive.get()) != 0) {
        Throw(*zip_get_error(archive.get()));
    }
    (void)archive.release(); // closed
}

void ArchiveWriter::CheckWritten(const std::string& path, const std::vector<Written>& written,
                                 const Progress& progress) const
{
    const ArchiveReader reader(path);
    const auto fail = [] {
        throw Error(ErrorNumber::DeviceInputOutput, "The archive was not written correctly");
    };
    if (reader.Entries().size() != m_entries.size()) {
        fail();
    }
    double done = 0;
    for (std::size_t index = 0; index < m_entries.size(); ++index) {
        const ArchiveEntry& entry = reader.Entries()[index];
        QCryptographicHash hash(QCryptographicHash::Sha256);
        reader.Read(entry, [&](std::string_view block) {
            hash.addData(QByteArray::fromRawData(block.data(), static_cast<qsizetype>(block.size())));
        });
        if (entry.name != m_entries[index].name || entry.size != written[index].size ||
            HashOf(hash) != written[index].hash) {
            fail();
        }
        Report(progress, ++done / static_cast<double>(m_entries.size()));
    }
}

} // namespace Tarno
