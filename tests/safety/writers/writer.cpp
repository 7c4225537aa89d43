// writer FOLDER TASK NUMBER KEY
//
// Loads the log in FOLDER and prints "ready". Then reads lines of two numbers: the number of changes to make,
// and the longest pause after each in microseconds. Prints "done" after the changes. TASK is one of
//   add      adds trips with the values NUMBER-1, NUMBER-2 and so on
//   restart  the same, but loads the log again before each
//   edit     sets the trip KEY to those values
//   delete   deletes the trips KEY+1, KEY+2 and so on
//   mixed    adds, edits and deletes at random
// Before each save it prints "change OLD>NEW" with the values of the trip, one of which may be empty; after
// it, "saved" or "failed". It prints "message" and the text of each message, and "kept" and the path of each
// kept file.

#include "core/ErrorLog.h"
#include "store/cSQL.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <iostream>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <unistd.h>

using namespace Tarno;

namespace
{

/// Prints a line with a single system call, so that a kill cannot truncate it.
void PrintLine(std::string line)
{
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    line += '\n';
    if (::write(STDOUT_FILENO, line.data(), static_cast<unsigned>(line.size())) < 0) {
        std::_Exit(1);
    }
}

class Writer
{
public:
    explicit Writer(char** words)
        : m_folder(words[1]), m_task(words[2]), m_number(words[3]), m_key(std::stoi(words[4]))
    {
        Load();
    }

    void MakeChanges(int count, int longestPause)
    {
        std::uniform_int_distribution pause(0, longestPause);
        for (; count > 0; --count) {
            MakeChange();
            std::this_thread::sleep_for(std::chrono::microseconds(pause(m_random)));
        }
    }

private:
    void Load()
    {
        m_sql = std::make_unique<cSQL>(m_folder, *m_operations);
        m_sql->SetShowConflict([](const ConflictNotice& conflict) { PrintLine("kept " + conflict.keptAs); });
        m_sql->Init();
    }

    void MakeChange()
    {
        const std::array<std::string, 3> tasks{"add", "edit", "delete"};
        const std::string task = m_task == "mixed" ? tasks.at(m_random() % tasks.size()) : m_task;
        if (task == "restart") {
            Load();
        }
        const bool isDeletion = task == "delete";
        const int key = isDeletion ? m_key + ++m_deletions : task == "edit" ? m_key : 0;
        const int change = ++m_changes;
        // values of different lengths, so that a mixture of two versions of the log is detected
        const std::string value =
            m_number + '-' + std::to_string(change) + std::string(change % 11 * 37, '.');
        Record trip;
        m_sql->EntryGet(static_cast<std::int16_t>(key), trip);
        PrintLine("change " + trip.Text(1) + '>' + (isDeletion ? "" : value));
        trip.SetText(1, value);
        const Status status =
            isDeletion ? m_sql->EntryDelete(static_cast<std::int16_t>(key)) : m_sql->EntryUpdate(trip);
        PrintLine(status == succeeded ? "saved" : "failed");
    }

    ProgramFolder m_folder;
    std::unique_ptr<FileOperations> m_operations = SystemFileOperations();
    std::unique_ptr<cSQL> m_sql;
    std::string m_task;
    std::string m_number;
    int m_key;
    int m_changes = 0;
    int m_deletions = 0;
    std::mt19937 m_random{static_cast<unsigned>(std::stoi(m_number))};
};

} // namespace

int main(int /*count*/, char** words)
{
    ErrorReporter::Instance().SetShowMessage([](const std::string& text, const std::string& /*title*/) {
        PrintLine("message " + text);
        ErrorReporter::Instance().AllowRepetition();
    });
    Writer writer(words);
    PrintLine("ready");
    for (int changes = 0, longestPause = 0; std::cin >> changes >> longestPause; PrintLine("done")) {
        writer.MakeChanges(changes, longestPause);
    }
    return 0;
}
