#include "SavedReports.h"

#include "BuilderModule.h"
#include "FieldPicker.h"
#include "SaveFrame.h"
#include "core/Conversions.h"
#include "core/ErrorLog.h"
#include "qt/Strings.h"
#include "store/RecordLayouts.h"
#include "ui/common/Handle.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QScopedValueRollback>

namespace Tarno
{

SavedReports::SavedReports(const Program& program, const Controls& controls, QWidget* window)
    : QObject(window), m_program(program), m_controls(controls), m_window(window)
{
    Handle(controls.chkSaved, &QCheckBox::clicked, "Click", this, [this] { chkSaved_Click(); });
    Handle(controls.cboSaved, &QComboBox::activated, "Click", this, [this] { cboSaved_Click(); });
    Handle(controls.cmdSave, &QPushButton::clicked, "Click", this, [this] { cmdSave_Click(); });
    Handle(controls.cmdDelete, &QPushButton::clicked, "Click", this, [this] { cmdDelete_Click(); });
    connect(controls.frame, &SaveFrame::Confirmed, this,
            [this] { Trap(builderModule, "cmdSavedOK_Click", [this] { cmdSavedOK_Click(); }); });
    connect(controls.frame, &SaveFrame::Cancelled, this,
            [this] { Trap(builderModule, "cmdSavedCancel_Click", [this] { cmdSavedCancel_Click(); }); });
}

void SavedReports::Load()
{
    const QScopedValueRollback loading(m_loading, true);
    LoadDefaultReport();
    LoadSavedReports();
}

void SavedReports::Reload()
{
    if (IsInUse()) {
        LoadCustomReport();
    } else {
        LoadDefaultReport();
    }
}

void SavedReports::LoadDefaultReport()
{
    Trap(builderModule, "LoadDefaultReport", [this] {
        RecordList fields;
        if (m_program.sql.FieldList(fields) == succeeded) {
            m_controls.picker->ShowDefault(fields);
        }
    });
}

void SavedReports::LoadCustomReport()
{
    Trap(builderModule, "LoadCustomReport", [this] {
        Record report;
        RecordList fields;
        if (m_program.sql.ReportGet(SelectedNumber(), report) == succeeded &&
            m_program.sql.FieldList(fields) == succeeded) {
            m_controls.picker->Clear(); // in case the record cannot be read
            m_controls.picker->ShowSelection(fields, ReadSelection(report.View()));
        }
    });
}

void SavedReports::LoadSavedReports()
{
    Trap(builderModule, "LoadSavedReports", [this] {
        RecordList reports;
        if (m_program.sql.ReportList(reports) != succeeded) {
            return;
        }
        m_controls.cboSaved->clear();
        for (const RecordView& report : reports) {
            m_controls.cboSaved->addItem(FromUtf8(report.Text(ReportField::RptName)), report.Key());
        }
        m_controls.chkSaved->setEnabled(!reports.empty());
        m_controls.chkSaved->setChecked(false);
        chkSaved_Click();
        // a saved report can be selected without ticking the box; see docs/quirks.md
        m_controls.cboSaved->setEnabled(!reports.empty());
    });
}

void SavedReports::chkSaved_Click()
{
    const bool ticked = m_controls.chkSaved->isChecked();
    m_controls.cboSaved->setEnabled(ticked);
    if (!ticked) {
        m_controls.cboSaved->setCurrentIndex(-1);
        cboSaved_Click();
    }
    Q_EMIT Changed();
}

void SavedReports::cboSaved_Click()
{
    if (m_loading) {
        return;
    }
    if (IsSelected()) {
        LoadCustomReport();
    } else {
        LoadDefaultReport();
    }
    Q_EMIT Changed();
}

void SavedReports::cmdSave_Click()
{
    m_newReport.reset();
    m_controls.covered->setEnabled(false);
    m_controls.frame->Open(IsSelected() ? std::optional(m_controls.cboSaved->currentText()) : std::nullopt,
                           m_controls.cboSaved->count() > 0);
}

void SavedReports::CloseFrame() const
{
    m_controls.covered->setEnabled(true);
    m_controls.frame->hide();
    m_controls.defaultButton->setDefault(true);
    m_controls.picker->FocusChosen();
}

void SavedReports::cmdSavedOK_Click()
{
    const bool isNew = m_controls.frame->IsNew() || !IsSelected();
    Record report;
    if (isNew && m_newReport) {
        report = *m_newReport;
    } else if (m_program.sql.ReportGet(isNew ? std::int16_t(0) : SelectedNumber(), report) != succeeded) {
        return;
    }
    const std::vector<std::int32_t> chosen = m_controls.picker->Chosen();
    RecordList fields;
    if (m_program.sql.FieldList(fields) != succeeded && !chosen.empty()) {
        return;
    }
    const ReportSelection selection = SelectionOf(chosen, fields);
    report.SetText(ReportField::RptName, ToUtf8(m_controls.frame->Description()));
    WriteSelection(selection, report);
    if (m_program.sql.ReportUpdate(report) != succeeded) {
        if (isNew) {
            m_newReport = report;
        }
        return;
    }
    CloseFrame();
    LoadSavedReports();
    Q_EMIT Changed();
    m_controls.cmdSave->setEnabled(false);
}

void SavedReports::cmdSavedCancel_Click()
{
    CloseFrame();
    Q_EMIT Changed();
}

void SavedReports::cmdDelete_Click()
{
    const Button answer = m_program.messages.Ask(
        m_window, {.text = QStringLiteral("Are you sure you want to delete this custom report"),
                   .title = QStringLiteral("Remove Custom Report"),
                   .icon = Icon::Question,
                   .buttons = Buttons::YesNoCancel,
                   .byDefault = Button::No});
    if (answer == Button::Yes && m_program.sql.ReportDelete(SelectedNumber()) != succeeded) {
        return;
    }
    LoadSavedReports();
    Q_EMIT Changed();
}

bool SavedReports::IsSelected() const
{
    return m_controls.cboSaved->currentIndex() >= 0;
}

bool SavedReports::IsInUse() const
{
    return m_controls.chkSaved->isChecked() && IsSelected();
}

std::int16_t SavedReports::SelectedNumber() const
{
    return RoundToInt16(m_controls.cboSaved->currentData().toInt());
}

/// The number of a report is its position in the file, counted from 1.
ReportSelection SavedReports::StoredSelection() const
{
    RecordList reports;
    if (m_program.sql.ReportList(reports) != succeeded) {
        return {};
    }
    return ReadSelection(RecordAt(reports, m_controls.cboSaved->currentData().toInt() - 1));
}

} // namespace Tarno
