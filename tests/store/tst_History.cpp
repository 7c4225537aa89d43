#include "store/History.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Kind = RecordTitle::Kind;
using enum History::Direction;

/// Returns the XML of a record, or an empty text for an empty value.
std::string Xml(const std::string& key, const std::string& value)
{
    return value.empty() ? "" : "<tarno><TarnoNo>" + key + "</TarnoNo><Value>" + value + "</Value></tarno>";
}

/// Returns a change of a value. An empty value is an absent record.
RecordChange Change(const std::string& key, const std::string& before, const std::string& after)
{
    return {.key = key, .before = Xml(key, before), .after = Xml(key, after)};
}

void Add(History& history, const RecordChange& change, Kind kind = Kind::Trip)
{
    history.Add({kind, change});
}

/// Moves the next step without changing its record.
void Move(History& history, History::Direction direction)
{
    history.Move(direction, history.Next(direction)->Towards(direction));
}

/// Undoes and redoes everything. Returns the keys of the steps in the order of the changes.
std::string Keys(History history)
{
    while (history.Next(Undo) != nullptr) {
        Move(history, Undo);
    }
    std::string keys;
    while (const History::Step* step = history.Next(Redo)) {
        for (const std::string& xml : {step->change.before, step->change.after}) {
            if (!xml.empty() &&
                xml.find("<TarnoNo>" + step->change.key + "</TarnoNo>") == std::string::npos) {
                keys += "!"; // the text has another key
            }
        }
        keys += step->change.key + ' ';
        Move(history, Redo);
    }
    return keys;
}

} // namespace

