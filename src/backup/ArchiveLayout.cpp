#include "ArchiveLayout.h"

#include <QIODevice>

#include <algorithm>
#include <optional>
#include <utility>

namespace Tarno
{

namespace
{

constexpr std::uint32_t entrySignature = 0x02014b50;
constexpr std::uint32_t localSignature = 0x04034b50;
constexpr std::uint32_t endSignature = 0x06054b50;
constexpr std::uint32_t end64Signature = 0x06064b50;
constexpr std::uint32_t locatorSignature = 0x07064b50;
constexpr std::uint64_t roomForEntry = 1200; // in the list of contents; usually much less is needed
constexpr std::uint64_t localSize = 30;
constexpr std::uint64_t endSize = 22;
constexpr std::uint64_t end64Size = 56;
constexpr std::uint64_t locatorSize = 20;
constexpr std::uint64_t longestComment = 65535;
constexpr std::uint16_t more16 = 0xffff;     // the value is in the 64-bit record
constexpr std::uint32_t more32 = 0xffffffff; // likewise

/// Reads little-endian numbers from bytes, one after the other.
class Numbers
{
public:
    explicit Numbers(std::string_view bytes) : m_bytes(bytes) {}

    std::uint16_t Next16() { return static_cast<std::uint16_t>(Next(2)); }

    std::uint32_t Next32() { return static_cast<std::uint32_t>(Next(4)); }

    std::uint64_t Next64() { return Next(8); }

    std::string_view Text(std::uint64_t size)
    {
        if (size > m_bytes.size()) {
            FailDamaged("its list of contents is incomplete");
        }
        const std::string_view text = m_bytes.substr(0, static_cast<std::size_t>(size));
        m_bytes.remove_prefix(text.size());
        return text;
    }

    bool IsAtEnd() const { return m_bytes.empty(); }

private:
    std::uint64_t Next(std::size_t size)
    {
        const std::string_view bytes = Text(size);
        std::uint64_t number = 0;
        for (std::size_t index = size; index-- > 0;) {
            number = (number << 8U) | static_cast<unsigned char>(bytes[index]);
        }
        return number;
    }

