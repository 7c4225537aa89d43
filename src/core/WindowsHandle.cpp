#include "WindowsHandle.h"

Error ErrorOf(DWORD code)
{
    switch (code) {
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return Error(ErrorNumber::DiskFull);
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_UNABLE_TO_REMOVE_REPLACED:
    case ERROR_USER_MAPPED_FILE:
        return Error(ErrorNumber::PermissionDenied);
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return Error(ErrorNumber::PathNotFound);
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return Error(ErrorNumber::FileAlreadyExists);
    case ERROR_WRITE_FAULT:
    case ERROR_READ_FAULT:
    case ERROR_CRC:
    case ERROR_IO_DEVICE:
        return Error(ErrorNumber::DeviceInputOutput);
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
        return Error(ErrorNumber::OutOfMemory);
    default:
        return Error(ErrorNumber::PathFileAccess);
    }
}

Error LastError()
{
    return ErrorOf(::GetLastError());
}

void Check(bool success)
{
    if (!success) {
        throw LastError();
    }
}
