#include "fBackUp.h"

#include "BackUpWork.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "qt/Strings.h"
#include "ui/common/Handle.h"
#include "ui_fBackUp.h"

#include <utility>

namespace Tarno
{

namespace
{

const QString problemTitle = QStringLiteral("Back-up Error");

QString InWords(BackUpKind kind)
{
    switch (kind) {
    case BackUpKind::Automatic:
        return QStringLiteral("Automatic");
    case BackUpKind::BeforeRestore:
        return QStringLiteral("Before a restore");
    case BackUpKind::ByHand:
        break;
    }
    return QStringLiteral("By hand");
}

std::string PathIn(const QString& folder, const std::string& name)
{
    return FromPath(ToPath(ToUtf8(folder)) / ToPath(name));
}

} // namespace

fBackUp::fBackUp(const Program& program, QWidget* parent)
    : QDialog(parent),
      m_program(program),
      m_ui(std::make_unique<Ui::fBackUp>()),
      m_log(FromUtf8(program.folder.GetAppPath()))
{
    m_ui->setupUi(this);
    m_ui->lvwBackUps->SetHeadings({QStringLiteral("Made"), QStringLiteral("Kind"), QStringLiteral("Size")});
    m_ui->lvwBackUps->FitColumns(
        {QStringLiteral("2026-11-22 18:30"), QStringLiteral("Before a restore"), QStringLiteral("100.0 MB")},
        1);
    ShowBackUps();
    Handle(m_ui->cmdFolder, &QAbstractButton::clicked, "Click", this, [this] { ChooseFolder(); });
    Handle(m_ui->cmdBackUp, &QAbstractButton::clicked, "Click", this, [this] { MakeBackUp(); });
    Handle(m_ui->cmdClose, &QAbstractButton::clicked, "Click", this, [this] { reject(); });
    m_ui->cmdBackUp->setFocus();
    program.windows.Remember(*this);
}

fBackUp::~fBackUp() = default;

QString fBackUp::Folder() const
{
    return m_program.windows.BackUpFolder(m_log);
}

void fBackUp::ShowBackUps()
{
    const QString folder = Folder();
    m_ui->lblFolder->setText(QStringLiteral("Folder: ") + folder);
    std::vector<TextTableModel::Row> rows;
    for (const NamedBackUp& backUp : BackUpsAmong(NamesIn(ToUtf8(folder)))) {
        const std::uint64_t size = m_program.operations.GetState(PathIn(folder, backUp.name)).size;
        rows.insert(rows.begin(), {FromUtf8(backUp.name),
                                   {FromUtf8(backUp.time), InWords(backUp.kind), SizeInWords(size)},
                                   {static_cast<double>(rows.size()), static_cast<double>(backUp.kind),
                                    static_cast<double>(size)}});
    }
    m_ui->lvwBackUps->SetRows(std::move(rows));
    m_ui->lvwBackUps->SetHint(QStringLiteral("There is no back-up in this folder yet."));
}

void fBackUp::ChooseFolder()
{
    if (const auto chosen =
            m_program.files.ChooseFolder(this, QStringLiteral("Folder for Back-ups"), Folder())) {
        m_program.windows.SetBackUpFolder(m_log, *chosen);
        ShowBackUps();
        if (Folder() != *chosen) {
            ShowProblem(
                m_program, this,
                QStringLiteral("Your choice could not be stored among your settings. Back-ups still go "
                               "to this folder:\r\n") +
                    Folder(),
                problemTitle);
        }
    }
}

void fBackUp::MakeBackUp()
{
    const QString folder = Folder();
    const LocalTime time = LocalTimeOf(m_program.clock);
    const std::string name = BackUpName(BackUpKind::ByHand, time, NamesIn(ToUtf8(folder)));
    const std::string path = PathIn(folder, name);
    const bool withPictures = m_ui->chkPictures->isChecked();
    BackUpResult result;
    bool isDone = false;
    try {
        EnsureBackUpFolder(m_program.folder, m_program.operations, ToUtf8(folder));
        isDone = RunWithProgress(
            m_program, this, QStringLiteral("Backing up your log..."), [&](const Progress& progress) {
                result =
                    BackUp(m_program.folder, m_program.operations, path,
                           {.pictures = withPictures ? BackUpPictures::Include : BackUpPictures::LeaveOut,
                            .time = time,
                            .program = ProgramName()},
                           progress);
            });
    } catch (const Error& error) {
        ShowProblem(m_program, this,
                    QStringLiteral("The back-up could not be made: ") + FromUtf8(path) +
                        QStringLiteral("\r\n") + ReasonOf(error),
                    problemTitle);
    }
    ShowBackUps(); // also without success, because the folder may have disappeared
    if (isDone) {
        m_ui->lvwBackUps->SelectKey(FromUtf8(name));
        ShowResult(FromUtf8(path), result);
    }
}

void fBackUp::ShowResult(const QString& path, const BackUpResult& result)
{
    const QString pictures = m_ui->chkPictures->isChecked()
                                 ? QStringLiteral("with ") + FromUtf8(Counted(result.pictures, "picture"))
                                 : QStringLiteral("without its pictures");
    const QString unsaved =
        m_program.sql.UnsavedChanges().empty()
            ? QString()
            : QStringLiteral("\r\n\r\nChanges that could not be saved yet are not in the back-up.");
    m_program.messages.ShowInformation(
        this,
        QStringLiteral("Your log was backed up ") + pictures + QStringLiteral(":\r\n") + path +
            ListedMissing(result.missing, QStringLiteral("they are not in the back-up")) + unsaved,
        QStringLiteral("Tarno"));
}

} // namespace Tarno
