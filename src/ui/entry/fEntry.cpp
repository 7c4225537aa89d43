#include "fEntry.h"

#include "EntryModule.h"
#include "FieldRules.h"
#include "core/Conversions.h"
#include "core/Error.h"
#include "core/ErrorLog.h"
#include "qt/Strings.h"
#include "store/EntryFields.h"
#include "ui/common/LeaveGuard.h"
#include "ui/common/RecordBinder.h"
#include "ui_fEntry.h"

#include <QShortcut>

namespace Tarno
{

fEntry::fEntry(const Program& program, QWidget* parent)
    : EditingDialog(program, RecordTitle::Kind::Trip, parent), m_ui(std::make_unique<Ui::fEntry>())
{
    m_ui->setupUi(this);
    m_ui->pageGeneral->Attach(program, Edited(), Binder(), Guard());
    m_ui->pageWeather->Attach(Binder());
    m_ui->pageComments->Attach(program, Binder(), Guard());
    m_ui->picturePanel->Attach(program, Edited(), EntryField::Picture, QStringLiteral("picCatch"),
                               QStringLiteral("imgCatch"), m_ui->cmdCancel);
    ConnectButtons(m_ui->cmdOK, m_ui->cmdCancel);

    connect(m_ui->sstEntry, &QTabWidget::currentChanged, this, &fEntry::sstEntry_Click);
    connect(m_ui->pageGeneral, &EntryGeneralPage::WrittenBack, this, &fEntry::UpdateSaveButton);
    connect(m_ui->picturePanel, &PicturePanel::PictureChanged, this, &fEntry::UpdateSaveButton);
    connect(&Binder(), &RecordBinder::LinesEdited, this, [this] {
        Edited().SetChanged(true);
        UpdateSaveButton();
    });
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
        connect(new QShortcut(QKeySequence(Qt::CTRL | enter), this), &QShortcut::activated, this,
                &fEntry::SaveAndAddNext);
    }
    program.windows.Remember(*this);
}

fEntry::~fEntry() = default;

void fEntry::SetData(std::int16_t iTarnoNo, bool bDelete)
{
    Trap(entryModule, "SetData", [&] {
        if (!LoadEntry(iTarnoNo)) {
            return;
        }
        // an entry with missing values can be deleted, but not edited
        const bool isComplete = Edited().Count() >= EntryField::Count;
        const auto newTrip = iTarnoNo == 0 ? std::optional(NewTripValues{}) : std::nullopt;
        const bool isLoaded = (isComplete || !bDelete) && LoadTheForm(newTrip);
        if (bDelete) {
            DeleteAfterQuestion(iTarnoNo);
        } else if (isLoaded) {
            Begin(false);
            exec();
        }
    });
}

void fEntry::RepeatTrip(const Record& entry)
{
    const RecordView like = entry.View();
    AddTrip({.date = {},
             .location = like.Text(EntryField::LocNo),
             .startTime = like.Text(EntryField::StartTime),
             .endTime = like.Text(EntryField::EndTime),
             .target = like.Text(EntryField::TargetSpecies),
             .bait = like.Text(EntryField::BaitUsed),
             .method = like.Text(EntryField::Method)});
}

void fEntry::AddTrip(const NewTripValues& trip)
{
    Trap(entryModule, "AddTrip", [&] {
        if (LoadEntry(0) && LoadTheForm(trip)) {
            Begin(true);
            exec();
        }
    });
}

void fEntry::ContinueDraft(const Draft& draft)
{
    Trap(entryModule, "ContinueDraft", [&] {
        if (!LoadEntry(KeyFor(draft))) {
            return;
        }
        ContinueDraftOf(draft);
        if (LoadTheForm(std::nullopt)) {
            Begin(true);
            exec();
        }
    });
}

StoredTexts fEntry::TypedTexts()
{
    StoredTexts texts = EditingDialog::TypedTexts();
    m_ui->pageGeneral->AddSelectedLocation(texts);
    if (texts.at(EntryField::StartDate) != Edited().Text(EntryField::StartDate) ||
        texts.at(EntryField::LocNo) != Edited().Text(EntryField::LocNo)) {
        // values for the old date or location; ShowExistingEntry calculates them if they are missing
        for (const auto field : {EntryField::MoonPhase, EntryField::Major1, EntryField::Major2,
                                 EntryField::Minor1, EntryField::Minor2}) {
            texts.at(field).clear();
        }
    }
    return texts;
}

