// saver FOLDER KEY  loads the log in FOLDER and waits for a line; then saves the entry KEY, each time as the
//                   next version, until it is killed
// saver hold FILE   makes FILE as a save makes its temporary, and has it open until its input ends
//
// It writes down what it does, a line each: "loaded 7", "begin 8", "end 8"; "told" and the words when it
// would have told the user something.

#include "Version.h"
#include "core/ErrorLog.h"
#include "store/RecordLayouts.h"
#include "store/cSQL.h"

#include <algorithm>
#include <iostream>
#include <string>
#include <string_view>
#include <unistd.h>

namespace
{

/// In one call of the system, so that a kill leaves a whole line or none.
void Say(std::string line)
{
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    line += '\n';
    if (::write(STDOUT_FILENO, line.data(), line.size()) < 0) {
        std::_Exit(1);
    }
}

void AwaitLine()
{
    std::string line;
    std::getline(std::cin, line);
}

int Hold(const std::string& target)
{
    const auto operations = SystemFileOperations();
    const std::string name = "." + std::to_string(operations->ProcessNumber()) + "-9.tarno-tmp";
    const std::string path = target + name;
    const auto file = operations->Create(path, path);
    file->Write("half of a lo");
    Say("holding " + name);
    AwaitLine();
    return 0;
}

int Save(const std::string& folder, std::int16_t key)
{
    ErrorReporter::Instance().SetShowMessage(
        [](const std::string& text, const std::string& /*title*/) { Say("told " + text); });
    const ProgramFolder programFolder(folder);
    const auto operations = SystemFileOperations();
    cSQL sql(programFolder, *operations);
    Record entry;
    if (sql.Init() != succeeded || sql.EntryGet(key, entry) != succeeded) {
        return 1;
    }
    int number = VersionNumber(entry.Text(EntryField::FishCaught));
    Say("loaded " + std::to_string(number));
    AwaitLine();
    for (;;) {
        ++number;
        entry.SetText(EntryField::FishCaught, VersionText(number));
        Say("begin " + std::to_string(number));
        if (sql.EntryUpdate(entry) != succeeded) {
            return 1;
        }
        Say("end " + std::to_string(number));
    }
}

} // namespace

int main(int count, char** words)
{
    if (count != 3) {
        return 2;
    }
    const std::string first = words[1];
    return first == "hold" ? Hold(words[2]) : Save(first, static_cast<std::int16_t>(std::stoi(words[2])));
}
