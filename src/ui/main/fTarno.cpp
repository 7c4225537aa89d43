#include "fTarno.h"

#include "LogView.h"
#include "TideProgram.h"
#include "UndoMenu.h"
#include "analysis/TripDescription.h"
#include "core/Conversions.h"
#include "core/ErrorLog.h"
#include "fSplash.h"
#include "qt/Icons.h"
#include "qt/Strings.h"
#include "reports/ReportDesign.h"
#include "reports/arTripSheet.h"
#include "ui/common/Notices.h"
#include "ui/entry/PictureFile.h"
#include "ui/entry/fEntry.h"
#include "ui/help/fHelp.h"
#include "ui/locations/fLocs.h"
#include "ui/reports/fPreview.h"
#include "ui/reports/fRptLog.h"
#include "ui_fTarno.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenu>

namespace Tarno
{

namespace
{

constexpr std::string_view module = "fTarno";
} // namespace

struct fTarno::Command {
    QAction* action;
    QAction* popUpItem; ///< may be null
    Needs needs;
};

fTarno::fTarno(const Program& program)
    : m_program(program), m_ui(std::make_unique<Ui::fTarno>()), m_popUp(new QMenu(this))
{
    m_ui->setupUi(this);
    m_log = new LogView(program, *m_ui->lvwEntry, *m_ui->queryBar, this);
    m_undo = new UndoMenu(program, m_ui->miUndo, m_ui->miRedo, this);
    MakeCommands();
    ConnectHandlers();
    Form_Load();
    m_program.windows.Remember(*this);
}

fTarno::~fTarno() = default;

void fTarno::MakeCommands()
{
    m_popUp->setObjectName(QStringLiteral("popPopup"));
    m_ui->icoReports->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_R), QKeySequence(Qt::CTRL | Qt::Key_P)});
    AddButton(m_ui->icoAdd, "add", "Add", Needs::NewTrip, &fTarno::Add);
    AddButton(m_ui->icoEdit, "edit", "Edit", Needs::Row, &fTarno::Edit);
    AddButton(m_ui->icoDelete, "delete", "Delete", Needs::Row, &fTarno::Delete);
    AddButton(m_ui->Earth, "locations", "Locations", Needs::Nothing, &fTarno::Locations);
    AddButton(m_ui->icoReports, "reports", "Reports", Needs::AnyTrip, &fTarno::Reports);
    AddButton(m_ui->icoAbout, "about", "About...", Needs::Nothing, &fTarno::About);
    m_popUp->addSeparator();
    AddButton(m_ui->icoTides, "tides", "Tides", Needs::Nothing, &fTarno::Tides);

    AddCommand(m_ui->miOpenFolder, Needs::Nothing, &fTarno::OpenLogFolder);
    AddCommand(m_ui->miExit, Needs::Nothing, &fTarno::cmdExit_Click);
    AddCommand(m_ui->miRepeat, Needs::RowAndNewTrip, &fTarno::Repeat);
    AddCommand(m_ui->miFind, Needs::AnyTrip, &fTarno::Find);
    AddCommand(m_ui->miTripSheet, Needs::Row, &fTarno::TripSheet);
    AddCommand(m_ui->miReportFound, Needs::Row, &fTarno::ReportFound);
    AddCommand(m_ui->miCopy, Needs::Row, &fTarno::Copy);
    AddCommand(m_ui->miCopyFound, Needs::Found, &fTarno::CopyFound);
    AddCommand(m_ui->miDetails, Needs::Nothing, &fTarno::ShowDetails);
    AddCommand(m_ui->miManual, Needs::Nothing, &fTarno::Manual);
}

/// Makes the action run a command whenever it is triggered.
void fTarno::AddCommand(QAction* action, Needs needs, Run run)
{
    connect(action, &QAction::triggered, this,
            [this, action, run] { RunCommand(ToUtf8(action->objectName()) + "_Click", run); });
    m_commands.push_back({action, nullptr, needs});
}

