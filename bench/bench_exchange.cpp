// Tables of trips: writing and reading them, planning an import, and carrying it out.

#include "LogFolder.h"
#include "core/FileOperations.h"
#include "exchange/TripTable.h"
#include "store/cSQL.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

using namespace Tarno;

namespace
{

/// A log of generated trips.
class LoadedLog
{
public:
    LoadedLog(benchmark::State& state, int trips, int locations)
        : m_log(trips, locations), m_folder(m_log.Path())
    {
        if (sql.Init() != succeeded) {
            state.SkipWithError("the log could not be loaded");
        }
    }

    RecordList Trips() const
    {
        RecordList trips;
        sql.EntryList(trips);
        return trips;
    }

    RecordList Locations() const
    {
        RecordList locations;
        sql.LocationList(locations);
        return locations;
    }

    RecordList Fields() const
    {
        RecordList fields;
        sql.FieldList(fields);
        return fields;
    }

    CsvRows Rows() const { return TripRows(Trips(), Locations()); }

    ImportPlan Plan(const CsvRows& rows) const
    {
        const ColumnMapping mapping = ProposeMapping(rows.front(), Fields());
        return PlanImport(ReadTrips(rows, mapping, {}), Trips(), Locations());
    }

private:
    LogFolder m_log;
    ProgramFolder m_folder;
    std::unique_ptr<FileOperations> m_operations = SystemFileOperations();

public:
    cSQL sql{m_folder, *m_operations};
};

constexpr int manyLocations = 50;

CsvRows RowsOf(benchmark::State& state)
{
    return LoadedLog(state, static_cast<int>(state.range(0)), manyLocations).Rows();
}

void Export(benchmark::State& state)
{
    const LoadedLog log(state, static_cast<int>(state.range(0)), manyLocations);
    std::size_t size = 0;
    for ([[maybe_unused]] auto _ : state) {
        const std::string file = WriteCsv(log.Rows());
        size = file.size();
        benchmark::DoNotOptimize(file.data());
    }
    state.counters["megabytes"] = static_cast<double>(size) / 1e6;
}

void Read(benchmark::State& state)
{
    const std::string file = WriteCsv(RowsOf(state));
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(ReadCsv(file));
    }
}

void PlanIntoEmptyLog(benchmark::State& state)
{
    const CsvRows rows = RowsOf(state);
    const LoadedLog log(state, 0, 0);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(log.Plan(rows));
    }
}

void PlanIntoSameLog(benchmark::State& state)
{
    const LoadedLog log(state, static_cast<int>(state.range(0)), manyLocations);
    const CsvRows rows = log.Rows();
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(log.Plan(rows));
    }
}

/// Imports into an empty log and undoes the import. Measures one of them.
void ImportAndUndo(benchmark::State& state, bool measuresUndo)
{
    const CsvRows rows = RowsOf(state);
    LoadedLog log(state, 0, 0);
    const ImportPlan plan = log.Plan(rows);
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        ImportBatch batch = plan.batch;
        if (measuresUndo) {
            benchmark::DoNotOptimize(log.sql.Import(batch));
        }
        state.ResumeTiming();
        if (measuresUndo) {
            benchmark::DoNotOptimize(log.sql.Undo());
        } else {
            benchmark::DoNotOptimize(log.sql.Import(batch));
        }
        state.PauseTiming();
        if (!measuresUndo) {
            benchmark::DoNotOptimize(log.sql.Undo());
        }
        state.ResumeTiming();
    }
}

void Import(benchmark::State& state)
{
    ImportAndUndo(state, false);
}

void Undo(benchmark::State& state)
{
    ImportAndUndo(state, true);
}

void Thousands(benchmark::internal::Benchmark* bench)
{
    bench->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(Export)->Name("trips to CSV")->Apply(Thousands)->Arg(100000);
BENCHMARK(Read)->Name("CSV to rows")->Apply(Thousands)->Arg(100000);
BENCHMARK(PlanIntoEmptyLog)->Name("rows to plan, all new")->Apply(Thousands)->Arg(100000);
BENCHMARK(PlanIntoSameLog)->Name("rows to plan, none new")->Apply(Thousands)->Arg(100000);
BENCHMARK(Import)->Name("import")->Apply(Thousands);
BENCHMARK(Undo)->Name("undo of the import")->Apply(Thousands);

} // namespace

BENCHMARK_MAIN();
