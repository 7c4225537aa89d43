#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

namespace Tarno
{

/// The numbers of the errors that the program reports.
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

/// Returns the description of `number` that the user sees.
std::string_view Describe(ErrorNumber number);

/// The exception of every routine of the program. PermissionDenied means that another process holds the file;
/// missing access rights to a file or folder are PathFileAccess.
class Error : public std::runtime_error
{
public:
    explicit Error(ErrorNumber number);
    /// Creates an error with `description` instead of the usual text.
    Error(ErrorNumber number, const std::string& description);

    ErrorNumber Number() const { return m_number; }

    std::string Description() const { return what(); }

private:
    ErrorNumber m_number;
};

/// Returns the Error that corresponds to an error code of the operating system.
Error ErrorOf(const std::error_code& failure);

} // namespace Tarno
