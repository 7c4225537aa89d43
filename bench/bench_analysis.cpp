// Preparing trips for queries, filtering by queries, and completing them.

#include "LogFolder.h"
#include "analysis/CalendarDay.h"
#include "analysis/Query.h"
#include "analysis/QueryCompletion.h"
#include "analysis/Similarity.h"

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <iterator>
#include <string>
#include <vector>

using namespace Tarno;

namespace
{

/// A log of state.range(0) trips.
class LoadedLog
{
public:
    explicit LoadedLog(const benchmark::State& state)
    {
        const LogFolder folder(static_cast<int>(state.range(0)));
        trips = RecordsOf(m_trips, folder.Path() + "/tarno.xml");
        places = PlaceNames(RecordsOf(m_places, folder.Path() + "/location.xml"));
    }

    std::vector<SearchedTrip> Searched() const
    {
        std::vector<SearchedTrip> searched;
        searched.reserve(trips.size());
        for (const RecordView& trip : trips) {
            searched.emplace_back(trip, places);
        }
        return searched;
    }

private:
    static RecordList RecordsOf(pugi::xml_document& document, const std::string& path)
    {
        document.load_file(path.c_str());
        RecordList records;
        for (const pugi::xml_node& record : document.first_child().children()) {
            records.emplace_back(record);
        }
        return records;
    }

    pugi::xml_document m_trips;
    pugi::xml_document m_places;

public:
    RecordList trips;
    PlaceNames places;
};

void Prepare(benchmark::State& state)
{
    const LoadedLog log(state);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(log.Searched());
    }
}

/// Only copies the finished texts.
void PrepareLimit(benchmark::State& state)
{
    const std::vector<SearchedTrip> trips = LoadedLog(state).Searched();
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(std::vector<SearchedTrip>(trips));
    }
}

/// Parses the query and matches every trip, as after each key.
void Filter(benchmark::State& state, const std::string& text)
{
    const std::vector<SearchedTrip> trips = LoadedLog(state).Searched();
    std::size_t found = 0;
    for ([[maybe_unused]] auto _ : state) {
        found = 0;
        const Query query(text);
        for (const SearchedTrip& trip : trips) {
            found += query.Matches(trip) ? 1 : 0;
        }
        benchmark::DoNotOptimize(found);
    }
    state.counters["found"] = static_cast<double>(found);
}

/// Only looks for a byte that does not occur, in the same texts.
void FilterLimit(benchmark::State& state)
{
    const std::vector<SearchedTrip> trips = LoadedLog(state).Searched();
    for ([[maybe_unused]] auto _ : state) {
        for (const SearchedTrip& trip : trips) {
            benchmark::DoNotOptimize(std::memchr(trip.All().data(), '\x01', trip.All().size()));
        }
    }
}

/// Completes a value. The first completion of a field collects its values from the trips.
void Complete(benchmark::State& state, const std::string& text)
{
    const LoadedLog log(state);
    const QueryCompletion completion([&] { return log.trips; }, log.places);
    completion.At(text, text.size());
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(completion.At(text, text.size()));
    }
}

void CompleteFirst(benchmark::State& state)
{
    const LoadedLog log(state);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(QueryCompletion([&] { return log.trips; }, log.places).At("caught:", 7));
    }
}

/// Calculates the six weeks that the calendar shows of a month.
void CalendarMonth(benchmark::State& state)
{
    const LocationTexts place{"-33.59", "151.32", "10", "1"};
    constexpr int days = 42;
    const std::chrono::sys_days first(std::chrono::year(2026) / 11 / 1);
    for ([[maybe_unused]] auto _ : state) {
        for (int day = 0; day < days; ++day) {
            benchmark::DoNotOptimize(DayAt(place, first + std::chrono::days(day)));
        }
    }
}

/// Ranks the trips on days like one.
void Similar(benchmark::State& state)
{
    const LoadedLog log(state);
    std::vector<Conditions> trips;
    std::transform(log.trips.begin(), log.trips.end(), std::back_inserter(trips), ConditionsOf);
    const Conditions wanted{
        .date = std::chrono::year(2026) / 11 / 22, .moonAge = 0.4, .rating = 1, .place = "1"};
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(RankSimilar(wanted, trips, {}, 10));
    }
}

void Thousands(benchmark::internal::Benchmark* bench)
{
    bench->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
}

struct NamedQuery {
    const char* name;
    const char* text;
};

constexpr std::array queries{
    NamedQuery{"plain word", "flathead"},
    NamedQuery{"plain word, absent", "snorkel"},
    NamedQuery{"single letter, frequent", "e"},
    NamedQuery{"phrase", "\"weed beds\""},
    NamedQuery{"excluded word", "-kingfish"},
    NamedQuery{"accented word", "K\xC3\xB6"
                                "der"},
    NamedQuery{"field", "caught:bream"},
    NamedQuery{"code", "wind:ne"},
    NamedQuery{"comparison of numbers", "air:>=12.5"},
    NamedQuery{"comparison of words", "action:>=good"},
    NamedQuery{"comparison of dates", "date:2024-05..2031"},
    NamedQuery{"four terms", "snapper -caught:flathead wind:n|ne date:>1950"},
};

const bool isRegistered = [] {
    benchmark::RegisterBenchmark("prepare for queries", Prepare)->Apply(Thousands);
    benchmark::RegisterBenchmark("prepare for queries, limit", PrepareLimit)->Apply(Thousands);
    for (const NamedQuery& query : queries) {
        const std::string name = std::string("query: ") + query.name;
        benchmark::RegisterBenchmark(name.c_str(), Filter, query.text)->Apply(Thousands);
        benchmark::RegisterBenchmark((name + ", limit").c_str(), FilterLimit)->Apply(Thousands);
    }
    benchmark::RegisterBenchmark("completion of a field name", Complete, "cau")
        ->Apply(Thousands)
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("completion of a value, first", CompleteFirst)->Apply(Thousands);
    benchmark::RegisterBenchmark("completion of a value", Complete, "caught:fl")
        ->Apply(Thousands)
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("month of the calendar", CalendarMonth)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("similar days", Similar)->Apply(Thousands);
    return true;
}();

} // namespace

BENCHMARK_MAIN();
