#include "dlgLocMaint.h"

#include "core/ErrorLog.h"
#include "store/RecordLayouts.h"
#include "ui/common/BoxWidth.h"
#include "ui/common/Handle.h"
#include "ui/common/KeyFilter.h"
#include "ui/common/RecordBinder.h"
#include "ui/common/TextHeight.h"
#include "ui_dlgLocMaint.h"

#include <array>
#include <cmath>

namespace Tarno
{

namespace
{

constexpr std::string_view module = "dlgLocMaint";

} // namespace

dlgLocMaint::dlgLocMaint(const Program& program, QWidget* parent)
    : EditingDialog(program, RecordTitle::Kind::Location, parent), m_ui(std::make_unique<Ui::dlgLocMaint>())
{
    m_ui->setupUi(this);
    new TextHeight(this);
    FitBoxes({m_ui->txtLatt, m_ui->txtLong}, QStringLiteral("-151.123456"));
    FitBoxes({m_ui->txtGMT}, QStringLiteral("-12.75"));
    Binder().BindLines(LocationField::LocName, m_ui->txtLocName);
    Binder().BindLines(LocationField::LocDirections, m_ui->txtDirections);
    Binder().BindLines(LocationField::LocDescription, m_ui->txtDescription);
    Binder().BindOptions(LocationField::LocAccess, this, "optAccess");
    Binder().BindBox(LocationField::LocLatt, m_ui->txtLatt);
    Binder().BindBox(LocationField::LocLong, m_ui->txtLong);
    Binder().BindBox(LocationField::LocGMT, m_ui->txtGMT);
    for (QLineEdit* box : {m_ui->txtLatt, m_ui->txtLong, m_ui->txtGMT}) {
        // "#$%'": see docs/quirks.md
        new KeyFilter(box, QStringLiteral("-.#$%'"));
        Handle(box, &QLineEdit::textChanged, "Change", this, [this] { ShowRanges(); });
    }
    m_ui->picturePanel->Attach(program, Edited(), LocationField::LocPicture, QStringLiteral("picLoc"),
                               QStringLiteral("imgLoc"), m_ui->cmdCancel);
    ConnectButtons(m_ui->cmdOK, m_ui->cmdCancel);
    connect(m_ui->chkDST, &QCheckBox::clicked, this, &dlgLocMaint::chkDST_Click);
    connect(m_ui->picturePanel, &PicturePanel::PictureChanged, this, &dlgLocMaint::UpdateSaveButton);
    program.windows.Remember(*this);
}

dlgLocMaint::~dlgLocMaint() = default;

void dlgLocMaint::SetData(std::int16_t locationNumber, bool deleteMode)
{
    Trap(module, "SetData", [&] {
        Record location;
        if (CurrentProgram().sql.LocationGet(locationNumber, location) != succeeded) {
            return;
        }
        BeginRecord(std::move(location));
        // a location with missing values can be deleted, but not edited
        if (Edited().Count() >= LocationField::Count || !deleteMode) {
            ShowLocation(locationNumber == 0);
        }
        if (deleteMode) {
            DeleteAfterQuestion(locationNumber);
            return;
        }
        StartEditing();
    });
}

void dlgLocMaint::ContinueDraft(const Draft& draft)
{
    Trap(module, "ContinueDraft", [&] {
        Record location;
        if (CurrentProgram().sql.LocationGet(KeyFor(draft), location) != succeeded) {
            return;
        }
        BeginRecord(std::move(location));
        ContinueDraftOf(draft);
        ShowLocation(false);
        Edited().SetChanged(true);
        StartEditing();
    });
}

void dlgLocMaint::StartEditing()
{
    UpdateSaveButton();
    m_ui->sstLocs->setCurrentIndex(0);
    m_ui->txtLocName->setFocus();
    exec();
}

void dlgLocMaint::ShowLocation(bool isNew)
{
    if (Edited().Count() < LocationField::Count) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    if (isNew) {
        Binder().ClearControls();
    } else {
        Binder().ShowRecord();
    }
    ShowRanges();
    m_ui->chkDST->setChecked(!isNew && Edited().Text(LocationField::LocDST) == "1");
    m_ui->picturePanel->ShowRecord();
}

/// Shows which numbers are too large, but accepts them.
void dlgLocMaint::ShowRanges()
{
    struct Range {
        QLineEdit* box;
        double limit;
        QString note;
    };

    const std::array<Range, 3> ranges{
        {{m_ui->txtLatt, 90, QStringLiteral("Latitude is between -90 and 90")},
         {m_ui->txtLong, 180, QStringLiteral("Longitude is between -180 and 180")},
         {m_ui->txtGMT, 14, QStringLiteral("GMT Diff is between -14 and 14 hours")}}};
    QStringList notes;
    for (const auto& [box, limit, note] : ranges) {
        if (std::abs(box->text().toDouble()) > limit) { // 0 if it is not a number
            notes << note;
        }
    }
    m_ui->lblRange->Explain(notes.join(QLatin1Char('\n')));
}

void dlgLocMaint::DeleteAfterQuestion(std::int16_t locationNumber)
{
    const Button answer = CurrentProgram().messages.Ask(
        parentWidget(),
        {.text = QStringLiteral("Are you sure you want to delete this location from the log?"),
         .title = QStringLiteral("Delete Location?"),
         .icon = Icon::Question,
         .buttons = Buttons::YesNoCancel,
         .byDefault = Button::Cancel});
    if (answer == Button::Yes) {
        CurrentProgram().sql.LocationDelete(locationNumber);
    }
}

void dlgLocMaint::chkDST_Click()
{
    Trap(module, "chkDST_Click", [this] {
        Edited().Store(LocationField::LocDST, m_ui->chkDST->isChecked() ? "1" : "0");
        UpdateSaveButton();
    });
}

} // namespace Tarno
