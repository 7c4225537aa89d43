#include "Error.h"
#include "Paths.h"

#include <algorithm>
#include <fstream>
#include <system_error>

namespace Tarno
{

namespace fs = std::filesystem;

std::string ReadWholeFile(const std::string& path)
{
    std::error_code failure;
    const fs::file_status status = fs::status(ToPath(path), failure);
    if (status.type() == fs::file_type::not_found) {
        throw Error(ErrorNumber::FileNotFound);
    }
    // If status() failed, the file may still exist, so it is not FileNotFound. Opening anything but a regular
    // file, for example a pipe, could block forever.
    if (!fs::is_regular_file(status)) {
        throw Error(ErrorNumber::PathFileAccess);
    }
    std::ifstream file(ToPath(path), std::ios::binary);
    if (!file) {
        throw Error(fs::exists(ToPath(path), failure) ? ErrorNumber::PathFileAccess
                                                      : ErrorNumber::FileNotFound);
    }
    // the size of the open file; another file may have taken its name since status()
    const std::streamoff size = file.seekg(0, std::ios::end).tellg();
    std::string bytes(static_cast<std::size_t>(std::max<std::streamoff>(size, 0)), '\0');
    if (!file.seekg(0).read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) {
        throw Error(ErrorNumber::DeviceInputOutput);
    }
    return bytes;
}

std::string Resolved(const std::string& path)
{
    constexpr int maxLinks = 40;
    std::error_code failure;
    fs::path resolved = ToPath(path);
    // weakly_canonical does not follow a link to a missing file
    for (int links = 0; links < maxLinks && fs::is_symlink(fs::symlink_status(resolved, failure)); ++links) {
        resolved = resolved.parent_path() / fs::read_symlink(resolved, failure);
    }
    resolved = fs::weakly_canonical(resolved, failure);
    if (failure) {
        throw ErrorOf(failure);
    }
    return FromPath(resolved);
}

} // namespace Tarno
