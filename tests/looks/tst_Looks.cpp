// The look of every window, with the usual font and with one twice as large.

#include "EveryWindow.h"
#include "Fashions.h"
#include "Geometry.h"
#include "support/TestClass.h"

#include <QApplication>
#include <QTextBlock>
#include <QTextEdit>

#include <cmath>

namespace
{

double Linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour)
{
    return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) +
           0.0722 * Linear(colour.blueF());
}

/// The contrast of two colours as WCAG 2 defines it, from 1 to 21.
double Contrast(const QColor& one, const QColor& other)
{
    const double first = Luminance(one);
    const double second = Luminance(other);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

constexpr double readable = 4.5;

void AddEveryWindowTwice(const char* column, const char* first, const char* second)
{
    QTest::addColumn<QString>("state");
    QTest::addColumn<bool>(column);
    for (const WindowState& state : EveryWindow()) {
        QTest::addRow("%s, %s", state.name, first) << QString::fromLatin1(state.name) << false;
        QTest::addRow("%s, %s", state.name, second) << QString::fromLatin1(state.name) << true;
    }
}

void AddFonts()
{
    AddEveryWindowTwice("large", "usual font", "large font");
}

} // namespace

class tst_Looks : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase()
    {
        m_font = QApplication::font();
        m_light = QApplication::palette();
    }

    void cleanup()
    {
        QApplication::setFont(m_font);
        QApplication::setPalette(m_light);
    }

    void nothing_isClippedOrElided_data() { AddFonts(); }

    void nothing_isClippedOrElided()
    {
        QFETCH(QString, state);
        QFETCH(bool, large);
        SetFont(m_font, large);
        StateOf(state).show(
            [](QWidget& window) { QCOMPARE(Listed(Clipped(window) + Elided(window)), QString()); });
    }

    void controls_haveRoomForThemselves_data() { AddFonts(); }

    void controls_haveRoomForThemselves()
    {
        QFETCH(QString, state);
        QFETCH(bool, large);
        SetFont(m_font, large);
        StateOf(state).show([](QWidget& window) {
            QCOMPARE(Listed(Overlapping(window)), QString());
            QCOMPARE(Listed(StickingOut(window)), QString());
        });
    }

    void rows_standLevel_data() { AddFonts(); }

    void rows_standLevel()
    {
        QFETCH(QString, state);
        QFETCH(bool, large);
        SetFont(m_font, large);
        StateOf(state).show([](QWidget& window) { QCOMPARE(Listed(Uneven(window)), QString()); });
    }

    void gaps_areMultiplesOfFour_data() { AddEveryWindow(); }

    void gaps_areMultiplesOfFour()
    {
        QFETCH(QString, state);
        StateOf(state).show([](QWidget& window) { QCOMPARE(Listed(OutOfRhythm(window)), QString()); });
    }

    void window_fitsASmallScreen_data() { AddEveryWindow(); }

    void window_fitsASmallScreen()
    {
        constexpr QSize screen(1280, 720);
        constexpr int titleBar = 32;
        QFETCH(QString, state);
        StateOf(state).show([&](QWidget& window) {
            // Windows makes a window at least as high as that
            const int wanted = window.hasHeightForWidth() ? window.heightForWidth(window.width()) : 0;
            const QSize least = window.minimumSizeHint().expandedTo(window.size()).expandedTo({0, wanted});
            QVERIFY2(least.width() <= screen.width() && least.height() + titleBar <= screen.height(),
                     qPrintable(QStringLiteral("%1 x %2").arg(least.width()).arg(least.height())));
        });
    }

    void texts_standOutFromTheirGround_data() { AddEveryWindowTwice("dark", "light", "dark"); }

    void texts_standOutFromTheirGround()
    {
        QFETCH(QString, state);
        QFETCH(bool, dark);
        QApplication::setPalette(dark ? DarkPalette() : m_light);
        StateOf(state).show([](QWidget& window) {
            QStringList pale;
            for (const QWidget* control : Controls(window)) {
                const QPalette colours = control->palette();
                if (control->isEnabled() && Contrast(colours.color(control->foregroundRole()),
                                                     colours.color(control->backgroundRole())) < readable) {
                    pale << NameOf(*control);
                }
            }
            QCOMPARE(Listed(pale), QString());
        });
    }

    void links_standOutFromTheirGround_data()
    {
        QTest::addColumn<bool>("dark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

    void links_standOutFromTheirGround()
    {
        QFETCH(bool, dark);
        QApplication::setPalette(dark ? DarkPalette() : m_light);
        StateOf(QStringLiteral("manual")).show([](QWidget& window) {
            const auto* manual = window.findChild<QTextEdit*>(QStringLiteral("txtManual"));
            const QColor ground = manual->palette().color(QPalette::Base);
            int links = 0;
            for (QTextBlock block = manual->document()->begin(); block.isValid(); block = block.next()) {
                for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
                    const QTextCharFormat format = piece.fragment().charFormat();
                    if (format.isAnchor()) {
                        ++links;
                        QVERIFY(Contrast(format.foreground().color(), ground) >= readable);
                    }
                }
            }
            QVERIFY(links > 0);
        });
    }

    void refusedBox_isReadable_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<bool>("dark");
        for (const char* state : {"trip, refused date", "trip, refused time"}) {
            QTest::addRow("%s, light", state) << QString::fromLatin1(state) << false;
            QTest::addRow("%s, dark", state) << QString::fromLatin1(state) << true;
        }
    }

    void refusedBox_isReadable()
    {
        QFETCH(QString, state);
        QFETCH(bool, dark);
        QApplication::setPalette(dark ? DarkPalette() : m_light);
        StateOf(state).show([](QWidget& window) {
            const QPalette colours = window.focusWidget()->palette();
            QCOMPARE(colours.color(QPalette::Base), QColor(255, 224, 192));
            QVERIFY(Contrast(colours.color(QPalette::Text), colours.color(QPalette::Base)) >= readable);
            QVERIFY(Contrast(colours.color(QPalette::HighlightedText), colours.color(QPalette::Highlight)) >=
                    3);
        });
    }

private:
    QFont m_font;
    QPalette m_light;
};

TEST_CLASS(tst_Looks)
#include "tst_Looks.moc"
