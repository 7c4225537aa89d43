#include "SafeWriter.h"

#include "Error.h"
#include "Paths.h"

#include <chrono>
#include <exception>
#include <filesystem>
#include <random>
#include <vector>

namespace Tarno
{

namespace
{

namespace fs = std::filesystem;

constexpr int attemptsInOneSecond = 100; // one every 10 ms
constexpr int attemptsInTenSeconds = 1000;

/// Whether `name` is the name of a temporary of the file `target`.
bool IsTemporary(std::string_view name, const std::string& target)
{
    if (!name.starts_with(target + '.') || !name.ends_with(SafeWriter::temporarySuffix)) {
        return false;
    }
    name.remove_prefix(target.size() + 1);
    const auto end = name.find_first_not_of("0123456789-");
    return end > 0 && name.substr(end) == SafeWriter::temporarySuffix;
}

bool IsOld(const fs::directory_entry& entry)
{
    return entry.last_write_time() < fs::file_time_type::clock::now() - std::chrono::hours(1);
}

/// Retries `body` while it throws Error PermissionDenied because another program holds a file.
template <typename Body>
auto RetryWhileHeld(FileOperations& operations, int attempts, const Body& body)
{
    for (;; operations.Pause()) {
        try {
            return body();
        } catch (const Error& error) {
            if (error.Number() != ErrorNumber::PermissionDenied || --attempts == 0) {
                throw;
            }
        }
    }
}

} // namespace

void SafeWriter::Write(const std::string& path, std::string_view bytes)
{
    const std::string target = Resolved(path);
    Replace(target, bytes, std::nullopt);
    m_operations.SyncFolder(FolderOf(target));
}

std::optional<FileState> SafeWriter::Replace(const std::string& target, std::string_view bytes,
                                             const std::optional<FileState>& expected)
{
    if (!(expected ? *expected : m_operations.GetState(target)).isReplaceable) {
        throw Error(ErrorNumber::PathFileAccess);
    }
    const std::string temporary = TemporaryOf(target);
    try {
        const FileState made = m_operations.Create(temporary, bytes, target);
        if (made.size != bytes.size()) {
            throw Error(ErrorNumber::DiskFull);
        }
        if (expected && m_operations.GetState(target) != *expected) {
            TryRemove(temporary);
            return std::nullopt;
        }
        PutInPlace(temporary, target);
        return made;
    } catch (...) {
        TryRemove(temporary);
        throw;
    }
}

std::string SafeWriter::TemporaryOf(const std::string& target)
{
    return target + '.' + std::to_string(std::random_device()()) + std::string(temporarySuffix);
}

void SafeWriter::PutInPlace(const std::string& from, const std::string& to)
{
    RetryWhileHeld(m_operations, attemptsInOneSecond, [&] { m_operations.Replace(from, to); });
}

FolderLock SafeWriter::LockFolder(const std::string& folder)
{
    return RetryWhileHeld(m_operations, attemptsInTenSeconds, [&] { return m_operations.Lock(folder); });
}

void SafeWriter::RemoveStaleTemporaries(const std::string& path)
{
    try {
        const std::string target = Resolved(path);
        const std::string name = FromPath(ToPath(target).filename());
        std::vector<fs::directory_entry> found;
        for (const auto& entry : fs::directory_iterator(ToPath(FolderOf(target)))) {
            if (IsTemporary(FromPath(entry.path().filename()), name) &&
                entry.symlink_status().type() == fs::file_type::regular) {
                found.push_back(entry);
            }
        }
        const FolderLock lock = found.empty() ? nullptr : m_operations.Lock(FolderOf(target));
        for (const fs::directory_entry& entry : found) {
            if (lock || IsOld(entry)) {
                TryRemove(FromPath(entry.path()));
            }
        }
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): an orphaned temporary is harmless
    }
}

void SafeWriter::RemoveOldTemporaries(const std::string& folder, std::string_view prefix)
{
    try {
        for (const auto& entry : fs::directory_iterator(ToPath(folder))) {
            const std::string name = FromPath(entry.path().filename());
            if (name.starts_with(prefix) && name.ends_with(temporarySuffix) &&
                entry.symlink_status().type() == fs::file_type::regular && IsOld(entry)) {
                TryRemove(FromPath(entry.path()));
            }
        }
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): an orphaned temporary is harmless
    }
}

void SafeWriter::TryRemove(const std::string& path)
{
    try {
        m_operations.Remove(path);
    } catch (const Error&) { // NOLINT(bugprone-empty-catch): removed at the next start
    }
}

} // namespace Tarno
