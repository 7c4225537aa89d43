#include "PickLists.h"

#include "EntryModule.h"
#include "core/ErrorLog.h"
#include "core/Paths.h"
#include "core/Twips.h"
#include "qt/Strings.h"
#include "ui/common/ClickLabel.h"
#include "ui/common/LeaveGuard.h"

#include <QApplication>
#include <QGroupBox>
#include <QKeyEvent>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QStringDecoder>

#include <algorithm>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace Tarno
{

namespace
{

constexpr int gapBelowLabel = FromTwips(40);
constexpr int overlapOfFrame = FromTwips(100);

/// Decodes `bytes` with the ANSI code page of the system.
QString FromAnsi(const QByteArray& bytes)
{
#ifdef Q_OS_WIN
    // the system's code page, because that of the process is UTF-8; some systems have none
    DWORD codePage = 0;
    ::GetLocaleInfoW(LOCALE_SYSTEM_DEFAULT, LOCALE_IDEFAULTANSICODEPAGE | LOCALE_RETURN_NUMBER,
                     reinterpret_cast<wchar_t*>(&codePage), sizeof codePage / sizeof(wchar_t));
    if (codePage == CP_ACP || codePage == CP_UTF8) {
        constexpr DWORD western = 1252;
        codePage = western;
    }
    const auto size = static_cast<int>(bytes.size());
    QString text(::MultiByteToWideChar(codePage, 0, bytes.data(), size, nullptr, 0), Qt::Uninitialized);
    ::MultiByteToWideChar(codePage, 0, bytes.data(), size, reinterpret_cast<wchar_t*>(text.data()),
                          static_cast<int>(text.size()));
    return text;
#else
    QStringDecoder decoder("windows-1252");
    return (decoder.isValid() ? std::move(decoder) : QStringDecoder(QStringDecoder::Latin1))(bytes);
#endif
}

} // namespace

QStringList PickListLines(const QByteArray& bytes)
{
    // stateless, so that an incomplete sequence at the end is an error
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8(bytes);
    if (utf8.hasError()) {
        text = FromAnsi(bytes);
    }
    return text.replace(QLatin1String("\r\n"), QLatin1String("\n")).split(QLatin1Char('\n'));
}

QStringList ReadPickList(const ProgramFolder& folder, const char* file)
{
    std::string path = folder.FindPath(file);
    return mMain::FileExist(path) ? PickListLines(QByteArray::fromStdString(ReadWholeFile(path)))
                                  : QStringList();
}

PickLists::PickLists(QListWidget* list, const Program& program, LeaveGuard& guard)
    : QObject(list->parentWidget()),
      m_page(list->parentWidget()),
      m_program(program),
      m_guard(guard),
      m_list(list)
{
    m_list->setUniformItemSizes(true);
    m_list->hide();
    m_list->installEventFilter(this);
    m_page->installEventFilter(this);
    guard.Add(m_list, [this] {
        Close();
        return true;
    });
}

void PickLists::Add(const PickList& pickList)
{
    for (ClickLabel* label : {pickList.editLabel, pickList.dropDownLabel}) {
        QFont font = label->font();
        font.setFamily(QStringLiteral("MS Sans Serif"));
        font.setBold(true);
        label->setFont(font);
    }
    const auto clicked = [](const ClickLabel* label) { return ToUtf8(label->objectName()) + "_Click"; };
    connect(pickList.editLabel, &ClickLabel::Clicked, this, [this, pickList, clicked] {
        Trap(entryModule, clicked(pickList.editLabel),
             [&] { m_program.programs.EditText(FromUtf8(m_program.folder.FindPath(pickList.file))); });
    });
    const auto open = [this, pickList, clicked] {
        Trap(entryModule, clicked(pickList.dropDownLabel), [&] { Open(pickList); });
    };
    connect(pickList.dropDownLabel, &ClickLabel::Clicked, this, open);
    // the label takes no focus, so Alt+Down in the box opens the list, as in a combo box
    auto* shortcut = new QShortcut(QKeySequence(Qt::ALT | Qt::Key_Down), pickList.box);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, open);
}

