#include "SafeWriter.h"

#include "Error.h"

#include <random>

void SafeWriter::Write(const std::string& path, std::string_view bytes)
{
    const std::string target = m_operations.Followed(path);
    m_operations.CheckReplaceable(target);
    // a name of chance, so that what a crash left behind never stands in the way
    const std::string chance = std::to_string(std::random_device()());
    const std::string temporary = target + '.' + chance + std::string(temporarySuffix);
    WriteTemporary(temporary, target, bytes);
    m_operations.SyncFolderOf(target);
}

void SafeWriter::WriteTemporary(const std::string& temporary, const std::string& target,
                                std::string_view bytes)
{
    auto file = m_operations.Create(temporary, target);
    try {
        for (std::string_view rest = bytes; !rest.empty();) {
            rest.remove_prefix(file->Write(rest));
        }
        file->Sync();
        file->Close();
        if (m_operations.Size(temporary) != bytes.size()) {
            throw Error(ErrorNumber::DiskFull);
        }
        m_operations.Replace(temporary, target);
    } catch (...) {
        file.reset();
        try {
            m_operations.Remove(temporary);
        } catch (const Error&) { // NOLINT(bugprone-empty-catch): the first failure is the one to tell
        }
        throw;
    }
}
