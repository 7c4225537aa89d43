#include "SafeWriter.h"

#include "Error.h"
#include "Paths.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <random>
#include <utility>
#include <vector>

namespace
{

namespace fs = std::filesystem;

/// A file that is being made. It is removed with the object unless it has got another name.
class NewFile
{
public:
    NewFile(FileOperations& operations, std::string path) : m_operations(operations), m_path(std::move(path))
    {
    }

    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    ~NewFile()
    {
        if (m_isOurs) {
            try {
                m_operations.Remove(m_path);
            } catch (const Error&) { // NOLINT(bugprone-empty-catch): an earlier failure is the one to tell
            }
        }
    }

    void Write(std::string_view bytes, const std::string& model)
    {
        const auto file = m_operations.Create(m_path, model);
        m_isOurs = true;
        for (std::string_view rest = bytes; !rest.empty();) {
            rest.remove_prefix(file->Write(rest));
        }
        file->Sync();
        file->Close();
        if (m_operations.Size(m_path) != bytes.size()) {
            throw Error(ErrorNumber::DiskFull);
        }
    }

    const std::string& Path() const { return m_path; }

    /// From now on nothing is removed, or the file of that name after all.
    void Own(bool isOurs) { m_isOurs = isOurs; }

private:
    FileOperations& m_operations;
    std::string m_path;
    bool m_isOurs = false;
};

/// A name of chance, so that what a crash left behind never stands in the way.
std::string TemporaryFor(const std::string& target)
{
    return target + '.' + std::to_string(std::random_device()()) + std::string(SafeWriter::temporarySuffix);
}

/// Whether `name` is one that TemporaryFor gives to the file `target`.
bool IsTemporaryFor(std::string_view target, std::string_view name)
{
    if (!name.starts_with(target) || !name.ends_with(SafeWriter::temporarySuffix)) {
        return false;
    }
    name.remove_prefix(target.size());
    name.remove_suffix(std::min(name.size(), SafeWriter::temporarySuffix.size()));
    return name.size() > 1 && name.front() == '.' &&
           std::all_of(name.begin() + 1, name.end(), [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

void SafeWriter::Write(const std::string& path, std::string_view bytes)
{
    const std::string target = Target(path);
    NewFile temporary(m_operations, TemporaryFor(target));
    temporary.Write(bytes, target);
    m_operations.Replace(temporary.Path(), target);
    temporary.Own(false);
    m_operations.SyncFolderOf(target);
}

std::string SafeWriter::WriteOver(const std::string& path, std::string_view bytes, const IsKnown& isKnown)
{
    const std::string target = Target(path);
    std::string kept;
    {
        NewFile temporary(m_operations, TemporaryFor(target));
        temporary.Write(bytes, target);
        if (m_operations.Exchange(temporary.Path(), target)) {
            temporary.Own(false); // what lies there now may be nowhere else
            try {
                const std::string found = ReadWholeFile(temporary.Path());
                kept = isKnown(found) ? std::string() : Keep(target, found);
            } catch (...) {
                // all is as it was, also when somebody has removed our file meanwhile
                if (m_operations.Exchange(temporary.Path(), target)) {
                    temporary.Own(true);
                } else {
                    m_operations.Replace(temporary.Path(), target);
                }
                throw;
            }
            temporary.Own(true);
        } else {
            m_operations.Replace(temporary.Path(), target);
            temporary.Own(false);
        }
    }
    m_operations.SyncFolderOf(target);
    return kept;
}

std::string SafeWriter::Keep(const std::string& path, std::string_view bytes)
{
    const fs::path target = ToPath(m_operations.Followed(path));
    for (int number = 1;; ++number) {
        fs::path name = target.stem();
        name += "-kept-" + std::to_string(number);
        name += target.extension();
        NewFile kept(m_operations, FromPath(target.parent_path() / name));
        try {
            kept.Write(bytes, FromPath(target));
        } catch (const Error& error) {
            if (error.Number() != ErrorNumber::FileAlreadyExists) {
                throw;
            }
            continue;
        }
        m_operations.SyncFolderOf(kept.Path());
        kept.Own(false);
        return kept.Path();
    }
}

void SafeWriter::RemoveLeftovers(const std::string& path)
{
    std::vector<std::string> leftovers;
    try {
        const fs::path target = ToPath(m_operations.Followed(path));
        for (const auto& entry : fs::directory_iterator(target.parent_path())) {
            if (IsTemporaryFor(FromPath(target.filename()), FromPath(entry.path().filename()))) {
                leftovers.push_back(FromPath(entry.path()));
            }
        }
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): a leftover does no harm
    }
    for (const std::string& leftover : leftovers) {
        try {
            m_operations.RemoveAbandoned(leftover);
        } catch (const Error&) { // NOLINT(bugprone-empty-catch): the next start tries again
        }
    }
}

std::string SafeWriter::Target(const std::string& path)
{
    std::string target = m_operations.Followed(path);
    m_operations.CheckReplaceable(target);
    return target;
}
