#include "RefusalNote.h"

#include "Placement.h"

#include <QEvent>

namespace Tarno
{

RefusalNote::RefusalNote(QWidget* window) : QLabel(window)
{
    constexpr int margin = 4;
    setObjectName(QStringLiteral("lblRefusal"));
    setBackgroundRole(QPalette::ToolTipBase);
    setForegroundRole(QPalette::ToolTipText);
    setAutoFillBackground(true);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setMargin(margin);
    setTextFormat(Qt::PlainText);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void RefusalNote::ShowAt(QWidget* box, const QString& text)
{
    if (m_box != nullptr) {
        HideAt(m_box);
    }
    if (text.isEmpty()) {
        return;
    }
    m_box = box;
    box->setAccessibleDescription(text);
    box->installEventFilter(this);
    setText(text);
    Place();
    setVisible(box->isVisible());
    raise();
}

void RefusalNote::HideAt(QWidget* box)
{
    if (m_box == box) {
        m_box = nullptr;
        box->removeEventFilter(this);
        box->setAccessibleDescription({});
        hide();
    }
}

/// Places the note below the box, or above it if there is no room, and within the window.
void RefusalNote::Place()
{
    adjustSize();
    PlaceBeside(*this, QRect(m_box->mapTo(parentWidget(), QPoint()), m_box->size()));
}

bool RefusalNote::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_box) {
        if (event->type() == QEvent::Hide || event->type() == QEvent::Show) {
            setVisible(event->type() == QEvent::Show);
        } else if (event->type() == QEvent::Move || event->type() == QEvent::Resize) {
            Place();
        }
    }
    return QLabel::eventFilter(watched, event);
}

} // namespace Tarno
