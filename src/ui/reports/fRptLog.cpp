#include "fRptLog.h"

#include "core/Conversions.h"
#include "core/ErrorLog.h"
#include "fCustom.h"
#include "fPreview.h"
#include "qt/Icons.h"
#include "qt/Strings.h"
#include "reports/ReportDesign.h"
#include "reports/arLogList.h"
#include "store/RecordLayouts.h"
#include "ui/common/BoxWidth.h"
#include "ui_fRptLog.h"

#include <QScopedValueRollback>
#include <QShortcut>

#include <algorithm>
#include <utility>

namespace
{

constexpr std::string_view module = "fRptLog";
constexpr int numberRole = Qt::UserRole; // an item's field, report or location number
const QLatin1Char separator(',');

void AddItem(QListWidget* list, const RecordView& field)
{
    auto* item = new QListWidgetItem(FromUtf8(field.Text(FieldField::Desc)), list);
    item->setData(numberRole, ToInt32(field.Text(FieldField::FieldNo)));
}

/// The row that is selected; -1 without one.
int SelectedRow(const QListWidget* list)
{
    const QList<QListWidgetItem*> selected = list->selectedItems();
    return selected.isEmpty() ? -1 : list->row(selected.first());
}

} // namespace

fRptLog::fRptLog(const Program& program, QWidget* parent)
    : QDialog(parent), m_program(program), m_ui(std::make_unique<Ui::fRptLog>())
{
    m_ui->setupUi(this);
    m_ui->frSaved->hide();
    constexpr int shownLetters = 30; // of a field's description
    WidenLists({m_ui->lstAvail, m_ui->lstRpt}, shownLetters);

    struct Tool {
        QPushButton* button;
        const char* icon;
        QKeyCombination key;
    };

    for (const auto& [button, icon, key] :
         {Tool{m_ui->cmdMove, "move", Qt::CTRL | Qt::Key_Right},
          Tool{m_ui->cmdMoveAll, "move-all", Qt::CTRL | Qt::SHIFT | Qt::Key_Right},
          Tool{m_ui->cmdBack, "back", Qt::CTRL | Qt::Key_Left},
          Tool{m_ui->cmdBackAll, "back-all", Qt::CTRL | Qt::SHIFT | Qt::Key_Left},
          Tool{m_ui->cmdUp, "up", Qt::CTRL | Qt::Key_Up},
          Tool{m_ui->cmdDn, "down", Qt::CTRL | Qt::Key_Down}}) {
        button->setIcon(DrawnIcon(QLatin1String(icon)));
        // not the button's own shortcut, which is deaf while the button springs back from the key before
        connect(new QShortcut(key, this), &QShortcut::activated, button, &QPushButton::click);
    }

    On(m_ui->cmdMove, "cmdMove_Click", &fRptLog::cmdMove_Click);
    On(m_ui->cmdMoveAll, "cmdMoveAll_Click", &fRptLog::cmdMoveAll_Click);
    On(m_ui->cmdBack, "cmdBack_Click", &fRptLog::cmdBack_Click);
    On(m_ui->cmdBackAll, "cmdBackAll_Click", &fRptLog::cmdBackAll_Click);
    On(m_ui->cmdUp, "cmdUp_Click", &fRptLog::cmdUp_Click);
    On(m_ui->cmdDn, "cmdDn_Click", &fRptLog::cmdDn_Click);
    On(m_ui->cmdSave, "cmdSave_Click", &fRptLog::cmdSave_Click);
    On(m_ui->cmdSavedOK, "cmdSavedOK_Click", &fRptLog::cmdSavedOK_Click);
    On(m_ui->cmdSavedCancel, "cmdSavedCancel_Click", &fRptLog::cmdSavedCancel_Click);
    On(m_ui->cmdDelete, "cmdDelete_Click", &fRptLog::cmdDelete_Click);
    On(m_ui->cmdCustom, "cmdCustom_Click", &fRptLog::cmdCustom_Click);
    connect(m_ui->cmdPreview, &QPushButton::clicked, this, &fRptLog::CreateReport);
    connect(m_ui->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_ui->lstAvail, &QListWidget::itemDoubleClicked, m_ui->cmdMove, &QPushButton::click);
    connect(m_ui->lstRpt, &QListWidget::itemDoubleClicked, m_ui->cmdBack, &QPushButton::click);
    connect(m_ui->chkSaved, &QCheckBox::clicked, this, &fRptLog::chkSaved_Click);
    connect(m_ui->cboSaved, &QComboBox::activated, this, &fRptLog::cboSaved_Click);
    connect(m_ui->txtSaved, &QLineEdit::textChanged, this, &fRptLog::txtSaved_Change);
    connect(m_ui->chkNew, &QCheckBox::clicked, this, &fRptLog::chkNew_Click);

    Trap(module, "Form_Load", [this] {
        const QScopedValueRollback loading(m_loading, true);
        LoadDefaultReport();
        LoadSavedReports();
        LoadLocations();
        SetControls();
    });
}

