#include "PicturePanel.h"

#include "PictureFile.h"
#include "PictureSurface.h"
#include "core/ErrorLog.h"
#include "core/Twips.h"
#include "qt/Strings.h"
#include "ui_PicturePanel.h"

#include <QDir>
#include <QFileInfo>

namespace
{

constexpr int frameMargin = FromTwips(20);
constexpr int scrollSteps = 20;

} // namespace

PicturePanel::PicturePanel(QWidget* parent) : QWidget(parent), m_ui(std::make_unique<Ui::PicturePanel>())
{
    m_ui->setupUi(this);
    m_surface = new PictureSurface(m_ui->frPic);
    Reset();
    connect(m_ui->cmdLoad, &QPushButton::clicked, this,
            [this] { Handle("cmdLoad_Click", &PicturePanel::ChoosePicture); });
    connect(m_ui->cmdRemove, &QPushButton::clicked, this,
            [this] { Handle("cmdRemove_Click", &PicturePanel::RemovePicture); });
    connect(m_ui->sldZoom, &QSlider::valueChanged, this, &PicturePanel::ApplyZoom);
    connect(m_ui->sldZoom, &QSlider::sliderReleased, this, &PicturePanel::ApplyZoom);
    for (QScrollBar* bar : {m_ui->hscPic, m_ui->vscPic}) {
        connect(bar, &QScrollBar::valueChanged, this, &PicturePanel::PlaceByScrollbars);
    }
}

PicturePanel::~PicturePanel() = default;

void PicturePanel::Attach(const Program& program, EditedRecord& record, std::size_t position,
                          const QString& name, QWidget* focusAfterRemove)
{
    m_surface->setObjectName(name);
    m_program = &program;
    m_record = &record;
    m_position = position;
    m_focusAfterRemove = focusAfterRemove;
}

/// Runs `body`; an error in it ends it with the message about problem pictures.
template <typename Body>
void PicturePanel::Guarded(Body&& body)
{
    try {
        body();
    } catch (const std::exception&) {
        m_program->messages.Tell(
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
    m_surface->SetPicture({});
    m_surface->setGeometry(QRect({0, 0}, VisibleArea()));
    m_shownAsChosen = false;
    SetSliderEnabled();
    ScrollbarStuff();
}

void PicturePanel::ShowRecord()
{
    Reset();
    if (const QFileInfo file(PicturePath()); file.exists() && !file.isDir()) {
        LoadPicture();
    }
    m_ui->cmdRemove->setEnabled(m_surface->HasPicture());
    m_ui->cmdLoad->setEnabled(!m_surface->HasPicture());
    SetZoomToMaximum();
    ApplyZoom();
}

QString PicturePanel::PicturePath() const
{
    const std::string stored = m_record->Text(m_position);
    return stored.empty() ? QString()
                          : QDir(FromUtf8(m_program->folder.GetAppPath() + '/')).filePath(FromUtf8(stored));
}

QSize PicturePanel::VisibleArea() const
{
    return m_ui->frPic->contentsRect().size() - QSize(frameMargin, frameMargin);
}

void PicturePanel::LoadPicture()
{
    m_surface->SetPicture({});
    Guarded([this] {
        const QString path = PicturePath();
        if (!path.isEmpty()) {
            m_surface->SetPicture(ReadPicture(path));
        }
    });
    m_surface->setGeometry(QRect({0, 0}, m_surface->HasPicture() ? m_surface->NaturalSize() : VisibleArea()));
    SetSliderEnabled();
}

void PicturePanel::SetSliderEnabled()
{
    const QSize natural = m_surface->NaturalSize();
    const QSize area = VisibleArea();
    const bool larger = natural.height() > area.height() && natural.width() > area.width();
    m_ui->sldZoom->setEnabled(m_shownAsChosen ? m_surface->HasPicture() : larger);
}

void PicturePanel::SetZoomToMaximum()
{
    const QSignalBlocker quiet(m_ui->sldZoom);
    m_ui->sldZoom->setValue(m_ui->sldZoom->maximum());
}

void PicturePanel::ApplyZoom()
{
    if (!m_surface->HasPicture()) {
        return;
    }
    if (m_ui->sldZoom->value() == 0) {
        const QSignalBlocker quiet(m_ui->sldZoom);
        m_ui->sldZoom->setValue(1);
    }
    Guarded([this] {
        m_surface->resize(
            (m_surface->NaturalSize() * (m_ui->sldZoom->value() / 100.0)).expandedTo(QSize(1, 1)));
        ScrollbarStuff();
    });
}

void PicturePanel::ScrollbarStuff()
{
    SetScrollbarsEnabled();
    for (QScrollBar* bar : {m_ui->hscPic, m_ui->vscPic}) {
        bar->setValue(0);
    }
    PlaceByScrollbars();
}

void PicturePanel::SetScrollbarsEnabled()
{
    const QSize area = VisibleArea();
    m_ui->vscPic->setEnabled(m_surface->HasPicture() && m_surface->height() > area.height());
    m_ui->hscPic->setEnabled(m_surface->HasPicture() && m_surface->width() > area.width());
    for (QScrollBar* bar : {m_ui->hscPic, m_ui->vscPic}) {
        bar->setValue(bar->isEnabled() ? bar->value() : 0);
    }
}

void PicturePanel::PlaceByScrollbars()
{
    const QRect area = m_ui->frPic->contentsRect();
    const auto place = [](int frame, int picture, const QScrollBar* bar) {
        return bar->isEnabled() ? (frame - picture) * bar->value() / scrollSteps : 0;
    };
    m_surface->move(area.topLeft() + QPoint(place(area.width(), m_surface->width(), m_ui->hscPic),
                                            place(area.height(), m_surface->height(), m_ui->vscPic)));
}

/// Errors are the window's own, whichever window the panel stands in.
void PicturePanel::Handle(const char* routine, void (PicturePanel::*body)())
{
    Trap(ToUtf8(window()->objectName()), routine, [&] { (this->*body)(); });
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
    TakePath(ToUtf8(*path));
    m_ui->cmdRemove->setEnabled(true);
    m_ui->cmdRemove->setFocus();
    m_ui->cmdLoad->setEnabled(false);
    m_shownAsChosen = true;
    LoadPicture();
    ApplyZoom();
    Q_EMIT PictureChanged();
}

void PicturePanel::RemovePicture()
{
    TakePath("");
    m_shownAsChosen = false;
    LoadPicture();
    SetZoomToMaximum();
    ApplyZoom();
    ScrollbarStuff();
    m_focusAfterRemove->setFocus();
    m_ui->cmdRemove->setEnabled(false);
    m_ui->cmdLoad->setEnabled(true);
    Q_EMIT PictureChanged();
}

void PicturePanel::TakePath(const std::string& path)
{
    m_record->Store(m_position, path);
    m_record->SetChanged(true);
}

void PicturePanel::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (!m_surface->HasPicture()) {
        m_surface->resize(VisibleArea());
    }
    SetSliderEnabled();
    SetScrollbarsEnabled();
    PlaceByScrollbars();
}
