#include "core/Error.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

class tst_Error : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void describe_everyNumber_hasItsWords_data()
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

    void describe_everyNumber_hasItsWords()
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

    void error_withWordsOfItsOwn_keepsThem()
    {
        const Error error(ErrorNumber::TypeMismatch, "not a tide");
        QVERIFY(error.Number() == ErrorNumber::TypeMismatch);
        QCOMPARE(error.Description(), std::string("not a tide"));
    }
};

TEST_CLASS(tst_Error)
#include "tst_Error.moc"
