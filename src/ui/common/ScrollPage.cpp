#include "ScrollPage.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QLayout>
#include <QScrollBar>

#include <algorithm>

namespace Tarno
{

namespace
{

bool ChangesByWheel(const QWidget* widget)
{
    return qobject_cast<const QComboBox*>(widget) != nullptr ||
           qobject_cast<const QAbstractSlider*>(widget) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(widget) != nullptr;
}

/// Whether `widget` is a scroll bar of a list or a text box.
bool IsOwnScrollBar(const QWidget* widget)
{
    const QWidget* around = widget->parentWidget();
    return around != nullptr && qobject_cast<const QAbstractScrollArea*>(around->parentWidget()) != nullptr &&
           around->objectName().startsWith(QLatin1String("qt_scrollarea_"));
}

} // namespace

ScrollPage::ScrollPage(QWidget* parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget* /*before*/, QWidget* now) { ShowFocus(now); });
}

ScrollPage::~ScrollPage()
{
    disconnect(qApp, nullptr, this, nullptr); // the focus changes while the base class deletes the controls
}

QSize ScrollPage::sizeHint() const
{
    const QSize wanted = widget()->sizeHint();
    return {wanted.width(), std::max(wanted.height(), widget()->heightForWidth(wanted.width()))};
}

QSize ScrollPage::minimumSizeHint() const
{
    const QSize needed = widget()->minimumSizeHint();
    const bool scrolls = minimumHeight() > 0 && minimumHeight() < needed.height();
    return needed + QSize(scrolls ? verticalScrollBar()->sizeHint().width() : 0, 0);
}

bool ScrollPage::event(QEvent* event)
{
    if (event->type() == QEvent::Polish) {
        AdoptWidget();
    } else if (event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        FitWidget();
    }
    return QScrollArea::event(event);
}

void ScrollPage::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    FitWidget();
}

/// Gives the widget the size of the page, or more if it needs more. setWidgetResizable is no substitute,
/// because it makes a page with wrapped labels as high as it wants to be.
void ScrollPage::FitWidget()
{
    QSize room = maximumViewportSize();
    const auto needed = [&] {
        const QLayout* layout = widget()->layout();
        const int wrapped = layout != nullptr ? layout->totalMinimumHeightForWidth(room.width()) : 0;
        return widget()->minimumSizeHint().expandedTo({0, wrapped});
    };
    if (needed().height() > room.height()) {
        room.rwidth() -= verticalScrollBar()->sizeHint().width();
    }
    if (needed().width() > room.width()) {
        room.rheight() -= horizontalScrollBar()->sizeHint().height();
    }
    widget()->resize(room.expandedTo(needed()));
}

void ScrollPage::AdoptWidget()
{
    widget()->setAutoFillBackground(false); // QScrollArea turns it on
    setFocusProxy(widget());
    for (QWidget* control : widget()->findChildren<QWidget*>()) {
        if (ChangesByWheel(control) && !IsOwnScrollBar(control)) {
            control->installEventFilter(this);
        }
    }
}

bool ScrollPage::eventFilter(QObject* watched, QEvent* event)
{
    const auto isWithin = [this](const QObject* control) {
        return control->isWidgetType() && widget()->isAncestorOf(static_cast<const QWidget*>(control));
    };
    if (event->type() == QEvent::Wheel && verticalScrollBar()->maximum() > 0 && isWithin(watched)) {
        event->ignore(); // Qt passes an ignored event to the parent, and so to the page
        return true;
    }
    return QScrollArea::eventFilter(watched, event);
}

void ScrollPage::ShowFocus(QWidget* focus)
{
    if (focus != nullptr && widget() != nullptr && widget()->isAncestorOf(focus)) {
        // ensureWidgetVisible would show only the cursor of a text box; of a control that is larger than the
        // page, the upper left part is shown
        const QSize shown = (focus->size() + QSize(1, 1)).boundedTo(viewport()->size());
        const QPoint centre =
            focus->mapTo(widget(), QPoint()) + QPoint(shown.width() / 2, shown.height() / 2);
        ensureVisible(centre.x(), centre.y(), shown.width() / 2, shown.height() / 2);
    }
}

} // namespace Tarno
