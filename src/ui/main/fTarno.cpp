#include "fTarno.h"

#include "AutomaticBackUp.h"
#include "LogCommands.h"
#include "LogView.h"
#include "UndoMenu.h"
#include "analysis/TripDescription.h"
#include "core/ErrorLog.h"
#include "qt/Strings.h"
#include "ui/common/Notices.h"
#include "ui/entry/PictureFile.h"
#include "ui/help/fHelp.h"
#include "ui_fTarno.h"

#include <QCloseEvent>
#include <QKeyEvent>

namespace Tarno
{

namespace
{

constexpr std::string_view module = "fTarno";

} // namespace

fTarno::fTarno(const Program& program)
    : m_program(program), m_ui(std::make_unique<Ui::fTarno>()), m_commands(new LogCommands(this))
{
    m_ui->setupUi(this);
    m_log = new LogView(program, *m_ui->lvwEntry, *m_ui->queryBar, this);
    m_undo = new UndoMenu(program, m_ui->miUndo, m_ui->miRedo, this);
    AddCommands();
    AddTransferCommands();
    ConnectHandlers();
    Form_Load();
    m_program.windows.Remember(*this);
}

fTarno::~fTarno() = default;

void fTarno::ConnectHandlers()
{
    connect(m_commands, &LogCommands::Started, this, [this] { HidePane(m_ui->barDeleted); });
    connect(m_ui->cmdExit, &QPushButton::clicked, this, &fTarno::cmdExit_Click);
    connect(m_ui->cmdUndoDelete, &QPushButton::clicked, m_undo, &UndoMenu::Undo);
    connect(m_ui->lvwEntry, &SortableList::OpenRequested, this, &fTarno::lvwEntry_DblClick);
    connect(m_ui->lvwEntry, &SortableList::Pressed, this, &fTarno::lvwEntry_MouseDown);
    connect(m_ui->lvwEntry, &SortableList::SelectionChanged, this, &fTarno::ShowSelectedTrip);
    connect(m_log, &LogView::QueryChanged, this, [this] {
        EnableCommands();
        ShowSelectedTrip();
    });
    connect(m_ui->queryBar, &QueryBar::HelpRequested, this,
            [this] { ShowManual(this, QStringLiteral("find"), m_program.windows); });
    connect(m_undo, &UndoMenu::Started, this, [this] { HidePane(m_ui->barDeleted); });
    connect(m_undo, &UndoMenu::Finished, this, [this](const std::string& trip) {
        m_log->ShowSaved({trip});
        ShowChanges();
    });
}

/// Hides a part of the window. If the focus is in it, the list gets the focus, otherwise "Exit" would.
void fTarno::HidePane(QWidget* pane)
{
    if (pane->isAncestorOf(focusWidget())) {
        m_ui->lvwEntry->setFocus();
    }
    pane->hide();
}

void fTarno::lvwEntry_DblClick()
{
    HidePane(m_ui->barDeleted);
    Trap(module, "lvwEntry_DblClick", [this] { Edit(); });
}

void fTarno::lvwEntry_MouseDown(Qt::MouseButton button, const QPoint& position)
{
    Trap(module, "lvwEntry_MouseDown", [&] {
        EnableCommands();
        if (button == Qt::RightButton) {
            m_commands->ShowPopUp(position);
        }
    });
}

void fTarno::Form_Load()
{
    Trap(module, "Form_Load", [this] {
        m_log->LoadEntryList();
        m_ui->lvwEntry->SelectKey(m_program.windows.SelectedRow(FromUtf8(m_program.folder.GetAppPath())));
        RecordList locations;
        m_program.sql.LocationList(locations); // reports unreadable locations, once
        m_ui->miDetails->setChecked(m_program.windows.AreDetailsShown());
        m_ui->tripDetails->setVisible(m_ui->miDetails->isChecked());
        ShowChanges();
    });
}

void fTarno::EnableCommands()
{
    RecordList locations;
    if (m_program.sql.CanAddLocations() && m_program.sql.LocationList(locations) != succeeded) {
        return;
    }
    m_log->ShowHint(!locations.empty());
    m_commands->Enable({.isReadable = m_program.sql.CanAddEntries() && m_program.sql.CanAddLocations(),
                        .canAddTrip = !locations.empty() && m_program.sql.CanAddEntries(),
                        .hasTrips = m_log->TripCount() > 0,
                        .hasRows = m_ui->lvwEntry->RowCount() > 0,
                        .isRestricted = m_log->IsRestricted()});
}

/// Adapts everything that depends on the log or on what is found.
void fTarno::ShowChanges()
{
    m_log->ForgetRecords();
    m_undo->Update();
    EnableCommands();
    m_detailed.reset();
    ShowSelectedTrip();
}

void fTarno::SetControls(bool usable)
{
    Trap(module, "SetControls", [&] { m_ui->lvwEntry->SetUsable(usable); });
}

/// Greys the list while `body` shows a window. Then enables the list and the commands again, even if `body`
/// failed.
void fTarno::WithListGreyed(const char* routine, const std::function<void()>& body)
{
    SetControls(false);
    Trap(module, routine, body);
    SetControls(true);
    ShowChanges();
    activateWindow(); // some window managers activate no window when two close at once
    m_ui->lvwEntry->setFocus();
}

/// Shows the details of the selected trip, if they are not shown already.
void fTarno::ShowSelectedTrip()
{
    const auto selected = m_log->SelectedKey();
    if (m_ui->tripDetails->isHidden() || (m_detailed && m_detailed == selected)) {
        return;
    }
    m_detailed = selected;
    Trap(module, "ShowSelectedTrip", [this] {
        if (const auto trip = m_log->SelectedTrip()) {
            m_ui->tripDetails->ShowTrip(DescribeTrip(*trip, m_log->Places()),
                                        PicturePath(m_program.folder, trip->Text(EntryField::Picture)));
        } else {
            m_ui->tripDetails->ShowNothing();
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
        if (answer == Button::Yes && ConfirmLosingChanges(m_program.sql, this, m_program.messages)) {
            m_exitConfirmed = true;
            if (const auto selected = m_ui->lvwEntry->SelectedKey()) {
                m_program.windows.SetSelectedRow(FromUtf8(m_program.folder.GetAppPath()), *selected);
            }
            BackUpAutomatically(m_program, this);
            m_program.sql.DeInit();
            Q_EMIT ExitConfirmed();
        }
    });
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
    if (event->key() == Qt::Key_Escape && m_ui->queryBar->isVisible()) {
        m_ui->queryBar->Close();
    } else if (event->key() == Qt::Key_Escape) {
        cmdExit_Click();
    } else {
        QMainWindow::keyPressEvent(event);
    }
}

} // namespace Tarno
