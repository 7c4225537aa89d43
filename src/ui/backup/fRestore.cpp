#include "fRestore.h"

#include "BackUpWork.h"
#include "backup/BackUp.h"
#include "backup/LogPictures.h"
#include "core/Text.h"
#include "qt/Strings.h"
#include "ui/common/Handle.h"
#include "ui_fRestore.h"

#include <QFileInfo>

#include <algorithm>

namespace Tarno
{

namespace
{

const QString problemTitle = QStringLiteral("Restore Error");

/// Returns for example "3 trips, 1 location", or "nothing".
QString Described(const ImportBatch& missing)
{
    QStringList parts;
    if (!missing.trips.empty()) {
        parts << FromUtf8(Counted(missing.trips.size(), "trip"));
    }
    if (!missing.locations.empty()) {
        parts << FromUtf8(Counted(missing.locations.size(), "location"));
    }
    return parts.isEmpty() ? QStringLiteral("nothing") : parts.join(QLatin1String(", "));
}

} // namespace

void ShowUnusable(const Program& program, QWidget* parent, const QString& path, const Error& error)
{
    const QString unchanged = QStringLiteral("Nothing was changed.");
    const QString reason = ReasonOf(error);
    ShowProblem(program, parent,
                QStringLiteral("This back-up cannot be restored: ") + path + QStringLiteral("\r\n") + reason +
                    (reason.endsWith(unchanged) ? QString() : QStringLiteral("\r\n") + unchanged),
                problemTitle);
}

fRestore::fRestore(const Program& program, const QString& path, const BackUpArchive& backUp, QWidget* parent)
    : QDialog(parent),
      m_program(program),
      m_ui(std::make_unique<Ui::fRestore>()),
      m_path(path),
      m_backUp(backUp),
      m_isReadable(program.sql.CanAddEntries() && program.sql.CanAddLocations())
{
    m_ui->setupUi(this);
    m_ui->lblFile->setText(QFileInfo(path).fileName());
    m_ui->lvwContents->SetHeadings(
        {QStringLiteral("Contents"), QStringLiteral("Back-up"), QStringLiteral("Your Log")});
    m_ui->lvwContents->FitColumns({QStringLiteral("Missing here"),
                                   QStringLiteral("1000 trips, 100 locations"),
                                   QStringLiteral("cannot be read")},
                                  0);
    if (m_isReadable) {
        ReadLog();
    }
    ShowContents();
    SetControls();
    Handle(m_ui->optReplace, &QAbstractButton::toggled, "Click", this, [this] { SetControls(); });
    Handle(m_ui->cmdRestore, &QAbstractButton::clicked, "Click", this,
           [this] { m_ui->optReplace->isChecked() ? Replace() : Add(); });
    Handle(m_ui->cmdClose, &QAbstractButton::clicked, "Click", this, [this] { reject(); });
    m_ui->optReplace->setFocus();
    program.windows.Remember(*this);
}

fRestore::~fRestore() = default;

void fRestore::ReadLog()
{
    RecordList trips;
    RecordList locations;
    m_program.sql.EntryList(trips);
    m_program.sql.LocationList(locations);
    m_present = Summarize(trips, locations);
    const std::vector<std::string> pictures = StoredPictures(trips, locations);
    m_pictures = static_cast<std::size_t>(
        std::count_if(pictures.begin(), pictures.end(), [this](const std::string& stored) {
            return IsReadablePicture(PicturePath(m_program.folder.GetAppPath(), stored));
        }));
    m_missing = PlanMissing(m_backUp, trips, locations);
}

void fRestore::ShowContents()
{
    const LogSummary archived = Summarize(m_backUp.Trips(), m_backUp.Locations());
    std::vector<TextTableModel::Row> rows;
    const auto add = [&](const char* name, const QString& there, const QString& here) {
        rows.push_back(
            {QString::number(rows.size()),
             {QString::fromLatin1(name), there, m_isReadable ? here : QStringLiteral("cannot be read")}});
    };
    const auto addCount = [&](const char* name, std::size_t there, std::size_t here) {
        add(name, QString::number(there), QString::number(here));
    };
    addCount("Trips", archived.trips, m_present.trips);
    add("Last trip", FromUtf8(archived.lastTrip), FromUtf8(m_present.lastTrip));
    addCount("Locations", archived.locations, m_present.locations);
    addCount("Pictures", m_backUp.PictureCount(), m_pictures);
    if (m_isReadable) {
        add("Missing here", Described(m_missing.batch), {});
    }
    m_ui->lvwContents->SetRows(std::move(rows));
    m_ui->lblMade->setText(m_backUp.Time().empty()
                               ? QStringLiteral("The back-up does not say when it was made.")
                               : QStringLiteral("Made on ") + FromUtf8(m_backUp.Time()));
}

/// Whether anything can be added.
bool fRestore::CanAdd() const
{
    const bool isEmpty = m_missing.batch.trips.empty() && m_missing.batch.locations.empty();
    return m_isReadable && !isEmpty && m_program.sql.HasNumbersFor(m_missing.batch);
}

/// Returns what the chosen option does, and why the other one is not possible.
QString fRestore::Note() const
{
    if (!m_ui->optReplace->isChecked()) {
        return QStringLiteral("Your trips and locations stay as they are. Edit > Undo takes the added ones "
                              "back.");
    }
    const bool isEmpty = m_missing.batch.trips.empty() && m_missing.batch.locations.empty();
    const QString whyNotAdd =
        CanAdd()        ? QString()
        : !m_isReadable ? QStringLiteral(" Nothing can be added to it, because it cannot be read.")
        : isEmpty       ? QStringLiteral(" It has all trips and locations of the back-up already.")
                  : QStringLiteral(" It has too few numbers left to add what is missing. The highest number "
                                   "is 32767.");
    return QStringLiteral("Your log becomes what it was then. The present one is backed up first.") +
           whyNotAdd;
}

void fRestore::SetControls()
{
    m_ui->optAdd->setEnabled(CanAdd());
    m_ui->lblNote->setText(Note());
}

bool fRestore::ConfirmReplacing()
{
    const QString unsaved = m_program.sql.UnsavedChanges().empty()
                                ? QString()
                                : QStringLiteral("\r\n\r\nChanges that could not be saved yet will be lost.");
    return m_program.messages.Ask(
               this, {.text = QStringLiteral("Your log will be replaced by the back-up. The present log is "
                                             "backed up first, to the folder:\r\n") +
                              FromUtf8(m_program.folder.PathOf("backups")) + unsaved +
                              QStringLiteral("\r\n\r\nReplace your log?"),
                      .title = QStringLiteral("Replace Log"),
                      .icon = Icon::Question,
                      .buttons = Buttons::YesNo,
                      .byDefault = Button::No}) == Button::Yes;
}

void fRestore::Replace()
{
    if (!ConfirmReplacing()) {
        return;
    }
    RestoreResult result;
    try {
        const bool isDone = RunWithProgress(
            m_program, this, QStringLiteral("Restoring your log..."), [&](const Progress& progress) {
                result = RestoreBackUp(ToUtf8(m_path), m_program.folder, m_program.operations,
                                       LocalTimeOf(m_program.clock), ProgramName(), progress);
            });
        if (isDone) {
            ReloadLog(result);
        }
    } catch (const RestoreInterrupted& error) {
        m_outcome.kind = RestoreOutcome::Kind::Interrupted;
        ShowProblem(m_program, this,
                    FromUtf8(error.Description()) + QStringLiteral("\r\n\r\nTarno ends now."), problemTitle);
        accept();
    } catch (const Error& error) {
        ShowUnusable(m_program, this, m_path, error);
    }
}

void fRestore::ReloadLog(const RestoreResult& result)
{
    m_program.sql.Init();
    m_outcome.kind = RestoreOutcome::Kind::Replaced;
    const QString before =
        result.before.empty()
            ? QString()
            : QStringLiteral("\r\n\r\nThe log as it was before is in:\r\n") + FromUtf8(result.before);
    m_program.messages.ShowInformation(
        this,
        QStringLiteral("Restored %1, %2, %3.")
                .arg(FromUtf8(Counted(result.restored.trips, "trip")),
                     FromUtf8(Counted(result.restored.locations, "location")),
                     FromUtf8(Counted(result.pictures, "picture"))) +
            before + ListedMissing(result.missing, QStringLiteral("the restored log does not show them")),
        QStringLiteral("Tarno"));
    accept();
}

void fRestore::Add()
{
    Status status = failed;
    try {
        const bool isDone = RunWithProgress(
            m_program, this, QStringLiteral("Adding trips and locations..."), [&](const Progress& progress) {
                status = AddMissing(m_backUp, m_missing, m_program.folder, m_program.operations,
                                    m_program.sql, progress);
            });
        if (!isDone) {
            return;
        }
    } catch (const Error& error) {
        ShowUnusable(m_program, this, m_path, error);
        return;
    }
    m_outcome.kind = RestoreOutcome::Kind::Added;
    for (const ImportedTrip& trip : m_missing.batch.trips) {
        m_outcome.added.push_back(trip.values.front());
    }
    if (status == succeeded) {
        m_program.messages.ShowInformation(
            this, QStringLiteral("Added %1. Edit > Undo takes them back.").arg(Described(m_missing.batch)),
            QStringLiteral("Tarno"));
    }
    accept();
}

} // namespace Tarno
