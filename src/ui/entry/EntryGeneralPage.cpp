#include "EntryGeneralPage.h"

#include "EntryBindings.h"
#include "EntryCalculator.h"
#include "EntryModule.h"
#include "FieldRules.h"
#include "MoonPhaseEditor.h"
#include "core/Conversions.h"
#include "core/ErrorLog.h"
#include "qt/Strings.h"
#include "store/RecordLayouts.h"
#include "ui/common/BoxWidth.h"
#include "ui/common/ClickLabel.h"
#include "ui/common/KeyFilter.h"
#include "ui/common/LeaveGuard.h"
#include "ui_EntryGeneralPage.h"

#include <QShortcut>

#include <algorithm>
#include <array>
#include <chrono>

namespace Tarno
{

EntryGeneralPage::EntryGeneralPage(QWidget* parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::EntryGeneralPage>())
{
    m_ui->setupUi(this);
    setFocusProxy(m_ui->txtStart);
    WidenBoxes({m_ui->txtStart, m_ui->txtEnd}, QStringLiteral("2008-08-08"));
}

EntryGeneralPage::~EntryGeneralPage() = default;

void EntryGeneralPage::Attach(const Program& program, EditedRecord& record, RecordBinder& binder,
                              LeaveGuard& guard)
{
    m_program = &program;
    m_record = &record;
    m_binder = &binder;
    m_moonPhase = std::make_unique<MoonPhaseEditor>(m_ui->txtMoon, m_ui->chkMoon, record);
    m_calculator = std::make_unique<EntryCalculator>(program, binder, *m_moonPhase, window());
    m_guard = &guard;
    BindControls();
    guard.Add(
        m_ui->cboLocation, [this] { return cboLocation_Validate(); },
        QStringLiteral("This location no longer exists. Choose another one."));
    connect(m_ui->cboLocation, &QComboBox::currentIndexChanged, this,
            [this] { m_guard->Edited(m_ui->cboLocation); });
    connect(m_moonPhase.get(), &MoonPhaseEditor::Changed, this, &EntryGeneralPage::WrittenBack);
    connect(m_binder, &RecordBinder::Accepted, this, [this](std::size_t field) {
        if (field == EntryField::StartDate || field == EntryField::EndDate) {
            OrderDates();
            ShowDuration();
        }
    });
    connect(m_binder, &RecordBinder::ValueChanged, this, [this](std::size_t field) {
        if (field == EntryField::StartDate) {
            StartDateChanged();
        }
    });
}

void EntryGeneralPage::BindControls()
{
    BindEntryBoxes(*m_binder, {{EntryField::StartDate, m_ui->txtStart},
                               {EntryField::EndDate, m_ui->txtEnd},
                               {EntryField::StartTime, m_ui->txtTStart},
                               {EntryField::EndTime, m_ui->txtTEnd},
                               {EntryField::HighTide, m_ui->txtTideHigh},
                               {EntryField::HighTideHt, m_ui->txtTideHighHt},
                               {EntryField::LowTide, m_ui->txtTideLow},
                               {EntryField::LowTideHt, m_ui->txtTideLowHt},
                               {EntryField::SunRise, m_ui->txtSunRise},
                               {EntryField::SunSet, m_ui->txtSunSet},
                               {EntryField::MoonRise, m_ui->txtMoonRise},
                               {EntryField::MoonSet, m_ui->txtMoonSet},
                               {EntryField::Major1, m_ui->txtMajor1},
                               {EntryField::Major2, m_ui->txtMajor2},
                               {EntryField::Minor1, m_ui->txtMinor1},
                               {EntryField::Minor2, m_ui->txtMinor2}});
    BindEntryOptions(*m_binder, this,
                     {{EntryField::TideStart, "optTideSt"},
                      {EntryField::TideEnd, "optTideEnd"},
                      {EntryField::Prediction, "optPrediction"},
                      {EntryField::FishAction, "optAction"}});
    BindStep(m_ui->lblStPlus, EntryField::StartDate, 1);
    BindStep(m_ui->lblStMinus, EntryField::StartDate, -1);
    BindStep(m_ui->lblEndPlus, EntryField::EndDate, 1);
    BindStep(m_ui->lblEndMinus, EntryField::EndDate, -1);
}

void EntryGeneralPage::BindStep(ClickLabel* label, std::size_t field, int days)
{
    const auto step = [this, label, field, days] {
        Trap(entryModule, ToUtf8(label->objectName()) + "_Click", [&] { StepDate(field, days); });
    };
    connect(label, &ClickLabel::Clicked, this, step);
    // the label takes no focus, so the arrow keys in the box do the same, but refuse an unfinished date
    QLineEdit* box = m_binder->Box(field);
    auto* shortcut = new QShortcut(QKeySequence(days > 0 ? Qt::Key_Up : Qt::Key_Down), box);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, [this, step, box] {
        if (ParseUserDate(box->text())) {
            step();
        } else {
            m_guard->RunCheck(box);
        }
    });
}

