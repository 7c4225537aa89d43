#include "SafeWriter.h"

#include "Error.h"
#include "Paths.h"
#include "Text.h"

#include <algorithm>
#include <charconv>
#include <exception>
#include <filesystem>
#include <functional>
#include <iterator>
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

    /// Gives the file another name, under which it still goes with the object.
    void Rename(const std::string& path)
    {
        m_operations.Replace(m_path, path);
        m_path = path;
    }

    /// From now on nothing is removed, or the file of that name after all.
    void Own(bool isOurs) { m_isOurs = isOurs; }

private:
    FileOperations& m_operations;
    std::string m_path;
    bool m_isOurs = false;
};

constexpr char between = '-';

/// What the name of a temporary tells: "tarno.xml.", the number of the process that made it, a number of
/// chance, from the exchange on the fingerprints of the versions that nobody will miss, and the suffix.
struct Temporary {
    std::uint32_t process = 0;
    SafeWriter::Fingerprints known;
    bool isOut = false; ///< on its way out of the target when the process was killed
};

template <typename Number>
bool IsNumber(const std::string& digits, Number& number)
{
    const char* end = digits.data() + digits.size();
    const auto [stop, failure] = std::from_chars(digits.data(), end, number);
    return failure == std::errc() && stop == end;
}

/// What `name` tells when it is that of a temporary for the file `target`, otherwise nothing.
std::optional<Temporary> AsTemporary(std::string_view name, const std::string& target)
{
    const std::string begin = target + '.';
    Temporary temporary;
    temporary.isOut = name.ends_with(FileOperations::outSuffix);
    if (temporary.isOut) {
        name.remove_suffix(FileOperations::outSuffix.size());
    }
    if (!name.starts_with(begin) || !name.ends_with(SafeWriter::temporarySuffix)) {
        return std::nullopt;
    }
    name.remove_prefix(begin.size());
    const std::vector<std::string> numbers =
        Split(name.substr(0, name.find(SafeWriter::temporarySuffix)), between);
    std::uint32_t chance = 0;
    if (numbers.size() < 2 || !IsNumber(numbers[0], temporary.process) || !IsNumber(numbers[1], chance)) {
        return std::nullopt;
    }
    for (std::size_t index = 2; index < numbers.size(); ++index) {
        if (!IsNumber(numbers[index], temporary.known.emplace_back())) {
            return std::nullopt;
        }
    }
    return temporary;
}

/// The name `temporary` with what may go without a trace: the version that was known first, which is the one
/// in the file as a rule, and the last ones, as many as the name of a file can bear.
std::string WithFingerprints(std::string temporary, SafeWriter::Fingerprints known)
{
    constexpr std::ptrdiff_t most = 8;
    if (std::ssize(known) > most) {
        known.erase(known.begin() + 1, known.end() - (most - 1));
    }
    temporary.resize(temporary.size() - SafeWriter::temporarySuffix.size());
    for (const SafeWriter::Fingerprint fingerprint : known) {
        temporary += between + std::to_string(fingerprint);
    }
    return temporary + std::string(SafeWriter::temporarySuffix);
}

std::string NameOf(const std::string& path)
{
    return FromPath(ToPath(path).filename());
}

bool Knows(const SafeWriter::Fingerprints& known, std::string_view bytes)
{
    return std::find(known.begin(), known.end(), SafeWriter::FingerprintOf(bytes)) != known.end();
}

/// Undoes an exchange: what came out of `target` lies there again, also when somebody has removed meanwhile
/// what went in. Only what nobody will miss goes with `temporary`.
void PutBack(FileOperations& operations, NewFile& temporary, const std::string& target,
             const SafeWriter::Fingerprints& known)
{
    if (operations.Exchange(temporary.Path(), target)) {
        temporary.Own(Knows(known, ReadWholeFile(temporary.Path())));
    } else {
        operations.Replace(temporary.Path(), target);
    }
}

} // namespace

SafeWriter::Fingerprint SafeWriter::FingerprintOf(std::string_view bytes)
{
    return std::hash<std::string_view>()(bytes);
}

void SafeWriter::Write(const std::string& path, std::string_view bytes)
{
    const std::string target = Target(path);
    NewFile temporary(m_operations, TemporaryFor(target));
    temporary.Write(bytes, target);
    m_operations.Replace(temporary.Path(), target);
    temporary.Own(false);
    m_operations.SyncFolderOf(target);
}

std::string SafeWriter::WriteOver(const std::string& path, std::string_view bytes, Fingerprints known)
{
    const std::string target = Target(path);
    std::string kept;
    {
        NewFile temporary(m_operations, TemporaryFor(target));
        temporary.Write(bytes, target);
        known.push_back(FingerprintOf(bytes));
        temporary.Rename(WithFingerprints(temporary.Path(), known));
        const bool isExchanged = m_operations.Exchange(temporary.Path(), target);
        if (!isExchanged) {
            m_operations.Replace(temporary.Path(), target);
        }
        temporary.Own(false); // what lies there now may be nowhere else
        if (isExchanged) {
            try {
                const std::string found = ReadWholeFile(temporary.Path());
                kept = Knows(known, found) ? std::string() : Keep(target, found);
                temporary.Own(true);
            } catch (...) {
                PutBack(m_operations, temporary, target, known);
                throw;
            }
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

std::vector<std::string> SafeWriter::RemoveLeftovers(const std::string& path)
{
    std::vector<std::string> kept;
    std::vector<std::string> leftovers;
    std::string target;
    try {
        target = m_operations.Followed(path);
        for (const auto& entry : fs::directory_iterator(ToPath(target).parent_path())) {
            const auto temporary = AsTemporary(FromPath(entry.path().filename()), NameOf(target));
            if (temporary && entry.symlink_status().type() == fs::file_type::regular &&
                IsOver(temporary->process)) {
                leftovers.push_back(FromPath(entry.path()));
            }
        }
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): a leftover does no harm
    }
    for (const std::string& leftover : leftovers) {
        try {
            if (std::string path = RemoveLeftover(leftover, target); !path.empty()) {
                kept.push_back(std::move(path));
            }
        } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): the next start tries again
        }
    }
    return kept;
}

std::string SafeWriter::RemoveLeftover(const std::string& leftover, const std::string& target)
{
    const auto [process, known, isOut] = *AsTemporary(NameOf(leftover), NameOf(target));
    std::error_code ignored;
    if (isOut && !fs::exists(ToPath(target), ignored)) {
        m_operations.Replace(leftover, target); // nothing has come in its place
        return {};
    }
    std::string kept;
    if (!known.empty()) { // it was exchanged, or about to be
        const std::string found = ReadWholeFile(leftover);
        kept = Knows(known, found) ? std::string() : Keep(target, found);
    }
    m_operations.Remove(leftover);
    return kept;
}

std::string SafeWriter::Target(const std::string& path)
{
    std::string target = m_operations.Followed(path);
    m_operations.CheckReplaceable(target);
    return target;
}

std::string SafeWriter::TemporaryFor(const std::string& target)
{
    return target + '.' + std::to_string(m_operations.ProcessNumber()) + between +
           std::to_string(std::random_device()()) + std::string(temporarySuffix);
}

bool SafeWriter::IsOver(std::uint32_t process)
{
    // one of our own number was an earlier one: this one is not writing
    return process == m_operations.ProcessNumber() || !m_operations.IsRunning(process);
}
