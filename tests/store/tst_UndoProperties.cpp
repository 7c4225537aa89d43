#include "RecordFamily.h"
#include "store/EntryFields.h"
#include "support/TestClass.h"
#include "support/TestStore.h"

#include <array>
#include <map>
#include <random>
#include <set>

using namespace Tarno;

using namespace std::string_literals;

namespace
{

const std::array families{RecordFamilies()[0], RecordFamilies()[1]}; // trips and locations

/// Random choices that are the same on every machine.
class Choices
{
public:
    explicit Choices(unsigned seed) : m_numbers(seed) {}

    std::size_t Below(std::size_t count) { return m_numbers() % count; }

    bool OneIn(std::size_t count) { return Below(count) == 0; }

    template <typename Container>
    const auto& Of(const Container& container)
    {
        return container[Below(container.size())];
    }

    std::string Text()
    {
        static const std::vector<std::string> texts{
            "", " ", "  \t ", "<b>&amp;]]>\"'", "one\r\ntwo", "\ttab\n", "\u9BDB \u00E9", "\r", "a~CL~b"};
        return OneIn(2) ? Of(texts) : std::to_string(Below(1000));
    }

private:
    std::mt19937 m_numbers;
};

std::int16_t KeyOf(const RecordView& record)
{
    return static_cast<std::int16_t>(record.Key());
}

RecordList ListOf(const cSQL& sql, const RecordFamily& family)
{
    RecordList list;
    (sql.*family.list)(list);
    return list;
}

/// A random log that the program has saved.
struct RandomLog : TestStore {
    explicit RandomLog(unsigned seed, bool hasDuplicates = true) : choices(seed)
    {
        sql.Init();
        for (const RecordFamily& family : {Locations(), Trips()}) { // trips refer to locations
            for (auto count = choices.Below(8); count > 0; --count) {
                Add(family);
            }
            std::string bytes = folder.Read(family.file);
            Decorate(bytes, "\t</" + family.record + ">\n", hasDuplicates);
            Decorate(bytes, "<data>\n", false);
            folder.Write(family.file, bytes);
        }
        sql.Init();
        sql.EntryDelete(0); // saves the file
        sql.LocationDelete(0);
        sql.Init();
    }

    static const RecordFamily& Trips() { return RecordFamilies()[0]; }

    static const RecordFamily& Locations() { return RecordFamilies()[1]; }

    /// Inserts comments, processing instructions and copies of records after some of the texts `end`.
    void Decorate(std::string& bytes, const std::string& end, bool hasDuplicates)
    {
        std::size_t recordStart = 0;
        for (auto at = bytes.find(end); at != std::string::npos; at = bytes.find(end, at)) {
            const std::string record = bytes.substr(recordStart, at + end.size() - recordStart);
            at += end.size();
            recordStart = at;
            std::string inserted;
            while (choices.OneIn(3)) {
                inserted += choices.OneIn(2) ? "\t<!-- note " + choices.Text() + "-->\n" : "\t<?mine it?>\n";
            }
            if (hasDuplicates && choices.OneIn(8)) {
                inserted += record.substr(record.find("\t<"));
            }
            bytes.insert(at, inserted);
            at += inserted.size();
            recordStart = at;
        }
    }

    /// Gives a record random values.
    void Fill(const RecordFamily& family, Record& record)
    {
        record.SetText(1, choices.Text());
        record.SetText(choices.Below(record.Count() - 1) + 1, choices.Text());
        if (family.name == "Entry") {
            const RecordList locations = ListOf(sql, Locations());
            record.SetText(EntryField::LocNo, locations.empty() ? "" : choices.Of(locations).Text(0));
        }
    }

    void Add(const RecordFamily& family)
    {
        Record record;
        (sql.*family.get)(0, record);
        Fill(family, record);
        (sql.*family.update)(record);
    }

    void Edit(const RecordFamily& family, std::int16_t key)
    {
        Record record;
        (sql.*family.get)(key, record);
        Fill(family, record);
        (sql.*family.update)(record);
    }

