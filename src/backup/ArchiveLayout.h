#pragma once

#include "Archive.h"

#include <cstdint>
#include <string>
#include <vector>

class QIODevice;

namespace Tarno
{

/// An entry as the list of contents at the end of an archive describes it.
struct ListedEntry {
    std::string name;
    std::uint64_t size = 0; ///< decompressed
    std::uint64_t compressedSize = 0;
    std::uint64_t offset = 0; ///< of its local header
    std::uint32_t checksum = 0;
    std::uint32_t attributes = 0; ///< the upper half is the mode on Unix
    std::uint16_t madeBy = 0;     ///< the upper byte is the system
    std::uint16_t flags = 0;
    std::uint16_t method = 0;
};

/// Reads the list of contents of an archive and checks that nothing in it is ambiguous or dangerous: the
/// positions and sizes of all entries, their names and kinds, and the limits. Throws ArchiveProblem.
std::vector<ListedEntry> ReadLayout(QIODevice& archive, const ArchiveLimits& limits);

// The checks of ReadLayout.

/// Throws ArchiveProblem: the archive is damaged.
[[noreturn]] void FailDamaged(const std::string& what);

/// Checks the name and the kind of an entry.
void CheckEntry(const ListedEntry& entry);

/// Throws unless every name is used once, and not for a file and a folder.
void CheckNames(const std::vector<ListedEntry>& entries);

void CheckSizes(const std::vector<ListedEntry>& entries, std::uint64_t archiveSize,
                const ArchiveLimits& limits);

/// Whether the name is that of a folder.
bool IsFolderName(std::string_view name);

/// Returns `name` in quotation marks, shortened and without control characters, for a message.
std::string CitedName(std::string_view name);

} // namespace Tarno
