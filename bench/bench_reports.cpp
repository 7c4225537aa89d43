// The cost of each step of the log report: filling the table, sorting, layout and writing.

#include "LoadedProgram.h"
#include "exchange/Csv.h"
#include "qt/Strings.h"
#include "reports/arLogList.h"
#include "reports/engine/LayOut.h"
#include "reports/engine/PdfWriter.h"
#include "reports/engine/ReportFonts.h"
#include "reports/engine/RtfWriter.h"
#include "store/EntryFields.h"
#include "store/RecordLayouts.h"

#include <QApplication>
#include <benchmark/benchmark.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

using namespace Tarno;

namespace
{

/// Eight columns that fill the page. The last two wrap.
constexpr std::array columns{EntryField::StartDate,  EntryField::StartTime, EntryField::LocNo,
                             EntryField::TideStart,  EntryField::MoonPhase, EntryField::Prediction,
                             EntryField::FishCaught, EntryField::BaitUsed};

/// A log with a filled report table.
class ReportedLog
{
public:
    explicit ReportedLog(const benchmark::State& state) : m_loaded(static_cast<int>(state.range(0)))
    {
        RecordList all;
        m_loaded.sql.FieldList(all);
        for (const auto position : columns) {
            fields.push_back(RecordAt(all, static_cast<std::int64_t>(position) - 1));
            const std::string separator = m_names.empty() ? "" : ",";
            m_names += separator + fields.back().Text(FieldField::FieldName);
            m_keys += separator + fields.back().Text(FieldField::FieldNo);
        }
        Fill();
    }

    Status Fill() { return m_loaded.sql.ReportLogData(m_names, m_keys, 0); }

    const ReportTable& Grid() { return m_loaded.sql.ReportGrid(); }

    arLogList Report() { return Report(Grid()); }

    arLogList Report(const ReportTable& table)
    {
        return {m_loaded.program.printers.DefaultPage(), fields, table};
    }

    RecordList fields;

private:
    LoadedProgram m_loaded;
    std::string m_names;
    std::string m_keys;
};

void FillGrid(benchmark::State& state)
{
    ReportedLog log(state);
    for ([[maybe_unused]] auto _ : state) {
        if (log.Fill() != succeeded) {
            state.SkipWithError("the table was not filled");
        }
    }
}

/// Copies the same texts.
void FillGridLimit(benchmark::State& state)
{
    ReportedLog log(state);
    for ([[maybe_unused]] auto _ : state) {
        const ReportTable copy = log.Grid();
        benchmark::DoNotOptimize(copy.data());
    }
}

void SortGrid(benchmark::State& state)
{
    ReportedLog log(state);
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        ReportTable unsorted = log.Grid();
        state.ResumeTiming();
        mMain::ShellSort(unsorted, {.column = 0});
        state.PauseTiming();
        unsorted.clear();
        state.ResumeTiming();
    }
}

void LayOutReport(benchmark::State& state)
{
    ReportedLog log(state);
    arLogList report = log.Report();
    for ([[maybe_unused]] auto _ : state) {
        const auto document = LayOut(report);
        state.counters["pages"] = static_cast<double>(document->pages.size());
    }
}

/// Measures the same texts with the font.
void LayOutReportLimit(benchmark::State& state)
{
    ReportedLog log(state);
    const QFontMetricsF metrics(TwipFont({QStringLiteral("Tahoma"), 8, false}));
    for ([[maybe_unused]] auto _ : state) {
        for (const ReportRow& row : log.Grid()) {
            for (const std::string& text : row) {
                benchmark::DoNotOptimize(metrics.horizontalAdvance(FromUtf8(text)));
            }
        }
    }
}

/// Writes a file into the folder TARNO_BENCH_FILES, if it is set, for compare-pdf.sh.
void Keep(const char* name, std::string_view bytes)
{
    if (const char* const folder = std::getenv("TARNO_BENCH_FILES")) {
        std::ofstream(std::filesystem::path(folder) / name, std::ios::binary) << bytes;
    }
}

template <typename Write>
void WriteReport(benchmark::State& state, arLogList report, const char* fileName, Write write)
{
    const auto document = LayOut(report);
    QByteArray bytes;
    for ([[maybe_unused]] auto _ : state) {
        bytes = write(*document);
    }
    state.counters["megabytes"] = static_cast<double>(bytes.size()) / 1e6;
    Keep(fileName, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

void WritePdf(benchmark::State& state)
{
    ReportedLog log(state);
    Keep("report.csv", WriteCsv(log.Grid()));
    WriteReport(state, log.Report(), "report.pdf",
                [](const Document& document) { return PdfBytes(document); });
}

/// Writes a table in which no text occurs twice.
void WriteDifferentPdf(benchmark::State& state)
{
    ReportedLog log(state);
    ReportTable table = log.Grid();
    int number = 0;
    for (ReportRow& row : table) {
        for (std::string& text : row) {
            text.insert(0, std::to_string(++number) + ' ');
        }
    }
    WriteReport(state, log.Report(table), "different.pdf",
                [](const Document& document) { return PdfBytes(document); });
}

void WriteRtf(benchmark::State& state)
{
    ReportedLog log(state);
    WriteReport(state, log.Report(), "report.rtf",
                [](const Document& document) { return RtfBytes(document); });
}

void Thousands(benchmark::internal::Benchmark* bench)
{
    bench->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(FillGrid)->Name("ReportLogData")->Apply(Thousands);
BENCHMARK(FillGridLimit)->Name("ReportLogData, limit")->Apply(Thousands);
BENCHMARK(SortGrid)->Name("ShellSort of the report")->Apply(Thousands);
BENCHMARK(LayOutReport)->Name("log report, laid out")->Apply(Thousands);
BENCHMARK(LayOutReportLimit)->Name("log report, laid out, limit")->Apply(Thousands);
BENCHMARK(WritePdf)->Name("log report, PDF")->Apply(Thousands);
BENCHMARK(WriteDifferentPdf)->Name("log report, PDF, all texts different")->Apply(Thousands);
BENCHMARK(WriteRtf)->Name("log report, RTF")->Apply(Thousands);

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
