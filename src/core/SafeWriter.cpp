#include "SafeWriter.h"

#include "Error.h"
#include "Paths.h"

#include <algorithm>
#include <charconv>
#include <exception>
#include <filesystem>
#include <optional>
#include <random>
#include <system_error>
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
std::string TemporaryFor(const std::string& target, std::uint32_t process)
{
    return target + '.' + std::to_string(process) + '-' + std::to_string(std::random_device()()) +
           std::string(SafeWriter::temporarySuffix);
}

std::optional<std::uint32_t> WholeNumber(std::string_view digits)
{
    std::uint32_t number = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, failure] = std::from_chars(digits.data(), end, number);
    return failure == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

/// The process that made `name` as TemporaryFor does for the file `target`; nothing when none has.
std::optional<std::uint32_t> MakerOf(std::string_view name, const std::string& target)
{
    const std::string begin = target + '.';
    if (!name.starts_with(begin) || !name.ends_with(SafeWriter::temporarySuffix)) {
        return std::nullopt;
    }
    name.remove_prefix(begin.size());
    const std::string_view numbers = name.substr(0, name.find(SafeWriter::temporarySuffix));
    const std::size_t dash = std::min(numbers.find('-'), numbers.size());
    const std::string_view chance = numbers.substr(std::min(dash + 1, numbers.size()));
    return WholeNumber(chance) ? WholeNumber(numbers.substr(0, dash)) : std::nullopt;
}

} // namespace

void SafeWriter::Write(const std::string& path, std::string_view bytes)
{
    const std::string target = Target(path);
    NewFile temporary(m_operations, TemporaryFor(target, m_operations.ProcessNumber()));
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
        NewFile temporary(m_operations, TemporaryFor(target, m_operations.ProcessNumber()));
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
            const auto maker = MakerOf(FromPath(entry.path().filename()), FromPath(target.filename()));
            if (maker && entry.symlink_status().type() == fs::file_type::regular && IsOver(*maker)) {
                leftovers.push_back(FromPath(entry.path()));
            }
        }
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): a leftover does no harm
    }
    for (const std::string& leftover : leftovers) {
        try {
            m_operations.Remove(leftover);
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

bool SafeWriter::IsOver(std::uint32_t process)
{
    // one of our own number was an earlier one: this one is not writing
    return process == m_operations.ProcessNumber() || !m_operations.IsRunning(process);
}
