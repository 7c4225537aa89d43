#include "core/Error.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <cerrno>
#endif

using namespace Tarno;

class tst_Error : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void describe_everyNumber_hasADescription_data()
    {
        QTest::addColumn<ErrorNumber>("number");
        QTest::addColumn<int>("value");
        QTest::addColumn<std::string>("words");
        const auto row = [](ErrorNumber number, int value, const char* words) {
            QTest::addRow("%d", value) << number << value << std::string(words);
        };
        row(ErrorNumber::InvalidProcedureCall, 5, "Invalid procedure call or argument");
        row(ErrorNumber::Overflow, 6, "Overflow");
        row(ErrorNumber::OutOfMemory, 7, "Out of memory");
        row(ErrorNumber::SubscriptOutOfRange, 9, "Subscript out of range");
        row(ErrorNumber::TypeMismatch, 13, "Type mismatch");
        row(ErrorNumber::FileNotFound, 53, "File not found");
        row(ErrorNumber::DeviceInputOutput, 57, "Device I/O error");
        row(ErrorNumber::DiskFull, 61, "Disk full");
        row(ErrorNumber::PermissionDenied, 70, "Permission denied");
        row(ErrorNumber::PathFileAccess, 75, "Path/File access error");
        row(ErrorNumber::PathNotFound, 76, "Path not found");
        row(ErrorNumber::ObjectNotSet, 91, "Object variable or With block variable not set");
        row(ErrorNumber::InvalidPicture, 481, "Invalid picture");
    }

    void describe_everyNumber_hasADescription()
    {
        QFETCH(ErrorNumber, number);
        QFETCH(std::string, words);
        QTEST(static_cast<int>(number), "value");
        QCOMPARE(std::string(Describe(number)), words);
        QCOMPARE(Error(number).Description(), words);
        QVERIFY(Error(number).Number() == number);
    }

    void describe_anyOtherNumber_isApplicationDefined()
    {
        QCOMPARE(std::string(Describe(static_cast<ErrorNumber>(1000))),
                 std::string("Application-defined or object-defined error"));
    }

    void error_withADescription_keepsIt()
    {
        const Error error(ErrorNumber::TypeMismatch, "not a tide");
        QVERIFY(error.Number() == ErrorNumber::TypeMismatch);
        QCOMPARE(error.Description(), std::string("not a tide"));
    }

    void errorOf_systemFailure_hasTheMatchingNumber_data()
    {
        QTest::addColumn<int>("failure");
        QTest::addColumn<ErrorNumber>("number");
        const auto row = [](const char* name, int failure, ErrorNumber number) {
            QTest::newRow(name) << failure << number;
        };
#ifdef Q_OS_WIN
        row("access denied", ERROR_ACCESS_DENIED, ErrorNumber::PathFileAccess);
        row("sharing violation", ERROR_SHARING_VIOLATION, ErrorNumber::PermissionDenied);
        row("lock violation", ERROR_LOCK_VIOLATION, ErrorNumber::PermissionDenied);
        row("disk full", ERROR_DISK_FULL, ErrorNumber::DiskFull);
        row("handle disk full", ERROR_HANDLE_DISK_FULL, ErrorNumber::DiskFull);
        row("file not found", ERROR_FILE_NOT_FOUND, ErrorNumber::PathNotFound);
        row("path not found", ERROR_PATH_NOT_FOUND, ErrorNumber::PathNotFound);
        row("file exists", ERROR_FILE_EXISTS, ErrorNumber::FileAlreadyExists);
        row("io device", ERROR_IO_DEVICE, ErrorNumber::DeviceInputOutput);
        row("not enough memory", ERROR_NOT_ENOUGH_MEMORY, ErrorNumber::OutOfMemory);
        row("write fault, not an errno of the same number", ERROR_WRITE_FAULT, ErrorNumber::PathFileAccess);
#else
        row("ENOSPC", ENOSPC, ErrorNumber::DiskFull);
        row("EDQUOT", EDQUOT, ErrorNumber::DiskFull);
        row("EFBIG", EFBIG, ErrorNumber::DiskFull);
        row("EBUSY", EBUSY, ErrorNumber::PermissionDenied);
        row("ETXTBSY", ETXTBSY, ErrorNumber::PermissionDenied);
        row("EAGAIN", EAGAIN, ErrorNumber::PermissionDenied);
        row("ENOENT", ENOENT, ErrorNumber::PathNotFound);
        row("EEXIST", EEXIST, ErrorNumber::FileAlreadyExists);
        row("EIO", EIO, ErrorNumber::DeviceInputOutput);
        row("ENOMEM", ENOMEM, ErrorNumber::OutOfMemory);
        for (const int other :
             {EACCES, EPERM, EROFS, EXDEV, EOPNOTSUPP, EINVAL, ENOTDIR, ELOOP, ENAMETOOLONG}) {
            row(std::generic_category().message(other).c_str(), other, ErrorNumber::PathFileAccess);
        }
#endif
    }

    void errorOf_systemFailure_hasTheMatchingNumber()
    {
        QFETCH(int, failure);
        QFETCH(ErrorNumber, number);
#ifdef Q_OS_WIN
        const auto& category = std::system_category();
#else
        const auto& category = std::generic_category();
#endif
        const Error error = ErrorOf({failure, category});
        QVERIFY(error.Number() == number);
        QCOMPARE(error.Description(), std::string(Describe(number)));
    }
};

TEST_CLASS(tst_Error)
#include "tst_Error.moc"
