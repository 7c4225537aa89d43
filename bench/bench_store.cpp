// Loading a log, saving it after one change, and accessing single records.

#include "LogFolder.h"
#include "core/FileOperations.h"
#include "core/Xml.h"
#include "store/cSQL.h"

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <memory>
#include <string>
#include <unordered_map>

#ifdef __GLIBC__
#include <malloc.h>
#endif

using namespace Tarno;

namespace
{

/// A loaded log of state.range(0) trips.
class LoadedLog
{
public:
    explicit LoadedLog(benchmark::State& state, int locations = 50)
        : m_log(static_cast<int>(state.range(0)), locations), m_folder(m_log.Path())
    {
        if (sql.Init() != succeeded || sql.EntryGet(middleKey, entry) != succeeded) {
            state.SkipWithError("the log could not be loaded");
        }
    }

    static constexpr std::int16_t middleKey = 500;

    std::string Bytes() const { return ReadWholeFile(m_log.Path() + "/tarno.xml"); }

private:
    LogFolder m_log;
    ProgramFolder m_folder;
    std::unique_ptr<FileOperations> m_operations = SystemFileOperations();

public:
    cSQL sql{m_folder, *m_operations};
    Record entry;
};

/// Returns freed memory to the system, so that each round allocates its memory like a program that has just
/// started.
void StartWithFreshMemory(benchmark::State& state)
{
    state.PauseTiming();
#ifdef __GLIBC__
    malloc_trim(0);
#endif
    state.ResumeTiming();
}

void Load(benchmark::State& state)
{
    const LogFolder log(static_cast<int>(state.range(0)));
    const ProgramFolder folder(log.Path());
    const auto operations = SystemFileOperations();
    for ([[maybe_unused]] auto _ : state) {
        StartWithFreshMemory(state);
        cSQL sql(folder, *operations);
        benchmark::DoNotOptimize(sql.Init());
    }
}

/// Only parses the same bytes.
void LoadLimit(benchmark::State& state)
{
    const LogFolder log(static_cast<int>(state.range(0)));
    const std::string bytes = ReadWholeFile(log.Path() + "/tarno.xml");
    for ([[maybe_unused]] auto _ : state) {
        StartWithFreshMemory(state);
        pugi::xml_document document;
        benchmark::DoNotOptimize(document.load_buffer(bytes.data(), bytes.size()));
    }
    state.counters["megabytes"] = static_cast<double>(bytes.size()) / 1e6;
}

void Save(benchmark::State& state)
{
    LoadedLog log(state);
    int change = 0;
    for ([[maybe_unused]] auto _ : state) {
        log.entry.SetText(EntryField::AirTemp, std::to_string(++change));
        benchmark::DoNotOptimize(log.sql.EntryUpdate(log.entry));
    }
}

/// Only serialises, writes and flushes the same bytes.
void SaveLimit(benchmark::State& state)
{
    const LoadedLog log(state);
    const auto operations = SystemFileOperations();
    const std::string path = FromPath(std::filesystem::temp_directory_path() / "tarno-bench.xml");
    pugi::xml_document document;
    document.load_string(log.Bytes().c_str(), pugi::parse_default);
    const std::size_t size = log.Bytes().size();
    for ([[maybe_unused]] auto _ : state) {
        const std::string bytes = SerializeXml(document, size);
        operations->Create(path, bytes, path);
        state.PauseTiming();
        operations->Remove(path);
        state.ResumeTiming();
    }
}

void GetEntry(benchmark::State& state)
{
    LoadedLog log(state);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(log.sql.EntryGet(LoadedLog::middleKey, log.entry));
    }
}

void NameOfLocation(benchmark::State& state)
{
    const LoadedLog log(state, static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(log.sql.LocationNameGet("500"));
    }
}

void UpdateEntryInMemory(benchmark::State& state)
{
    LoadedLog log(state);
    const LogFolder folder(static_cast<int>(state.range(0)));
    const auto operations = SystemFileOperations();
    DataFile file("tarno.xml", {"tarno", "TarnoNo"});
    file.Load(ProgramFolder(folder.Path()), *operations);
    for ([[maybe_unused]] auto _ : state) {
        file.Records().Replace(log.entry);
    }
}

/// A lookup by key in a container of the standard library.
void HashLookUp(benchmark::State& state)
{
    std::unordered_map<std::string, int> numbers;
    for (int number = 0; number < state.range(0); ++number) {
        numbers.emplace(std::to_string(number), number);
    }
    const std::string key = "500";
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(numbers.find(key));
    }
}

void Thousands(benchmark::internal::Benchmark* bench)
{
    bench->Arg(1000)->Arg(10000)->Arg(100000);
}

BENCHMARK(Load)->Name("load the log")->Apply(Thousands)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadLimit)->Name("load the log, limit")->Apply(Thousands)->Unit(benchmark::kMillisecond);
BENCHMARK(Save)->Name("save one change")->Apply(Thousands)->Unit(benchmark::kMillisecond);
BENCHMARK(SaveLimit)->Name("save one change, limit")->Apply(Thousands)->Unit(benchmark::kMillisecond);
BENCHMARK(GetEntry)->Name("EntryGet")->Apply(Thousands)->Unit(benchmark::kMicrosecond);
BENCHMARK(HashLookUp)->Name("EntryGet, limit")->Apply(Thousands)->Unit(benchmark::kMicrosecond);
BENCHMARK(NameOfLocation)->Name("LocationNameGet")->Apply(Thousands)->Unit(benchmark::kMicrosecond);
BENCHMARK(HashLookUp)->Name("LocationNameGet, limit")->Apply(Thousands)->Unit(benchmark::kMicrosecond);
BENCHMARK(UpdateEntryInMemory)
    ->Name("EntryUpdate in memory")
    ->Apply(Thousands)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(HashLookUp)->Name("EntryUpdate in memory, limit")->Apply(Thousands)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