    std::string_view m_bytes;
};

std::string BytesAt(QIODevice& archive, std::uint64_t offset, std::uint64_t size)
{
    const auto total = static_cast<std::uint64_t>(archive.size());
    if (offset > total || size > total - offset || !archive.seek(static_cast<qint64>(offset))) {
        FailDamaged("a part of it is missing");
    }
    std::string bytes = archive.read(static_cast<qint64>(size)).toStdString();
    if (bytes.size() != size) {
        throw Error(ErrorNumber::DeviceInputOutput);
    }
    return bytes;
}

/// Where the list of contents is.
struct Listing {
    std::uint64_t entries = 0;
    std::uint64_t size = 0;
    std::uint64_t offset = 0;
};

/// Returns the position of the end record, which is the last thing in the file.
std::optional<std::uint64_t> FindEnd(QIODevice& archive)
{
    const auto total = static_cast<std::uint64_t>(archive.size());
    const std::uint64_t start = total - std::min(total, endSize + longestComment);
    const std::string tail = BytesAt(archive, start, total - start);
    for (std::uint64_t at = tail.size() < endSize ? 0 : tail.size() - endSize + 1; at-- > 0;) {
        Numbers record(std::string_view(tail).substr(at));
        if (record.Next32() == endSignature) {
            record.Text(endSize - 6);
            if (record.Next16() == tail.size() - at - endSize) {
                return start + at;
            }
        }
    }
    return std::nullopt;
}

/// Replaces what the end record does not hold by the numbers of the 64-bit record. Returns its position.
std::uint64_t Read64(QIODevice& archive, std::uint64_t end, Listing& listing)
{
    if (end < locatorSize + end64Size) {
        FailDamaged("a part of it is missing");
    }
    const std::string bytes = BytesAt(archive, end - locatorSize, locatorSize);
    Numbers locator(bytes);
    if (locator.Next32() != locatorSignature) {
        FailDamaged("a part of it is missing");
    }
    const std::uint32_t disk = locator.Next32();
    const std::uint64_t at = locator.Next64();
    if (disk != 0 || locator.Next32() > 1) {
        throw ArchiveProblem("The archive is spread over several files.");
    }
    const std::string record = BytesAt(archive, at, end64Size);
    Numbers numbers(record);
    if (numbers.Next32() != end64Signature || numbers.Next64() + 12 != end - locatorSize - at) {
        FailDamaged("a part of it is missing");
    }
    numbers.Text(12); // versions and disks
    const std::uint64_t here = numbers.Next64();
    listing.entries = numbers.Next64();
    listing.size = numbers.Next64();
    listing.offset = numbers.Next64();
    if (here != listing.entries) {
        throw ArchiveProblem("The archive is spread over several files.");
    }
    return at;
}

Listing FindListing(QIODevice& archive)
{
    const std::string start = archive.size() < 4 ? std::string() : BytesAt(archive, 0, 4);
    const std::uint32_t signature = start.empty() ? 0 : Numbers(start).Next32();
    if (signature != localSignature && signature != endSignature) {
        throw ArchiveProblem("This is not a zip archive.");
    }
    const auto end = FindEnd(archive);
    if (!end) {
        throw ArchiveProblem("The archive is incomplete: its end is missing.");
    }
    const std::string bytes = BytesAt(archive, *end, endSize);
    Numbers record(bytes);
    record.Next32();
    const std::uint16_t disk = record.Next16();
    const std::uint16_t firstDisk = record.Next16();
    const std::uint16_t here = record.Next16();
    Listing listing{record.Next16(), record.Next32(), record.Next32()};
    if ((disk != 0 && disk != more16) || firstDisk != disk || here != listing.entries) {
        throw ArchiveProblem("The archive is spread over several files.");
    }
    const bool is64 = listing.entries == more16 || listing.size == more32 || listing.offset == more32;
    const std::uint64_t behind = is64 ? Read64(archive, *end, listing) : *end;
    if (listing.offset > behind || listing.size != behind - listing.offset) {
        FailDamaged("its list of contents has the wrong size");
    }
    return listing;
}

/// Takes the sizes and the position from the 64-bit extra field, if the entry does not hold them.
void ReadExtra(std::string_view extra, ListedEntry& entry)
{
    constexpr std::uint16_t extra64 = 1;
    Numbers fields(extra);
    while (!fields.IsAtEnd()) {
        const std::uint16_t kind = fields.Next16();
        Numbers field(fields.Text(fields.Next16()));
        if (kind != extra64) {
            continue;
        }
        for (std::uint64_t* number : {&entry.size, &entry.compressedSize, &entry.offset}) {
            if (*number == more32) {
                *number = field.Next64();
            }
        }
        return;
    }
}

ListedEntry NextEntry(Numbers& list)
{
    ListedEntry entry;
    if (list.Next32() != entrySignature) {
        FailDamaged("its list of contents is incomplete");
    }
    entry.madeBy = list.Next16();
    list.Next16(); // the version needed
    entry.flags = list.Next16();
    entry.method = list.Next16();
    list.Next32(); // time and date
    entry.checksum = list.Next32();
    entry.compressedSize = list.Next32();
    entry.size = list.Next32();
    const std::uint16_t nameSize = list.Next16();
    const std::uint16_t extraSize = list.Next16();
    const std::uint16_t commentSize = list.Next16();
    list.Next32(); // disk and internal attributes
    entry.attributes = list.Next32();
    entry.offset = list.Next32();
    entry.name = list.Text(nameSize);
    ReadExtra(list.Text(extraSize), entry);
    list.Text(commentSize);
    return entry;
}

/// Throws unless the data of each entry is where its local header says, and belongs to no other entry.
void CheckPositions(QIODevice& archive, const std::vector<ListedEntry>& entries, std::uint64_t end)
{
    std::vector<const ListedEntry*> inOrder;
    inOrder.reserve(entries.size());
    for (const ListedEntry& entry : entries) {
        inOrder.push_back(&entry);
    }
    std::sort(inOrder.begin(), inOrder.end(),
              [](const auto* left, const auto* right) { return left->offset < right->offset; });
    std::uint64_t last = 0;
    for (const ListedEntry* entry : inOrder) {
        if (entry->offset < last) {
            FailDamaged("the data of " + CitedName(entry->name) + " overlaps that of another file");
        }
        const std::string bytes = BytesAt(archive, entry->offset, localSize);
        Numbers header(bytes);
        const bool isHeader = header.Next32() == localSignature;
        header.Text(localSize - 8);
        const std::uint16_t nameSize = header.Next16();
        const std::uint16_t extraSize = header.Next16();
        const std::uint64_t start = entry->offset + localSize + nameSize + extraSize;
        if (!isHeader || BytesAt(archive, entry->offset + localSize, nameSize) != entry->name) {
            FailDamaged("the data of " + CitedName(entry->name) + " is missing");
        }
        if (start > end || entry->compressedSize > end - start) {
            FailDamaged("the data of " + CitedName(entry->name) + " is incomplete");
        }
        last = start + entry->compressedSize;
    }
}

} // namespace

std::vector<ListedEntry> ReadLayout(QIODevice& archive, const ArchiveLimits& limits)
{
    const Listing listing = FindListing(archive);
    // checked before the list is read, which needs as much memory
    if (listing.entries > limits.entries || listing.size / roomForEntry > limits.entries) {
        throw ArchiveProblem("The archive has too many files.");
    }
    const std::string bytes = BytesAt(archive, listing.offset, listing.size);
    Numbers list(bytes);
    std::vector<ListedEntry> entries;
    for (std::uint64_t entry = 0; entry < listing.entries; ++entry) {
        entries.push_back(NextEntry(list));
        CheckEntry(entries.back());
    }
    if (!list.IsAtEnd()) {
        FailDamaged("its list of contents has the wrong size");
    }
    CheckNames(entries);
    CheckSizes(entries, static_cast<std::uint64_t>(archive.size()), limits);
    CheckPositions(archive, entries, listing.offset);
    return entries;
}

} // namespace Tarno