void PickLists::Open(const PickList& pickList)
{
    Close();
    if (!m_guard.Leave()) { // the list is about to take the focus
        return;
    }
    m_opened = pickList;
    Fill(pickList);
    if (m_list->count() > 0) {
        m_list->setCurrentRow(0, QItemSelectionModel::NoUpdate);
        Place(pickList);
        m_list->show();
        m_list->raise();
        m_list->setFocus();
        qApp->installEventFilter(this);
    }
}

void PickLists::Fill(const PickList& pickList)
{
    m_list->clear();
    const QStringList lines = ReadPickList(m_program.folder, pickList.file);
    for (int index = 0; index < lines.size(); ++index) {
        if (!lines[index].isEmpty()) {
            auto* item = new QListWidgetItem(lines[index], m_list);
            item->setData(Qt::UserRole, index);
        }
    }
}

/// Places the list just below the label and limits its height to the page.
void PickLists::Place(const PickList& pickList)
{
    constexpr int widthInLetters = 36;
    constexpr int mostRows = 12;
    const ClickLabel* label = pickList.dropDownLabel;
    const QWidget* frame = label->parentWidget();
    const int width = widthInLetters * m_list->fontMetrics().averageCharWidth();
    const int top = frame->y() + label->y() + label->height() + gapBelowLabel;
    const int left = pickList.side == PickList::Side::Left ? frame->x() - width + overlapOfFrame : label->x();
    const int rows = std::min(mostRows, m_list->count());
    const int wanted = rows * m_list->sizeHintForRow(0) + 2 * m_list->frameWidth();
    m_list->setGeometry(left, top, width, std::min(wanted, m_page->height() - top - gapBelowLabel));
}

/// Hides the open list, if any, and appends its selected lines to the box.
void PickLists::Close()
{
    if (!m_list->isHidden()) {
        qApp->removeEventFilter(this);
        Trap(entryModule, "lstList_LostFocus", [this] { lstList_LostFocus(); });
    }
}

void PickLists::lstList_LostFocus()
{
    QString text = m_opened.box->toPlainText();
    QString added;
    for (int row = 0; row < m_list->count(); ++row) {
        if (m_list->item(row)->isSelected()) {
            const bool startsLine = text.isEmpty() || text.endsWith(QLatin1Char('\n'));
            const QString line = (startsLine ? QString() : QStringLiteral("\n")) + m_list->item(row)->text();
            text += line;
            added += line;
        }
    }
    if (!added.isEmpty()) {
        QTextCursor end(m_opened.box->document());
        end.movePosition(QTextCursor::End);
        end.insertText(added);
    }
    // return the focus to the box, so that Tab continues from there
    const bool hadFocus = m_list->hasFocus();
    m_list->hide();
    if (hadFocus) {
        m_opened.box->setFocus();
    }
}

/// Moves to the next line that starts with the typed text. Unlike keyboardSearch alone, keeps the selection.
void PickLists::GoToLine(const QString& typed)
{
    const QItemSelection chosen = m_list->selectionModel()->selection();
    m_list->keyboardSearch(typed);
    m_list->selectionModel()->select(chosen, QItemSelectionModel::ClearAndSelect);
}

bool PickLists::eventFilter(QObject* receiver, QEvent* event)
{
    if (receiver == m_list && event->type() == QEvent::KeyPress) {
        const auto* press = static_cast<QKeyEvent*>(event);
        const int key = press->key();
        if (key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter) {
            Close();
            return true;
        }
        if (!press->text().trimmed().isEmpty() && (press->modifiers() & ~Qt::ShiftModifier) == 0) {
            GoToLine(press->text());
            return true;
        }
    } else if (receiver == m_list && event->type() == QEvent::FocusOut) {
        // the list stays open while another program or a menu has the focus
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) {
            Close();
        }
    } else if (receiver == m_page && event->type() == QEvent::Resize && !m_list->isHidden()) {
        Place(m_opened);
    } else if (event->type() == QEvent::MouseButtonPress && receiver->isWidgetType()) {
        auto* pressed = static_cast<QWidget*>(receiver);
        if (pressed->window() == m_page->window() && pressed != m_list && !m_list->isAncestorOf(pressed)) {
            Close();
        }
    }
    return false;
}

} // namespace Tarno