/// Saves the entry, a new one even if it is unchanged, and continues with a new entry one day after this one,
/// at the same place and times.
void fEntry::SaveAndAddNext()
{
    Trap(entryModule, "SaveAndAddNext", [this] {
        if (Edited().Text(EntryField::TarnoNo) == "0") {
            Edited().SetChanged(true);
        }
        if (!SaveData()) {
            return;
        }
        const auto date = ParseUserDate(FromUtf8(Edited().Text(EntryField::StartDate)));
        const auto nextDay = date ? DaysLater(*date, 1) : std::nullopt;
        const NewTripValues next{.date = nextDay ? FromDate(*nextDay) : std::string(),
                                 .location = Edited().Text(EntryField::LocNo),
                                 .startTime = Edited().Text(EntryField::StartTime),
                                 .endTime = Edited().Text(EntryField::EndTime)};
        bool isLoaded = false;
        Guard().WhileShowing([&] { isLoaded = LoadEntry(0) && LoadTheForm(next); });
        if (isLoaded) {
            Begin(false);
        } else {
            done(Rejected); // the boxes no longer show the saved entry
        }
    });
}

/// Reads the entry, or a new one for 0. Returns false if that is not possible.
bool fEntry::LoadEntry(std::int16_t iTarnoNo)
{
    if (!m_ui->pageGeneral->LoadLocations()) {
        CurrentProgram().messages.ShowInformation(
            parentWidget(), QStringLiteral("You need to add some locations prior to adding log entries!"),
            QStringLiteral("No Locations Entered!"));
        return false;
    }
    Record entry;
    if (CurrentProgram().sql.EntryGet(iTarnoNo, entry) != succeeded) {
        return false;
    }
    BeginRecord(std::move(entry));
    return true;
}

/// Lets the user begin with the loaded entry. `changed` is whether it can be saved as it is.
void fEntry::Begin(bool changed)
{
    m_ui->pageComments->ForgetLines();
    m_ui->pageGeneral->StoreLocation();
    Edited().SetChanged(changed);
    m_ui->sstEntry->setCurrentIndex(0);
    m_ui->cmdOK->setEnabled(true);
    m_ui->pageGeneral->StartEditing();
}

void fEntry::DeleteAfterQuestion(std::int16_t iTarnoNo)
{
    const Button answer = CurrentProgram().messages.Ask(
        parentWidget(), {.text = QStringLiteral("Are you sure you want to delete this record from the log?"),
                         .title = QStringLiteral("Delete Record?"),
                         .icon = Icon::Question,
                         .buttons = Buttons::YesNoCancel,
                         .byDefault = Button::Cancel});
    if (answer == Button::Yes) {
        CurrentProgram().sql.EntryDelete(iTarnoNo);
    }
}

/// Shows the entry in the controls, or `newTrip` if there is one. Returns false and reports the error if the
/// entry has missing values.
bool fEntry::LoadTheForm(const std::optional<NewTripValues>& newTrip)
{
    return Trap(entryModule, "LoadTheForm", [&] {
        if (Edited().Count() < EntryField::Count) {
            throw Error(ErrorNumber::ObjectNotSet);
        }
        if (!newTrip) {
            Binder().ShowRecord();
            m_ui->pageGeneral->ShowExistingEntry();
        } else {
            Binder().ClearControls();
            m_ui->pageGeneral->ShowNewEntry(*newTrip);
            Edited().Store(EntryField::Picture, "");
        }
        m_ui->picturePanel->ShowRecord();
    });
}

void fEntry::sstEntry_Click()
{
    Trap(entryModule, "sstEntry_Click", [this] {
        m_ui->lblNote->setVisible(m_ui->sstEntry->currentIndex() == 0);
        QWidget* page = m_ui->sstEntry->currentWidget(); // its focus proxy is its first control
        (page == m_ui->scrPicture ? m_ui->cmdCancel : page)->setFocus();
    });
}

} // namespace Tarno
