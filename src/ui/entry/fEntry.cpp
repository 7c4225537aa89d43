#include "fEntry.h"

#include "EntryModule.h"
#include "core/Error.h"
#include "core/ErrorLog.h"
#include "store/EntryFields.h"
#include "ui/common/RecordBinder.h"
#include "ui_fEntry.h"

namespace Tarno
{

fEntry::fEntry(const Program& program, QWidget* parent)
    : EditingDialog(program, &cSQL::EntryUpdate, parent), m_ui(std::make_unique<Ui::fEntry>())
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
    program.windows.Remember(*this);
}

fEntry::~fEntry() = default;

void fEntry::SetData(std::int16_t iTarnoNo, bool bDelete)
{
    Trap(entryModule, "SetData", [&] {
        if (!m_ui->pageGeneral->LoadLocations()) {
            CurrentProgram().messages.ShowInformation(
                parentWidget(), QStringLiteral("You need to add some locations prior to adding log entries!"),
                QStringLiteral("No Locations Entered!"));
            return;
        }
        Record entry;
        if (CurrentProgram().sql.EntryGet(iTarnoNo, entry) != succeeded) {
            return;
        }
        Edited().Begin(std::move(entry));
        // an entry with missing values can be deleted, but not edited
        const bool isComplete = Edited().Count() >= EntryField::Count;
        const bool isLoaded =
            (isComplete || !bDelete) && Trap(entryModule, "LoadTheForm", [&] { LoadTheForm(iTarnoNo); });
        if (bDelete) {
            DeleteAfterQuestion(iTarnoNo);
            return;
        }
        if (!isLoaded) {
            return;
        }
        m_ui->pageGeneral->StoreLocation();
        Edited().SetChanged(false);
        m_ui->sstEntry->setCurrentIndex(0);
        m_ui->cmdOK->setEnabled(true);
        m_ui->pageGeneral->setFocus();
        exec();
    });
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

void fEntry::LoadTheForm(std::int16_t iTarnoNo)
{
    if (Edited().Count() < EntryField::Count) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    if (iTarnoNo != 0) {
        Binder().ShowRecord();
        m_ui->pageGeneral->ShowExistingEntry();
    } else {
        Binder().ClearControls();
        m_ui->pageGeneral->ShowNewEntry();
        Edited().Store(EntryField::Picture, "");
    }
    m_ui->picturePanel->ShowRecord();
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
