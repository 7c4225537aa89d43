#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

namespace Tarno
{

/// The numbers under which the program reports what went wrong.
enum class ErrorNumber {
    InvalidProcedureCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    FileNotFound = 53,
    DeviceInputOutput = 57,
    FileAlreadyExists = 58,
    DiskFull = 61,
    PermissionDenied = 70,
    PathFileAccess = 75,
    PathNotFound = 76,
    ObjectNotSet = 91,
    InvalidPicture = 481,
};

/// The description that the user reads for `number`.
std::string_view Describe(ErrorNumber number);

/// What every routine of the program throws. PermissionDenied means that another process holds the
/// file; a file or folder that the user may not touch is PathFileAccess.
class Error : public std::runtime_error
{
public:
    explicit Error(ErrorNumber number);
    /// An error with words of its own.
    Error(ErrorNumber number, const std::string& description);

    ErrorNumber Number() const { return m_number; }

    std::string Description() const { return what(); }

private:
    ErrorNumber m_number;
};

/// The Error for a failure that the operating system reports.
Error ErrorOf(const std::error_code& failure);

} // namespace Tarno
