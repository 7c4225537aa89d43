// The catalogue of the fields of a log entry, compared with the shipped files.

#include "store/EntryFields.h"
#include "store/RecordLayouts.h"
#include "support/TestClass.h"
#include "support/TestStore.h"

using namespace Tarno;

using namespace std::string_literals;

class tst_EntryFields : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void dataNames_areTheChildrenOfTheTemplate()
    {
        TestStore store;
        QCOMPARE(store.sql.Init(), succeeded);
        Record entry;
        QCOMPARE(store.sql.EntryGet(0, entry), succeeded);
        QCOMPARE(entry.Count(), entryFields.size());
        std::size_t position = 0;
        for (const pugi::xml_node& child : entry.View().Node().children()) {
            QCOMPARE(std::string(child.name()), std::string(entryFields.at(position++).name));
        }
    }

    void reportColumns_areFields()
    {
        TestStore store;
        QCOMPARE(store.sql.Init(), succeeded);
        RecordList columns;
        QCOMPARE(store.sql.FieldList(columns), succeeded);
        QCOMPARE(columns.size(), entryFields.size() - 1); // the number of the trip is not printed
        for (const RecordView& column : columns) {
            const std::string name = column.Text(FieldField::FieldName);
            const FieldInfo* field = FindEntryField(name);
            QVERIFY2(field != nullptr, name.c_str());
            QCOMPARE(column.Text(FieldField::FieldNo), std::to_string(field->position));
        }
    }

    void findEntryField_needsTheExactName()
    {
        QCOMPARE(FindEntryField("Obbos")->position, EntryField::Obbos);
        for (const char* unknown : {"", "obbos", "Obbos ", "Observations"}) {
            QVERIFY2(FindEntryField(unknown) == nullptr, unknown);
        }
    }

    void onlyCodes_haveWords()
    {
        for (const FieldInfo& field : entryFields) {
            QCOMPARE(field.words.empty(), field.kind != FieldKind::Code);
        }
    }

    void codeWord_anyOtherText_isNotSet_data()
    {
        QTest::addColumn<std::string>("code");
        QTest::addColumn<std::string>("word");
        QTest::newRow("first") << "0"s
                               << "Rising"s;
        QTest::newRow("last") << "1"s
                              << "Falling"s;
        QTest::newRow("after the last") << "2"s
                                        << "Not Set"s;
        for (const char* text : {"", "-1", "01", " 1", "1 ", "1.0", "x", "/", ":"}) {
            QTest::newRow(text) << std::string(text) << "Not Set"s;
        }
    }

    void codeWord_anyOtherText_isNotSet()
    {
        QFETCH(std::string, code);
        QFETCH(std::string, word);
        QCOMPARE(CodeWord(EntryField::AirPressure, code), word);
    }
};

TEST_CLASS(tst_EntryFields)
#include "tst_EntryFields.moc"
