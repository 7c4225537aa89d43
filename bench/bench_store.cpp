// Loading a log of many trips, and saving it after one change.

#include "core/FileOperations.h"
#include "core/Paths.h"
#include "store/cSQL.h"

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <filesystem>
#include <fstream>
#include <string>

#ifdef _WIN32
#include <process.h>
#define getpid _getpid
#else
#include <unistd.h>
#endif

namespace
{

namespace fs = std::filesystem;

/// A data folder with `entries` trips; it is gone when the object is.
class LogFolder
{
public:
    explicit LogFolder(int entries)
        : m_path(fs::temp_directory_path() / ("tarno-bench-" + std::to_string(getpid())))
    {
        fs::create_directories(m_path);
        std::ofstream file(m_path / "tarno.xml", std::ios::binary);
        file << "<data>\n";
        for (int number = 1; number <= entries; ++number) {
            file << "\t<tarno>\n\t\t<TarnoNo>" << number << "</TarnoNo>\n";
            for (int child = 1; child <= 36; ++child) {
                file << "\t\t<Child" << child << ">some text</Child" << child << ">\n";
            }
            file << "\t</tarno>\n";
        }
        file << "</data>\n";
    }

    LogFolder(const LogFolder&) = delete;
    LogFolder& operator=(const LogFolder&) = delete;

    ~LogFolder() { fs::remove_all(m_path); }

    std::string Path() const { return FromPath(m_path); }

private:
    fs::path m_path;
};

void Load(benchmark::State& state)
{
    const LogFolder log(static_cast<int>(state.range(0)));
    const ProgramFolder folder(log.Path());
    const auto operations = SystemFileOperations();
    for ([[maybe_unused]] auto _ : state) {
        cSQL sql(folder, *operations);
        benchmark::DoNotOptimize(sql.Init());
    }
}

/// The parser alone on the same bytes.
void Parse(benchmark::State& state)
{
    const LogFolder log(static_cast<int>(state.range(0)));
    const std::string bytes = ReadWholeFile(log.Path() + "/tarno.xml");
    for ([[maybe_unused]] auto _ : state) {
        pugi::xml_document document;
        benchmark::DoNotOptimize(document.load_buffer(bytes.data(), bytes.size()));
    }
}

void SaveOneChange(benchmark::State& state)
{
    const LogFolder log(static_cast<int>(state.range(0)));
    const ProgramFolder folder(log.Path());
    const auto operations = SystemFileOperations();
    cSQL sql(folder, *operations);
    Record entry;
    if (sql.Init() != succeeded || sql.EntryGet(1, entry) != succeeded) {
        state.SkipWithError("the log could not be loaded");
        return;
    }
    for ([[maybe_unused]] auto _ : state) {
        entry.SetText(1, "another text");
        benchmark::DoNotOptimize(sql.EntryUpdate(entry));
    }
}

void GetOneEntry(benchmark::State& state)
{
    const LogFolder log(static_cast<int>(state.range(0)));
    const ProgramFolder folder(log.Path());
    const auto operations = SystemFileOperations();
    cSQL sql(folder, *operations);
    Record entry;
    sql.Init();
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(sql.EntryGet(static_cast<std::int16_t>(state.range(0) / 2), entry));
    }
}

BENCHMARK(Load)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(Parse)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(SaveOneChange)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(GetOneEntry)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
