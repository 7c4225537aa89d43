#pragma once

#include "support/TemporaryFolder.h"

#include <filesystem>

#ifndef Q_OS_WIN
#include <unistd.h>
#endif

namespace Tarno
{

#ifdef Q_OS_WIN

/// Windows has no permission bits; tests that need them are skipped.
class UnprivilegedUser
{
public:
    explicit UnprivilegedUser(const TemporaryFolder& /*folder*/) {}

    static bool IsUnprivileged() { return false; }

    static constexpr const char* skipReason = "not on Windows: permission bits";
};

#else

/// During its lifetime the process runs as an unprivileged user, because permissions do not restrict root. If
/// the process runs as root, it becomes the user "nobody", who becomes the owner of the folder and its
/// contents.
class UnprivilegedUser
{
public:
    explicit UnprivilegedUser(const TemporaryFolder& folder)
    {
        if (::geteuid() != 0) {
            return;
        }
        bool ready = ::chown(folder.Path().c_str(), nobody, nobody) == 0;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(ToPath(folder.Path()))) {
            ready = ::lchown(entry.path().c_str(), nobody, nobody) == 0 && ready;
        }
        m_switched = ready && ::setresuid(nobody, nobody, 0) == 0;
    }

    UnprivilegedUser(const UnprivilegedUser&) = delete;
    UnprivilegedUser& operator=(const UnprivilegedUser&) = delete;

    ~UnprivilegedUser()
    {
        if (m_switched && ::setresuid(0, 0, 0) != 0) {
            qFatal("cannot become root again");
        }
    }

    /// Returns false if root cannot drop its privileges. The test must then be skipped.
    static bool IsUnprivileged() { return ::geteuid() != 0; }

    static constexpr const char* skipReason = "root cannot drop its privileges here";

private:
    static constexpr uid_t nobody = 65534;

    bool m_switched = false;
};

#endif

} // namespace Tarno
