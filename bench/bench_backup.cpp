// Backing up and restoring a log, and finding out whether it has changed since its last back-up.

#include "LogFolder.h"
#include "backup/BackUp.h"
#include "backup/Restore.h"
#include "core/Paths.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <string>

using namespace Tarno;

namespace
{

constexpr LocalTime noon{std::chrono::year(2026) / 11 / 22, std::chrono::hours(12)};

/// A log of state.range(0) trips, and its back-up.
class BackedUpLog
{
public:
    explicit BackedUpLog(const benchmark::State& state) : m_log(static_cast<int>(state.range(0))) { Make(); }

    void Make() const { BackUp(folder, *operations, Path(), {.time = noon, .program = {}}); }

    std::string Path() const { return m_log.Path() + "/backup.zip"; }

private:
    LogFolder m_log;

public:
    ProgramFolder folder{m_log.Path()};
    std::unique_ptr<FileOperations> operations = SystemFileOperations();
};

void MakeBackUp(benchmark::State& state)
{
    const BackedUpLog log(state);
    for ([[maybe_unused]] auto _ : state) {
        log.Make();
    }
    constexpr double megabyte = 1e6;
    state.counters["megabytes"] =
        static_cast<double>(std::filesystem::file_size(ToPath(log.Path()))) / megabyte;
}

void Compare(benchmark::State& state)
{
    const BackedUpLog log(state);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(DiffersFromBackUp(log.folder, *log.operations, log.Path()));
    }
}

void Open(benchmark::State& state)
{
    const BackedUpLog log(state);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(BackUpArchive(log.Path()).PictureCount());
    }
}

void Restore(benchmark::State& state)
{
    const BackedUpLog log(state);
    for ([[maybe_unused]] auto _ : state) {
        const RestoreResult result = RestoreBackUp(log.Path(), log.folder, *log.operations, noon, {});
        state.PauseTiming();
        std::filesystem::remove(ToPath(result.before));
        state.ResumeTiming();
    }
}

void Thousands(benchmark::internal::Benchmark* bench)
{
    bench->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(MakeBackUp)->Name("back-up")->Apply(Thousands);
BENCHMARK(Compare)->Name("log compared with its back-up")->Apply(Thousands);
BENCHMARK(Open)->Name("back-up opened")->Apply(Thousands);
BENCHMARK(Restore)->Name("restore, with the back-up of the present log")->Apply(Thousands);

} // namespace

BENCHMARK_MAIN();