/// Adds a command of the toolbar and appends it to the pop-up menu. The object name of the item contains its
/// index in the menu. The item shows the key of the button but does not react to it, because then neither
/// would work.
void fTarno::AddButton(QAction* button, const char* icon, const char* popUpCaption, Needs needs, Run run)
{
    const QIcon drawn = DrawnIcon(QLatin1String(icon));
    const auto index = m_popUp->actions().size();
    QAction* item = m_popUp->addAction(drawn, QLatin1String(popUpCaption));
    item->setObjectName(QStringLiteral("miPopUp_") + QString::number(index));
    item->setShortcut(button->shortcut());
    item->setShortcutContext(Qt::WidgetShortcut);
    item->setShortcutVisibleInContextMenu(true);
    button->setIcon(drawn);
    connect(button, &QAction::triggered, this, [this, run] { RunCommand("tlbTarno_ButtonClick", run); });
    connect(item, &QAction::triggered, this, [this, run] { RunCommand("miPopup_Click", run); });
    m_commands.push_back({button, item, needs});
}

void fTarno::RunCommand(const std::string& routine, Run run)
{
    m_ui->barDeleted->hide();
    Trap(module, routine, [&] { (this->*run)(); });
}

void fTarno::ConnectHandlers()
{
    connect(m_ui->cmdExit, &QPushButton::clicked, this, &fTarno::cmdExit_Click);
    connect(m_ui->cmdUndoDelete, &QPushButton::clicked, m_undo, &UndoMenu::Undo);
    connect(m_ui->lvwEntry, &SortableList::OpenRequested, this, &fTarno::lvwEntry_DblClick);
    connect(m_ui->lvwEntry, &SortableList::Pressed, this, &fTarno::lvwEntry_MouseDown);
    connect(m_ui->lvwEntry, &SortableList::SelectionChanged, this, &fTarno::ShowSelectedTrip);
    connect(m_log, &LogView::QueryChanged, this, &fTarno::EnableCommands);
    connect(m_ui->queryBar, &QueryBar::HelpRequested, this,
            [this] { ShowManual(this, QStringLiteral("find"), m_program.windows); });
    connect(m_undo, &UndoMenu::Started, m_ui->barDeleted, &QWidget::hide);
    connect(m_undo, &UndoMenu::Finished, this, [this](const std::string& trip) {
        m_log->KeepShown({trip});
        m_log->LoadEntryList();
        m_log->Select(trip);
        EnableCommands();
    });
}

void fTarno::lvwEntry_DblClick()
{
    RunCommand("lvwEntry_DblClick", &fTarno::Edit);
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
        m_log->LoadEntryList();
        m_ui->lvwEntry->SelectKey(m_program.windows.SelectedRow(FromUtf8(m_program.folder.GetAppPath())));
        RecordList locations;
        m_program.sql.LocationList(locations); // reports unreadable locations, once
        m_ui->miDetails->setChecked(m_program.windows.AreDetailsShown());
        m_ui->tripDetails->setVisible(m_ui->miDetails->isChecked());
        EnableCommands();
    });
}

