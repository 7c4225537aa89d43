#include "fCollect.h"

#include "BackUpWork.h"
#include "core/Text.h"
#include "qt/Strings.h"
#include "ui/common/Handle.h"
#include "ui_fCollect.h"

#include <limits>

namespace Tarno
{

namespace
{

/// Returns for example "3 pictures, 2.1 MB to copy. 1 picture was not found and stays as it is."
QString Described(const CollectPlan& plan)
{
    QStringList sentences;
    if (!plan.pictures.empty()) {
        sentences << FromUtf8(Counted(plan.pictures.size(), "picture")) + QStringLiteral(", ") +
                         SizeInWords(plan.bytes) + QStringLiteral(" to copy.");
    }
    if (!plan.missing.empty()) {
        sentences << FromUtf8(Counted(plan.missing.size(), "picture")) +
                         (plan.missing.size() == 1 ? QStringLiteral(" was not found and stays as it is.")
                                                   : QStringLiteral(" were not found and stay as they are."));
    }
    return sentences.join(QLatin1Char(' '));
}

} // namespace

fCollect::fCollect(const Program& program, QWidget* parent)
    : QDialog(parent), m_program(program), m_ui(std::make_unique<Ui::fCollect>())
{
    m_ui->setupUi(this);
    m_ui->lvwPictures->SetHeadings(
        {QStringLiteral("Picture"), QStringLiteral("New Name"), QStringLiteral("Size")});
    m_ui->lvwPictures->FitColumns(
        {QString(), QStringLiteral("pictures/barrenjoey-2.jpg"), QStringLiteral("not copied")}, 0);
    m_ui->lvwPictures->setTextElideMode(Qt::ElideMiddle); // long paths differ at their ends
    m_ui->lvwPictures->SetHint(QStringLiteral("All pictures are in the folder of your log already."));
    ReadPictures();
    ShowPictures();
    Handle(m_ui->cmdCollect, &QAbstractButton::clicked, "Click", this, [this] { Collect(); });
    Handle(m_ui->cmdClose, &QAbstractButton::clicked, "Click", this, [this] { reject(); });
    m_ui->lvwPictures->setFocus();
    program.windows.Remember(*this);
}

fCollect::~fCollect() = default;

void fCollect::ReadPictures()
{
    m_program.sql.ReadChangesOfOthers();
    RecordList trips;
    RecordList locations;
    m_program.sql.EntryList(trips);
    m_program.sql.LocationList(locations);
    m_plan = PlanCollecting(m_program.folder, m_program.operations, trips, locations);
}

void fCollect::ShowPictures()
{
    constexpr double byText = std::numeric_limits<double>::quiet_NaN();
    std::vector<TextTableModel::Row> rows;
    const auto add = [&](const std::string& stored, const QString& name, const QString& size, double order) {
        rows.push_back(
            {QString::number(rows.size()), {FromUtf8(stored), name, size}, {byText, byText, order}});
    };
    for (const CollectablePicture& picture : m_plan.pictures) {
        add(picture.stored, FromUtf8(picture.name),
            picture.isCopied ? SizeInWords(picture.size) : QStringLiteral("not copied"),
            picture.isCopied ? static_cast<double>(picture.size) : 0);
    }
    for (const std::string& stored : m_plan.missing) {
        add(stored, {}, QStringLiteral("not found"), -1);
    }
    m_ui->lvwPictures->SetRows(std::move(rows));
    m_ui->lblTotal->setText(Described(m_plan));
    m_ui->lblTotal->setVisible(!m_ui->lblTotal->text().isEmpty());
    m_ui->cmdCollect->setEnabled(!m_plan.pictures.empty());
}

void fCollect::Collect()
{
    Status status = failed;
    try {
        const bool isDone = RunWithProgress(
            m_program, this, QStringLiteral("Copying the pictures..."), [&](const Progress& progress) {
                status =
                    CollectPictures(m_plan, m_program.folder, m_program.operations, m_program.sql, progress);
            });
        if (!isDone) {
            return;
        }
    } catch (const Error& error) {
        ShowProblem(m_program, this,
                    QStringLiteral("The pictures could not be collected.\r\n") + ReasonOf(error) +
                        QStringLiteral("\r\nNothing was changed."),
                    QStringLiteral("Collect Error"));
        return;
    }
    if (status == succeeded) {
        m_program.messages.ShowInformation(
            this,
            FromUtf8(Counted(m_plan.pictures.size(), "picture")) +
                QStringLiteral(" collected. Edit > Undo takes the new names back; the copies stay."),
            QStringLiteral("Tarno"));
    }
    accept();
}

} // namespace Tarno
