#include "fEntry.h"

#include "EntryBinder.h"
#include "EntryCalculator.h"
#include "PickLists.h"
#include "core/Conversions.h"
#include "core/ErrorLog.h"
#include "qt/Strings.h"
#include "store/RecordLayouts.h"
#include "ui/common/KeyFilter.h"
#include "ui/common/LeaveGuard.h"
#include "ui_fEntry.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

#include <algorithm>
#include <array>

namespace
{

constexpr std::string_view module = "fEntry";

} // namespace

fEntry::fEntry(const Program& program, QWidget* parent)
    : EditingDialog(program, parent), m_ui(std::make_unique<Ui::fEntry>())
{
    m_ui->setupUi(this);
    m_cboLocation = findChild<QComboBox*>(QStringLiteral("cboLocation"));
    m_binder = new EntryBinder(this, Edited(), Guard());
    m_calculator = std::make_unique<EntryCalculator>(this, program, Edited(), *m_binder);
    m_pickLists = new PickLists(m_ui->pageComments, program, Guard());
    m_ui->picturePanel->Attach(program, Edited(), EntryField::Picture, QStringLiteral("picCatch"),
                               QStringLiteral("imgCatch"), m_ui->cmdCancel);
    Prepare(m_ui->cmdOK, m_ui->cmdCancel);
    Guard().Add(m_cboLocation, [this] { return cboLocation_Validate(); });

    connect(m_ui->sstEntry, &QTabWidget::currentChanged, this, &fEntry::sstEntry_Click);
    connect(m_binder, &EntryBinder::WrittenBack, this, &fEntry::EnableSave);
    connect(m_binder, &EntryBinder::ValueChanged, this, &fEntry::ValueChanged);
    connect(m_binder, &EntryBinder::LinesEdited, this, &fEntry::LinesEdited);
    connect(m_ui->picturePanel, &PicturePanel::PictureChanged, this, &fEntry::EnableSave);

    auto* txtMoon = findChild<QLineEdit*>(QStringLiteral("txtMoon"));
    new KeyFilter(txtMoon, {});
    connect(txtMoon, &QLineEdit::textChanged, this, &fEntry::PhaseChanged);
    connect(findChild<QCheckBox*>(QStringLiteral("chkMoon")), &QCheckBox::toggled, this,
            &fEntry::PhaseChanged);
}

fEntry::~fEntry() = default;

void fEntry::SetData(std::int16_t iTarnoNo, bool bDelete)
{
    Trap(module, "SetData", [&] {
        m_loading = true;
        m_entryNumber = iTarnoNo;
        if (!LoadLocations()) {
            CurrentProgram().messages.Tell(
                parentWidget(), QStringLiteral("You need to add some locations prior to adding log entries!"),
                QStringLiteral("No Locations Entered!"));
            return;
        }
        Record entry;
        if (CurrentProgram().sql.EntryGet(iTarnoNo, entry) != succeeded) {
            return;
        }
        Edited().Begin(std::move(entry));
        const bool loaded = Trap(module, "LoadTheForm", [this] { LoadTheForm(); });
        if (bDelete) { // also what cannot be shown whole
            DeleteAfterQuestion();
            return;
        }
        if (!loaded) {
            return;
        }
        if (const QVariant location = m_cboLocation->currentData(); location.isValid()) {
            Edited().Store(EntryField::LocNo, std::to_string(location.toInt()));
        }
        Edited().SetChanged(false);
        m_ui->sstEntry->setCurrentIndex(0);
        m_ui->cmdOK->setEnabled(true);
        findChild<QLineEdit*>(QStringLiteral("txtStart"))->setFocus();
        m_loading = false;
        exec();
    });
}

void fEntry::DeleteAfterQuestion()
{
    const Button answer = CurrentProgram().messages.Ask(
        parentWidget(), {.text = QStringLiteral("Are you sure you want to delete this record from the log?"),
                         .title = QStringLiteral("Delete Record?"),
                         .icon = Icon::Question,
                         .buttons = Buttons::YesNoCancel,
                         .byDefault = Button::Cancel});
    if (answer == Button::Yes) {
        CurrentProgram().sql.EntryDelete(m_entryNumber);
    }
}

