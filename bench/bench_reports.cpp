// What reports cost: many rows laid out, long reports written as PDF and RTF, and beside them measuring the
// same texts with the font alone.

#include "reports/engine/LayOut.h"
#include "reports/engine/PdfWriter.h"
#include "reports/engine/ReportFonts.h"
#include "reports/engine/RtfWriter.h"

#include <QGuiApplication>
#include <benchmark/benchmark.h>

#include <array>
#include <vector>

namespace
{

/// Rows of made-up texts in columns, the last of which wrap.
class ColumnsReport : public Report
{
public:
    /// Columns of `widths` twips from left to right; the last two wrap texts of `words` words.
    ColumnsReport(int rows, const std::vector<int>& widths, int words) : m_rows(rows), m_words(words)
    {
        int left = 0;
        for (std::size_t column = 0; column < widths.size(); ++column) {
            const QString name = QStringLiteral("column%1").arg(column);
            Fields.Add(name);
            ReportControl& field = Detail.Controls.Add(QStringLiteral("DDActiveReports.Field"));
            field.Name = name;
            field.DataField = name;
            field.Left = left;
            field.Width = widths[column];
            field.Height = 285;
            field.Font = {QStringLiteral("Tahoma"), 8, false};
            field.VerticalAlignment = VerticalAlignment::Middle;
            field.CanGrow = field.MultiLine = column + 2 >= widths.size();
            left += widths[column];
        }
        Detail.Height = 300;
        Page.setOrientation(QPageLayout::Landscape);
    }

    void DataInitialize() override { m_row = 0; }

    void FetchData(bool& endOfData) override
    {
        endOfData = m_row == m_rows;
        if (endOfData) {
            return;
        }
        for (int column = 0; column < Fields.Count(); ++column) {
            Fields.SetValue(column, Text(m_row, column));
        }
        ++m_row;
    }

    QString Text(int row, int column) const
    {
        static const std::array words{"bream", "flathead", "over", "the", "weed", "beds", "until",
                                      "noon",  "12.5",     "kg",   "no",  "run",  "tide", "Wharf"};
        if (column + 2 < Fields.Count()) {
            return QStringLiteral("%1 value").arg(row * 8 + column);
        }
        QString text;
        for (int word = 0; word < m_words; ++word) {
            text += QLatin1String(
                words.at(static_cast<std::size_t>(row * 31 + column * 7 + word * word) % words.size()));
            text += QLatin1Char(' ');
        }
        return text;
    }

private:
    int m_rows;
    int m_words;
    int m_row = 0;
};

const std::vector<int> logWidths{1000, 1000, 1000, 1000, 1000, 1000, 3500, 3500};
constexpr int wordsInLog = 15;

/// About a thousand pages of locations.
ColumnsReport Locations()
{
    return {15000, {2600, 3300, 3380}, 20};
}

void LayOutRows(benchmark::State& state)
{
    ColumnsReport report(static_cast<int>(state.range(0)), logWidths, wordsInLog);
    for ([[maybe_unused]] auto _ : state) {
        const auto document = LayOut(report);
        state.counters["pages"] = static_cast<double>(document->pages.size());
    }
}

void MeasureTextsOfRows(benchmark::State& state)
{
    const int rows = static_cast<int>(state.range(0));
    const ColumnsReport report(rows, logWidths, wordsInLog);
    const QFontMetricsF metrics(TwipFont({QStringLiteral("Tahoma"), 8, false}));
    for ([[maybe_unused]] auto _ : state) {
        for (int row = 0; row < rows; ++row) {
            for (int column = 0; column < report.Fields.Count(); ++column) {
                benchmark::DoNotOptimize(metrics.horizontalAdvance(report.Text(row, column)));
            }
        }
    }
}

void LayOutLocations(benchmark::State& state)
{
    ColumnsReport report = Locations();
    for ([[maybe_unused]] auto _ : state) {
        const auto document = LayOut(report);
        state.counters["pages"] = static_cast<double>(document->pages.size());
    }
}

template <typename Write>
void WriteDocument(benchmark::State& state, ColumnsReport&& report, Write write)
{
    const auto document = LayOut(report);
    for ([[maybe_unused]] auto _ : state) {
        state.counters["megabytes"] = static_cast<double>(write(*document).size()) / 1e6;
    }
    state.counters["pages"] = static_cast<double>(document->pages.size());
}

void WriteLocationsPdf(benchmark::State& state)
{
    WriteDocument(state, Locations(), [](const Document& document) { return PdfBytes(document); });
}

void WriteLocationsRtf(benchmark::State& state)
{
    WriteDocument(state, Locations(), [](const Document& document) { return RtfBytes(document); });
}

void WriteRowsPdf(benchmark::State& state)
{
    WriteDocument(state, {static_cast<int>(state.range(0)), logWidths, wordsInLog},
                  [](const Document& document) { return PdfBytes(document); });
}

BENCHMARK(LayOutRows)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(MeasureTextsOfRows)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteRowsPdf)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(LayOutLocations)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteLocationsPdf)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteLocationsRtf)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char* argv[])
{
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
