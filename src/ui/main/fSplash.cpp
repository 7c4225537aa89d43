#include "fSplash.h"

#include "core/ErrorLog.h"
#include "qt/Icons.h"
#include "ui/common/Handle.h"
#include "ui_fSplash.h"

#include <QCoreApplication>
#include <QFont>
#include <QTimer>

#include <chrono>

namespace Tarno
{

namespace
{

constexpr std::string_view module = "fSplash";
constexpr std::chrono::milliseconds splashTime{2500};
constexpr QSize pictureSize(480, 270);

} // namespace

fSplash::fSplash(const QString& folder, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::fSplash>()), tShow(new QTimer(this))
{
    m_ui->setupUi(this);
    m_ui->picAbout->setPixmap(DrawnIcon(QLatin1String("splash")).pixmap(pictureSize, devicePixelRatioF()));
    m_ui->picAbout->setAccessibleName(QStringLiteral("An angler in a boat at dawn"));
    m_ui->lblVersion->setText(QStringLiteral("Version ") + QCoreApplication::applicationVersion());
    m_ui->textArea->setFixedWidth(pictureSize.width());
    m_ui->txtFolder->setText(folder);
    m_ui->txtFolder->setCursorPosition(0);
    m_ui->cmdOK->setFocus();
    QFont title = font();
    title.setPointSizeF(title.pointSizeF() * 1.75);
    title.setBold(true);
    m_ui->lblTitle->setFont(title);
    layout()->setSizeConstraint(QLayout::SetMinAndMaxSize);
    tShow->setObjectName(QStringLiteral("tShow"));
    tShow->setSingleShot(true);
    tShow->setInterval(splashTime);
    connect(tShow, &QTimer::timeout, this, [this] { Trap(module, "tShow_Timer", [this] { accept(); }); });
    if (parent != nullptr) {
        parent->installEventFilter(this);
    }
    Handle(m_ui->cmdOK, &QPushButton::clicked, "Click", this, [this] { accept(); });
}

fSplash::~fSplash() = default;

/// Centres the window on its parent, which the window manager may place after the splash is already shown.
bool fSplash::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parentWidget() && event->type() == QEvent::Move && isVisible()) {
        const QPoint frame = geometry().topLeft() - pos(); // the size of frameGeometry is not known yet
        move(parentWidget()->geometry().center() - rect().center() - frame);
    }
    return QDialog::eventFilter(watched, event);
}

void fSplash::ShowSplash()
{
    tShow->start();
    exec();
}

void fSplash::ShowAbout()
{
    tShow->stop();
    exec();
}

} // namespace Tarno