fRptLog::~fRptLog() = default;

void fRptLog::On(QPushButton* button, std::string_view routine, void (fRptLog::*run)())
{
    connect(button, &QPushButton::clicked, this,
            [this, routine, run] { Trap(module, routine, [&] { (this->*run)(); }); });
}

void fRptLog::reject()
{
    if (m_ui->frSaved->isVisible()) {
        m_ui->cmdSavedCancel->click();
    } else {
        QDialog::reject();
    }
}

void fRptLog::LoadDefaultReport()
{
    Trap(module, "LoadDefaultReport", [this] {
        RecordList fields;
        if (m_program.sql.FieldList(fields) != succeeded) {
            return;
        }
        m_ui->lstAvail->clear();
        m_ui->lstRpt->clear();
        for (const RecordView& field : fields) {
            AddItem(field.Text(FieldField::DefaultFlag) == "0" ? m_ui->lstAvail : m_ui->lstRpt, field);
        }
    });
}

/// The fields of the selected saved report, in its order. Fields that are no longer in the file are left out.
void fRptLog::LoadCustomReport()
{
    Trap(module, "LoadCustomReport", [this] {
        Record report;
        RecordList fields;
        if (m_program.sql.ReportGet(SavedNumber(), report) != succeeded ||
            m_program.sql.FieldList(fields) != succeeded) {
            return;
        }
        m_ui->lstAvail->clear();
        m_ui->lstRpt->clear();
        const QStringList numbers = FromUtf8(report.Text(ReportField::FieldKeys)).split(separator);
        for (const RecordView& field : fields) {
            if (!numbers.contains(FromUtf8(field.Text(FieldField::FieldNo)))) {
                AddItem(m_ui->lstAvail, field);
            }
        }
        for (const QString& number : numbers) {
            for (const RecordView& field : fields) {
                if (FromUtf8(field.Text(FieldField::FieldNo)) == number) {
                    AddItem(m_ui->lstRpt, field);
                }
            }
        }
    });
}

void fRptLog::LoadSavedReports()
{
    Trap(module, "LoadSavedReports", [this] {
        RecordList reports;
        if (m_program.sql.ReportList(reports) != succeeded) {
            return;
        }
        m_ui->cboSaved->clear();
        for (const RecordView& report : reports) {
            m_ui->cboSaved->addItem(FromUtf8(report.Text(ReportField::RptName)),
                                    ToInt32(report.Text(ReportField::RptNo)));
        }
        m_ui->chkSaved->setEnabled(!reports.empty());
        m_ui->chkSaved->setChecked(false);
        chkSaved_Click();
        // a saved report can be chosen without the tick as well
        m_ui->cboSaved->setEnabled(!reports.empty());
    });
}

void fRptLog::LoadLocations()
{
    Trap(module, "LoadLocations", [this] {
        RecordList locations;
        if (m_program.sql.LocationList(locations) != succeeded) {
            return;
        }
        m_ui->cboLocation->clear();
        m_ui->cboLocation->addItem(QStringLiteral("All Locations"), 0);
        for (const RecordView& location : locations) {
            m_ui->cboLocation->addItem(ShownInOneLine(location.Text(LocationField::LocName)),
                                       ToInt32(location.Text(LocationField::LocNo)));
        }
        m_ui->cboLocation->setCurrentIndex(0);
    });
}

void fRptLog::SetControls()
{
    Trap(module, "SetControls", [this] {
        const QListWidgetItem* first = m_ui->lstRpt->item(0);
        m_ui->cmdClose->setEnabled(true);
        m_ui->cmdPreview->setEnabled(first != nullptr);
        m_ui->chkDesc->setEnabled(first != nullptr);
        m_ui->chkDesc->setText(first == nullptr
                                   ? QString()
                                   : QStringLiteral("Sort by ") +
                                         first->text().replace(QLatin1Char('&'), QLatin1String("&&")) +
                                         QStringLiteral(" Desc"));
        m_ui->chkDesc->setAccessibleName(first == nullptr ? QStringLiteral("Sort descending") : QString());
        m_ui->cmdSave->setEnabled(!m_loading);
        m_ui->cmdDelete->setEnabled(m_ui->cboSaved->currentIndex() >= 0);
        m_ui->cmdCustom->setEnabled(true);
    });
}

