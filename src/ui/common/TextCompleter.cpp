#include "TextCompleter.h"

#include "Placement.h"
#include "core/ErrorLog.h"
#include "qt/Strings.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QListWidget>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace Tarno
{

namespace
{

bool IsModifier(int key)
{
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_AltGr ||
           key == Qt::Key_Meta;
}

} // namespace

TextCompleter::TextCompleter(QWidget* box, Propose propose)
    : QObject(box), m_box(box), m_propose(std::move(propose))
{
    box->installEventFilter(this);
    if (const auto* area = qobject_cast<QAbstractScrollArea*>(box); area != nullptr) {
        area->viewport()->installEventFilter(this); // receives the mouse events
    }
}

// A QLineEdit and a QPlainTextEdit have no common base class for texts, but both answer the questions of an
// input method and accept its changes.

/// Shows the proposals when the box contains what the user has just typed.
void TextCompleter::ShowProposalsLater()
{
    m_areDue = true;
    QMetaObject::invokeMethod(this, &TextCompleter::ShowDueProposals, Qt::QueuedConnection);
}

void TextCompleter::ShowDueProposals()
{
    if (std::exchange(m_areDue, false)) {
        ShowProposals();
    }
}

void TextCompleter::ShowProposals()
{
    Trap(ToUtf8(m_box->window()->objectName()), ToUtf8(m_box->objectName()) + "_Complete", [this] {
        m_proposals = m_propose(m_box->inputMethodQuery(Qt::ImSurroundingText).toString(),
                                m_box->inputMethodQuery(Qt::ImCursorPosition).toInt());
        if (m_proposals.texts.isEmpty() || !m_box->hasFocus()) {
            Close();
            return;
        }
        MakeList();
        m_list->clear();
        m_list->addItems(m_proposals.texts);
        m_list->setCurrentRow(-1);
        m_list->scrollToTop();
        Place();
        m_list->show();
        m_list->raise();
    });
}

void TextCompleter::MakeList()
{
    if (m_list != nullptr) {
        return;
    }
    m_list = new QListWidget(m_box->window());
    m_list->setObjectName(QStringLiteral("lstProposals"));
    m_list->setAccessibleName(QStringLiteral("Proposals"));
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setUniformItemSizes(true);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setTextElideMode(Qt::ElideRight);
    connect(m_list, &QListWidget::itemClicked, this, &TextCompleter::Take);
}

void TextCompleter::Place()
{
    constexpr int mostRows = 8;
    constexpr int most = 60; // letters
    const int frame = 2 * m_list->frameWidth();
    const int margins = 2 * m_list->style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 2;
    const int rows = std::min(mostRows, m_list->count());
    const int bar = rows < m_list->count() ? m_list->verticalScrollBar()->sizeHint().width() : 0;
    const int width = std::min(m_list->sizeHintForColumn(0) + margins + frame + bar,
                               most * m_list->fontMetrics().averageCharWidth());
    m_list->resize(std::min(width, m_list->parentWidget()->width()),
                   rows * m_list->sizeHintForRow(0) + frame);
    QRect cursor = m_box->inputMethodQuery(Qt::ImCursorRectangle).toRect();
    cursor.moveTopLeft(m_box->mapTo(m_box->window(), cursor.topLeft()));
    PlaceBeside(*m_list, cursor);
}

bool TextCompleter::IsOpen() const
{
    return m_list != nullptr && m_list->isVisible();
}

bool TextCompleter::HandlesKey(int key) const
{
    switch (key) {
    case Qt::Key_Down:
    case Qt::Key_Up:
    case Qt::Key_Escape:
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return m_list->currentRow() >= 0;
    default:
        return false;
    }
}

void TextCompleter::HandleKey(int key)
{
    const int row = m_list->currentRow();
    switch (key) {
    case Qt::Key_Down:
        m_list->setCurrentRow(std::min(row + 1, m_list->count() - 1));
        break;
    case Qt::Key_Up:
        m_list->setCurrentRow(row < 0 ? m_list->count() - 1 : std::max(row - 1, 0));
        break;
    case Qt::Key_Escape:
        Close();
        break;
    default:
        Take();
    }
}

void TextCompleter::Take()
{
    QInputMethodEvent replacement;
    const int cursor = m_box->inputMethodQuery(Qt::ImCursorPosition).toInt();
    replacement.setCommitString(m_list->currentItem()->text(), m_proposals.position - cursor,
                                m_proposals.length);
    Close();
    QApplication::sendEvent(m_box, &replacement);
}

void TextCompleter::Close()
{
    m_areDue = false;
    if (IsOpen()) {
        m_list->hide();
    }
}

bool TextCompleter::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress: {
        const auto* press = static_cast<QKeyEvent*>(event);
        const bool isPlain = (press->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == 0;
        if (isPlain && (press->key() == Qt::Key_Down || press->key() == Qt::Key_Up)) {
            ShowDueProposals(); // the user types faster than the program works
        }
        if (IsOpen() && isPlain && HandlesKey(press->key())) {
            if (event->type() == QEvent::KeyPress) {
                HandleKey(press->key());
            }
            event->accept(); // the key is for the list, not for a shortcut
            return true;
        }
        if (event->type() == QEvent::KeyPress && !IsModifier(press->key())) {
            Close();
            const bool edits = !press->text().isEmpty() && press->text().front().isPrint();
            if (isPlain && (edits || press->key() == Qt::Key_Backspace)) {
                ShowProposalsLater();
            }
        }
        break;
    }
    case QEvent::InputMethod:
        if (!static_cast<QInputMethodEvent*>(event)->commitString().isEmpty()) {
            ShowProposalsLater();
        }
        break;
    case QEvent::MouseButtonPress: // may move the cursor to another line
    case QEvent::FocusOut:
    case QEvent::Hide:
        Close();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace Tarno
