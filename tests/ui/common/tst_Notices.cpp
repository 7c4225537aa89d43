#include "support/ScriptedPrompts.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "ui/common/Notices.h"

using namespace Tarno;

using Kind = RecordTitle::Kind;

class tst_Notices : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void conflict_showsANoticeNotAnError_data()
    {
        QTest::addColumn<ConflictNotice>("conflict");
        QTest::addColumn<QString>("text");
        QTest::newRow("both changed a trip")
            << ConflictNotice{{Kind::Trip, "1", "2026-05-03", "Old~CL~Pier"}, false, "/log/tarno-kept-1.xml"}
            << QStringLiteral(
                   "You and another program have both changed the trip of 2026-05-03 at Old Pier.\r\n\r\n"
                   "Your version was saved. The other program's version is stored in:\r\n"
                   "/log/tarno-kept-1.xml");
        QTest::newRow("deleted here")
            << ConflictNotice{{Kind::Trip, "1", "2026-05-03", ""}, true, "/log/tarno-kept-2.xml"}
            << QStringLiteral(
                   "Another program has changed the trip of 2026-05-03, which you have deleted.\r\n\r\n"
                   "It remains deleted. The other program's version is stored in:\r\n"
                   "/log/tarno-kept-2.xml");
        QTest::newRow("deleted there")
            << ConflictNotice{{Kind::Location, "1", "", "P\u0101ua Bay"}, false, ""}
            << QStringLiteral(
                   "Another program has deleted the location P\u0101ua Bay, which you have changed.\r\n\r\n"
                   "Your version was restored.");
        QTest::newRow("a column") << ConflictNotice{{Kind::Column, "1", "", "Start Date"}, false, ""}
                                  << QStringLiteral(
                                         "Another program has deleted the column Start Date, which you have "
                                         "changed.\r\n\r\nYour version was restored.");
        QTest::newRow("a report") << ConflictNotice{{Kind::Report, "1", "", "Summer"}, false, ""}
                                  << QStringLiteral(
                                         "Another program has deleted the report Summer, which you have "
                                         "changed.\r\n\r\nYour version was restored.");
    }

    void conflict_showsANoticeNotAnError()
    {
        QFETCH(ConflictNotice, conflict);
        QFETCH(QString, text);
        ScriptedMessageBoxes messages;
        messages.ExpectInformation(text, QStringLiteral("Tarno"));
        ShowConflict(conflict, messages);
    }

    void record_withoutDateOrName_hasItsNumber()
    {
        QCOMPARE(DescribeRecord({Kind::Trip, "12", "", ""}), QStringLiteral("the trip number 12"));
        QCOMPARE(DescribeRecord({Kind::Location, "3", "", ""}), QStringLiteral("the location number 3"));
    }

    void longList_endsWithTheNumberOfTheOthers()
    {
        QStringList lines;
        for (int line = 1; line <= 12; ++line) {
            lines << QString::number(line);
        }
        QCOMPARE(Listed(lines.mid(0, 2)), QStringLiteral("1\r\n2"));
        QVERIFY(Listed(lines.mid(0, 10)).endsWith(QStringLiteral("\r\n10")));
        QVERIFY(Listed(lines).endsWith(QStringLiteral("\r\n10\r\nand 2 more")));
    }

    void goodFiles_showNoNotice()
    {
        TestProgram program;
        program.Start();
        ShowFileProblems(program.sql, QStringLiteral("/log"), nullptr, program.messages);
    }

    void unreadableFilesAndShortRecords_areNamedInOneNotice()
    {
        TestProgram program;
        program.folder.Write("tarno.xml", "<data><tarno>");
        program.folder.Write("location.xml", "<data><location><LocNo>1</LocNo></location></data>");
        program.Start();
        program.messages.ExpectInformation(
            QStringLiteral(
                "Tarno could not read these files in /log:\r\n\r\n"
                "tarno.xml: Line 1, column 13: Start-end tags mismatch\r\n\r\n"
                "Nothing is written over them. Restore each file from a copy or correct it in a text "
                "editor, then start Tarno again.\r\n\r\n"
                "Values are missing in:\r\n\r\n"
                "the location number 1\r\n\r\n"
                "Missing values are shown as empty. You can delete these records. To edit them, first "
                "add the missing values in a text editor."),
            QStringLiteral("Tarno"));
        ShowFileProblems(program.sql, QStringLiteral("/log"), nullptr, program.messages);
    }
};

TEST_CLASS(tst_Notices)
#include "tst_Notices.moc"