class tst_History : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void empty_hasNoSteps()
    {
        const History history;
        QVERIFY(history.Next(Undo) == nullptr);
        QVERIFY(history.Next(Redo) == nullptr);
    }

    void kind_isThatOfTheChange()
    {
        History history;
        Add(history, Change("1", "", "a"));
        QVERIFY(history.Next(Undo)->Kind() == ChangeKind::Add);
        Add(history, Change("1", "a", "b"));
        QVERIFY(history.Next(Undo)->Kind() == ChangeKind::Edit);
        Add(history, Change("1", "b", ""));
        QVERIFY(history.Next(Undo)->Kind() == ChangeKind::Delete);
        Move(history, Undo);
        QVERIFY(history.Next(Redo)->Kind() == ChangeKind::Delete);
    }

    void steps_areUndoneInReverseOrderAndRedoneInOrder()
    {
        History history;
        Add(history, Change("1", "a", "b"));
        Add(history, Change("2", "c", "d"));
        QCOMPARE(history.Next(Undo)->Towards(Undo).before, Xml("2", "d"));
        QCOMPARE(history.Next(Undo)->Towards(Undo).after, Xml("2", "c"));
        Move(history, Undo);
        QCOMPARE(history.Next(Undo)->change.key, "1"s);
        QCOMPARE(history.Next(Redo)->change.key, "2"s);
        QCOMPARE(history.Next(Redo)->Towards(Redo).after, Xml("2", "d"));
        Move(history, Undo);
        QVERIFY(history.Next(Undo) == nullptr);
        QCOMPARE(history.Next(Redo)->change.key, "1"s);
        Move(history, Redo);
        Move(history, Redo);
        QVERIFY(history.Next(Redo) == nullptr);
        QCOMPARE(Keys(history), "1 2 "s);
    }

    void newStep_dropsThoseToRedo()
    {
        History history;
        for (const char* key : {"1", "2", "3"}) {
            Add(history, Change(key, "a", "b"));
        }
        Move(history, Undo);
        Move(history, Undo);
        Add(history, Change("4", "a", "b"));
        QCOMPARE(Keys(history), "1 4 "s);
    }

    void emptyChange_isIgnored()
    {
        History history;
        Add(history, Change("1", "a", "b"));
        Move(history, Undo);
        Add(history, Change("2", "a", "a"));
        Add(history, Change("3", "", ""));
        QVERIFY(history.Next(Undo) == nullptr);
        QCOMPARE(history.Next(Redo)->change.key, "1"s);
    }

    void drop_removesTheNextStepOnly()
    {
        History history;
        for (const char* key : {"1", "2", "3", "4"}) {
            Add(history, Change(key, "a", "b"));
        }
        Move(history, Undo);
        Move(history, Undo);
        history.Drop(Undo);
        QCOMPARE(history.Next(Undo)->change.key, "1"s);
        QCOMPARE(history.Next(Redo)->change.key, "3"s);
        history.Drop(Redo);
        QCOMPARE(history.Next(Undo)->change.key, "1"s);
        QCOMPARE(history.Next(Redo)->change.key, "4"s);
        QCOMPARE(Keys(history), "1 4 "s);
        history.Clear();
        QVERIFY(history.Next(Undo) == nullptr);
        QVERIFY(history.Next(Redo) == nullptr);
    }

    void changesOfAnImport_belongTogether()
    {
        History history;
        const auto count = [&](History::Direction direction) {
            return history.NextTogether(direction).size();
        };
        QCOMPARE(count(Undo), 0U);
        Add(history, Change("1", "a", "b"));
        const std::size_t first = history.StartImport();
        const std::size_t second = history.StartImport();
        for (const auto& [import, key] :
             {std::pair(first, "2"), std::pair(first, "3"), std::pair(second, "4")}) {
            history.Add({Kind::Trip, Change(key, "", "a"), import});
        }
        Add(history, Change("1", "b", "c"));
        QCOMPARE(count(Undo), 1U);
        Move(history, Undo);
        QVERIFY(history.Next(Undo)->Kind() == ChangeKind::Import);
        QCOMPARE(count(Undo), 1U);
        Move(history, Undo);
        QCOMPARE(count(Undo), 2U);
        QCOMPARE(history.NextTogether(Undo).front().change.key, "2"s);
        QCOMPARE(count(Redo), 1U);
        Move(history, Undo);
        QCOMPARE(count(Undo), 1U); // half of the import is undone
        QCOMPARE(count(Redo), 1U);
        Move(history, Undo);
        QCOMPARE(count(Redo), 2U);
        History dropped = history;
        dropped.Drop(Redo);
        QCOMPARE(Keys(dropped), "1 4 1 "s);
        Move(history, Redo);
        Move(history, Redo);
        history.Drop(Undo);
        QCOMPARE(Keys(history), "1 4 1 "s);
    }

    void move_withANewKey_updatesTheOtherStepsOfThatRecord()
    {
        History history;
        Add(history, Change("3", "a", ""));
        Add(history, Change("3", "", "b")); // reuses the key
        Add(history, Change("2", "a", "b"));
        Add(history, Change("3", "b", "c"));
        Add(history, Change("3", "c", ""));
        Add(history, Change("3", "", "d")); // again
        Move(history, Undo);
        RecordChange applied = history.Next(Undo)->Towards(Undo);
        applied.SetKey("7");
        history.Move(Undo, applied);
        QCOMPARE(Keys(history), "3 7 2 7 7 3 "s);
    }

    void setKeys_updatesTheExistingRecordsOfThatKind()
    {
        History history;
        Add(history, Change("4", "a", ""));
        Add(history, Change("4", "", "b"));
        Add(history, Change("4", "b", "c"), Kind::Location);
        Add(history, Change("5", "", "b"));
        Add(history, Change("4", "b", "c"));
        Add(history, Change("4", "c", ""));
        Add(history, Change("4", "", "d"));
        Move(history, Undo);
        Move(history, Undo);
        Move(history, Undo);
        history.SetKeys(Kind::Trip, {{"4", "5", Xml("5", "b")}, {"5", "6", Xml("6", "b")}});
        QCOMPARE(Keys(history), "4 5 4 6 5 5 4 "s);
    }

    // A record gets a key that another one had when it was changed.
    void setKeys_leavesStepsOfOtherRecordsAlone()
    {
        History history;
        Add(history, Change("2", "", "a"));
        Add(history, Change("2", "c", "b")); // another record, which has received this key later
        Add(history, Change("2", "a", ""));
        RecordChange applied = history.Next(Undo)->Towards(Undo);
        applied.SetKey("4");
        history.Move(Undo, applied);
        QCOMPARE(Keys(history), "4 2 4 "s);
    }
};

TEST_CLASS(tst_History)
#include "tst_History.moc"