void EntryGeneralPage::StepDate(std::size_t field, int days)
{
    QLineEdit* box = m_binder->Box(field);
    const auto date = ParseUserDate(box->text());
    if (!date) {
        throw Error(ErrorNumber::TypeMismatch);
    }
    const auto stepped = DaysLater(*date, days);
    if (!stepped) {
        throw Error(ErrorNumber::Overflow);
    }
    KeyFilter::SetText(box, FromUtf8(FromDate(*stepped)));
    m_guard->RunCheck(box);
}

/// Moves the end date to a later start date, but only in the box: the end date is stored when its box is
/// left.
void EntryGeneralPage::OrderDates()
{
    const auto start = ParseUserDate(m_ui->txtStart->text());
    const auto end = ParseUserDate(m_ui->txtEnd->text());
    if (start && end && *start > *end) {
        KeyFilter::SetText(m_ui->txtEnd, m_ui->txtStart->text());
    }
}

/// Shows the number of days beside the dates of a long trip, because the end date of a new trip is easily
/// forgotten.
void EntryGeneralPage::ShowDuration()
{
    constexpr int usual = 2;
    const auto start = ParseUserDate(m_ui->txtStart->text());
    const auto end = ParseUserDate(m_ui->txtEnd->text());
    const auto days =
        start && end ? (std::chrono::sys_days(*end) - std::chrono::sys_days(*start)).count() + 1 : 0;
    m_ui->lblDuration->Explain(days > usual ? QStringLiteral("%1 days").arg(days) : QString());
}

/// Without `fit`, notes that the times in the calculated frames, if any, belong to another place or date.
/// This is the case if they could not be calculated, because the location has no coordinates or no longer
/// exists.
void EntryGeneralPage::ShowWhetherTimesFit(bool fit)
{
    const auto show = [fit](Note* note, std::initializer_list<const QLineEdit*> boxes) {
        const bool isAnyFilled = std::any_of(boxes.begin(), boxes.end(),
                                             [](const QLineEdit* box) { return !box->text().isEmpty(); });
        note->Explain(fit || !isAnyFilled ? QString() : QStringLiteral("For another place or date"));
    };
    show(m_ui->lblOldSunMoon, {m_ui->txtSunRise, m_ui->txtSunSet, m_ui->txtMoonRise, m_ui->txtMoonSet});
    show(m_ui->lblOldPeakTimes, {m_ui->txtMajor1, m_ui->txtMajor2, m_ui->txtMinor1, m_ui->txtMinor2});
}

void EntryGeneralPage::StartDateChanged()
{
    ShowWhetherTimesFit(m_calculator->DoTheCalcs(StartDate(), SelectedLocation()));
    m_moonPhase->SignPhase();
}

std::string EntryGeneralPage::StartDate() const
{
    return ToUtf8(m_ui->txtStart->text());
}

/// Returns the number of the selected location, if any.
std::optional<std::int32_t> EntryGeneralPage::SelectedLocation() const
{
    const QVariant location = m_ui->cboLocation->currentData();
    return location.isValid() ? std::optional(location.toInt()) : std::nullopt;
}

