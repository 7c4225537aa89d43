// What the log report costs, step by step: its table filled from the entries, sorted, and laid out; beside
// the filling, copying the same texts.

#include "core/Conversions.h"
#include "core/SettingsStore.h"
#include "reports/arLogList.h"
#include "reports/engine/LayOut.h"
#include "store/RecordLayouts.h"
#include "ui/common/DesktopPrinters.h"
#include "ui/common/DesktopPrompts.h"
#include "ui/common/SystemClock.h"

#include <QApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <fstream>
#include <string>
#include <utility>

namespace
{

struct Column {
    std::size_t position;
    const char* name;
    int width; ///< millimetres; wide ones wrap
};

constexpr std::array columns{
    Column{EntryField::StartDate, "StartDate", 18},   Column{EntryField::LocNo, "LocNo", 33},
    Column{EntryField::TideStart, "TideStart", 17},   Column{EntryField::MoonPhase, "MoonPhase", 20},
    Column{EntryField::Prediction, "Prediction", 12}, Column{EntryField::Weather, "Weather", 20},
    Column{EntryField::BaitUsed, "BaitUsed", 50},     Column{EntryField::FishCaught, "FishCaught", 50}};

constexpr int locations = 50;

std::string Value(std::size_t position, int number)
{
    switch (position) {
    case EntryField::StartDate: { // in no order
        const int day = static_cast<int>(number * 7919LL % 36500);
        return FromDate(std::chrono::year(1920 + day / 365) / (day % 12 + 1) / (day % 28 + 1));
    }
    case EntryField::LocNo:
        return std::to_string(number % locations + 1);
    case EntryField::TideStart:
    case EntryField::Prediction:
    case EntryField::Weather:
        return std::to_string(number % 4);
    case EntryField::MoonPhase:
        return std::to_string(number % 199 - 99);
    case EntryField::BaitUsed:
        return "Pilchard, whole, on ganged 4/0s~CL~Squid jig, size " + std::to_string(number % 5);
    case EntryField::FishCaught:
        return "Flathead 41 and " + std::to_string(number % 90) + " cm (kept), 4 undersize~CL~Squid x 3";
    default:
        return "some text";
    }
}

/// A program with `entries` trips, their table filled.
class ProgramWithLog
{
public:
    explicit ProgramWithLog(int entries) : m_folder(m_data.path().toStdString())
    {
        WriteEntries(entries);
        WriteLocations();
        WriteFields();
        sql.Init();
        sql.FieldList(fields);
        Fill();
    }

    Status Fill()
    {
        std::string names;
        std::string keys;
        for (const Column& column : columns) {
            names.append(names.empty() ? "" : ",").append(column.name);
            keys.append(keys.empty() ? "" : ",").append(std::to_string(column.position));
        }
        return sql.ReportLogData(names, keys, 0);
    }

private:
    std::ofstream File(const char* name) const
    {
        return std::ofstream(m_data.filePath(QLatin1String(name)).toStdString(), std::ios::binary);
    }

    void WriteEntries(int entries) const
    {
        std::ofstream file = File("tarno.xml");
        file << "<data>\n";
        for (int number = 1; number <= entries; ++number) {
            file << "<tarno><TarnoNo>" << number << "</TarnoNo>";
            for (std::size_t position = 1; position < EntryField::Count; ++position) {
                file << "<Child>" << Value(position, number) << "</Child>";
            }
            file << "</tarno>\n";
        }
        file << "</data>\n";
    }

    void WriteLocations() const
    {
        std::ofstream file = File("location.xml");
        file << "<data>\n";
        for (int number = 1; number <= locations; ++number) {
            file << "<location><LocNo>" << number << "</LocNo><LocName>Reef number " << number
                 << "</LocName></location>\n";
        }
        file << "</data>\n";
    }

    void WriteFields() const
    {
        std::ofstream file = File("field.xml");
        file << "<data>\n";
        for (const Column& column : columns) {
            file << "<field><FieldNo>" << column.position << "</FieldNo><FieldName>" << column.name
                 << "</FieldName><Desc/><Label>" << column.name << "</Label><Width>" << column.width
                 << "</Width><Font>8</Font><Grow>" << (column.width > 40 ? 1 : 0)
                 << "</Grow><DefaultFlag>1</DefaultFlag></field>\n";
        }
        file << "</data>\n";
    }

    QTemporaryDir m_data;
    ProgramFolder m_folder;
    std::unique_ptr<FileOperations> m_operations = SystemFileOperations();
    std::unique_ptr<SettingsStore> m_store = SystemSettingsStore(*m_operations);
    cDescs m_descs;
    CRegSettings m_settings{*m_store};
    SystemClock m_clock;
    DesktopMessageBoxes m_messages;
    DesktopFileDialogs m_files;
    DesktopProgramStarter m_programs;
    DesktopPrinters m_printers;

public:
    cSQL sql{m_folder, *m_operations};
    RecordList fields;
    const Program program{m_folder,   sql,     m_descs,    m_settings, m_clock,
                          m_messages, m_files, m_programs, m_printers, *m_operations};
};

void FillGrid(benchmark::State& state)
{
    ProgramWithLog log(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        if (log.Fill() != succeeded) {
            state.SkipWithError("the table was not filled");
        }
    }
    state.counters["rows"] = static_cast<double>(log.sql.ReportGrid().size());
}

void FillGridLimit(benchmark::State& state)
{
    ProgramWithLog log(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        const ReportTable copy = log.sql.ReportGrid();
        benchmark::DoNotOptimize(copy.data());
    }
}

void SortGrid(benchmark::State& state)
{
    ProgramWithLog log(static_cast<int>(state.range(0)));
    const ReportTable& grid = log.sql.ReportGrid();
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        ReportTable unsorted = grid;
        state.ResumeTiming();
        mMain::ShellSort(unsorted, {.column = 0});
        state.PauseTiming();
        unsorted.clear();
        state.ResumeTiming();
    }
}

void LayOutGrid(benchmark::State& state)
{
    ProgramWithLog log(static_cast<int>(state.range(0)));
    arLogList report(log.program, log.fields, log.sql.ReportGrid());
    for ([[maybe_unused]] auto _ : state) {
        const auto document = LayOut(report);
        state.counters["pages"] = static_cast<double>(document->pages.size());
    }
}

void Thousands(benchmark::internal::Benchmark* bench)
{
    bench->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(FillGrid)->Name("ReportLogData, 8 columns")->Apply(Thousands);
BENCHMARK(FillGridLimit)->Name("ReportLogData, limit")->Apply(Thousands);
BENCHMARK(SortGrid)->Name("ShellSort of its table")->Apply(Thousands);
BENCHMARK(LayOutGrid)->Name("arLogList laid out")->Apply(Thousands);

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
