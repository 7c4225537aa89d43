#include "ArchiveLayout.h"
#include "ArchiveNames.h"
#include "core/Text.h"

#include <algorithm>
#include <map>
#include <utility>

namespace Tarno
{

namespace
{

void CheckKind(const ListedEntry& entry)
{
    constexpr std::uint16_t encrypted = 0x2041;
    constexpr std::uint16_t stored = 0;
    constexpr std::uint16_t deflated = 8;
    constexpr unsigned unixSystem = 3;
    constexpr unsigned otherUnixSystem = 19;
    constexpr std::uint32_t typeMask = 0170000;
    constexpr std::uint32_t folderType = 0040000;
    constexpr std::uint32_t fileType = 0100000;
    const std::string cited = CitedName(entry.name) + " in the archive ";
    if ((entry.flags & encrypted) != 0) {
        throw ArchiveProblem(cited + "is encrypted.");
    }
    if (entry.method != stored && entry.method != deflated) {
        throw ArchiveProblem(cited + "is compressed in a way that Tarno cannot read.");
    }
    const unsigned system = entry.madeBy >> 8U;
    const std::uint32_t type =
        system == unixSystem || system == otherUnixSystem ? (entry.attributes >> 16U) & typeMask : 0;
    if (type != 0 && type != (IsFolderName(entry.name) ? folderType : fileType)) {
        throw ArchiveProblem(cited + "is a link or another special file.");
    }
}

void CheckName(const ListedEntry& entry)
{
    std::string_view name = entry.name;
    if (IsFolderName(name)) {
        name.remove_suffix(1);
    }
    if (const std::string fault = NameFault(name); !fault.empty()) {
        throw ArchiveProblem("The name " + CitedName(entry.name) + " in the archive " + fault + '.');
    }
    if (IsFolderName(entry.name) && entry.size != 0) {
        FailDamaged("the folder " + CitedName(entry.name) + " has contents");
    }
}

} // namespace

void FailDamaged(const std::string& what)
{
    throw ArchiveProblem("The archive is damaged: " + what + '.');
}

bool IsFolderName(std::string_view name)
{
    return name.ends_with('/');
}

std::string CitedName(std::string_view name)
{
    constexpr std::size_t longest = 80;
    std::string shown(name.substr(0, longest));
    std::replace_if(
        shown.begin(), shown.end(),
        [](char letter) { return (letter >= 0 && letter < ' ') || letter == '\x7f'; }, '?');
    return '"' + XmlText(shown) + (name.size() > longest ? "..." : "") + '"';
}

void CheckEntry(const ListedEntry& entry)
{
    CheckName(entry);
    CheckKind(entry);
}

void CheckSizes(const std::vector<ListedEntry>& entries, std::uint64_t archiveSize,
                const ArchiveLimits& limits)
{
    constexpr std::uint64_t bestDeflation = 1032;
    constexpr std::uint16_t stored = 0;
    std::uint64_t total = 0;
    for (const ListedEntry& entry : entries) {
        const std::string cited = CitedName(entry.name) + " in the archive ";
        if (entry.size > limits.entryBytes) {
            throw ArchiveProblem(cited + "is too large.");
        }
        const bool isPossible = entry.method == stored ? entry.size == entry.compressedSize
                                                       : entry.size / bestDeflation <= entry.compressedSize;
        if (!isPossible) {
            FailDamaged("the size of " + CitedName(entry.name) + " is wrong");
        }
        total += entry.size;
        if (total > limits.totalBytes || (total > limits.freeBytes && total / limits.ratio > archiveSize)) {
            throw ArchiveProblem("The files in the archive would need far too much space.");
        }
    }
}

void CheckNames(const std::vector<ListedEntry>& entries)
{
    std::map<std::string, const ListedEntry*> files;
    for (const ListedEntry& entry : entries) {
        std::string key = CaseKey(entry.name);
        if (IsFolderName(key)) {
            key.pop_back();
        }
        if (const auto [other, isNew] = files.emplace(key, &entry); !isNew) {
            throw ArchiveProblem("The archive has two files of the same name: " +
                                 CitedName(other->second->name) + " and " + CitedName(entry.name) + '.');
        }
    }
    for (const auto& [key, entry] : files) {
        for (auto slash = key.find('/'); slash != std::string::npos; slash = key.find('/', slash + 1)) {
            const auto parent = files.find(key.substr(0, slash));
            if (parent != files.end() && !IsFolderName(parent->second->name)) {
                throw ArchiveProblem("The archive has a file and a folder of the same name: " +
                                     CitedName(parent->second->name) + '.');
            }
        }
    }
}

} // namespace Tarno
