#include "DeviceSource.h"

#include "core/Paths.h"

#include <QFile>

#include <cerrno>
#include <utility>

namespace Tarno
{

namespace
{

/// A device that libzip reads or writes through its callback.
class Source
{
public:
    Source(std::unique_ptr<QIODevice> device, NoteContents note)
        : m_device(std::move(device)), m_note(std::move(note))
    {
        zip_error_init(&m_error);
    }

    explicit Source(const std::string& path) : Source(std::make_unique<QFile>(ToPath(path)), {})
    {
        m_isTarget = true;
    }

    static zip_int64_t Run(void* state, void* data, zip_uint64_t size, zip_source_cmd_t command)
    {
        auto* source = static_cast<Source*>(state);
        if (command == ZIP_SOURCE_FREE) {
            delete source; // NOLINT(cppcoreguidelines-owning-memory): libzip owns it
            return 0;
        }
        return source->m_isTarget ? source->Write(data, size, command) : source->Read(data, size, command);
    }

private:
    zip_int64_t Fail(int error, int system)
    {
        zip_error_set(&m_error, error, system);
        return -1;
    }

    zip_int64_t Read(void* data, zip_uint64_t size, zip_source_cmd_t command)
    {
        switch (command) {
        case ZIP_SOURCE_OPEN:
            m_size = 0;
            m_hash.reset();
            return m_device->open(QIODevice::ReadOnly) ? 0 : Fail(ZIP_ER_OPEN, EIO);
        case ZIP_SOURCE_READ:
            return ReadBlock(static_cast<char*>(data), size);
        case ZIP_SOURCE_CLOSE:
            m_device->close();
            return 0;
        case ZIP_SOURCE_STAT:
            return Stat(static_cast<zip_stat_t*>(data));
        case ZIP_SOURCE_ERROR:
            return zip_error_to_data(&m_error, data, size);
        case ZIP_SOURCE_SEEK:
            return Seek(data, size);
        case ZIP_SOURCE_TELL:
            return m_device->pos();
        case ZIP_SOURCE_SUPPORTS:
            return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE,
                                                  ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE,
                                                  ZIP_SOURCE_SEEK, ZIP_SOURCE_TELL, ZIP_SOURCE_SUPPORTS, -1);
        default:
            return Fail(ZIP_ER_OPNOTSUPP, 0);
        }
    }

    zip_int64_t Write(void* data, zip_uint64_t size, zip_source_cmd_t command)
    {
        switch (command) {
        case ZIP_SOURCE_STAT: // tells that the file does not exist
            return Fail(ZIP_ER_READ, ENOENT);
        case ZIP_SOURCE_ERROR:
            return zip_error_to_data(&m_error, data, size);
        case ZIP_SOURCE_BEGIN_WRITE:
            return m_device->open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered)
                       ? 0
                       : Fail(ZIP_ER_TMPOPEN, EACCES);
        case ZIP_SOURCE_WRITE: {
            const qint64 written = m_device->write(static_cast<const char*>(data), static_cast<qint64>(size));
            return written == static_cast<qint64>(size) ? written : Fail(ZIP_ER_WRITE, ENOSPC);
        }
        case ZIP_SOURCE_SEEK_WRITE:
            return Seek(data, size);
        case ZIP_SOURCE_TELL_WRITE:
            return m_device->pos();
        case ZIP_SOURCE_COMMIT_WRITE:
        case ZIP_SOURCE_ROLLBACK_WRITE: // the caller removes the file
            m_device->close();
            return 0;
        case ZIP_SOURCE_SUPPORTS:
            return zip_source_make_command_bitmap(
                ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR,
                ZIP_SOURCE_FREE, ZIP_SOURCE_SEEK, ZIP_SOURCE_TELL, ZIP_SOURCE_SUPPORTS,
                ZIP_SOURCE_BEGIN_WRITE, ZIP_SOURCE_COMMIT_WRITE, ZIP_SOURCE_ROLLBACK_WRITE, ZIP_SOURCE_WRITE,
                ZIP_SOURCE_SEEK_WRITE, ZIP_SOURCE_TELL_WRITE, ZIP_SOURCE_REMOVE, -1);
        default:
            return Fail(ZIP_ER_OPNOTSUPP, 0);
        }
    }

    zip_int64_t ReadBlock(char* data, zip_uint64_t size)
    {
        const qint64 count = m_device->read(data, static_cast<qint64>(size));
        if (count < 0) {
            return Fail(ZIP_ER_READ, EIO);
        }
        if (m_note) {
            m_size += static_cast<std::uint64_t>(count);
            m_hash.addData(QByteArray::fromRawData(data, count));
            if (count == 0 && size > 0) {
                m_note(m_size, HashOf(m_hash));
            }
        }
        return count;
    }

    zip_int64_t Stat(zip_stat_t* stat) const
    {
        zip_stat_init(stat);
        stat->size = static_cast<zip_uint64_t>(m_device->size());
        stat->valid = ZIP_STAT_SIZE;
        return sizeof(zip_stat_t);
    }

    zip_int64_t Seek(void* data, zip_uint64_t size)
    {
        const zip_int64_t position =
            zip_source_seek_compute_offset(static_cast<zip_uint64_t>(m_device->pos()),
                                           static_cast<zip_uint64_t>(m_device->size()), data, size, &m_error);
        return position < 0 ? -1 : m_device->seek(position) ? 0 : Fail(ZIP_ER_SEEK, EIO);
    }

    std::unique_ptr<QIODevice> m_device;
    NoteContents m_note;
    bool m_isTarget = false;
    zip_error_t m_error = {};
    std::uint64_t m_size = 0;
    QCryptographicHash m_hash{QCryptographicHash::Sha256};
};

zip_source_t* Make(std::unique_ptr<Source> state)
{
    zip_source_t* source = zip_source_function_create(Source::Run, state.get(), nullptr);
    if (source == nullptr) {
        throw std::bad_alloc();
    }
    (void)state.release(); // libzip owns it
    return source;
}

} // namespace

std::string HashOf(const QCryptographicHash& hash)
{
    return hash.result().toStdString();
}

zip_source_t* MakeSource(std::unique_ptr<QIODevice> device, NoteContents note)
{
    return Make(std::make_unique<Source>(std::move(device), std::move(note)));
}

zip_source_t* MakeTarget(const std::string& path)
{
    return Make(std::make_unique<Source>(path));
}

} // namespace Tarno
