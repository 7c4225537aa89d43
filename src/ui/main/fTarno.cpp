#include "fTarno.h"

#include "LogCommands.h"
#include "LogView.h"
#include "TideProgram.h"
#include "TripSheet.h"
#include "UndoMenu.h"
#include "analysis/TripDescription.h"
#include "core/Conversions.h"
#include "core/ErrorLog.h"
#include "fSplash.h"
#include "qt/Strings.h"
#include "ui/calendar/fCalendar.h"
#include "ui/common/Notices.h"
#include "ui/entry/PictureFile.h"
#include "ui/entry/fEntry.h"
#include "ui/help/fHelp.h"
#include "ui/locations/fLocs.h"
#include "ui/reports/fRptLog.h"
#include "ui/statistics/fStatistics.h"
#include "ui/transfer/LocationTransfer.h"
#include "ui/transfer/TripImport.h"
#include "ui/transfer/dlgExport.h"
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

void fTarno::AddCommands()
{
    using Needs = LogCommands::Needs;
    const auto run = [this](void (fTarno::*command)()) { return [this, command] { (this->*command)(); }; };
    m_ui->icoReports->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_R), QKeySequence(Qt::CTRL | Qt::Key_P)});
    m_commands->AddButton(m_ui->icoAdd, "add", "Add", Needs::NewTrip, run(&fTarno::Add));
    m_commands->AddButton(m_ui->icoEdit, "edit", "Edit", Needs::Row, run(&fTarno::Edit));
    m_commands->AddButton(m_ui->icoDelete, "delete", "Delete", Needs::Row, run(&fTarno::Delete));
    m_commands->AddButton(m_ui->Earth, "locations", "Locations", Needs::Nothing, run(&fTarno::Locations));
    m_commands->AddButton(m_ui->icoReports, "reports", "Reports", Needs::AnyTrip, run(&fTarno::Reports));
    m_commands->AddButton(m_ui->icoAbout, "about", "About...", Needs::Nothing, run(&fTarno::About));
    m_commands->AddSeparator();
    m_commands->AddButton(m_ui->icoTides, "tides", "Tides", Needs::Nothing, run(&fTarno::Tides));

    m_commands->Add(m_ui->miOpenFolder, Needs::Nothing,
                    [this] { m_program.programs.OpenFolder(FromUtf8(m_program.folder.GetAppPath())); });
    m_commands->Add(m_ui->miExit, Needs::Nothing, run(&fTarno::cmdExit_Click));
    m_commands->Add(m_ui->miRepeat, Needs::RowAndNewTrip, run(&fTarno::Repeat));
    m_commands->Add(m_ui->miFind, Needs::AnyTrip, [this] { m_ui->queryBar->Open(); });
    m_commands->Add(m_ui->miTripSheet, Needs::Row, run(&fTarno::TripSheet));
    m_commands->Add(m_ui->miReportFound, Needs::Row, run(&fTarno::ReportFound));
    m_commands->Add(m_ui->miCopy, Needs::Row, [this] { m_log->Copy(); });
    m_commands->Add(m_ui->miCopyFound, Needs::FoundRow, [this] { m_log->CopyFound(); });
    m_commands->Add(m_ui->miCalendar, Needs::Nothing, run(&fTarno::Calendar));
    m_commands->Add(m_ui->miStatistics, Needs::Nothing, run(&fTarno::Statistics));
    m_commands->Add(m_ui->miDetails, Needs::Nothing, run(&fTarno::ShowDetails));
    m_commands->Add(m_ui->miManual, Needs::Nothing,
                    [this] { ShowManual(this, objectName(), m_program.windows); });
}

void fTarno::AddTransferCommands()
{
    using Needs = LogCommands::Needs;
    const auto add = [this](QAction* item, Needs needs, const char* routine, std::function<void()> transfer) {
        m_commands->Add(item, needs, [this, routine, transfer = std::move(transfer)] {
            WithListGreyed(routine, transfer);
        });
    };
    add(m_ui->miExportTrips, Needs::AnyTrip, "ExportTrips",
        [this] { dlgExport(m_program, m_log->Found(), this).exec(); });
    add(m_ui->miImportTrips, Needs::ReadableLog, "ImportTrips", [this] {
        if (const auto keys = ImportTrips(m_program, this); !keys.empty()) {
            m_log->ShowSaved(keys);
        }
    });
    add(m_ui->miExportLocations, Needs::ReadableLog, "ExportLocations",
        [this] { ExportLocations(m_program, this); });
    add(m_ui->miImportLocations, Needs::ReadableLog, "ImportLocations",
        [this] { ImportLocations(m_program, this); });
}

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
template <typename Body>
void fTarno::WithListGreyed(const char* routine, Body&& body)
{
    SetControls(false);
    Trap(module, routine, std::forward<Body>(body));
    SetControls(true);
    ShowChanges();
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
        m_log->ShowSaved(editor.SavedKeys());
        const auto change = m_program.sql.NextUndo();
        m_ui->barDeleted->setVisible(deleteMode && change && change->kind == ChangeKind::Delete &&
                                     change->record.key == *selected);
    });
}

void fTarno::EditNewTrip(const char* routine, const std::function<void(fEntry& editor)>& edit)
{
    WithListGreyed(routine, [&] {
        fEntry editor(m_program, this);
        edit(editor);
        m_log->ShowSaved(editor.SavedKeys());
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

void fTarno::Calendar()
{
    WithListGreyed("Calendar", [this] {
        fCalendar calendar(m_program, this);
        calendar.exec();
        // an unreadable file, for which nothing can be saved, would be reported again
        if (m_program.sql.CanAddEntries() && m_program.sql.CanAddLocations()) {
            m_log->ShowSaved(calendar.SavedKeys());
        }
    });
}

void fTarno::Statistics()
{
    WithListGreyed("Statistics", [this] {
        fStatistics statistics(m_program, m_ui->queryBar->Text(), this);
        statistics.exec();
        if (const auto& query = statistics.WantedQuery()) {
            m_ui->queryBar->Search(*query);
        }
    });
}

void fTarno::About()
{
    WithListGreyed("About", [this] { fSplash(FromUtf8(m_program.folder.GetAppPath()), this).ShowAbout(); });
}

void fTarno::Tides()
{
    Trap(module, "Tides", [this] { StartTideProgram(m_program, this); });
}

void fTarno::TripSheet()
{
    if (const auto trip = m_log->SelectedTrip()) {
        WithListGreyed("TripSheet", [&] { ShowTripSheet(m_program, *trip, m_log->Places(), this); });
    }
}

void fTarno::ReportFound()
{
    WithListGreyed("ReportFound", [this] { fRptLog(m_program, this, m_log->Found()).exec(); });
}

void fTarno::ShowDetails()
{
    m_ui->miDetails->isChecked() ? m_ui->tripDetails->show() : HidePane(m_ui->tripDetails);
    m_program.windows.SetDetailsShown(m_ui->miDetails->isChecked());
    ShowSelectedTrip();
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