/// Fills the list of locations; returns whether there is at least one.
bool fEntry::LoadLocations()
{
    Trap(module, "LoadLocations", [&] {
        RecordList locations;
        if (CurrentProgram().sql.LocationList(locations) != succeeded) {
            return;
        }
        m_cboLocation->clear();
        for (const RecordView& location : locations) {
            m_cboLocation->addItem(ShownInOneLine(location.Text(LocationField::LocName)),
                                   ToInt32(location.Text(LocationField::LocNo)));
        }
    });
    return m_cboLocation->count() > 0;
}

void fEntry::LoadTheForm()
{
    if (Edited().Record().Count() < EntryField::Count) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    if (m_entryNumber != 0) {
        ShowExistingEntry();
    } else {
        ShowNewEntry();
    }
    m_ui->picturePanel->ShowRecord();
}

void fEntry::ShowExistingEntry()
{
    SelectStoredLocation();
    m_binder->ShowRecord();
    constexpr std::array peaks{EntryField::Major1, EntryField::Major2, EntryField::Minor1,
                               EntryField::Minor2};
    if (std::any_of(peaks.begin(), peaks.end(), [this](auto peak) { return Edited().Text(peak).empty(); })) {
        for (const auto peak : peaks) { // shown together or not at all
            KeyFilter::Show(m_binder->Box(peak), {});
        }
        m_calculator->DoRiseSet();
    }
    m_calculator->ShowPhase();
    if (Edited().Text(EntryField::MoonPhase).empty()) {
        m_calculator->DoMoonPhase();
        m_calculator->PhaseChange();
    }
}

void fEntry::ShowNewEntry()
{
    m_binder->ShowNothing();
    m_cboLocation->setCurrentIndex(0);
    const std::string today = FromDate(CurrentProgram().clock.Today());
    m_binder->Put(EntryField::StartDate, today);
    m_binder->Put(EntryField::EndDate, today);
    m_binder->Put(EntryField::StartTime, "06:00");
    m_binder->Put(EntryField::EndTime, "12:00");
    m_calculator->DoTheCalcs();
    m_calculator->PhaseChange();
}

/// Selects the entry's location, or none when it is gone.
void fEntry::SelectStoredLocation()
{
    try {
        m_cboLocation->setCurrentIndex(m_cboLocation->findData(ToInt32(Edited().Text(EntryField::LocNo))));
    } catch (const Error&) {
        m_cboLocation->setCurrentIndex(-1);
    }
}

Status fEntry::Update(Record& record)
{
    return CurrentProgram().sql.EntryUpdate(record);
}

/// What is picked, and what is typed in a box of several lines, belongs to the entry before it is left.
bool fEntry::TakeTyped()
{
    m_pickLists->Close();
    return m_binder->WriteBack();
}

void fEntry::sstEntry_Click()
{
    Trap(module, "sstEntry_Click", [this] {
        const int page = m_ui->sstEntry->currentIndex();
        m_ui->lblNote->setVisible(page == 0);
        if (!m_loading) {
            constexpr std::array firstControls{"txtStart", "optWeather_0", "txtTarget", "cmdCancel"};
            findChild<QWidget*>(QLatin1String(firstControls.at(static_cast<std::size_t>(page))))->setFocus();
        }
    });
}

bool fEntry::cboLocation_Validate()
{
    bool mayLeave = true;
    Trap(module, "cboLocation_Validate", [&] {
        const QVariant location = m_cboLocation->currentData();
        mayLeave = location.isValid();
        if (mayLeave && Edited().Store(EntryField::LocNo, std::to_string(location.toInt()))) {
            m_calculator->DoTheCalcs();
            m_calculator->PhaseChange();
        }
        if (mayLeave) {
            EnableSave();
        }
    });
    return mayLeave;
}

void fEntry::ValueChanged(std::size_t position)
{
    if (position == EntryField::StartDate) {
        m_calculator->DoTheCalcs();
        m_calculator->SignPhase();
    }
}

void fEntry::LinesEdited()
{
    if (!m_loading) {
        Edited().SetChanged(true);
        EnableSave();
    }
}

void fEntry::PhaseChanged()
{
    if (m_loading) {
        return;
    }
    Trap(module, "PhaseChange", [this] {
        if (m_calculator->PhaseChange()) {
            EnableSave();
        }
    });
}
