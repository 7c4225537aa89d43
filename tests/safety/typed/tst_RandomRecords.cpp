#include "Characters.h"
#include "safety/Form.h"
#include "store/RecordFamily.h"
#include "support/TestClass.h"
#include "support/TestStore.h"

#include <random>

using namespace Tarno;

// Adds, replaces and removes records with random texts in random order. After each start of the program, the
// files contain the same records as a simple list on which the same changes were made.

namespace
{

using Values = std::vector<std::string>;

/// A text as saved, and as expected when it is read back.
struct Typed {
    std::string text;
    std::string kept;
};

class TextGenerator
{
public:
    explicit TextGenerator(unsigned seed) : m_random(seed) {}

    std::size_t Number(std::size_t below)
    {
        return std::uniform_int_distribution<std::size_t>(0, below - 1)(m_random);
    }

    Typed Text()
    {
        Typed typed;
        std::size_t pieces = Number(4) == 0 ? 0 : Number(6);
        if (Number(20'000) == 0) {
            pieces = 40'000; // some 100,000 characters
        }
        for (; pieces > 0; --pieces) {
            if (Number(3) == 0) {
                static const std::vector<std::string> signs{"<",         ">",           "&",
                                                            "\"",        "'",           "]]>",
                                                            "<![CDATA[", "<!--",        "-->",
                                                            "--",        "<?",          "?>",
                                                            "<a>",       "</a>",        "</data>",
                                                            "</tarno>",  "&amp;",       "&lt;",
                                                            "&#0;",      "&#13;",       "&#xFFFE;",
                                                            "&tide;",    "~CL~",        "~CL",
                                                            "~~CL~~",    "\r",          "\n",
                                                            "\r\n",      "\t",          " ",
                                                            "  ",        "\xC2\xA0",    "\xEF\xBB\xBF",
                                                            "%1",        "%s",          "\\",
                                                            "\\n",       "{",           "}",
                                                            "0",         "-1",          "1e400",
                                                            "null",      "\xEF\xBF\xBD"};
                const std::string& sign = signs[Number(signs.size())];
                typed.text += sign;
                typed.kept += sign;
            } else {
                Append(Character(), typed);
            }
        }
        return typed;
    }

private:
    char32_t Character()
    {
        switch (Number(8)) {
        case 0:
            return static_cast<char32_t>(Number(0x20));
        case 1:
            return static_cast<char32_t>(0x80 + Number(0x780));
        case 2:
            return static_cast<char32_t>(0x800 + Number(0xF800)); // surrogates are among them
        case 3:
            return static_cast<char32_t>(0x10000 + Number(0x100000));
        default:
            return static_cast<char32_t>(0x20 + Number(0x5F));
        }
    }

    static void Append(char32_t character, Typed& typed)
    {
        const bool control = character < 0x20 && character != '\t' && character != '\n' && character != '\r';
        const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
        const bool allowed = !control && !surrogate && character != 0xFFFE && character != 0xFFFF;
        typed.text += Utf8(character);
        typed.kept += allowed ? Utf8(character) : replacementCharacter;
    }

    std::mt19937 m_random;
};

/// Reads the files like another program that is started now.
class Reader
{
public:
    explicit Reader(const TestStore& store) : m_sql(store.programFolder, m_operations)
    {
        if (m_sql.Init() != succeeded) {
            qFatal("not read");
        }
    }

    std::vector<Values> Records(const RecordFamily& family) const
    {
        RecordList list;
        if ((m_sql.*family.list)(list) != succeeded) {
            qFatal("no list");
        }
        std::vector<Values> records;
        for (const RecordView& listed : list) {
            Record record;
            if ((m_sql.*family.get)(static_cast<std::int16_t>(std::stoi(listed.Text(0))), record) !=
                succeeded) {
                qFatal("not found");
            }
            records.emplace_back();
            for (std::size_t position = 0; position < record.Count(); ++position) {
                records.back().push_back(record.Text(position));
            }
        }
        return records;
    }

private:
    ScriptedFileOperations m_operations;
    cSQL m_sql;
};

/// A log and a simple list on which the same changes are made.
class LogWithModel
{
public:
    explicit LogWithModel(unsigned seed) : m_generator(seed)
    {
        if (m_store.sql.Init() != succeeded) {
            qFatal("not loaded");
        }
    }

    /// Adds, replaces or removes a record of the family. Returns whether that succeeded.
    bool Change(const RecordFamily& family)
    {
        std::vector<Values>& records = m_models[family.name];
        const std::size_t choice = m_generator.Number(10);
        if (records.empty() || choice < 6) {
            Record record;
            (m_store.sql.*family.get)(0, record);
            records.push_back(FillRandomly(record));
            records.back()[0] =
                std::to_string(records.size() > 1 ? std::stoi(records[records.size() - 2][0]) + 1 : 1);
            ++written;
            return (m_store.sql.*family.update)(record) == succeeded && record.Text(0) == records.back()[0];
        }
        Values& chosen = records[m_generator.Number(records.size())];
        const auto key = static_cast<std::int16_t>(std::stoi(chosen[0]));
        if (choice < 8) {
            Record record;
            const bool found = (m_store.sql.*family.get)(key, record) == succeeded;
            chosen = FillRandomly(record);
            ++written;
            return found && (m_store.sql.*family.update)(record) == succeeded;
        }
        records.erase(records.begin() + (&chosen - records.data()));
        return (m_store.sql.*family.remove)(key) == succeeded;
    }

    /// Describes what is wrong with the files; empty if nothing is.
    std::string Fault() const
    {
        const Reader reader(m_store);
        for (const RecordFamily& family : RecordFamilies()) {
            const auto model = m_models.find(family.name);
            if (model == m_models.end()) {
                continue;
            }
            if (reader.Records(family) != model->second) {
                return family.name + " differs";
            }
            if (const std::string fault = XmllintFault(m_store.folder.PathOf(family.file)); !fault.empty()) {
                return fault;
            }
        }
        return {};
    }

    int written = 0;

private:
    /// Puts random texts into the record and returns the values expected when they are read back.
    Values FillRandomly(Record& record)
    {
        Values kept{record.Text(0)};
        for (std::size_t position = 1; position < record.Count(); ++position) {
            const Typed typed = m_generator.Text();
            record.SetText(position, typed.text);
            kept.push_back(typed.kept);
        }
        return kept;
    }

    TextGenerator m_generator;
    TestStore m_store;
    std::map<std::string, std::vector<Values>> m_models;
};

} // namespace

class tst_RandomRecords : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void changesInAnyOrder_matchASimpleList()
    {
        const int wanted = Times(2'000, 100'000);
        constexpr int changesBetweenStarts = 40;
        constexpr int startsOfOneLog = 3;
        int written = 0;
        int starts = 0;
        for (unsigned seed = 1; written < wanted; ++seed) {
            LogWithModel log(seed);
            for (int start = 0; start < startsOfOneLog; ++start, ++starts) {
                for (int change = 0; change < changesBetweenStarts; ++change) {
                    const RecordFamily& family = RecordFamilies().at(static_cast<std::size_t>(change) % 3);
                    QVERIFY2(log.Change(family), ("seed " + std::to_string(seed)).c_str());
                }
                const std::string fault = log.Fault();
                QVERIFY2(fault.empty(), ("seed " + std::to_string(seed) + ": " + fault).c_str());
            }
            written += log.written;
        }
        qInfo("%d records written, the files read %d times", written, starts);
    }
};

TEST_CLASS(tst_RandomRecords)
#include "tst_RandomRecords.moc"
