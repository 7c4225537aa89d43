#pragma once

#include "core/FileOperations.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Writes whole files so that a reader, a crash or a power cut finds the old bytes or the new ones,
/// never a mixture: a temporary file in the same folder is written, synchronised, checked and put in
/// the target's place.
class SafeWriter
{
public:
    /// What tells one version of a file from another.
    using Fingerprint = std::size_t;
    using Fingerprints = std::vector<Fingerprint>;

    static Fingerprint FingerprintOf(std::string_view bytes);

    explicit SafeWriter(FileOperations& operations) : m_operations(operations) {}

    /// Replaces the contents of `path`, or creates it, through symbolic links and keeping the mode.
    /// Throws Error when any step fails: the old bytes are then still there and the temporary is gone
    /// (only a failure to synchronise the folder comes after the new bytes have taken their place).
    void Write(const std::string& path, std::string_view bytes);

    /// As Write, but looks at what the new bytes have taken the place of. What is none of the `known`
    /// versions is kept as Keep does; returns the path of that file, the empty text when there was no need.
    /// Where the file system cannot exchange two files in one step nothing is looked at.
    std::string WriteOver(const std::string& path, std::string_view bytes, Fingerprints known);

    /// Writes a file of its own for `bytes`, another version of the file at `path`, beside it:
    /// "tarno-kept-1.xml" for "tarno.xml", or the next number that is free. Returns its path. Throws Error,
    /// leaving no file.
    std::string Keep(const std::string& path, std::string_view bytes);

    /// Removes the temporaries that a crash while `path` was written has left beside it, as far as that can
    /// be done; those of a process that is still running stay. One that holds what WriteOver would have kept
    /// is kept; returns the paths of such files. What was on its way out and has got no successor goes back.
    /// Never fails.
    std::vector<std::string> RemoveLeftovers(const std::string& path);

    /// What the name of every temporary ends with.
    static constexpr std::string_view temporarySuffix = ".tarno-tmp";

private:
    std::string Target(const std::string& path);
    std::string TemporaryFor(const std::string& target);
    bool IsOver(std::uint32_t process);
    std::string RemoveLeftover(const std::string& leftover, const std::string& target);

    FileOperations& m_operations;
};
