#pragma once

#include "core/FileOperations.h"

#include <string>
#include <string_view>

/// Writes whole files so that a reader, a crash or a power cut finds the old bytes or the new ones,
/// never a mixture: a temporary file in the same folder is written, synchronised, checked and put in
/// the target's place.
class SafeWriter
{
public:
    explicit SafeWriter(FileOperations& operations) : m_operations(operations) {}

    /// Replaces the contents of `path`, or creates it, through symbolic links and keeping the mode.
    /// Throws Error when any step fails: the old bytes are then still there and the temporary is gone
    /// (only a failure to synchronise the folder comes after the new bytes have taken their place).
    void Write(const std::string& path, std::string_view bytes);

    /// What the name of every temporary ends with.
    static constexpr std::string_view temporarySuffix = ".tarno-tmp";

private:
    void WriteTemporary(const std::string& temporary, const std::string& target, std::string_view bytes);

    FileOperations& m_operations;
};
