#include "TripDetails.h"

#include "core/ErrorLog.h"
#include "qt/Strings.h"
#include "ui/common/ValueTable.h"
#include "ui/entry/PictureFile.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <QTextDocument>
#include <QTextEdit>
#include <QTextTable>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>
#include <utility>

namespace Tarno
{

namespace
{

constexpr int largestPicture = 1600; // pixels
constexpr int letters = 44;          // in a line
constexpr int fewestLetters = 24;
constexpr QLatin1String pictureName("picture");

} // namespace

TripDetails::TripDetails(QWidget* parent) : QWidget(parent), m_text(new QTextEdit(this))
{
    using namespace std::chrono_literals;
    m_text->setObjectName(QStringLiteral("txtDetails"));
    m_text->setAccessibleName(QStringLiteral("Details of the selected trip"));
    MakeReadable(*m_text);
    m_text->installEventFilter(this);
    m_text->setMinimumWidth(fewestLetters * fontMetrics().averageCharWidth());
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_text);
    m_pictureTimer.setSingleShot(true);
    m_pictureTimer.setInterval(100ms);
    connect(&m_pictureTimer, &QTimer::timeout, this,
            [this] { Trap("TripDetails", "LoadPicture", [this] { LoadPicture(); }); });
    ShowNothing();
}

QSize TripDetails::sizeHint() const
{
    return {letters * fontMetrics().averageCharWidth(), 0};
}

void TripDetails::ShowTrip(std::vector<DescribedValue> values, const QString& picture)
{
    m_hasTrip = true;
    m_values = std::move(values);
    m_picturePath = picture;
    m_picture = {};
    m_problem.clear();
    m_pictureTimer.stop();
    if (!picture.isEmpty()) {
        m_pictureTimer.start();
    }
    Render();
}

void TripDetails::ShowNothing()
{
    ShowTrip({}, {});
    m_hasTrip = false;
    Render();
}

void TripDetails::LoadPicture()
{
    auto [picture, problem] = TryReadPicture(m_picturePath);
    m_problem = problem;
    m_picture =
        std::max(picture.width(), picture.height()) <= largestPicture
            ? picture
            : picture.scaled(largestPicture, largestPicture, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    Render();
}

void TripDetails::Render()
{
    QTextDocument& document = *m_text->document();
    document.clear();
    QTextCursor cursor(&document);
    if (!m_hasTrip) {
        cursor.insertText(QStringLiteral("Select a trip to see its details."));
        return;
    }
    if (!m_picture.isNull()) {
        document.addResource(QTextDocument::ImageResource, QUrl(pictureName), m_picture);
        // with the scroll bar, because the text below the picture may need it
        const int width = m_text->maximumViewportSize().width() -
                          m_text->verticalScrollBar()->sizeHint().width() - 2 * readableMargin;
        const QSize room(std::max(1, width), m_picture.height());
        const QSize shown = m_picture.size().scaled(room, Qt::KeepAspectRatio).boundedTo(m_picture.size());
        QTextImageFormat image;
        image.setName(pictureName);
        image.setWidth(shown.width());
        image.setHeight(shown.height());
        cursor.insertImage(image);
    } else if (!m_problem.isEmpty()) {
        cursor.insertText(m_problem);
    }
    if (m_values.empty()) {
        return;
    }
    InsertValues(cursor, m_values);
    m_text->moveCursor(QTextCursor::Start);
}

/// Lets Ctrl+C copy the selected text. A text that cannot be edited would leave the key to the window.
bool TripDetails::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && m_text->textCursor().hasSelection() &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        event->accept();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

/// Fits the picture to the new width.
void TripDetails::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (!m_picture.isNull()) {
        Render();
    }
}

} // namespace Tarno
