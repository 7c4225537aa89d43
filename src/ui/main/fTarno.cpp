#include "fTarno.h"

#include "LogColumns.h"
#include "core/Conversions.h"
#include "core/ErrorLog.h"
#include "core/Paths.h"
#include "fSplash.h"
#include "qt/Icons.h"
#include "qt/Strings.h"
#include "ui/common/Notices.h"
#include "ui/entry/fEntry.h"
#include "ui/locations/fLocs.h"
#include "ui/reports/fRptLog.h"
#include "ui_fTarno.h"

#include <QAction>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenu>

#include <vector>

namespace Tarno
{

namespace
{

constexpr std::string_view module = "fTarno";
constexpr std::string_view tideSection = "KOWRA";
constexpr std::string_view tideSetting = "XTidePath";

} // namespace

struct fTarno::Command {
    QAction* button;
    QAction* menuItem;
    Needs needs;
};

fTarno::fTarno(const Program& program)
    : m_program(program), m_ui(std::make_unique<Ui::fTarno>()), m_popUp(new QMenu(this))
{
    m_ui->setupUi(this);
    m_ui->lvwEntry->SetHeadings(LogHeadings());
    m_ui->lvwEntry->FitColumns(LogSamples(), StretchedLogColumn());
    MakeCommands();
    ConnectHandlers();
    Form_Load();
    m_program.windows.Remember(*this);
}

fTarno::~fTarno() = default;

void fTarno::MakeCommands()
{
    m_popUp->setObjectName(QStringLiteral("popPopup"));
    AddCommand(m_ui->icoAdd, "add", "Add", Needs::Location, &fTarno::Add);
    AddCommand(m_ui->icoEdit, "edit", "Edit", Needs::Entry, &fTarno::Edit);
    AddCommand(m_ui->icoDelete, "delete", "Delete", Needs::Entry, &fTarno::Delete);
    AddCommand(m_ui->Earth, "locations", "Locations", Needs::Nothing, &fTarno::Locations);
    AddCommand(m_ui->icoReports, "reports", "Reports", Needs::Entry, &fTarno::Reports);
    AddCommand(m_ui->icoAbout, "about", "About...", Needs::Nothing, &fTarno::About);
    m_popUp->addSeparator();
    AddCommand(m_ui->icoTides, "tides", "Tides", Needs::Nothing, &fTarno::Tides);
}

/// Appends the command to the pop-up menu. The object name of the item contains its index in the menu.
void fTarno::AddCommand(QAction* button, const char* icon, const char* menuCaption, Needs needs,
                        void (fTarno::*run)())
{
    const QIcon drawn = DrawnIcon(QLatin1String(icon));
    const auto index = m_popUp->actions().size();
    QAction* item = m_popUp->addAction(drawn, QLatin1String(menuCaption));
    item->setObjectName(QStringLiteral("miPopUp_") + QString::number(index));
    button->setIcon(drawn);
    connect(button, &QAction::triggered, this,
            [this, run] { Trap(module, "tlbTarno_ButtonClick", [&] { (this->*run)(); }); });
    connect(item, &QAction::triggered, this,
            [this, run] { Trap(module, "miPopup_Click", [&] { (this->*run)(); }); });
    m_commands.push_back({button, item, needs});
}

void fTarno::ConnectHandlers()
{
    connect(m_ui->cmdExit, &QPushButton::clicked, this, &fTarno::cmdExit_Click);
    connect(m_ui->lvwEntry, &SortableList::OpenRequested, this, &fTarno::lvwEntry_DblClick);
    connect(m_ui->lvwEntry, &SortableList::Pressed, this, &fTarno::lvwEntry_MouseDown);
}

void fTarno::lvwEntry_DblClick()
{
    Trap(module, "lvwEntry_DblClick", [this] { Edit(); });
}

void fTarno::lvwEntry_MouseDown(Qt::MouseButton button, const QPoint& position)
{
    Trap(module, "lvwEntry_MouseDown", [&] {
        EnableCommands();
        if (button == Qt::RightButton) {
            m_popUp->popup(position);
        }
    });
}

void fTarno::Form_Load()
{
    Trap(module, "Form_Load", [this] {
        LoadEntryList();
        m_ui->lvwEntry->SelectKey(m_program.windows.SelectedRow(FromUtf8(m_program.folder.GetAppPath())));
        RecordList locations;
        m_program.sql.LocationList(locations); // reports unreadable locations, once
        EnableCommands();
    });
}

void fTarno::EnableCommands()
{
    RecordList locations;
    if (m_program.sql.CanAddLocations() && m_program.sql.LocationList(locations) != succeeded) {
        return;
    }
    m_ui->lvwEntry->SetHint(Hint(!locations.empty()));
    const bool canAdd = !locations.empty() && m_program.sql.CanAddEntries();
    const bool anyEntry = m_ui->lvwEntry->RowCount() > 0;
    for (const Command& command : m_commands) {
        const bool enabled = command.needs == Needs::Location ? canAdd
                             : command.needs == Needs::Entry  ? anyEntry
                                                              : true;
        command.button->setEnabled(enabled);
        command.menuItem->setEnabled(enabled);
    }
}

/// Returns the text for an empty list.
QString fTarno::Hint(bool anyLocation) const
{
    if (!m_program.sql.CanAddEntries()) {
        return UnreadableHint(QStringLiteral("Your log"), QStringLiteral("tarno.xml"));
    }
    if (!m_program.sql.CanAddLocations()) {
        return UnreadableHint(QStringLiteral("Your locations"), QStringLiteral("location.xml"));
    }
    return anyLocation ? QStringLiteral("No trips yet. Click \"Add\" or press Ctrl+N to log the first one.")
                       : QStringLiteral("Your log is empty. Every trip needs a location. Click \"Locations\" "
                                        "to add one first.");
}

void fTarno::LoadEntryList()
{
    std::vector<TextTableModel::Row> rows;
    Trap(module, "LoadEntryList", [&] {
        RecordList entries;
        if (m_program.sql.EntryList(entries) == succeeded) {
            AddLogRows(rows, entries,
                       [this](const std::string& number) { return m_program.sql.LocationNameGet(number); });
        }
    });
    m_ui->lvwEntry->SetRows(std::move(rows));
}

void fTarno::SetControls(bool usable)
{
    Trap(module, "SetControls", [&] { m_ui->lvwEntry->SetUsable(usable); });
}

/// Greys the list while `body` shows a window. Then enables the list and the commands again, even if `body`
/// failed.
template <typename Body>
void fTarno::WithListGreyed(const char* routine, Body&& body)
{
    SetControls(false);
    Trap(module, routine, std::forward<Body>(body));
    SetControls(true);
    EnableCommands();
    activateWindow(); // some window managers activate no window when two close at once
    m_ui->lvwEntry->setFocus();
}

std::int16_t fTarno::SelectedEntry() const
{
    return ToInt16(ToUtf8(m_ui->lvwEntry->SelectedKey().value().mid(1)));
}

void fTarno::EditSelected(const char* routine, bool deleteMode)
{
    if (!m_ui->lvwEntry->SelectedKey()) {
        return;
    }
    WithListGreyed(routine, [&] {
        fEntry(m_program, this).SetData(SelectedEntry(), deleteMode);
        LoadEntryList();
    });
}

void fTarno::Add()
{
    WithListGreyed("Add", [this] {
        fEntry editor(m_program, this);
        editor.SetData(0, false);
        LoadEntryList();
        m_ui->lvwEntry->SelectKey(EntryRowKey(editor.Key()));
    });
}

void fTarno::Edit()
{
    EditSelected("Edit", false);
}

void fTarno::Delete()
{
    EditSelected("Edit", true); // reports errors as "Edit" (see docs/quirks.md)
}

void fTarno::Locations()
{
    WithListGreyed("Locations", [this] { fLocs(m_program, this).exec(); });
}

void fTarno::Reports()
{
    WithListGreyed("Reports", [this] { fRptLog(m_program, this).exec(); });
}

void fTarno::About()
{
    WithListGreyed("About", [this] { fSplash(FromUtf8(m_program.folder.GetAppPath()), this).ShowAbout(); });
}

void fTarno::Tides()
{
    Trap(module, "Tides", [this] {
        std::string path = m_program.settings.GetSetting(tideSection, tideSetting, "");
        if (path.empty() || !mMain::FileExist(path)) {
            QString filter = QStringLiteral("WXTide32 Progam File (WXTide32.exe)");
#ifndef Q_OS_WIN
            filter += QStringLiteral(";;All Files (*)");
#endif
            const auto chosen =
                m_program.files.Open(this, {.title = QStringLiteral("Specify WXTide32 Program Location"),
                                            .filter = filter,
                                            .folder = {},
                                            .fileName = QStringLiteral("WXTide32.exe")});
            if (!chosen) {
                return;
            }
            path = ToUtf8(*chosen);
            m_program.settings.SaveSetting(tideSection, tideSetting, path);
        }
        try {
            m_program.programs.Start(FromUtf8(path), {});
        } catch (const Error&) {
            m_program.settings.DeleteSetting(tideSection, tideSetting); // the next click asks again
            throw;
        }
    });
}

void fTarno::cmdExit_Click()
{
    Trap(module, "cmdExit_Click", [this] {
        const Button answer =
            m_program.messages.Ask(this, {.text = QStringLiteral("Are you sure you want to exit Tarno?"),
                                          .title = QStringLiteral("Going Fishing Again?"),
                                          .icon = Icon::Question,
                                          .buttons = Buttons::YesNoCancel,
                                          .byDefault = Button::No});
        if (answer == Button::Yes && ConfirmLosingChanges()) {
            m_exitConfirmed = true;
            if (const auto selected = m_ui->lvwEntry->SelectedKey()) {
                m_program.windows.SetSelectedRow(FromUtf8(m_program.folder.GetAppPath()), *selected);
            }
            m_program.sql.DeInit();
            Q_EMIT ExitConfirmed();
        }
    });
}

/// Returns true if there are no unsaved changes or the user agrees to lose them.
bool fTarno::ConfirmLosingChanges()
{
    QStringList changes;
    for (const UnsavedChange& change : m_program.sql.UnsavedChanges()) {
        changes << (change.isDeletion ? QStringLiteral("the deletion of ") : QString()) +
                       DescribeRecord(change.record) + FromUtf8(" (" + change.file + ")");
    }
    if (changes.isEmpty()) {
        return true;
    }
    const QString text = QStringLiteral("These changes could not be saved:\r\n\r\n") + Listed(changes) +
                         QStringLiteral("\r\n\r\nIf you exit now, you will lose them. To keep them, click "
                                        "\"No\" and save another change.\r\n\r\nExit anyway?");
    return m_program.messages.Ask(this, {.text = text,
                                         .title = QStringLiteral("Changes Not Saved"),
                                         .icon = Icon::Exclamation,
                                         .buttons = Buttons::YesNo,
                                         .byDefault = Button::No}) == Button::Yes;
}

void fTarno::closeEvent(QCloseEvent* event)
{
    if (!m_exitConfirmed) {
        cmdExit_Click();
    }
    event->setAccepted(m_exitConfirmed);
}

void fTarno::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        cmdExit_Click();
    } else {
        QMainWindow::keyPressEvent(event);
    }
}

} // namespace Tarno
