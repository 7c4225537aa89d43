// writer FOLDER NOTES TASK NAME COUNT  loads the log in FOLDER and says "ready"; then makes COUNT changes,
// one for each line "one" that it reads, all that are left for a line "all", and says "done" each time.
//
// TASK  add     entries with the values NAME-1, NAME-2 and so on
//       restart the same, but the log is loaded anew before each
//       edit    the entry 1 gets those values
//       delete  the entries COUNT+1 down to 2
//
// What it was told is written into the file NOTES, a line each: "saved NAME-1", "failed NAME-1"; "told" and
// the words when it would have told the user something.

#include "core/ErrorLog.h"
#include "store/cSQL.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <string>

namespace
{

/// In one call of the system, so that a kill leaves a whole line or none.
void Note(const std::string& notes, std::string line)
{
    std::erase(line, '\r');
    std::replace(line.begin(), line.end(), '\n', '|');
    SystemFileOperations()->Append(notes, line + '\n');
}

void Say(const char* line)
{
    std::cout << line << std::endl; // at once
}

class Writer
{
public:
    Writer(const std::string& folder, std::string task, std::string name, int count)
        : m_folder(folder), m_task(std::move(task)), m_name(std::move(name)), m_count(count)
    {
        Load();
    }

    int Left() const { return m_count - m_done; }

    /// Makes the next change; returns the line for the notes.
    std::string Next()
    {
        ++m_done;
        const std::string value = m_name + '-' + std::to_string(m_done);
        if (m_task == "restart") {
            Load();
        }
        if (m_task == "delete") {
            const int key = m_count + 2 - m_done;
            return (m_sql->EntryDelete(static_cast<std::int16_t>(key)) == succeeded ? "deleted "
                                                                                    : "failed ") +
                   std::to_string(key);
        }
        Record entry;
        if (m_sql->EntryGet(m_task == "edit" ? 1 : 0, entry) != succeeded) {
            return "failed " + value;
        }
        entry.SetText(1, value);
        return (m_sql->EntryUpdate(entry) == succeeded ? "saved " : "failed ") + value;
    }

private:
    void Load()
    {
        m_sql = std::make_unique<cSQL>(m_folder, *m_operations);
        m_sql->Init();
    }

    ProgramFolder m_folder;
    std::unique_ptr<FileOperations> m_operations = SystemFileOperations();
    std::unique_ptr<cSQL> m_sql;
    std::string m_task;
    std::string m_name;
    int m_count;
    int m_done = 0;
};

} // namespace

int main(int count, char** words)
{
    if (count != 6) {
        return 2;
    }
    const std::string notes = words[2];
    ErrorReporter::Instance().SetShowMessage(
        [&](const std::string& text, const std::string& /*title*/) { Note(notes, "told " + text); });
    Writer writer(words[1], words[3], words[4], std::stoi(words[5]));
    Say("ready");
    for (std::string line; std::getline(std::cin, line);) {
        for (int changes = line == "all" ? writer.Left() : 1; changes > 0; --changes) {
            Note(notes, writer.Next());
        }
        Say("done");
    }
    return 0;
}
