#include "Characters.h"
#include "safety/Form.h"
#include "store/RecordFamily.h"
#include "support/TestClass.h"
#include "support/TestStore.h"

#include <set>

using namespace Tarno;

// Each character that XML allows makes a round trip through the data files. Each other character becomes the
// replacement character.

namespace
{

using Values = std::vector<std::string>;

/// Returns the number of values in a new record of the family, including its key.
std::size_t ValuesOf(const TestStore& store, const RecordFamily& family)
{
    Record record;
    if ((store.sql.*family.get)(0, record) != succeeded) {
        qFatal("no template");
    }
    return record.Count();
}

/// Stores `texts` in as many new records as needed and returns the records.
std::vector<Values> Stored(TestStore& store, const RecordFamily& family,
                           const std::vector<std::string>& texts)
{
    const std::size_t count = ValuesOf(store, family);
    std::vector<Values> records;
    for (std::size_t at = 0; at < texts.size();) {
        Record record;
        (store.sql.*family.get)(0, record);
        Values values(count);
        for (std::size_t position = 1; position < count && at < texts.size(); ++position) {
            record.SetText(position, texts[at]);
            values[position] = texts[at++];
        }
        if ((store.sql.*family.update)(record) != succeeded) {
            qFatal("not saved");
        }
        values[0] = std::to_string(records.size() + 1);
        records.push_back(values);
    }
    return records;
}

/// Returns the records of the family as read from the files by a new cSQL object.
std::vector<Values> ReadAgain(const TestStore& store, const RecordFamily& family)
{
    ScriptedFileOperations operations;
    cSQL sql(store.programFolder, operations);
    RecordList list;
    if (sql.Init() != succeeded || (sql.*family.list)(list) != succeeded) {
        qFatal("not read");
    }
    std::vector<Values> records;
    for (const RecordView& listed : list) {
        Record record;
        if ((sql.*family.get)(static_cast<std::int16_t>(std::stoi(listed.Text(0))), record) != succeeded) {
            qFatal("not found");
        }
        records.emplace_back();
        for (std::size_t position = 0; position < record.Count(); ++position) {
            records.back().push_back(record.Text(position));
        }
    }
    return records;
}

/// Describes the first difference between two lists of records; empty if there is none.
std::string Difference(const std::vector<Values>& expected, const std::vector<Values>& actual)
{
    if (expected.size() != actual.size()) {
        return std::to_string(actual.size()) + " records instead of " + std::to_string(expected.size());
    }
    for (std::size_t record = 0; record < expected.size(); ++record) {
        for (std::size_t value = 0; value < expected[record].size(); ++value) {
            if (value >= actual[record].size() || actual[record][value] != expected[record][value]) {
                return "record " + std::to_string(record) + ", value " + std::to_string(value);
            }
        }
    }
    return {};
}

/// Returns whether saving again without a change writes the same bytes.
bool IsStable(const TestStore& store, const RecordFamily& family)
{
    const std::string before = store.folder.Read(family.file);
    ScriptedFileOperations operations;
    cSQL sql(store.programFolder, operations);
    constexpr std::int16_t none = 32767;
    return sql.Init() == succeeded && (sql.*family.remove)(none) == succeeded &&
           !operations.Steps().empty() && store.folder.Read(family.file) == before;
}

/// Returns the characters to test as single-character values: those with a meaning in XML, line ends or
/// encodings, and a part of the others; for entries in the long form, all of them.
std::vector<char32_t> SingleCharacters(const RecordFamily& family)
{
    const bool everyOne = IsLongForm() && family.name == "Entry";
    const std::vector<char32_t> all = XmlCharacters();
    const std::set<char32_t> special{0x2028,  0x2029,  0xFDD0,  0xFDEF,  0xFEFF,   0xFFF9,
                                     0xFFFC,  0xFFFD,  0xE000,  0xF8FF,  0xD7FF,   0x10000,
                                     0x1FFFE, 0x1FFFF, 0xE0001, 0xF0000, 0x10FFFE, 0x10FFFF};
    std::vector<char32_t> single;
    constexpr char32_t firstLetters = 0x300;
    constexpr std::size_t stride = 501;
    for (std::size_t at = 0; at < all.size(); ++at) {
        if (everyOne || all[at] < firstLetters || at % stride == 0 || special.count(all[at]) > 0) {
            single.push_back(all[at]);
        }
    }
    return single;
}

} // namespace

