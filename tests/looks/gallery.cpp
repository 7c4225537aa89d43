// Saves a screenshot of every window in every state.
//   gallery DIR

#include "Appearance.h"
#include "EveryWindow.h"

#include <QApplication>
#include <QDir>
#include <QtTest/QTest>

#include <cstdio>

using namespace Tarno;

namespace
{

constexpr NamedAppearance appearances[] = {{"light", Appearance::Usual},
                                           {"dark", Appearance::Dark},
                                           {"light, large font", Appearance::LargeFont},
                                           {"dark, large font", Appearance::DarkWithLargeFont}};

bool SaveScreenshot(const WindowState& state, const QString& file)
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
    for (const auto& [name, appearance] : appearances) {
        Apply(appearance);
        for (const WindowState& state : EveryWindow()) {
            const QString file = folder.filePath(
                QStringLiteral("%1 (%2).png").arg(QLatin1String(state.name), QLatin1String(name)));
            if (!SaveScreenshot(state, file)) {
                std::fprintf(stderr, "could not save %s\n", qPrintable(file));
                return 1;
            }
        }
    }
    return 0;
}
