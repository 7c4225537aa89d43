// Texts that assistive tools write into boxes without focusing them. They are checked and stored like typed
// texts.

#include "EntryTest.h"
#include "support/TestClass.h"

#include <QAccessible>

using namespace Tarno;

namespace
{

/// Writes into the box as an assistive tool does.
void Write(const QWidget& editor, const char* box, const char* text)
{
    QAccessibleInterface* access = QAccessible::queryAccessibleInterface(&Find<QWidget>(editor, box));
    QVERIFY(access != nullptr);
    access->setText(QAccessible::Value, QString::fromUtf8(text));
}

std::string StoredAt(const TestProgram& program, std::size_t position)
{
    return program.Stored("tarno.xml").at(0).at(position);
}

} // namespace

class tst_fEntryAssistive : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void box_writtenWithoutFocus_isStored_data()
    {
        QTest::addColumn<QByteArray>("box");
        QTest::addColumn<int>("position");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("stored");
        QTest::newRow("date") << QByteArray("txtEnd") << int(EntryField::EndDate) << QByteArray("2003-2-9")
                              << QByteArray("2003-02-09");
        QTest::newRow("time") << QByteArray("txtTEnd") << int(EntryField::EndTime) << QByteArray("1205")
                              << QByteArray("12:05");
        QTest::newRow("text") << QByteArray("txtTideHighHt") << int(EntryField::HighTideHt)
                              << QByteArray("2 m") << QByteArray("2 m");
        QTest::newRow("on another page")
            << QByteArray("txtAirTemp") << int(EntryField::AirTemp) << QByteArray("19") << QByteArray("19");
    }

    void box_writtenWithoutFocus_isStored()
    {
        QFETCH(QByteArray, box);
        QFETCH(int, position);
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, stored);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [&](QDialog& editor) {
            Write(editor, box.constData(), text.constData());
            QVERIFY(Find<QAbstractButton>(editor, "cmdOK").isEnabled());
            Find<QAbstractButton>(editor, "cmdOK").click();
            editor.reject();
        });
        QCOMPARE(StoredAt(program, static_cast<std::size_t>(position)), stored.toStdString());
    }

    void typedText_focusMovedFromOutside_isSaved()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        program.messages.Expect(saveQuestion, Button::Yes);
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtAirTemp", "1499");
            Find<QWidget>(editor, "txtWaterTemp").setFocus();
            Close(editor);
        });
        QCOMPARE(StoredAt(program, EntryField::AirTemp), "1499");
    }

    void typedRefusedText_focusMovedFromOutside_isNotSaved()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        const std::string before = program.folder.Read("tarno.xml");
        Edit(program, key, [&](QDialog& editor) {
            TypeRefusedDate(editor);
            Find<QWidget>(editor, "txtTideLow").setFocus();
            Find<QAbstractButton>(editor, "cmdOK").click();
            QCOMPARE(Focused(editor), "txtStart");
            QVERIFY(IsRefused(editor, "txtStart"));
            editor.reject();
            QVERIFY(editor.isVisible());
            Enter(editor, "txtStart", "2003-02-05");
            Close(editor);
        });
        QCOMPARE(program.folder.Read("tarno.xml"), before);
    }

    void chosenPlace_focusMovedFromOutside_isSaved()
    {
        ProgramWithPlace program;
        program.AddLocation("Albany");
        const int key = program.AddCompleteEntry();
        Edit(program, key, [&](QDialog& editor) {
            Find<QWidget>(editor, "cboLocation").setFocus();
            Press(editor, Qt::Key_Down);
            Find<QWidget>(editor, "txtTideLow").setFocus();
            Find<QAbstractButton>(editor, "cmdOK").click();
            editor.reject();
        });
        QCOMPARE(StoredAt(program, EntryField::LocNo), "2");
        QVERIFY(StoredAt(program, EntryField::SunRise) != "06:11");
    }

    void endDateOfTheOrderRule_staysUnwrittenUntilLeft()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [&](QDialog& editor) {
            Enter(editor, "txtStart", "2003-05-10");
            Find<QWidget>(editor, "txtTideLow").setFocus();
            Find<QAbstractButton>(editor, "cmdOK").click();
            QCOMPARE(BoxText(editor, "txtEnd"), "2003-05-10");
            editor.reject();
        });
        QCOMPARE(StoredAt(program, EntryField::EndDate), "2003-02-06");
    }

    void refusedText_isNotSavedAndTheBoxIsShown()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [&](QDialog& editor) {
            auto& box = Find<QLineEdit>(editor, "txtEnd");
            const QColor usual = box.palette().color(QPalette::Base);
            ClickPage(editor, 1);
            Enter(editor, "txtAirTemp", "19");
            Write(editor, "txtEnd", "2003-13-45");
            QVERIFY(box.palette().color(QPalette::Base) != usual);
            QCOMPARE(box.accessibleDescription(),
                     QStringLiteral("This date does not exist. Use year-month-day, for example 2026-03-31."));
            Click(editor, "cmdOK");
            QCOMPARE(StoredAt(program, EntryField::AirTemp), "24.5");
            QCOMPARE(Pages(editor).currentIndex(), 0);
            QCOMPARE(editor.focusWidget(), &box);
            editor.reject(); // the editor does not close either
            QVERIFY(editor.isVisible());
            Write(editor, "txtEnd", "2003-02-07");
            Press(editor, Qt::Key_Tab);
            QCOMPARE(box.palette().color(QPalette::Base), usual);
            QCOMPARE(box.accessibleDescription(), QString());
            Click(editor, "cmdOK");
            editor.reject();
        });
        QCOMPARE(StoredAt(program, EntryField::EndDate), "2003-02-07");
        QCOMPARE(StoredAt(program, EntryField::AirTemp), "19");
    }

    void startDate_written_recalculates()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [&](QDialog& editor) {
            ClickPage(editor, 1);
            Write(editor, "txtStart", "2003-01-01");
            Find<QAbstractButton>(editor, "cmdOK").click();
            editor.reject();
        });
        QCOMPARE(StoredAt(program, EntryField::StartDate), "2003-01-01");
        QVERIFY(StoredAt(program, EntryField::SunRise) != "06:11");
    }
};

TEST_CLASS(tst_fEntryAssistive)
#include "tst_fEntryAssistive.moc"