class tst_EveryCharacter : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase_data() { AddRecordFamilies(); }

    void everyXmlCharacter_makesARoundTrip()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        const std::vector<char32_t> characters = XmlCharacters();
        QCOMPARE(characters.size(), std::size_t(1'112'033));
        TestStore store;
        QCOMPARE(store.sql.Init(), succeeded);
        constexpr std::size_t inOneValue = 4000;
        const auto stored = Stored(store, family, Texts(characters, inOneValue));
        QCOMPARE(Difference(stored, ReadAgain(store, family)), std::string());
        QCOMPARE(XmllintFault(store.folder.PathOf(family.file)), std::string());
        QVERIFY(IsStable(store, family));
        qInfo("%s: %zu characters in %zu records", family.name.c_str(), characters.size(), stored.size());
    }

    void singleCharacter_makesARoundTrip()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        const std::vector<std::string> texts = Texts(SingleCharacters(family), 1);
        constexpr std::size_t inOneFile = 720;
        for (std::size_t at = 0; at < texts.size(); at += inOneFile) {
            const auto first = texts.begin() + static_cast<std::ptrdiff_t>(at);
            const auto count = std::min(inOneFile, texts.size() - at);
            TestStore store;
            QCOMPARE(store.sql.Init(), succeeded);
            const auto stored = Stored(store, family, {first, first + static_cast<std::ptrdiff_t>(count)});
            QCOMPARE(Difference(stored, ReadAgain(store, family)), std::string());
            QCOMPARE(XmllintFault(store.folder.PathOf(family.file)), std::string());
            QVERIFY(IsStable(store, family));
        }
        qInfo("%s: %zu single characters", family.name.c_str(), texts.size());
    }

    void everyOtherCharacter_becomesTheReplacementCharacter()
    {
        QFETCH_GLOBAL(RecordFamily, family);
        const std::vector<char32_t> allowed = XmlCharacters();
        const std::set<char32_t> isAllowed(allowed.begin(), allowed.end());
        std::vector<std::string> texts;
        for (char32_t character = 0; character <= lastCharacter; ++character) {
            if (isAllowed.count(character) == 0) {
                texts.push_back("a" + Utf8(character) + "b" + Utf8(character));
            }
        }
        QCOMPARE(texts.size(), std::size_t(lastCharacter + 1 - 1'112'033));
        // several in one value, because one value for each would take two thousand records
        std::vector<std::string> joined;
        std::vector<std::string> expected;
        constexpr std::size_t together = 40;
        for (std::size_t at = 0; at < texts.size(); ++at) {
            if (at % together == 0) {
                joined.emplace_back();
                expected.emplace_back();
            }
            joined.back() += texts[at];
            expected.back() += "a" + replacementCharacter + "b" + replacementCharacter;
        }
        TestStore store;
        QCOMPARE(store.sql.Init(), succeeded);
        std::vector<Values> stored = Stored(store, family, joined);
        std::size_t at = 0;
        for (Values& values : stored) {
            for (std::size_t position = 1; position < values.size() && at < expected.size(); ++position) {
                values[position] = expected[at++];
            }
        }
        QCOMPARE(Difference(stored, ReadAgain(store, family)), std::string());
        QCOMPARE(XmllintFault(store.folder.PathOf(family.file)), std::string());
        QVERIFY(IsStable(store, family));
    }
};

TEST_CLASS(tst_EveryCharacter)
#include "tst_EveryCharacter.moc"
