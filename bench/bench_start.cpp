// The time and memory from the start of the process to its first painted window.

#include "LogFolder.h"

#include <benchmark/benchmark.h>

#include <array>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>

using namespace Tarno;

namespace
{

/// Runs `program`, from the folder of this one, with one argument until it exits. Returns its peak memory
/// usage in megabytes.
double Run(const char* program, std::string argument, benchmark::State& state)
{
    std::string path = std::string(TARNO_BENCH_PROGRAMS) + '/' + program;
    pid_t child = 0;
    const std::array<char*, 3> arguments{path.data(), argument.data(), nullptr};
    int status = 0;
    rusage usage{};
    if (posix_spawn(&child, path.c_str(), nullptr, nullptr, arguments.data(), environ) != 0 ||
        wait4(child, &status, 0, &usage) != child || status != 0) {
        state.SkipWithError("the program did not start");
    }
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

void StartTarno(benchmark::State& state)
{
    const LogFolder log(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        state.counters["megabytes"] = Run("start_tarno", log.Path(), state);
    }
}

/// A window with the same controls but without data.
void StartBareWindow(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        state.counters["megabytes"] = Run("start_bare", "", state);
    }
}

void StartEmptyWindow(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        state.counters["megabytes"] = Run("start_empty", "", state);
    }
}

void Sizes(benchmark::internal::Benchmark* bench)
{
    bench->Arg(0)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();
}

BENCHMARK(StartTarno)->Name("start to first window")->Apply(Sizes);
BENCHMARK(StartBareWindow)->Name("start to first window, limit")->Apply(Sizes);
BENCHMARK(StartEmptyWindow)->Name("start to an empty window")->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