    bool IsUsed(const std::string& location) const
    {
        const RecordList trips = ListOf(sql, Trips());
        return std::any_of(trips.begin(), trips.end(),
                           [&](const RecordView& trip) { return trip.Text(EntryField::LocNo) == location; });
    }

    /// Adds, edits or deletes a random record.
    void ChangeSomething()
    {
        const RecordFamily& family = choices.OneIn(3) ? Locations() : Trips();
        const RecordList records = ListOf(sql, family);
        const auto kind = choices.Below(4);
        if (records.empty() || kind == 0) {
            Add(family);
        } else if (const std::int16_t key = KeyOf(choices.Of(records)); kind == 1) {
            if (family.name == "Entry" || !IsUsed(std::to_string(key))) {
                (sql.*family.remove)(key);
            }
        } else {
            Edit(family, key);
        }
    }

    using Files = std::pair<std::string, std::string>;

    Files Bytes() const { return {folder.Read("tarno.xml"), folder.Read("location.xml")}; }

    Choices choices;
};

/// What undo and redo do, expressed as the files after each change.
struct Model {
    explicit Model(const RandomLog::Files& start) : states{start} {}

    void NoteChange(const RandomLog::Files& files)
    {
        if (files != states[current]) {
            states.resize(++current);
            states.push_back(files);
        }
    }

    std::vector<RandomLog::Files> states;
    std::size_t current = 0;
};

/// Two programs that change different records of one log. The first value of each record is its owner, and
/// the second one is different in all records.
struct TwoPrograms {
    explicit TwoPrograms(unsigned seed) : log(seed, false), other(log.programFolder, *operations)
    {
        for (const RecordFamily& family : families) {
            log.folder.Write(family.file, "<data>\n\t<!-- note -->\n</data>\n");
        }
        log.sql.Init();
        other.Init();
        for (int count = 0; count < 5; ++count) {
            for (int program : {0, 1}) {
                Add(program, log.choices.Of(families));
            }
        }
        log.sql.Init();
    }

    cSQL& Program(int program) { return program == 0 ? log.sql : other; }

    void Add(int program, const RecordFamily& family)
    {
        Record record;
        (Program(program).*family.get)(0, record);
        Store(program, family, record);
    }

    /// Stores a record with new values and notes what is in the log then.
    void Store(int program, const RecordFamily& family, Record& record)
    {
        models[program].erase(record.Text(2));
        record.SetText(1, owners[static_cast<std::size_t>(program)]);
        record.SetText(2, family.name + std::to_string(++changes));
        (Program(program).*family.update)(record);
        models[program].insert(record.Text(2));
    }

    void ChangeSomething(int program)
    {
        const RecordFamily& family = log.choices.Of(families);
        RecordList own = ListOf(Program(program), family);
        std::erase_if(own, [&](const RecordView& record) {
            return record.Text(1) != owners[static_cast<std::size_t>(program)];
        });
        const auto kind = log.choices.Below(4);
        if (own.empty() || kind == 0) {
            Add(program, family);
            return;
        }
        Record record(log.choices.OneIn(3) ? own.back() : log.choices.Of(own));
        if (kind == 1) {
            models[program].erase(record.Text(2));
            (Program(program).*family.remove)(KeyOf(record.View()));
        } else {
            Store(program, family, record);
        }
    }

    /// Returns the records of a program in the files.
    std::set<std::string> Stored(int program)
    {
        cSQL reader(log.programFolder, *operations);
        reader.Init();
        std::set<std::string> stored;
        for (const RecordFamily& family : families) {
            for (const RecordView& record : ListOf(reader, family)) {
                if (record.Text(1) == owners[static_cast<std::size_t>(program)] &&
                    !stored.insert(record.Text(2)).second) {
                    stored.insert("twice: " + record.Text(2));
                }
            }
        }
        return stored;
    }

