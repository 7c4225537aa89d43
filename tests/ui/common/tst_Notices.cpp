#include "support/ScriptedPrompts.h"
#include "support/TestClass.h"
#include "ui/common/Notices.h"

using namespace Tarno;

using Kind = ConflictNotice::Kind;

class tst_Notices : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void conflict_showsANoticeNotAnError_data()
    {
        QTest::addColumn<ConflictNotice>("conflict");
        QTest::addColumn<QString>("text");
        QTest::newRow("both changed a trip")
            << ConflictNotice{Kind::Trip, "2026-05-03", "Old~CL~Pier", false, "/log/tarno-kept-1.xml"}
            << QStringLiteral(
                   "You and another program have both changed the trip of 2026-05-03 at Old Pier.\r\n\r\n"
                   "Your version was saved. The other program's version is stored in:\r\n"
                   "/log/tarno-kept-1.xml");
        QTest::newRow("deleted here")
            << ConflictNotice{Kind::Trip, "2026-05-03", "", true, "/log/tarno-kept-2.xml"}
            << QStringLiteral(
                   "Another program has changed the trip of 2026-05-03, which you have deleted.\r\n\r\n"
                   "It remains deleted. The other program's version is stored in:\r\n"
                   "/log/tarno-kept-2.xml");
        QTest::newRow("deleted there")
            << ConflictNotice{Kind::Location, "", "P\u0101ua Bay", false, ""}
            << QStringLiteral(
                   "Another program has deleted the location P\u0101ua Bay, which you have changed.\r\n\r\n"
                   "Your version was restored.");
        QTest::newRow("a column") << ConflictNotice{Kind::Column, "", "Start Date", false, ""}
                                  << QStringLiteral(
                                         "Another program has deleted the column Start Date, which you have "
                                         "changed.\r\n\r\nYour version was restored.");
        QTest::newRow("a report") << ConflictNotice{Kind::Report, "", "Summer", false, ""}
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
};

TEST_CLASS(tst_Notices)
#include "tst_Notices.moc"
