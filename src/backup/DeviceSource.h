#pragma once

#include <QCryptographicHash>
#include <QIODevice>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <zip.h>

namespace Tarno
{

/// Receives the size and the hash of everything that was read from a source, when it was read to the end.
using NoteContents = std::function<void(std::uint64_t size, const std::string& hash)>;

/// Returns the SHA-256 of the bytes added so far.
std::string HashOf(const QCryptographicHash& hash);

/// Returns a source from which libzip reads the contents of `device`. libzip owns the result.
zip_source_t* MakeSource(std::unique_ptr<QIODevice> device, NoteContents note = {});

/// Returns a target to which libzip writes a new archive, the file `path`, which must not exist. libzip owns
/// the result.
zip_source_t* MakeTarget(const std::string& path);

} // namespace Tarno
