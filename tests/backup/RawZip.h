#pragma once

#include <QByteArray>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

/// Writes zip archives byte by byte, also ones that no library would write. Every number can be set to a
/// wrong value before Bytes is called.
struct RawZip {
    struct Entry {
        std::string name;
        std::string data;           ///< as it is in the archive
        std::string localName = {}; ///< the same as `name` if it is empty
        std::uint64_t size = 0;     ///< decompressed
        std::uint64_t compressedSize = 0;
        std::uint32_t checksum = 0;
        std::uint32_t attributes = 0;
        std::uint16_t madeBy = 0;
        std::uint16_t flags = 0x800; ///< names in UTF-8
        std::uint16_t method = 0;
        std::uint32_t offsetBy = 0; ///< added to the offset in the list of contents
        std::string extra = {};     ///< in the list of contents
    };

    /// Adds a stored entry.
    Entry& Add(const std::string& name, const std::string& contents = "contents")
    {
        Entry entry{name, contents};
        entry.size = entry.compressedSize = contents.size();
        entry.checksum = Checksum(contents);
        return entries.emplace_back(entry);
    }

    /// Adds a deflated entry.
    Entry& AddDeflated(const std::string& name, const std::string& contents)
    {
        Entry& entry = Add(name, contents);
        const QByteArray packed = qCompress(QByteArray::fromStdString(contents), 9);
        constexpr int head = 6; // the size that Qt adds, and the header of zlib
        constexpr int tail = 4;
        entry.data = packed.mid(head, packed.size() - head - tail).toStdString();
        entry.compressedSize = entry.data.size();
        entry.method = 8;
        return entry;
    }

    std::string Bytes() const
    {
        std::string bytes = prefix;
        std::string list;
        for (const Entry& entry : entries) {
            const std::string& localName = entry.localName.empty() ? entry.name : entry.localName;
            const auto offset = static_cast<std::uint32_t>(bytes.size()) + entry.offsetBy;
            const std::string common = Number(entry.flags, 2) + Number(entry.method, 2) +
                                       Number(0x5a210000, 4) + Number(entry.checksum, 4) +
                                       Number(entry.compressedSize, 4) + Number(entry.size, 4);
            bytes += Number(0x04034b50, 4) + Number(20, 2) + common + Number(localName.size(), 2) +
                     Number(0, 2) + localName + entry.data;
            list += Number(0x02014b50, 4) + Number(entry.madeBy, 2) + Number(20, 2) + common +
                    Number(entry.name.size(), 2) + Number(entry.extra.size(), 2) + Number(0, 2) +
                    Number(0, 4) + Number(entry.attributes, 4) + Number(offset, 4) + entry.name + entry.extra;
        }
        const auto count = static_cast<std::uint16_t>(entries.size() + countBy);
        return bytes + list + Number(0x06054b50, 4) + Number(disk, 2) + Number(disk, 2) + Number(count, 2) +
               Number(count, 2) + Number(list.size() + listBy, 4) + Number(bytes.size() + offsetBy, 4) +
               Number(comment.size(), 2) + comment + suffix;
    }

    static std::string Number(std::uint64_t number, int size)
    {
        std::string bytes;
        for (int index = 0; index < size; ++index) {
            bytes += static_cast<char>(number >> (8U * static_cast<unsigned>(index)));
        }
        return bytes;
    }

    static std::uint32_t Checksum(std::string_view bytes)
    {
        std::uint32_t sum = 0xffffffff;
        for (const char byte : bytes) {
            sum ^= static_cast<unsigned char>(byte);
            for (int bit = 0; bit < 8; ++bit) {
                sum = (sum >> 1U) ^ ((sum & 1U) != 0 ? 0xedb88320U : 0U);
            }
        }
        return ~sum;
    }

    std::vector<Entry> entries;
    std::string prefix;
    std::string suffix;
    std::string comment;
    std::uint16_t disk = 0;
    std::uint64_t countBy = 0;
    std::uint64_t listBy = 0;
    std::uint64_t offsetBy = 0;
};

} // namespace Tarno
