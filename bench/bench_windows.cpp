// What the windows do with much: a long list shown and sorted, a large picture shown and zoomed.

#include "ui/common/SortableList.h"
#include "ui/entry/PictureFile.h"
#include "ui/entry/PictureSurface.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <vector>

namespace
{

std::vector<TextTableModel::Row> Rows(int count)
{
    std::vector<TextTableModel::Row> rows;
    for (int number = 0; number < count; ++number) {
        const QString text = QString::number((number * 7919LL) % count);
        rows.push_back({QLatin1Char('K') + QString::number(number),
                        {text, text, QLatin1String("Location ") + text, text, text, text, text, text, text}});
    }
    return rows;
}

const QStringList headings(9, QStringLiteral("Heading"));

void ShowList(benchmark::State& state)
{
    const auto rows = Rows(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        SortableList list;
        list.SetHeadings(headings);
        list.SetRows(rows);
        list.resize(900, 500);
        list.show();
        benchmark::DoNotOptimize(list.grab());
    }
}

void SortList(benchmark::State& state)
{
    SortableList list;
    list.SetHeadings(headings);
    const auto rows = Rows(static_cast<int>(state.range(0)));
    list.show();
    for ([[maybe_unused]] auto _ : state) {
        list.SetRows(rows);
        list.model()->sort(2);
    }
}

/// A picture of 50 megapixels in a JPEG file; it is gone when the object is.
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
    PictureSurface surface(&frame);
    surface.SetPicture(ReadPicture(LargeJpeg().Path()));
    frame.show();
    int percent = 0;
    for ([[maybe_unused]] auto _ : state) {
        percent = percent % 100 + 1;
        surface.resize((surface.NaturalSize() * (percent / 100.0)).expandedTo(QSize(1, 1)));
        benchmark::DoNotOptimize(frame.grab());
    }
}

BENCHMARK(ShowList)->Arg(2000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(SortList)->Arg(2000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadLargePicture)->Unit(benchmark::kMillisecond);
BENCHMARK(ZoomLargePicture)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
