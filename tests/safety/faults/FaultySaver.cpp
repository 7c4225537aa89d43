// Saves a log as the program does and tells what it was told; the library of faults is loaded before it.
//   FaultySaver FOLDER SAVES    changes the first entry's value to "new 1", "new 2" ...
//   FaultySaver FOLDER log      appends "words" to Tarno.log instead and prints the number of the error
// Faults begin when the log has been loaded. Every save prints a line: 0 or 1 for what was returned, the
// numbers of the errors that were reported, and what of the log counts as unsaved; the last line says how
// many calls failed.

#include "core/ErrorLog.h"
#include "core/ProgramFolder.h"
#include "store/cSQL.h"
#include "support/RaisedNumber.h"

#include <cstdlib>
#include <dlfcn.h>
#include <iostream>

int main(int count, char* arguments[])
{
    if (count != 3) {
        return 2;
    }
    const ProgramFolder folder(arguments[1]);
    const auto operations = SystemFileOperations();
    std::string reported;
    ErrorReporter::Instance().SetShowMessage([&](const std::string& text, const std::string& /*title*/) {
        const std::size_t number = text.find("Vb<");
        reported += number == std::string::npos
                        ? " words"
                        : ' ' + text.substr(number + 3, text.find('>', number) - number - 3);
    });
    cSQL sql(folder, *operations);
    if (sql.Init() != succeeded) {
        return 2;
    }
    const auto begin = reinterpret_cast<void (*)()>(::dlsym(RTLD_DEFAULT, "FaultyDiskBegin"));
    const auto failures = reinterpret_cast<int (*)()>(::dlsym(RTLD_DEFAULT, "FaultyDiskFailures"));
    if (begin == nullptr || failures == nullptr) {
        return 2;
    }
    begin();
    if (arguments[2] == std::string_view("log")) {
        std::cout << RaisedNumber([&] { operations->Append(folder.Existing("Tarno.log"), "words"); }) << '\n';
    }
    const int saves = std::atoi(arguments[2]);
    for (int save = 1; save <= saves; ++save) {
        reported.clear();
        Record record;
        if (sql.EntryGet(1, record) != succeeded) {
            return 2;
        }
        record.SetText(1, "new " + std::to_string(save));
        std::cout << sql.EntryUpdate(record) << reported;
        for (const std::string& file : sql.UnsavedFiles()) {
            std::cout << ' ' << file;
        }
        std::cout << '\n';
    }
    std::cout << failures() << '\n';
}
