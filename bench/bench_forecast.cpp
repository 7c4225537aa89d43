// The cost of a forecast, compared with the sines that the method requires.

#include "astro/Forecast.h"

#include <benchmark/benchmark.h>

#include <cmath>

using namespace Tarno;

using std::chrono::days;
using std::chrono::sys_days;
using namespace std::chrono_literals;

namespace
{

const LocationTexts sydney{"-33.8", "151.25", "10", "1"};

void OneDay(benchmark::State& state)
{
    sys_days day = 2003y / 1 / 1;
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(Forecast(sydney, day));
        day += days(1);
    }
}

void OneYear(benchmark::State& state)
{
    const sys_days newYear = 2003y / 1 / 1;
    for ([[maybe_unused]] auto _ : state) {
        for (int day = 0; day < 365; ++day) {
            benchmark::DoNotOptimize(Forecast(sydney, newYear + days(day)));
        }
    }
}

/// Only the sines and cosines of one day: 25 samples of the sun and three times 25 of the moon.
void SinesOfOneDay(benchmark::State& state)
{
    constexpr int samples = 25;
    constexpr int sinesForSun = 9;   // 2 in the series, 4 to convert to equatorial, 3 for the altitude
    constexpr int sinesForMoon = 29; // 22 in the series, then the same
    for ([[maybe_unused]] auto _ : state) {
        double angle = 0;
        for (int sine = 0; sine < samples * (sinesForSun + 3 * sinesForMoon); ++sine) {
            benchmark::DoNotOptimize(std::sin(angle));
            angle = angle < 6 ? angle + 0.0123 : 0;
        }
    }
}

BENCHMARK(OneDay)->Name("forecast of a day")->Unit(benchmark::kMicrosecond);
BENCHMARK(OneYear)->Name("forecast of a year")->Unit(benchmark::kMillisecond);
BENCHMARK(SinesOfOneDay)->Name("forecast of a day, limit")->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
