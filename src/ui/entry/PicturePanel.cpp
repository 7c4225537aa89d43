#include "PicturePanel.h"

#include "PictureFile.h"
#include "PictureSource.h"
#include "PictureSurface.h"
#include "core/ErrorLog.h"
#include "core/Twips.h"
#include "qt/Strings.h"
#include "ui/common/Handle.h"
#include "ui_PicturePanel.h"

#include <QDir>
#include <QFileInfo>

namespace Tarno
{

namespace
{

constexpr int frameMargin = FromTwips(20);
constexpr int scrollSteps = 20;

} // namespace

PicturePanel::PicturePanel(QWidget* parent) : QWidget(parent), m_ui(std::make_unique<Ui::PicturePanel>())
{
    m_ui->setupUi(this);
    m_source = new PictureSource(m_ui->frPic);
    m_surface = new PictureSurface(*m_source, m_ui->frPic);
    for (QPushButton* button : {m_ui->cmdLoad, m_ui->cmdRemove}) {
        // a caption wider than Qt's usual button would touch the border
        button->setMinimumWidth(button->sizeHint().width() + 2 * button->fontMetrics().averageCharWidth());
    }
    Reset();
    m_ui->frPic->installEventFilter(this);
    Handle(m_ui->cmdLoad, &QPushButton::clicked, "Click", this, [this] { ChoosePicture(); });
    Handle(m_ui->cmdRemove, &QPushButton::clicked, "Click", this, [this] { RemovePicture(); });
    Handle(m_ui->sldZoom, &QSlider::valueChanged, "Change", this, [this] { ApplyZoom(); });
    Handle(m_ui->sldZoom, &QSlider::sliderReleased, "MouseUp", this, [this] { ApplyZoom(); });
    for (QScrollBar* bar : {m_ui->hscPic, m_ui->vscPic}) {
        Handle(bar, &QScrollBar::sliderMoved, "Scroll", this, [this] { PlaceByScrollbars(); });
        Handle(bar, &QScrollBar::valueChanged, "Change", this, [this] { PlaceByScrollbars(); });
    }
}

PicturePanel::~PicturePanel() = default;

void PicturePanel::Attach(const Program& program, EditedRecord& record, std::size_t position,
                          const QString& surfaceName, const QString& sourceName, QWidget* focusAfterRemove)
{
    m_surface->setObjectName(surfaceName);
    m_source->setObjectName(sourceName);
    m_program = &program;
    m_record = &record;
    m_position = position;
    m_focusAfterRemove = focusAfterRemove;
}

/// Runs `body` and shows the message "Picture Problem" if it throws.
template <typename Body>
void PicturePanel::RunWithProblemMessage(Body&& body)
{
    try {
        body();
    } catch (const std::exception&) {
        m_program->messages.ShowInformation(
            window(),
            QStringLiteral("There is a problem with the image you are tring to load. It could be:\r\n"
                           "   - that the image is too large when opened (filesize)\r\n"
                           "   - you do not have sufficient memory to handle the iamge\r\n"
                           "   - you need to close other applications which are open"),
            QStringLiteral("Picture Problem"));
    }
}

void PicturePanel::Reset()
{
    m_source->SetPicture({});
    ResizeToPicture();
    m_isNewlyChosen = false;
    SetSliderEnabled();
    ScrollbarStuff();
}

void PicturePanel::ShowRecord()
{
    Reset();
    if (const QFileInfo file(PicturePath()); file.exists() && !file.isDir()) {
        LoadPicture();
    }
    m_ui->cmdRemove->setEnabled(m_source->HasPicture());
    m_ui->cmdLoad->setEnabled(!m_source->HasPicture());
    SetZoomToMaximum();
    ApplyZoom();
}

QString PicturePanel::PicturePath() const
{
    return Tarno::PicturePath(m_program->folder, m_record->Text(m_position));
}

/// Returns the frame without its right and bottom margin.
QRect PicturePanel::VisibleArea() const
{
    return m_ui->frPic->contentsRect().adjusted(0, 0, -frameMargin, -frameMargin);
}

/// Resizes source and surface to the natural size of the picture, or to the frame if there is no picture.
void PicturePanel::ResizeToPicture()
{
    const QRect area = VisibleArea();
    const QRect picture(area.topLeft(), m_source->HasPicture() ? m_source->NaturalSize() : area.size());
    m_source->setGeometry(picture);
    m_surface->setGeometry(picture);
    m_surface->update();
}

void PicturePanel::LoadPicture()
{
    m_source->SetPicture({});
    RunWithProblemMessage([this] {
        const QString path = PicturePath();
        if (!path.isEmpty()) {
            m_source->SetPicture(ReadPicture(path));
        }
    });
    ResizeToPicture();
    SetSliderEnabled();
}

void PicturePanel::SetSliderEnabled()
{
    const QSize natural = m_source->NaturalSize();
    const QRect area = VisibleArea();
    const bool larger = natural.height() > area.height() && natural.width() > area.width();
    m_ui->sldZoom->setEnabled(m_isNewlyChosen ? m_source->HasPicture() : larger);
}

void PicturePanel::SetZoomToMaximum()
{
    const QSignalBlocker quiet(m_ui->sldZoom);
    m_ui->sldZoom->setValue(m_ui->sldZoom->maximum());
}

void PicturePanel::ApplyZoom()
{
    if (!m_source->HasPicture()) {
        return;
    }
    if (m_ui->sldZoom->value() == 0) {
        const QSignalBlocker quiet(m_ui->sldZoom);
        m_ui->sldZoom->setValue(1);
    }
    RunWithProblemMessage([this] {
        m_surface->resize(
            (m_source->NaturalSize() * (m_ui->sldZoom->value() / 100.0)).expandedTo(QSize(1, 1)));
        ScrollbarStuff();
    });
}

void PicturePanel::ScrollbarStuff()
{
    Trap(ToUtf8(window()->objectName()), "ScrollbarStuff", [this] {
        SetScrollbarsEnabled();
        for (QScrollBar* bar : {m_ui->hscPic, m_ui->vscPic}) {
            bar->setValue(0);
        }
        PlaceByScrollbars();
    });
}

void PicturePanel::SetScrollbarsEnabled()
{
    const QRect area = VisibleArea();
    m_ui->vscPic->setEnabled(m_source->HasPicture() && m_surface->height() > area.height());
    m_ui->hscPic->setEnabled(m_source->HasPicture() && m_surface->width() > area.width());
    for (QScrollBar* bar : {m_ui->hscPic, m_ui->vscPic}) {
        bar->setValue(bar->isEnabled() ? bar->value() : 0);
    }
}

void PicturePanel::PlaceByScrollbars()
{
    const QRect area = m_ui->frPic->contentsRect();
    const auto place = [](int frame, int picture, const QScrollBar* bar) {
        return bar->isEnabled() ? (frame - picture) * bar->sliderPosition() / scrollSteps : 0;
    };
    m_surface->move(area.topLeft() + QPoint(place(area.width(), m_surface->width(), m_ui->hscPic),
                                            place(area.height(), m_surface->height(), m_ui->vscPic)));
}

void PicturePanel::ChoosePicture()
{
    const auto path = m_program->files.Open(
        window(), {.title = QStringLiteral("Select the image to display"),
                   .filter = QStringLiteral("*.bmp,*.jpg,*.tif,*.gif,*.ico,*.wmf "
                                            "(*.bmp *.jpg *.tif *.gif *.ico *.wmf);;All Files (*)"),
                   .folder = FromUtf8(m_program->folder.GetAppPath() + '/'),
                   .fileName = QStringLiteral("Image Files")});
    if (!path) {
        return;
    }
    SetZoomToMaximum();
    StorePath(ToUtf8(*path));
    m_ui->cmdRemove->setEnabled(true);
    m_ui->cmdRemove->setFocus();
    m_ui->cmdLoad->setEnabled(false);
    m_isNewlyChosen = true;
    LoadPicture();
    ApplyZoom();
    Q_EMIT PictureChanged();
}

void PicturePanel::RemovePicture()
{
    StorePath("");
    m_isNewlyChosen = false;
    LoadPicture();
    SetZoomToMaximum();
    ApplyZoom();
    ScrollbarStuff();
    m_focusAfterRemove->setFocus();
    m_ui->cmdRemove->setEnabled(false);
    m_ui->cmdLoad->setEnabled(true);
    Q_EMIT PictureChanged();
}

void PicturePanel::StorePath(const std::string& path)
{
    m_record->Store(m_position, path);
    m_record->SetChanged(true);
}

bool PicturePanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_ui->frPic && event->type() == QEvent::Resize) {
        if (!m_source->HasPicture()) {
            ResizeToPicture();
        }
        SetSliderEnabled();
        SetScrollbarsEnabled();
        PlaceByScrollbars();
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace Tarno
