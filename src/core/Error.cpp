#include "Error.h"

#include <cerrno>

namespace Tarno
{

std::string_view Describe(ErrorNumber number)
{
    switch (number) {
    case ErrorNumber::InvalidProcedureCall:
        return "Invalid procedure call or argument";
    case ErrorNumber::Overflow:
        return "Overflow";
    case ErrorNumber::OutOfMemory:
        return "Out of memory";
    case ErrorNumber::SubscriptOutOfRange:
        return "Subscript out of range";
    case ErrorNumber::TypeMismatch:
        return "Type mismatch";
    case ErrorNumber::FileNotFound:
        return "File not found";
    case ErrorNumber::DeviceInputOutput:
        return "Device I/O error";
    case ErrorNumber::FileAlreadyExists:
        return "File already exists";
    case ErrorNumber::DiskFull:
        return "Disk full";
    case ErrorNumber::PermissionDenied:
        return "Permission denied";
    case ErrorNumber::PathFileAccess:
        return "Path/File access error";
    case ErrorNumber::PathNotFound:
        return "Path not found";
    case ErrorNumber::ObjectNotSet:
        return "Object variable or With block variable not set";
    case ErrorNumber::InvalidPicture:
        return "Invalid picture";
    }
    return "Application-defined or object-defined error";
}

Error::Error(ErrorNumber number) : Error(number, std::string(Describe(number))) {}

Error::Error(ErrorNumber number, const std::string& description)
    : std::runtime_error(description), m_number(number)
{
}

Error ErrorOf(const std::error_code& failure)
{
    const std::error_condition condition = failure.default_error_condition();
    switch (condition.category() == std::generic_category() ? condition.value() : 0) {
    case ENOSPC:
    case EFBIG:
#ifdef EDQUOT
    case EDQUOT:
#endif
        return Error(ErrorNumber::DiskFull);
    case EBUSY:
    case ETXTBSY:
    case EAGAIN:
        return Error(ErrorNumber::PermissionDenied);
    case ENOENT:
        return Error(ErrorNumber::PathNotFound);
    case EEXIST:
        return Error(ErrorNumber::FileAlreadyExists);
    case EIO:
        return Error(ErrorNumber::DeviceInputOutput);
    case ENOMEM:
        return Error(ErrorNumber::OutOfMemory);
    default:
        return Error(ErrorNumber::PathFileAccess);
    }
}

} // namespace Tarno
