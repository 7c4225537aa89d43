#include "ScreenFit.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QEvent>
#include <QLayout>
#include <QScreen>

namespace Tarno
{

namespace
{

constexpr QSize windowFrame(16, 40); // title bar and borders; their true size is known only after showing
constexpr int smallestExtent = 48;   // of a scroll area

/// Returns the scroll areas of `parent` that are not within another one.
QList<QAbstractScrollArea*> OuterScrollAreas(const QWidget& parent)
{
    QList<QAbstractScrollArea*> areas;
    for (QWidget* child : parent.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (auto* area = qobject_cast<QAbstractScrollArea*>(child); area != nullptr) {
            areas << area;
        } else if (!child->isWindow()) {
            areas << OuterScrollAreas(*child);
        }
    }
    return areas;
}

/// Recalculates the layouts around `widget` now. Qt would do it later, level by level.
void UpdateLayouts(QWidget& widget)
{
    for (QWidget* inner = &widget; !inner->isWindow(); inner = inner->parentWidget()) {
        inner->updateGeometry();
        if (QLayout* layout = inner->parentWidget()->layout(); layout != nullptr) {
            layout->invalidate();
            layout->activate();
        }
    }
}

void Shrink(QAbstractScrollArea& area, const QSize& excess)
{
    const QSize set = area.minimumSize();
    const QSize hint = area.minimumSizeHint();
    if (excess.width() > 0) {
        const int width = set.width() > 0 ? set.width() : hint.width();
        area.setMinimumWidth(std::max(width - excess.width(), std::min(width, smallestExtent)));
    }
    if (excess.height() > 0) {
        const int height = set.height() > 0 ? set.height() : hint.height();
        area.setMinimumHeight(std::max(height - excess.height(), std::min(height, smallestExtent)));
    }
    UpdateLayouts(area);
}

/// Whether `object` is a window of the program or of the desktop, not a menu or a tool tip.
bool IsWindow(const QObject* object)
{
    const auto* widget = object->isWidgetType() ? static_cast<const QWidget*>(object) : nullptr;
    return widget != nullptr && (widget->windowType() == Qt::Window || widget->windowType() == Qt::Dialog);
}

} // namespace

ScreenFit::ScreenFit(std::optional<QSize> screen) : m_screen(screen)
{
    qApp->installEventFilter(this);
}

bool ScreenFit::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && !event->spontaneous() && IsWindow(watched)) {
        FitNewWindow(*static_cast<QWidget*>(watched));
    } else if (event->type() == QEvent::LayoutRequest && IsWindow(watched) &&
               static_cast<QWidget*>(watched)->isVisible()) {
        auto& window = *static_cast<QWidget*>(watched);
        const QSize before = window.size();
        Fit(window);
        if (window.size() != before) { // it grew before all of its areas were smaller
            window.resize(before);
        }
    }
    return false;
}

QSize ScreenFit::Room(const QWidget& window) const
{
    return m_screen.value_or(window.screen()->availableGeometry().size()) - windowFrame;
}

void ScreenFit::Fit(QWidget& window) const
{
    constexpr int passes = 2; // a vertical scroll bar takes width
    for (int pass = 0; pass < passes; ++pass) {
        const QSize excess = window.minimumSizeHint() - Room(window);
        if (excess.width() <= 0 && excess.height() <= 0) {
            return;
        }
        for (QAbstractScrollArea* area : OuterScrollAreas(window)) {
            Shrink(*area, excess);
        }
    }
}

void ScreenFit::FitNewWindow(QWidget& window) const
{
    Fit(window);
    // Qt limits the size of a window that was not resized to two thirds of the screen
    const bool hasOwnSize = window.testAttribute(Qt::WA_Resized);
    const QSize wanted = hasOwnSize ? window.size() : window.size().expandedTo(window.sizeHint());
    window.resize(wanted.boundedTo(Room(window)));
    window.setAttribute(Qt::WA_Resized, hasOwnSize);
}

} // namespace Tarno