void fTarno::EnableCommands()
{
    m_log->ForgetRecords();
    m_undo->Update();
    RecordList locations;
    if (m_program.sql.CanAddLocations() && m_program.sql.LocationList(locations) != succeeded) {
        return;
    }
    m_ui->lvwEntry->SetHint(Hint(!locations.empty()));
    const bool canAdd = !locations.empty() && m_program.sql.CanAddEntries();
    const bool anyRow = m_ui->lvwEntry->RowCount() > 0;
    const auto isMet = [&](Needs needs) {
        switch (needs) {
        case Needs::NewTrip:
            return canAdd;
        case Needs::AnyTrip:
            return m_log->TripCount() > 0;
        case Needs::Row:
            return anyRow;
        case Needs::RowAndNewTrip:
            return anyRow && canAdd;
        case Needs::Found:
            return anyRow && m_log->IsRestricted();
        case Needs::Nothing:
            break;
        }
        return true;
    };
    for (const Command& command : m_commands) {
        const bool enabled = isMet(command.needs);
        command.action->setEnabled(enabled);
        if (command.popUpItem != nullptr) {
            command.popUpItem->setEnabled(enabled);
        }
    }
    ShowSelectedTrip();
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
    if (m_log->TripCount() > 0) {
        return QStringLiteral("No trip is found. Press Esc to show all trips again.");
    }
    return anyLocation ? QStringLiteral("No trips yet. Click \"Add\" or press Ctrl+N to log the first one.")
                       : QStringLiteral("Your log is empty. Every trip needs a location. Click \"Locations\" "
                                        "to add one first.");
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

void fTarno::EditSelected(const char* routine, bool deleteMode)
{
    const auto selected = m_log->SelectedKey();
    if (!selected) {
        return;
    }
    WithListGreyed(routine, [&] {
        fEntry editor(m_program, this);
        editor.SetData(ToInt16(*selected), deleteMode);
        m_log->KeepShown(editor.SavedKeys());
        m_log->LoadEntryList();
        const auto change = m_program.sql.NextUndo();
        m_ui->barDeleted->setVisible(deleteMode && change && change->kind == ChangeKind::Delete &&
                                     change->record.key == *selected);
    });
}

/// Shows the list with the trips that `edit` adds in the editor, and selects the last one.
void fTarno::EditNewTrip(const char* routine, const std::function<void(fEntry& editor)>& edit)
{
    WithListGreyed(routine, [&] {
        fEntry editor(m_program, this);
        edit(editor);
        m_log->KeepShown(editor.SavedKeys());
        m_log->LoadEntryList();
        if (!editor.SavedKeys().empty()) {
            m_log->Select(editor.SavedKeys().back());
        }
    });
}

void fTarno::Add()
{
    EditNewTrip("Add", [](fEntry& editor) { editor.SetData(0, false); });
}

void fTarno::Repeat()
{
    if (const auto trip = m_log->SelectedTrip()) {
        EditNewTrip("Repeat", [like = Record(*trip)](fEntry& editor) { editor.RepeatTrip(like); });
    }
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
    Trap(module, "Tides", [this] { StartTideProgram(m_program, this); });
}

void fTarno::Find()
{
    m_ui->queryBar->Open();
}

void fTarno::TripSheet()
{
    const auto trip = m_log->SelectedTrip();
    if (!trip) {
        return;
    }
    WithListGreyed("TripSheet", [&] {
        std::vector<DescribedValue> values = DescribeTrip(*trip, m_log->Places());
        const auto [picture, problem] =
            TryReadPicture(PicturePath(m_program.folder, trip->Text(EntryField::Picture)));
        if (!problem.isEmpty()) {
            values.push_back({"Picture", ToUtf8(problem)});
        }
        arTripSheet sheet(m_program.printers.DefaultPage(), std::move(values), picture);
        sheet.PageHeader.Controls[QStringLiteral("lblPrinted")].Text = PrintedOn(m_program.clock);
        fPreview(m_program, sheet, this).ShowReport();
    });
}

void fTarno::ReportFound()
{
    WithListGreyed("ReportFound", [this] {
        TripsFound found{.keys = {}, .query = m_ui->queryBar->Text()};
        for (const RecordView& trip : m_log->FoundTrips()) {
            found.keys.insert(trip.Text(EntryField::TarnoNo));
        }
        fRptLog(m_program, this, found).exec();
    });
}

void fTarno::Copy()
{
    if (const auto trip = m_log->SelectedTrip()) {
        CopyTrips({*trip});
    }
}

void fTarno::CopyFound()
{
    CopyTrips(m_log->FoundTrips());
}

void fTarno::CopyTrips(const RecordList& trips)
{
    QApplication::clipboard()->setText(FromUtf8(TabSeparated(trips, m_log->Places())));
}

void fTarno::ShowDetails()
{
    m_ui->tripDetails->setVisible(m_ui->miDetails->isChecked());
    m_program.windows.SetDetailsShown(m_ui->miDetails->isChecked());
    ShowSelectedTrip();
}

void fTarno::ShowSelectedTrip()
{
    if (m_ui->tripDetails->isHidden()) {
        return;
    }
    Trap(module, "ShowSelectedTrip", [this] {
        if (const auto trip = m_log->SelectedTrip()) {
            m_ui->tripDetails->ShowTrip(DescribeTrip(*trip, m_log->Places()),
                                        PicturePath(m_program.folder, trip->Text(EntryField::Picture)));
        } else {
            m_ui->tripDetails->ShowNothing();
        }
    });
}

void fTarno::OpenLogFolder()
{
    m_program.programs.OpenFolder(FromUtf8(m_program.folder.GetAppPath()));
}

void fTarno::Manual()
{
    ShowManual(this, objectName(), m_program.windows);
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
