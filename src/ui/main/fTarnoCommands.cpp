// The commands of fTarno, most of which open other windows.

#include "LogCommands.h"
#include "LogView.h"
#include "TideProgram.h"
#include "TripSheet.h"
#include "core/Conversions.h"
#include "core/ErrorLog.h"
#include "fSplash.h"
#include "fTarno.h"
#include "qt/Strings.h"
#include "ui/calendar/fCalendar.h"
#include "ui/entry/fEntry.h"
#include "ui/help/fHelp.h"
#include "ui/locations/fLocs.h"
#include "ui/reports/fRptLog.h"
#include "ui/statistics/fStatistics.h"
#include "ui/transfer/LocationTransfer.h"
#include "ui/transfer/TripImport.h"
#include "ui/transfer/dlgExport.h"
#include "ui_fTarno.h"

namespace Tarno
{

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
    const auto add = [this](QAction* item, Needs needs, const char* routine,
                            const std::function<void()>& transfer) {
        m_commands->Add(item, needs, [this, routine, transfer] { WithListGreyed(routine, transfer); });
    };
    add(m_ui->miExportTrips, Needs::AnyTrip, "ExportTrips",
        [this] { dlgExport(m_program, m_log->Found(), this).exec(); });
    add(m_ui->miImportTrips, Needs::ReadableLog, "ImportTrips", [this] {
        m_log->ShowSaved(ImportTrips(m_program, this)); // also shows what other programs have changed
    });
    add(m_ui->miExportLocations, Needs::ReadableLog, "ExportLocations",
        [this] { ExportLocations(m_program, this); });
    add(m_ui->miImportLocations, Needs::ReadableLog, "ImportLocations",
        [this] { ImportLocations(m_program, this); });
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
    Trap("fTarno", "Tides", [this] { StartTideProgram(m_program, this); });
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

} // namespace Tarno
