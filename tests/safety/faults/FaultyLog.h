#pragma once

#include "safety/faults/Faults.h"
#include "store/RecordFamily.h"
#include "support/TestStore.h"
#include "support/UnsavedFiles.h"

#include <functional>
#include <map>
#include <optional>

namespace Tarno
{

using Texts = std::vector<std::string>;

/// The values of records by key.
using RecordValues = std::map<int, std::string>;

/// A log with three records of one kind. It collects all error reports and conflict notices.
class FaultyLog : public TestStore
{
public:
    explicit FaultyLog(RecordFamily recordFamily = RecordFamilies().front()) : family(std::move(recordFamily))
    {
        folder.Write(family.file, FileOf(values));
        sql.Init();
        ErrorReporter::Instance().SetShowMessage(
            [this](const std::string& text, const std::string& /*title*/) {
                reported.push_back(text);
                ErrorReporter::Instance().AllowRepetition();
            });
        sql.SetShowConflict([this](const ConflictNotice& notice) { notices.push_back(notice); });
    }

    std::string FileOf(const RecordValues& contents) const
    {
        Texts records;
        for (const auto& [key, value] : contents) {
            records.push_back(family.RecordXml(std::to_string(key), value));
        }
        return RecordFamily::File(records);
    }

    std::string OnDisk() const { return folder.Read(family.file); }

    RecordValues InMemory() const
    {
        RecordValues contents;
        RecordList list;
        (sql.*family.list)(list);
        for (const RecordView& record : list) {
            contents[std::stoi(record.Text(0))] = record.Text(1);
        }
        return contents;
    }

    /// Saves `value` in the record `key`, or in a new record if `key` is 0.
    Status Save(int key, const std::string& value)
    {
        values[key == 0 ? values.rbegin()->first + 1 : key] = value;
        RecordList list;
        (sql.*family.list)(list);
        Record record(list.front());
        record.SetText(0, std::to_string(key));
        record.SetText(1, value);
        return family.update == nullptr ? sql.FieldUpdate(record) : (sql.*family.update)(record);
    }

    /// Returns the names of files that contain `part`.
    Texts FilesWith(std::string_view part) const
    {
        Texts names = folder.Names();
        std::erase_if(names, [&](const std::string& name) { return name.find(part) == std::string::npos; });
        return names;
    }

    Texts Temporaries() const { return FilesWith(SafeWriter::temporarySuffix); }

    /// Returns the expected report of a failed update.
    Texts ReportOf(ErrorNumber number) const
    {
        return {"An error has occurred in Tarno in cSQL." + family.name + "Update\r\nVb<" +
                std::to_string(static_cast<int>(number)) + "> error raised\r\n" +
                std::string(Describe(number))};
    }

    const RecordFamily family;
    RecordValues values{{1, "first"}, {2, "second"}, {3, "third"}}; ///< with all changes made through Save
    Texts reported;
    std::vector<ConflictNotice> notices;
};

/// The expected result of a save with a fault.
struct Outcome {
    Effect effect;
    ErrorNumber error;         ///< the reported error
    std::size_t leftovers = 0; ///< temporaries that each attempt leaves
};

/// Calls `inject`, which causes a fault, and saves a change `attempts` times. Then calls `heal`, which
/// removes the fault, and checks that the next save writes everything. Without `expected`, each save may
/// succeed or fail, but must report a failure.
inline void CheckSaves(FaultyLog& log, const std::optional<Outcome>& expected, int attempts,
                       const std::function<void()>& inject, const std::function<void()>& heal)
{
    const std::string old = log.OnDisk();
    inject();
    for (int attempt = 1; attempt <= attempts; ++attempt) {
        log.reported.clear();
        const bool isSaved = log.Save(1, "changed") == succeeded;
        const std::string changed = log.FileOf(log.values);
        if (expected) {
            QCOMPARE(isSaved, expected->effect == GoesUnnoticed);
            QCOMPARE(log.reported, isSaved ? Texts() : log.ReportOf(expected->error));
            QCOMPARE(log.OnDisk(), expected->effect == Fails ? old : changed);
            QCOMPARE(log.Temporaries().size(), expected->leftovers * static_cast<std::size_t>(attempt));
            QVERIFY(log.InMemory() == log.values);
        } else {
            QCOMPARE(log.reported.size(), std::size_t(isSaved ? 0 : 1));
            QVERIFY(log.OnDisk() == changed || (!isSaved && log.OnDisk() == old));
        }
        QCOMPARE(UnsavedFiles(log.sql), isSaved ? Texts() : Texts{log.family.file});
    }
    heal();
    QCOMPARE(log.Save(2, "changed later"), succeeded);
    QCOMPARE(log.OnDisk(), log.FileOf(log.values));
    QCOMPARE(UnsavedFiles(log.sql), Texts());
    QCOMPARE(log.sql.Init(), succeeded); // the next start
    QVERIFY(log.InMemory() == log.values);
    QCOMPARE(log.Temporaries(), Texts());
    QVERIFY(log.notices.empty());
}

} // namespace Tarno
