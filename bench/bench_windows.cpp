// Windows with large amounts of data: showing and sorting the log, reading and zooming a large picture.

#include "LoadedProgram.h"
#include "ui/common/SortableList.h"
#include "ui/entry/PictureFile.h"
#include "ui/entry/PictureSource.h"
#include "ui/entry/PictureSurface.h"
#include "ui/main/LogView.h"
#include "ui/main/fTarno.h"

#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QPainter>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <vector>

using namespace Tarno;

namespace
{

void ShowMainWindow(benchmark::State& state)
{
    const LoadedProgram loaded(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        fTarno window(loaded.program);
        window.show();
        benchmark::DoNotOptimize(window.grab());
    }
}

/// Shows the list after one trip was changed and saved, without the save. The argument `find` is a query in
/// the find bar.
void ShowChangedTrip(benchmark::State& state, const char* find)
{
    LoadedProgram loaded(static_cast<int>(state.range(0)));
    fTarno window(loaded.program);
    window.show();
    window.findChild<QLineEdit*>(QStringLiteral("txtFind"))->setText(QString::fromLatin1(find));
    auto* log = window.findChild<LogView*>();
    auto* list = window.findChild<SortableList*>(QStringLiteral("lvwEntry"));
    const std::string key = std::to_string(state.range(0) / 2);
    Record trip(loaded.sql.FindEntry(key));
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        trip.SetText(EntryField::Obbos, trip.Text(EntryField::Obbos) == "a" ? "b" : "a");
        loaded.sql.EntryUpdate(trip);
        state.ResumeTiming();
        log->ShowSaved({key});
        benchmark::DoNotOptimize(list->grab());
    }
}

constexpr int listColumns = 9;

/// Sorts the list of the main window by each of its columns, each for the first time.
void SortMainList(benchmark::State& state)
{
    const LoadedProgram loaded(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        auto window = std::make_unique<fTarno>(loaded.program);
        QAbstractItemModel* model = window->findChild<SortableList*>(QStringLiteral("lvwEntry"))->model();
        state.ResumeTiming();
        for (int column = 0; column < listColumns; ++column) {
            model->sort(column);
        }
        state.PauseTiming();
        window.reset();
        state.ResumeTiming();
    }
}

void SortMainListLimit(benchmark::State& state)
{
    const LoadedProgram loaded(static_cast<int>(state.range(0)));
    const fTarno window(loaded.program);
    const QAbstractItemModel* model = window.findChild<SortableList*>(QStringLiteral("lvwEntry"))->model();
    std::vector<std::vector<QString>> columns(listColumns);
    for (int column = 0; column < listColumns; ++column) {
        for (int row = 0; row < model->rowCount(); ++row) {
            columns[static_cast<std::size_t>(column)].push_back(model->index(row, column).data().toString());
        }
    }
    for ([[maybe_unused]] auto _ : state) {
        for (std::vector<QString> texts : columns) {
            std::sort(texts.begin(), texts.end());
            benchmark::DoNotOptimize(texts);
        }
    }
}

/// Types a letter of a query into the find bar and shows what it finds.
void TypeQuery(benchmark::State& state)
{
    const LoadedProgram loaded(static_cast<int>(state.range(0)));
    fTarno window(loaded.program);
    window.show();
    auto* box = window.findChild<QLineEdit*>(QStringLiteral("txtFind"));
    box->setText(QStringLiteral("fla")); // prepares the trips
    bool longer = false;
    for ([[maybe_unused]] auto _ : state) {
        longer = !longer;
        box->setText(longer ? QStringLiteral("flat") : QStringLiteral("fla"));
        benchmark::DoNotOptimize(window.grab());
    }
}

/// A JPEG file of 50 megapixels. It is removed with the object.
class LargeJpeg
{
public:
    LargeJpeg()
    {
        QImage picture(8660, 5773, QImage::Format_RGB32);
        QPainter painter(&picture);
        QLinearGradient gradient(0, 0, picture.width(), picture.height());
        gradient.setColorAt(0, Qt::yellow);
        gradient.setColorAt(1, Qt::darkBlue);
        painter.fillRect(picture.rect(), gradient);
        for (int step = 0; step < 2000; ++step) {
            painter.drawLine(step * 4, 0, picture.width() - step * 3, picture.height());
        }
        painter.end();
        picture.save(Path(), "JPEG", 85);
    }

    QString Path() const { return m_folder.filePath(QStringLiteral("large.jpg")); }

private:
    QTemporaryDir m_folder;
};

void ReadLargePicture(benchmark::State& state)
{
    const LargeJpeg file;
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(ReadPicture(file.Path()));
    }
}

void ZoomLargePicture(benchmark::State& state)
{
    QWidget frame;
    frame.resize(800, 500);
    PictureSource source(&frame);
    PictureSurface surface(source, &frame);
    source.SetPicture(ReadPicture(LargeJpeg().Path()));
    frame.show();
    int percent = 0;
    for ([[maybe_unused]] auto _ : state) {
        percent = percent % 100 + 1;
        surface.resize((source.NaturalSize() * (percent / 100.0)).expandedTo(QSize(1, 1)));
        benchmark::DoNotOptimize(frame.grab());
    }
}

void Thousands(benchmark::internal::Benchmark* bench)
{
    bench->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(ShowMainWindow)->Name("main window, filled and shown")->Apply(Thousands);
BENCHMARK_CAPTURE(ShowChangedTrip, all, "")->Name("one trip changed, list shown")->Apply(Thousands);
BENCHMARK_CAPTURE(ShowChangedTrip, found, "flathead")
    ->Name("one trip changed, list of a query shown")
    ->Apply(Thousands);
BENCHMARK(SortMainList)->Name("main list, by each column")->Apply(Thousands);
BENCHMARK(SortMainListLimit)->Name("main list, by each column, limit")->Apply(Thousands);
BENCHMARK(TypeQuery)->Name("find bar, a letter typed")->Apply(Thousands);
BENCHMARK(ReadLargePicture)->Name("picture of 50 megapixels, read")->Unit(benchmark::kMillisecond);
BENCHMARK(ZoomLargePicture)->Name("picture of 50 megapixels, a zoom step")->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
