#include "fHelp.h"

#include "core/ErrorLog.h"
#include "ui/common/Handle.h"
#include "ui/common/RememberedWindows.h"

#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

// Q_INIT_RESOURCE does not work inside a namespace
static void InitManual()
{
    Q_INIT_RESOURCE(manual);
}

namespace Tarno
{

namespace
{

constexpr std::string_view module = "fHelp";

} // namespace

fHelp::fHelp(QWidget* parent) : QDialog(parent), m_browser(new QTextBrowser(this))
{
    InitManual();
    setObjectName(QStringLiteral("fHelp"));
    setWindowTitle(QStringLiteral("Tarno Manual"));
    setAttribute(Qt::WA_DeleteOnClose);
    resize(800, 640);
    m_browser->setObjectName(QStringLiteral("txtManual"));
    m_browser->setAccessibleName(QStringLiteral("Manual"));
    m_browser->document()->setDocumentMargin(16);
    if (palette().color(QPalette::Base).lightness() < 128) { // some dark themes have dark links
        m_browser->document()->setDefaultStyleSheet(QStringLiteral("a { color: #7ab8ff; }"));
    }

    auto* contents = new QPushButton(QStringLiteral("C&ontents"), this);
    contents->setObjectName(QStringLiteral("cmdContents"));
    auto* back = new QPushButton(QStringLiteral("&Back"), this);
    back->setObjectName(QStringLiteral("cmdBack"));
    back->setEnabled(false);
    auto* close = new QPushButton(QStringLiteral("&Close"), this);
    close->setObjectName(QStringLiteral("cmdClose"));
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    for (QPushButton* button : {contents, back, close}) {
        button->setAutoDefault(false);
        if (button == close) {
            buttons->addStretch();
        }
        buttons->addWidget(button);
    }
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(16);
    layout->addWidget(m_browser);
    layout->addLayout(buttons);

    Handle(contents, &QPushButton::clicked, "Click", this, [this] { ShowContents(); });
    Handle(back, &QPushButton::clicked, "Click", this, [this] { m_browser->backward(); });
    connect(m_browser, &QTextBrowser::backwardAvailable, back, &QPushButton::setEnabled);
    Handle(close, &QPushButton::clicked, "Click", this, [this] { reject(); });
    m_browser->setFocus();
}

void fHelp::ShowPage(const QString& name)
{
    const QString page = name + QLatin1String(".html");
    if (QFile::exists(QLatin1String(":/manual/") + page)) {
        m_browser->setSource(QUrl(QLatin1String("qrc:/manual/") + page));
    } else {
        ShowContents();
    }
}

void fHelp::ShowContents()
{
    m_browser->setSource(QUrl(QStringLiteral("qrc:/manual/index.html")));
}

void ShowManual(QWidget* window, const QString& page, const RememberedWindows& windows)
{
    auto* help =
        window == nullptr ? nullptr : window->findChild<fHelp*>(QString(), Qt::FindDirectChildrenOnly);
    if (help == nullptr) {
        help = new fHelp(window);
        windows.Remember(*help);
    }
    help->ShowPage(page);
    help->show();
    help->raise();
    help->activateWindow();
}

HelpKey::HelpKey(const RememberedWindows& windows) : m_windows(windows)
{
    qApp->installEventFilter(this);
}

bool HelpKey::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() != QEvent::KeyPress || !object->isWindowType() ||
        static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1) {
        return QObject::eventFilter(object, event);
    }
    Trap(module, "F1", [this] {
        QWidget* window = QApplication::activeWindow();
        if (qobject_cast<fHelp*>(window) == nullptr) {
            ShowManual(window, window == nullptr ? QString() : window->objectName(), m_windows);
        }
    });
    return true;
}

} // namespace Tarno
