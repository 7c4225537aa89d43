#include "QueryBar.h"

#include "TextCompleter.h"
#include "core/Text.h"
#include "qt/Strings.h"
#include "ui/common/Handle.h"
#include "ui_QueryBar.h"

#include <QKeyEvent>

namespace Tarno
{

namespace
{

int Characters(std::string_view text)
{
    return static_cast<int>(FromUtf8(text).size());
}

/// Converts the bytes of `completion` in `text` to characters.
TextCompleter::Proposals ProposalsOf(const Completion& completion, const std::string& text)
{
    const std::string_view bytes = text;
    TextCompleter::Proposals proposals{.position = Characters(bytes.substr(0, completion.position)),
                                       .length =
                                           Characters(bytes.substr(completion.position, completion.length))};
    for (const std::string& proposal : completion.texts) {
        proposals.texts << FromUtf8(proposal);
    }
    return proposals;
}

} // namespace

QueryBar::QueryBar(QWidget* parent) : QWidget(parent), m_ui(std::make_unique<Ui::QueryBar>())
{
    m_ui->setupUi(this);
    hide();
    m_ui->txtFind->installEventFilter(this);
    new TextCompleter(m_ui->txtFind, [this](const QString& line, int cursor) {
        const std::string text = ToUtf8(line);
        if (!m_completion) {
            m_completion = m_createCompletion();
        }
        return ProposalsOf(m_completion->At(text, ToUtf8(line.left(cursor)).size()), text);
    });
    Handle(m_ui->txtFind, &QLineEdit::textChanged, "Change", this, [this] { ReadQuery(); });
    Handle(m_ui->cmdFindHelp, &QAbstractButton::clicked, "Click", this, [this] { Q_EMIT HelpRequested(); });
    Handle(m_ui->cmdFindClose, &QAbstractButton::clicked, "Click", this, [this] { Close(); });
}

QueryBar::~QueryBar() = default;

void QueryBar::Open()
{
    show();
    m_ui->txtFind->setFocus(Qt::ShortcutFocusReason);
    m_ui->txtFind->selectAll();
}

void QueryBar::Search(const QString& query)
{
    show();
    m_ui->txtFind->setText(query);
}

void QueryBar::Close()
{
    m_ui->txtFind->clear();
    hide();
    Q_EMIT Closed();
}

QString QueryBar::Text() const
{
    return m_ui->txtFind->text();
}

void QueryBar::ReadQuery()
{
    m_query = Query(ToUtf8(m_ui->txtFind->text()));
    QStringList faults;
    for (const QueryFault& fault : m_query.Faults()) {
        faults << FromUtf8(fault.reason);
    }
    m_ui->lblFindFault->setText(faults.join(QLatin1Char('\n')));
    m_ui->lblFindFault->setVisible(!faults.isEmpty());
    m_ui->txtFind->setAccessibleDescription(faults.join(QLatin1Char(' ')));
    Q_EMIT QueryChanged();
}

void QueryBar::ShowCount(std::size_t found, std::size_t all, std::size_t kept)
{
    const auto counted = [all](std::size_t count) {
        return QStringLiteral("%1 of ").arg(count) + FromUtf8(Counted(all, "trip"));
    };
    // the box does not change its width while the user types
    m_ui->lblFound->setMinimumWidth(m_ui->lblFound->fontMetrics().horizontalAdvance(counted(all)));
    m_ui->lblFound->setText(counted(found) +
                            (kept > 0 ? QStringLiteral(", and %1 just saved").arg(kept) : QString()));
}

/// Keeps keys that edit the text from being shortcuts of the window, and handles Enter and Down.
bool QueryBar::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* press = static_cast<QKeyEvent*>(event);
        if (press->matches(QKeySequence::Redo) ||
            press->keyCombination() == QKeyCombination(Qt::ControlModifier, Qt::Key_Y)) {
            event->accept();
        }
        if (press->keyCombination() == QKeyCombination(Qt::ControlModifier, Qt::Key_E)) {
            event->ignore(); // the box would take it for the key End, elsewhere than on Windows
            return true;
        }
    } else if (event->type() == QEvent::KeyPress) {
        const auto* press = static_cast<QKeyEvent*>(event);
        switch (press->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Down:
            Q_EMIT Entered();
            return true;
        case Qt::Key_Y:
            if (press->modifiers() ==
                Qt::ControlModifier) { // elsewhere than on Windows, the box does not know it
                m_ui->txtFind->redo();
                return true;
            }
            break;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace Tarno