    static constexpr std::array owners{"ours", "theirs"};

    RandomLog log;
    std::unique_ptr<FileOperations> operations = SystemFileOperations();
    cSQL other;
    std::map<int, std::set<std::string>> models;
    int changes = 0;
};

} // namespace

class tst_UndoProperties : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void anyChanges_areUndoneAndRedoneByteByByte_data() { AddSeeds(); }

    void anyChanges_areUndoneAndRedoneByteByByte()
    {
        QFETCH(unsigned, seed);
        RandomLog log(seed);
        Model model(log.Bytes());
        const auto undo = [&] {
            const bool canUndo = model.current > 0;
            QCOMPARE(log.sql.NextUndo().has_value(), canUndo);
            QVERIFY(log.sql.Undo().status == (canUndo ? UndoStatus::Done : UndoStatus::Nothing));
            model.current -= canUndo ? 1 : 0;
            QVERIFY(log.Bytes() == model.states[model.current]);
        };
        const auto redo = [&] {
            const bool canRedo = model.current + 1 < model.states.size();
            QCOMPARE(log.sql.NextRedo().has_value(), canRedo);
            QVERIFY(log.sql.Redo().status == (canRedo ? UndoStatus::Done : UndoStatus::Nothing));
            model.current += canRedo ? 1 : 0;
            QVERIFY(log.Bytes() == model.states[model.current]);
        };
        for (int count = 0; count < 40 && !QTest::currentTestFailed(); ++count) {
            const auto kind = log.choices.Below(6);
            if (kind == 0) {
                undo();
            } else if (kind == 1) {
                redo();
            } else {
                log.ChangeSomething();
                model.NoteChange(log.Bytes());
            }
        }
        const std::size_t last = model.current;
        while (model.current > 0 && !QTest::currentTestFailed()) {
            undo();
        }
        QVERIFY(!log.sql.NextUndo());
        while (model.current < last && !QTest::currentTestFailed()) {
            redo();
        }
        QCOMPARE(log.sql.Init(), succeeded); // a second start reads the same
        log.sql.EntryDelete(0);
        log.sql.LocationDelete(0);
        QVERIFY(log.Bytes() == model.states[model.current]);
    }

    void changesOfAnotherProgram_survive_data() { AddSeeds(); }

    void changesOfAnotherProgram_survive()
    {
        QFETCH(unsigned, seed);
        TwoPrograms programs(seed);
        cSQL& sql = programs.log.sql;
        std::vector<std::set<std::string>> states{programs.models[0]};
        std::size_t current = 0;
        const auto check = [&](UndoStatus status) {
            QVERIFY(status == UndoStatus::Done);
            QCOMPARE(programs.Stored(0), states[current]);
            QCOMPARE(programs.Stored(1), programs.models[1]);
        };
        for (int count = 0; count < 40 && !QTest::currentTestFailed(); ++count) {
            const auto kind = programs.log.choices.Below(8);
            if (kind == 0 && current > 0) {
                --current;
                check(sql.Undo().status);
            } else if (kind == 1 && current + 1 < states.size()) {
                ++current;
                check(sql.Redo().status);
            } else if (kind < 5) {
                programs.ChangeSomething(1);
            } else {
                programs.models[0] = states[current];
                programs.ChangeSomething(0);
                states.resize(++current);
                states.push_back(programs.models[0]);
            }
        }
        while (current > 0 && !QTest::currentTestFailed()) {
            --current;
            check(sql.Undo().status);
            if (programs.log.choices.OneIn(2)) {
                programs.ChangeSomething(1);
            }
        }
        QVERIFY(!sql.NextUndo());
    }

private:
    static void AddSeeds()
    {
        QTest::addColumn<unsigned>("seed");
        for (unsigned seed = 1; seed <= 8; ++seed) {
            QTest::addRow("seed %u", seed) << seed;
        }
    }
};

TEST_CLASS(tst_UndoProperties)
#include "tst_UndoProperties.moc"
