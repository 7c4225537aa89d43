#include "fLocs.h"

#include "core/Conversions.h"
#include "core/ErrorLog.h"
#include "dlgLocMaint.h"
#include "qt/Strings.h"
#include "reports/ReportDesign.h"
#include "reports/arLocList.h"
#include "store/RecordLayouts.h"
#include "ui/common/Notices.h"
#include "ui/reports/fPreview.h"
#include "ui_fLocs.h"

#include <QShortcut>

#include <vector>

namespace Tarno
{

namespace
{

constexpr std::string_view module = "fLocs";

QString RowKey(const std::string& locationNumber)
{
    return FromUtf8(locationNumber) + QLatin1Char('K');
}

/// Returns the caption for an access code that the location dialog uses.
QString AccessWord(std::string_view code)
{
    return code == "0"   ? QStringLiteral("Land Based")
           : code == "1" ? QStringLiteral("Boat Only")
           : code == "2" ? QStringLiteral("Both")
                         : QStringLiteral("Not Set");
}

} // namespace

fLocs::fLocs(const Program& program, QWidget* parent)
    : QDialog(parent), m_program(program), m_ui(std::make_unique<Ui::fLocs>())
{
    m_ui->setupUi(this);
    m_ui->lvwLocs->SetHeadings({QStringLiteral("Location"), QStringLiteral("Access"),
                                QStringLiteral("Latitude"), QStringLiteral("Longitude"),
                                QStringLiteral("GMT Diff"), QStringLiteral("DST")});
    const QString degrees = QStringLiteral("-151.12345");
    m_ui->lvwLocs->SetHint(
        program.sql.CanAddLocations()
            ? QStringLiteral("No locations yet. Click \"Add\" or press Ctrl+N to add the first one.")
            : UnreadableHint(QStringLiteral("Your locations"), QStringLiteral("location.xml")));
    m_ui->lvwLocs->FitColumns({{}, QStringLiteral("Land Based"), degrees, degrees, {}, QStringLiteral("Yes")},
                              0);

    connect(m_ui->cmdAdd, &QPushButton::clicked, this, &fLocs::Add);
    connect(m_ui->cmdEdit, &QPushButton::clicked, this, &fLocs::Edit);
    connect(m_ui->cmdDelete, &QPushButton::clicked, this, &fLocs::Delete);
    connect(m_ui->cmdPrint, &QPushButton::clicked, this, &fLocs::cmdPrint_Click);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &fLocs::cmdOK_Click);
    connect(m_ui->lvwLocs, &SortableList::OpenRequested, this, &fLocs::lvwLocs_DblClick);
    connect(m_ui->lvwLocs, &SortableList::Pressed, this, &fLocs::lvwLocs_MouseDown);
    connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_N), this), &QShortcut::activated, m_ui->cmdAdd,
            &QPushButton::click);
    connect(new QShortcut(QKeySequence(Qt::Key_F2), this), &QShortcut::activated, this, &fLocs::Edit);
    connect(new QShortcut(QKeySequence(Qt::Key_Delete), this), &QShortcut::activated, this, &fLocs::Delete);

    Trap(module, "SetData", [this] {
        LoadLocations();
        SetControls();
    });
    program.windows.Remember(*this);
}

fLocs::~fLocs() = default;

void fLocs::LoadLocations()
{
    std::vector<TextTableModel::Row> rows;
    Trap(module, "LoadLocations", [&] {
        RecordList locations;
        if (m_program.sql.LocationList(locations) != succeeded) {
            return;
        }
        rows.reserve(locations.size());
        for (const RecordView& location : locations) {
            rows.push_back({RowKey(location.Text(LocationField::LocNo)),
                            {ShownInOneLine(location.Text(LocationField::LocName)),
                             AccessWord(location.Text(LocationField::LocAccess)),
                             FromUtf8(location.Text(LocationField::LocLatt)),
                             FromUtf8(location.Text(LocationField::LocLong)),
                             FromUtf8(location.Text(LocationField::LocGMT)),
                             location.Text(LocationField::LocDST) == "1" ? QStringLiteral("Yes")
                                                                         : QStringLiteral("No")}});
        }
    });
    m_ui->lvwLocs->SetRows(std::move(rows));
}

void fLocs::SetControls()
{
    Trap(module, "SetControls", [this] {
        const bool anyLocation = m_ui->lvwLocs->RowCount() > 0;
        m_ui->cmdAdd->setEnabled(m_program.sql.CanAddLocations());
        m_ui->cmdEdit->setEnabled(anyLocation);
        m_ui->cmdDelete->setEnabled(anyLocation);
    });
}

std::int16_t fLocs::SelectedLocation() const
{
    return ToInt16(ToUtf8(m_ui->lvwLocs->SelectedKey().value().chopped(1)));
}

void fLocs::ShowLocationDialog(std::int16_t locationNumber, bool deleteMode)
{
    SetControls();
    dlgLocMaint dialog(m_program, this);
    dialog.SetData(locationNumber, deleteMode);
    LoadLocations();
    if (locationNumber == 0 && !dialog.SavedKeys().empty()) {
        m_ui->lvwLocs->SelectKey(RowKey(dialog.SavedKeys().back()));
    }
    SetControls();
    m_ui->lvwLocs->setFocus();
}

void fLocs::Add()
{
    Trap(module, "Add", [this] { ShowLocationDialog(0, false); });
}

void fLocs::Edit()
{
    Trap(module, "Edit", [this] {
        if (m_ui->lvwLocs->SelectedKey()) {
            ShowLocationDialog(SelectedLocation(), false);
        }
    });
}

void fLocs::Delete()
{
    Trap(module, "Delete", [this] {
        if (m_ui->lvwLocs->SelectedKey()) {
            ShowLocationDialog(SelectedLocation(), true);
        }
    });
}

void fLocs::lvwLocs_MouseDown()
{
    Trap(module, "lvwLocs_MouseDown", [this] { SetControls(); });
}

void fLocs::lvwLocs_DblClick()
{
    Trap(module, "lvwLocs_DblClick", [this] { Edit(); });
}

void fLocs::cmdOK_Click()
{
    Trap(module, "cmdOK_Click", [this] { accept(); });
}

void fLocs::cmdPrint_Click()
{
    Trap(module, "cmdPrint_Click", [this] {
        RecordList locations;
        if (m_program.sql.LocationList(locations) != succeeded) {
            return;
        }
        arLocList report(m_program.printers.DefaultPage(), locations);
        report.PageHeader.Controls[QStringLiteral("lblPrinted")].Text = PrintedOn(m_program.clock);
        fPreview(m_program, report, this).ShowReport();
    });
}

} // namespace Tarno
