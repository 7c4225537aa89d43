// Every window on small screens, with the default font and with a font twice as large.

#include "Appearance.h"
#include "EveryWindow.h"
#include "Geometry.h"
#include "support/TestClass.h"
#include "support/Windows.h"

#include <QPushButton>
#include <QScrollArea>

#include <algorithm>

using namespace Tarno;

namespace
{

struct Screen {
    const char* name;
    QSize size; ///< in device-independent pixels
    Appearance font;
};

constexpr Screen screens[] = {{"1024 x 600", {1024, 600}, Appearance::Usual},
                              {"1366 x 768 at 125 %", {1092, 614}, Appearance::Usual},
                              {"1920 x 1080 at 200 %", {960, 540}, Appearance::Usual},
                              {"1024 x 600, large font", {1024, 600}, Appearance::LargeFont},
                              {"1366 x 768 at 125 %, large font", {1092, 614}, Appearance::LargeFont}};

bool IsWithinScrollArea(const QWidget& control)
{
    const QWidget* around = control.parentWidget();
    while (around != nullptr && qobject_cast<const QScrollArea*>(around) == nullptr) {
        around = around->isWindow() ? nullptr : around->parentWidget();
    }
    return around != nullptr;
}

/// Returns the controls outside scroll areas that are not completely within the window.
QStringList OutsideWindow(const QWidget& window)
{
    QStringList outside;
    for (const QWidget* control : Controls(window)) {
        if (!IsWithinScrollArea(*control) &&
            !window.rect().contains(QRect(control->mapTo(&window, QPoint()), control->size()))) {
            outside << NameOf(*control);
        }
    }
    return outside;
}

/// Returns the part of `control` that its window shows.
QSize SeenSize(const QWidget& control)
{
    QRect seen = control.rect(); // not visibleRegion, which lacks the children
    for (const QWidget* inner = &control; !inner->isWindow(); inner = inner->parentWidget()) {
        seen = seen.translated(inner->pos()) & inner->parentWidget()->rect();
    }
    return seen.size();
}

/// Returns the controls that are not visible when they have the focus. Of a large one, a part is enough.
QStringList HiddenWithFocus(QWidget& window)
{
    QStringList hidden;
    for (QWidget* control : Controls(window)) {
        if (!control->isEnabled() || (control->focusPolicy() & Qt::TabFocus) == 0 || IsOverlay(*control)) {
            continue;
        }
        control->setFocus();
        const QSize seen = SeenSize(*control);
        const QSize needed = control->minimumSizeHint().boundedTo(control->size());
        if (seen.height() < std::min(needed.height(), control->fontMetrics().height()) ||
            seen.width() < std::min(needed.width(), 4 * control->fontMetrics().height())) {
            hidden << NameOf(*control);
        }
    }
    return hidden;
}

struct Findings {
    QSize size;
    QStringList outside;
    QStringList overlapping;
    QStringList clippedButtons;
    QStringList hiddenWithFocus;
};

Findings Inspect(QWidget& window)
{
    Findings found{window.size(), OutsideWindow(window), Overlapping(window), {}, {}};
    for (const QPushButton* button : ControlsOfKind<QPushButton>(window)) {
        if (button->width() < button->sizeHint().width() || button->height() < button->sizeHint().height()) {
            found.clippedButtons << NameOf(*button);
        }
    }
    found.hiddenWithFocus = HiddenWithFocus(window);
    return found;
}

} // namespace

class tst_SmallScreens : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void window_fits_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<QSize>("screen");
        QTest::addColumn<Appearance>("font");
        for (const WindowState& state : EveryWindow()) {
            for (const auto& [name, size, font] : screens) {
                QTest::addRow("%s, %s", state.name, name) << QString::fromLatin1(state.name) << size << font;
            }
        }
    }

    void window_fits()
    {
        QFETCH(QString, state);
        QFETCH(QSize, screen);
        QFETCH(Appearance, font);
        Apply(font);
        SetScreen(screen);
        Findings found;
        StateOf(state).show([&](QWidget& window) { found = Inspect(window); });
        const QSize room = screen - QSize(16, 40); // less the frame of the window
        QVERIFY2(found.size.width() <= room.width() && found.size.height() <= room.height(),
                 qPrintable(QStringLiteral("%1 x %2").arg(found.size.width()).arg(found.size.height())));
        QCOMPARE(Joined(found.outside), QString());
        QCOMPARE(Joined(found.overlapping), QString());
        QCOMPARE(Joined(found.clippedButtons), QString());
        QCOMPARE(Joined(found.hiddenWithFocus), QString());
    }
};

TEST_CLASS(tst_SmallScreens)
#include "tst_SmallScreens.moc"