bool EntryGeneralPage::LoadLocations()
{
    Trap(entryModule, "LoadLocations", [this] {
        RecordList locations;
        if (m_program->sql.LocationList(locations) != succeeded) {
            return;
        }
        m_ui->cboLocation->clear();
        for (const RecordView& location : locations) {
            m_ui->cboLocation->addItem(ShownInOneLine(location.Text(LocationField::LocName)), location.Key());
        }
    });
    return m_ui->cboLocation->count() > 0;
}

void EntryGeneralPage::ShowExistingEntry()
{
    SelectLocation(m_record->Text(EntryField::LocNo));
    bool timesFit = SelectedLocation().has_value();
    constexpr std::array peaks{EntryField::Major1, EntryField::Major2, EntryField::Minor1,
                               EntryField::Minor2};
    if (std::any_of(peaks.begin(), peaks.end(), [this](auto peak) { return m_record->Text(peak).empty(); })) {
        for (const auto peak : peaks) { // all four are shown, or none
            KeyFilter::SetText(m_binder->Box(peak), {});
        }
        timesFit = m_calculator->DoRiseSet(StartDate(), SelectedLocation());
    }
    ShowWhetherTimesFit(timesFit);
    m_moonPhase->ShowRecord();
    if (m_record->Text(EntryField::MoonPhase).empty()) {
        m_calculator->DoMoonPhase(StartDate());
        m_moonPhase->PhaseChange();
    }
    ShowDuration();
}

void EntryGeneralPage::ShowNewEntry(const NewTripValues& trip)
{
    SelectLocation(trip.location);
    if (!SelectedLocation()) {
        m_ui->cboLocation->setCurrentIndex(0);
    }
    const std::string date = trip.date.empty() ? FromDate(m_program->clock.Today()) : trip.date;
    m_binder->ShowAndStore(EntryField::StartDate, date);
    m_binder->ShowAndStore(EntryField::EndDate, date);
    m_binder->ShowAndStore(EntryField::StartTime, trip.startTime);
    m_binder->ShowAndStore(EntryField::EndTime, trip.endTime);
    m_binder->ShowAndStore(EntryField::TargetSpecies, trip.target);
    m_binder->ShowAndStore(EntryField::BaitUsed, trip.bait);
    m_binder->ShowAndStore(EntryField::Method, trip.method);
    ShowWhetherTimesFit(m_calculator->DoTheCalcs(StartDate(), SelectedLocation()));
    for (const auto field : {EntryField::Major1, EntryField::Major2, EntryField::Minor1, EntryField::Minor2,
                             EntryField::SunRise, EntryField::SunSet, EntryField::MoonRise,
                             EntryField::MoonSet}) { // empty if the location has no coordinates
        m_record->Store(field, ToUtf8(m_binder->Box(field)->text()));
    }
    m_moonPhase->PhaseChange();
    ShowDuration();
}

/// Selects the location, or none if it does not exist.
void EntryGeneralPage::SelectLocation(const std::string& number)
{
    try {
        m_ui->cboLocation->setCurrentIndex(m_ui->cboLocation->findData(ToInt32(number)));
    } catch (const Error&) {
        m_ui->cboLocation->setCurrentIndex(-1);
    }
}

void EntryGeneralPage::StartEditing()
{
    m_ui->txtStart->setFocus();
    m_ui->txtStart->selectAll();
}

void EntryGeneralPage::StoreLocation()
{
    if (const auto location = SelectedLocation()) {
        m_record->Store(EntryField::LocNo, std::to_string(*location));
    }
}

void EntryGeneralPage::AddSelectedLocation(StoredTexts& entry) const
{
    if (const auto location = SelectedLocation()) {
        entry.at(EntryField::LocNo) = std::to_string(*location);
    }
}

bool EntryGeneralPage::cboLocation_Validate()
{
    bool mayLeave = true;
    Trap(entryModule, "cboLocation_Validate", [&] {
        const auto location = SelectedLocation();
        mayLeave = location.has_value();
        if (!mayLeave) {
            return;
        }
        if (m_record->Store(EntryField::LocNo, std::to_string(*location))) {
            ShowWhetherTimesFit(m_calculator->DoTheCalcs(StartDate(), location));
            m_moonPhase->PhaseChange();
        }
        Q_EMIT WrittenBack();
    });
    return mayLeave;
}

} // namespace Tarno