/// Moves the selected field to the end of the other list.
void fRptLog::Move(QListWidget* from, QListWidget* to)
{
    const int row = SelectedRow(from);
    if (row >= 0) {
        to->addItem(from->takeItem(row));
        SetControls();
    }
}

void fRptLog::MoveAll(QListWidget* from, QListWidget* to)
{
    while (from->count() > 0) {
        to->addItem(from->takeItem(0));
    }
    SetControls();
}

/// Moves the selected field of the report up or down, unless it stands at that end already.
void fRptLog::MoveBy(int rows)
{
    QListWidget* list = m_ui->lstRpt;
    const int row = SelectedRow(list);
    const int target = row + rows;
    if (row < 0 || target < 0 || target >= list->count()) {
        return;
    }
    list->insertItem(target, list->takeItem(row));
    list->setCurrentRow(target);
    SetControls();
}

void fRptLog::cmdMove_Click()
{
    Move(m_ui->lstAvail, m_ui->lstRpt);
}

void fRptLog::cmdMoveAll_Click()
{
    MoveAll(m_ui->lstAvail, m_ui->lstRpt);
}

void fRptLog::cmdBack_Click()
{
    Move(m_ui->lstRpt, m_ui->lstAvail);
}

void fRptLog::cmdBackAll_Click()
{
    MoveAll(m_ui->lstRpt, m_ui->lstAvail);
}

void fRptLog::cmdUp_Click()
{
    MoveBy(-1);
}

void fRptLog::cmdDn_Click()
{
    MoveBy(1);
}

void fRptLog::chkSaved_Click()
{
    Trap(module, "chkSaved_Click", [this] {
        const bool ticked = m_ui->chkSaved->isChecked();
        m_ui->cboSaved->setEnabled(ticked);
        if (!ticked) {
            m_ui->cboSaved->setCurrentIndex(-1);
            cboSaved_Click();
        }
        SetControls();
    });
}

void fRptLog::cboSaved_Click()
{
    Trap(module, "cboSaved_Click", [this] {
        if (m_loading) {
            return;
        }
        if (m_ui->cboSaved->currentIndex() < 0) {
            LoadDefaultReport();
        } else {
            LoadCustomReport();
        }
        SetControls();
    });
}

/// Opens or closes the frame for saving. While it is open nothing else can be reached.
void fRptLog::OpenFrame(bool open)
{
    m_ui->boxReport->setEnabled(!open);
    m_ui->frSaved->setVisible(open);
    m_ui->frSaved->raise();
    (open ? m_ui->cmdSavedOK : m_ui->cmdPreview)->setDefault(true);
    if (open) {
        m_ui->txtSaved->setFocus();
        m_ui->txtSaved->selectAll();
    } else {
        m_ui->lstRpt->setFocus();
    }
}

void fRptLog::cmdSave_Click()
{
    const bool anySaved = m_ui->cboSaved->count() > 0;
    m_ui->chkNew->setChecked(!anySaved); // the first one can only be a new one
    m_ui->chkNew->setEnabled(anySaved);
    m_ui->txtSaved->clear();
    m_newReport.reset();
    chkNew_Click();
    txtSaved_Change();
    OpenFrame(true);
}

void fRptLog::txtSaved_Change()
{
    Trap(module, "txtSaved_Change",
         [this] { m_ui->cmdSavedOK->setEnabled(!m_ui->txtSaved->text().isEmpty()); });
}

void fRptLog::chkNew_Click()
{
    Trap(module, "chkNew_Click", [this] {
        if (!m_ui->chkNew->isChecked() && m_ui->cboSaved->currentIndex() >= 0) {
            m_ui->txtSaved->setText(m_ui->cboSaved->currentText());
        }
    });
}

