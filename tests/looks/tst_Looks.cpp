// The appearance of every window, with the default font and with a font twice as large.

#include "Appearance.h"
#include "EveryWindow.h"
#include "Geometry.h"
#include "support/TestClass.h"

#include <QApplication>
#include <QTextBlock>
#include <QTextEdit>

#include <cmath>
#include <initializer_list>
#include <map>

using namespace Tarno;

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

/// Returns the contrast ratio of two colours as defined by WCAG 2, from 1 to 21.
double Contrast(const QColor& one, const QColor& other)
{
    const double first = Luminance(one);
    const double second = Luminance(other);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

constexpr double readable = 4.5;

/// Returns the controls with too little contrast between text and background.
QStringList LowContrastControls(const QWidget& window)
{
    QStringList lowContrast;
    for (const QWidget* control : Controls(window)) {
        const QPalette colours = control->palette();
        if (control->isEnabled() && Contrast(colours.color(control->foregroundRole()),
                                             colours.color(control->backgroundRole())) < readable) {
            lowContrast << NameOf(*control);
        }
    }
    return lowContrast;
}

struct Links {
    int count = 0;
    QStringList lowContrast;
};

/// Returns the links in the text of the manual, or none in other windows.
Links LinksOf(const QWidget& window)
{
    Links links;
    const auto* manual = window.findChild<QTextEdit*>(QStringLiteral("txtManual"));
    if (manual == nullptr) {
        return links;
    }
    const QColor background = manual->palette().color(QPalette::Base);
    for (QTextBlock block = manual->document()->begin(); block.isValid(); block = block.next()) {
        for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
            const QTextCharFormat format = piece.fragment().charFormat();
            links.count += format.isAnchor() ? 1 : 0;
            if (format.isAnchor() && Contrast(format.foreground().color(), background) < readable) {
                links.lowContrast << piece.fragment().text();
            }
        }
    }
    return links;
}

/// Returns the size that the window needs on the screen, without its frame.
QSize NeededSize(const QWidget& window)
{
    // Windows makes the window at least this high
    const int wanted = window.hasHeightForWidth() ? window.heightForWidth(window.width()) : 0;
    return window.minimumSizeHint().expandedTo(window.size()).expandedTo({0, wanted});
}

struct Findings {
    QStringList clippedOrElided;
    QStringList overlapping;
    QStringList exceedingParents;
    QStringList misaligned;
    QStringList irregularGaps;
    QStringList borderless;
    QSize neededSize;
    QStringList lowContrastControls;
    Links links;
    QPalette focusPalette; ///< of the control with the focus
};

Findings Inspect(QWidget& window)
{
    const QWidget* focus = window.focusWidget();
    return {Clipped(window) + Elided(window),
            Overlapping(window),
            ExceedingParents(window),
            Misaligned(window),
            IrregularGaps(window),
            Borderless(window),
            NeededSize(window),
            LowContrastControls(window),
            LinksOf(window),
            focus != nullptr ? focus->palette() : QPalette()};
}

using Appearances = std::initializer_list<NamedAppearance>;

constexpr Appearances lightAndDark{{"light", Appearance::Usual}, {"dark", Appearance::Dark}};
constexpr Appearances usualAndLargeFont{{"usual font", Appearance::Usual},
                                        {"large font", Appearance::LargeFont}};

void AddColumns()
{
    QTest::addColumn<QString>("state");
    QTest::addColumn<Appearance>("appearance");
}

void AddRows(const char* state, const Appearances& appearances)
{
    for (const auto& [name, appearance] : appearances) {
        QTest::addRow("%s, %s", state, name) << QString::fromLatin1(state) << appearance;
    }
}

void AddEveryWindowIn(const Appearances& appearances)
{
    AddColumns();
    for (const WindowState& state : EveryWindow()) {
        AddRows(state.name, appearances);
    }
}

} // namespace

class tst_Looks : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void nothing_isClippedOrElided_data() { AddEveryWindowIn(usualAndLargeFont); }

    void nothing_isClippedOrElided() { QCOMPARE(Joined(Found().clippedOrElided), QString()); }

    void controls_fitTheirParentsAndDoNotOverlap_data() { AddEveryWindowIn(usualAndLargeFont); }

    void controls_fitTheirParentsAndDoNotOverlap()
    {
        QCOMPARE(Joined(Found().overlapping), QString());
        QCOMPARE(Joined(Found().exceedingParents), QString());
    }

    void rows_areAligned_data() { AddEveryWindowIn(usualAndLargeFont); }

    void rows_areAligned() { QCOMPARE(Joined(Found().misaligned), QString()); }

    void gaps_areMultiplesOfFour_data() { AddEveryWindow(); }

    void gaps_areMultiplesOfFour() { QCOMPARE(Joined(FoundIn(Appearance::Usual).irregularGaps), QString()); }

    void listsAndClickLabels_haveBorders_data()
    {
        AddColumns();
        AddRows("trip, general", lightAndDark);
        AddRows("trip, comments", lightAndDark);
        AddRows("location, data", lightAndDark);
        AddRows("log report", lightAndDark);
    }

    void listsAndClickLabels_haveBorders() { QCOMPARE(Joined(Found().borderless), QString()); }

    void window_fitsASmallScreen_data() { AddEveryWindow(); }

    void window_fitsASmallScreen()
    {
        constexpr QSize screen(1280, 720);
        constexpr int titleBar = 32;
        const QSize needed = FoundIn(Appearance::Usual).neededSize;
        QVERIFY2(needed.width() <= screen.width() && needed.height() + titleBar <= screen.height(),
                 qPrintable(QStringLiteral("%1 x %2").arg(needed.width()).arg(needed.height())));
    }

    void texts_haveEnoughContrast_data() { AddEveryWindowIn(lightAndDark); }

    void texts_haveEnoughContrast() { QCOMPARE(Joined(Found().lowContrastControls), QString()); }

    void links_haveEnoughContrast_data()
    {
        AddColumns();
        for (const auto& [name, appearance] : lightAndDark) {
            QTest::newRow(name) << QStringLiteral("manual") << appearance;
        }
    }

    void links_haveEnoughContrast()
    {
        const Links links = Found().links;
        QCOMPARE(Joined(links.lowContrast), QString());
        QVERIFY(links.count > 0);
    }

    void refusedBox_isReadable_data()
    {
        AddColumns();
        AddRows("trip, refused date", lightAndDark);
        AddRows("trip, refused time", lightAndDark);
    }

    void refusedBox_isReadable()
    {
        const QPalette box = Found().focusPalette;
        QCOMPARE(box.color(QPalette::Base), QColor(255, 224, 192));
        QVERIFY(Contrast(box.color(QPalette::Text), box.color(QPalette::Base)) >= readable);
        QVERIFY(Contrast(box.color(QPalette::HighlightedText), box.color(QPalette::Highlight)) >= 3);
    }

private:
    Findings Found()
    {
        QFETCH(Appearance, appearance);
        return FoundIn(appearance);
    }

    Findings FoundIn(Appearance appearance)
    {
        Apply(appearance);
        return m_visits.try_emplace(appearance, Inspect).first->second.Found();
    }

    std::map<Appearance, SharedVisits<Findings>> m_visits;
};

TEST_CLASS(tst_Looks)
#include "tst_Looks.moc"
