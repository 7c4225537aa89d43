#pragma once

#include "support/TemporaryFolder.h"

#include <filesystem>

#ifndef Q_OS_WIN
#include <unistd.h>
#endif

namespace Tarno
{

#ifdef Q_OS_WIN

/// Windows has no bits of permission that could be taken away here: a test of them is skipped.
class UnprivilegedUser
{
public:
    explicit UnprivilegedUser(const TemporaryFolder& /*folder*/) {}

    static bool IsUnprivileged() { return false; }

    static constexpr const char* skipReason = "not on Windows: bits of permission";
};

#else

/// As long as it lives, the process has the rights of a plain user, so that permissions bite: root, whom
/// they do not stop, becomes "nobody", who is given the folder and all that is in it.
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

    /// False where root may not give up its rights; a test of permissions has to be skipped then.
    static bool IsUnprivileged() { return ::geteuid() != 0; }

    static constexpr const char* skipReason = "root may not give up its rights here";

private:
    static constexpr uid_t nobody = 65534;

    bool m_switched = false;
};

#endif

} // namespace Tarno
