// Preparing trips for queries, filtering by queries, completing them, and the statistics.

#include "LogFolder.h"
#include "analysis/CalendarDay.h"
#include "analysis/ForecastCheck.h"
#include "analysis/Query.h"
#include "analysis/QueryCompletion.h"
#include "analysis/Similarity.h"
#include "analysis/TripGroups.h"
#include "analysis/YearSummary.h"

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <fstream>
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

    /// Makes every line of the catch different, as in a log with sizes and numbers. `between` are the words
    /// before the number in the second line of each trip.
    void NumberCatches(const std::string& between)
    {
        int number = 0;
        for (const RecordView& trip : trips) {
            pugi::xml_node caught = trip.Node().first_child();
            for (std::size_t field = 0; field < EntryField::FishCaught; ++field) {
                caught = caught.next_sibling();
            }
            const std::string count = std::to_string(++number);
            std::string lines = "Flathead ";
            lines.append(count).append(" cm~CL~").append(between).append(count).append(" g");
            caught.text().set(lines.c_str());
        }
    }

    LogContext Context() const
    {
        LogContext context;
        context.places = places;
        context.species = PickList("Species.txt");
        context.baits = PickList("Bait.txt");
        context.methods = PickList("Methods.txt");
        return context;
    }

private:
    static LineItems PickList(const std::string& name)
    {
        std::ifstream file(TARNO_SHIPPED_DATA "/" + name);
        std::vector<std::string> items;
        for (std::string line; std::getline(file, line);) {
            items.push_back(line);
        }
        return LineItems(items);
    }

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

void Group(benchmark::State& state, Grouping grouping)
{
    const LoadedLog log(state);
    const LogContext context = log.Context();
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(GroupTrips(log.trips, grouping, context));
    }
}

void GroupDifferentLines(benchmark::State& state, const std::string& between)
{
    LoadedLog log(state);
    log.NumberCatches(between);
    const LogContext context = log.Context();
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(GroupTrips(log.trips, Grouping::Caught, context));
    }
}

void Check(benchmark::State& state)
{
    const LoadedLog log(state);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(CheckForecasts(log.trips));
    }
}

/// Rows of equal size need the most random numbers.
void Correlate(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0)) / 16;
    const std::vector<int> row(4, count);
    const std::vector<RankedRow> table{{0, row}, {1, row}, {2, row}, {3, row}};
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(KendallTauB(table));
    }
}

void Summarize(benchmark::State& state)
{
    const LoadedLog log(state);
    const LogContext context = log.Context();
    const int year = YearsOf(log.trips).front();
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(SummarizeYear(log.trips, year, context));
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
    for (const auto& [grouping, title] : Groupings()) {
        benchmark::RegisterBenchmark(("group by: " + std::string(title)).c_str(), Group, grouping)
            ->Arg(10000)
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::RegisterBenchmark("group by: Species caught, all lines different", GroupDifferentLines,
                                 "Breams x 3, ")
        ->Apply(Thousands);
    // the query of the group then contains each of these lines as a whole
    benchmark::RegisterBenchmark("group by: Species caught, half of them by number", GroupDifferentLines,
                                 "3 breams, ")
        ->Apply(Thousands);
    benchmark::RegisterBenchmark("forecast check, all four", Check)->Apply(Thousands);
    benchmark::RegisterBenchmark("rank correlation, 4 by 4", Correlate)->Apply(Thousands);
    benchmark::RegisterBenchmark("summary of a year", Summarize)->Apply(Thousands);
    return true;
}();

} // namespace

BENCHMARK_MAIN();
