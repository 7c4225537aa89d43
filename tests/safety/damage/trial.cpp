// trial readable|unreadable FOLDER FILE
//
// Runs the operations that need FILE on the data files in FOLDER. The first argument says whether FILE can be
// read. Prints the peak memory in megabytes, a blank, and a description of violated guarantees.

#include "EveryOperation.h"
#include "support/PeakMemory.h"

#include <iostream>
#include <string_view>

using namespace Tarno;

int main(int argc, char* argv[])
{
    if (argc != 4) {
        return 2;
    }
    OperationTrial trial;
    const bool isReadable = std::string_view(argv[1]) == "readable";
    const std::string broken = isReadable ? trial.RunOnReadable(argv[2], argv[3], false)
                                          : trial.RunOnUnreadable(argv[2], argv[3], false);
    std::cout << PeakMegabytes() << " " << broken;
    return 0;
}
