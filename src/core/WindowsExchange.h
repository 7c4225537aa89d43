#pragma once

#include <string>
#include <windows.h>

/// FileOperations::Exchange as Windows can do it, in steps, any of which a test can make fail.
class WindowsExchange
{
public:
    WindowsExchange() = default;
    WindowsExchange(const WindowsExchange&) = delete;
    WindowsExchange& operator=(const WindowsExchange&) = delete;
    virtual ~WindowsExchange() = default;

    /// Tries for a moment when another program holds a file. After an Error the files are as they were, or,
    /// when that failed as well, what stood at `to` lies at `from` with FileOperations::outSuffix behind it.
    bool Exchange(const std::string& from, const std::string& to);

    /// To be called when there is no file at `path`: an exchange may be under way, or a program may have been
    /// killed amid one. Waits for the file to come, or brings back the temporary of SafeWriter that went out
    /// when that takes too long; false when the file is really missing.
    static bool ComesBack(const std::string& path);

protected:
    /// `from` takes the place of `to`, whose attributes and rights it gets; what stood there goes `out`.
    /// Returns what the operating system says.
    virtual DWORD TakePlace(const std::string& from, const std::string& to, const std::string& out);

    /// Gives `from` the name `to`, which must be free. Returns what the operating system says.
    virtual DWORD Move(const std::string& from, const std::string& to);

private:
    /// Takes the step again while another program that reads, scans or exchanges `to` may soon be done.
    template <typename Step>
    static DWORD Patiently(const std::string& to, const Step& step);
};