void fRptLog::cmdSavedOK_Click()
{
    const bool isNew = m_ui->chkNew->isChecked() || m_ui->cboSaved->currentIndex() < 0;
    Record report;
    if (isNew && m_newReport) {
        report = *m_newReport;
    } else if (m_program.sql.ReportGet(isNew ? std::int16_t(0) : SavedNumber(), report) != succeeded) {
        return;
    }
    const Selection selection = StoredForm(ListedFields());
    report.SetText(ReportField::RptName, ToUtf8(m_ui->txtSaved->text()));
    report.SetText(ReportField::Fields, selection.names);
    report.SetText(ReportField::FieldKeys, selection.numbers);
    if (m_program.sql.ReportUpdate(report) != succeeded) {
        if (isNew) {
            m_newReport = report;
        }
        return;
    }
    OpenFrame(false);
    LoadSavedReports();
    SetControls();
    m_ui->cmdSave->setEnabled(false);
}

void fRptLog::cmdSavedCancel_Click()
{
    OpenFrame(false);
    SetControls();
}

void fRptLog::cmdDelete_Click()
{
    const Button answer = m_program.messages.Ask(
        this, {.text = QStringLiteral("Are you sure you want to delete this custom report"),
               .title = QStringLiteral("Remove Custom Report"),
               .icon = Icon::Question,
               .buttons = Buttons::YesNoCancel,
               .byDefault = Button::No});
    if (answer == Button::Yes && m_program.sql.ReportDelete(SavedNumber()) != succeeded) {
        return;
    }
    LoadSavedReports();
    SetControls();
}

void fRptLog::cmdCustom_Click()
{
    fCustom(m_program, this).exec();
    if (m_ui->chkSaved->isChecked() && m_ui->cboSaved->currentIndex() >= 0) {
        LoadCustomReport();
    } else {
        LoadDefaultReport();
    }
    SetControls();
}

std::int16_t fRptLog::SavedNumber() const
{
    return RoundToInt16(m_ui->cboSaved->currentData().toInt());
}

/// The definitions of the fields in `lstRpt`. A field's number counts its position in the file from 1.
RecordList fRptLog::ListedFields() const
{
    RecordList fields;
    if (m_program.sql.FieldList(fields) != succeeded) {
        return {};
    }
    RecordList listed;
    for (int row = 0; row < m_ui->lstRpt->count(); ++row) {
        listed.push_back(RecordAt(fields, m_ui->lstRpt->item(row)->data(numberRole).toInt() - 1));
    }
    return listed;
}

/// `listed`, the fields in `lstRpt`, as a report stores them.
fRptLog::Selection fRptLog::StoredForm(const RecordList& listed) const
{
    QStringList names;
    QStringList numbers;
    int row = 0;
    for (const RecordView& field : listed) {
        names << FromUtf8(field.Text(FieldField::FieldName));
        numbers << m_ui->lstRpt->item(row++)->data(numberRole).toString();
    }
    return {ToUtf8(names.join(separator)), ToUtf8(numbers.join(separator))};
}

/// The fields whose values the report shows: with the tick those that the saved report has stored, even when
/// `lstRpt` has been changed since. A report's number counts its position in the file from 1.
fRptLog::Selection fRptLog::ReportedFields(const RecordList& listed) const
{
    if (!m_ui->chkSaved->isChecked() || m_ui->cboSaved->currentIndex() < 0) {
        return StoredForm(listed);
    }
    RecordList reports;
    if (m_program.sql.ReportList(reports) != succeeded) {
        return {};
    }
    const RecordView& report = RecordAt(reports, m_ui->cboSaved->currentData().toInt() - 1);
    return {report.Text(ReportField::Fields), report.Text(ReportField::FieldKeys)};
}

/// The location filter is the position in the list of locations, in which location k stands at position k.
void fRptLog::CreateReport()
{
    Trap(module, "CreateReport", [this] {
        const RecordList columns = ListedFields();
        const Selection data = ReportedFields(columns);
        if (data.names.empty() || data.numbers.empty()) {
            return;
        }
        const std::int16_t location = RoundToInt16(std::max(0, m_ui->cboLocation->currentIndex()));
        if (m_program.sql.ReportLogData(data.names, data.numbers, location) != succeeded) {
            return;
        }
        ReportTable& grid = m_program.sql.ReportGrid();
        if (grid.size() > 1) {
            mMain::ShellSort(grid, {.column = 0, .descending = m_ui->chkDesc->isChecked(), .mode = 0});
        }
        arLogList report(m_program.printers.DefaultPage(), columns, grid);
        report.PageHeader.Controls[QStringLiteral("lblPrinted")].Text = PrintedOn(m_program.clock);
        fPreview(m_program, report, this).ShowReport();
    });
}
