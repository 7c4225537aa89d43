#include "Require.h"
#include "core/Paths.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

using namespace Tarno;

namespace
{

int Replay(const char* folder)
{
    std::vector<std::string> inputs;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        inputs.push_back(FromPath(entry.path()));
    }
    std::sort(inputs.begin(), inputs.end());
    for (const std::string& input : inputs) {
        std::fprintf(stderr, "%s\n",
                     input.c_str()); // after a crash, the last line is the input that caused it
        const std::string bytes = ReadWholeFile(input);
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    return inputs.empty() ? EXIT_FAILURE : EXIT_SUCCESS;
}

} // namespace

/// Calls the fuzz function once for each file of a folder.
int main(int argc, char** argv)
{
    try {
        return argc == 2 ? Replay(argv[1]) : EXIT_FAILURE;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return EXIT_FAILURE;
    }
}
