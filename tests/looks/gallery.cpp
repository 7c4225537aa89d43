// Takes a picture of every window in every state.
//   gallery DIR

#include "EveryWindow.h"
#include "Fashions.h"

#include <QApplication>
#include <QDir>
#include <QtTest/QTest>

#include <cstdio>

namespace
{

struct Fashion {
    const char* name;
    bool dark;
    bool largeFont;
};

constexpr Fashion fashions[] = {{"light", false, false},
                                {"dark", true, false},
                                {"light, large font", false, true},
                                {"dark, large font", true, true}};

bool Take(const WindowState& state, const QString& file)
{
    bool saved = false;
    state.show([&](QWidget& window) { saved = window.grab().save(file); });
    return saved;
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    if (argc != 2 || !QDir().mkpath(QString::fromLocal8Bit(argv[1]))) {
        std::fputs("usage: gallery DIR\n", stderr);
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    const QPalette light = QApplication::palette();
    const QFont font = QApplication::font();
    for (const Fashion& fashion : fashions) {
        SetFont(font, fashion.largeFont);
        QApplication::setPalette(fashion.dark ? DarkPalette() : light);
        for (const WindowState& state : EveryWindow()) {
            const QString file = folder.filePath(
                QStringLiteral("%1 (%2).png").arg(QLatin1String(state.name), QLatin1String(fashion.name)));
            if (!Take(state, file)) {
                std::fprintf(stderr, "no picture %s\n", qPrintable(file));
                return 1;
            }
        }
    }
    return 0;
}
