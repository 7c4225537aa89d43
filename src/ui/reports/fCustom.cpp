#include "fCustom.h"

#include "core/Conversions.h"
#include "core/ErrorLog.h"
#include "qt/Strings.h"
#include "reports/engine/ReportFonts.h"
#include "store/RecordLayouts.h"
#include "ui/common/BoxWidth.h"
#include "ui/common/Handle.h"
#include "ui/common/TextHeight.h"
#include "ui_fCustom.h"

#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>

namespace Tarno
{

namespace
{

constexpr std::string_view module = "fCustom";
constexpr int numberRole = Qt::UserRole;

} // namespace

fCustom::fCustom(const Program& program, QWidget* parent)
    : QDialog(parent), m_program(program), m_ui(std::make_unique<Ui::fCustom>())
{
    m_ui->setupUi(this);
    new TextHeight(this);
    constexpr int shownLetters = 30;
    m_ui->txtDesc->setMinimumWidth(shownLetters * m_ui->txtDesc->fontMetrics().averageCharWidth());
    WidenLists({m_ui->lstField}, shownLetters);
    m_boxes = {{m_ui->txtDesc, FieldField::Desc},
               {m_ui->txtLabel, FieldField::Label},
               {m_ui->txtWidth, FieldField::Width},
               {m_ui->txtFont, FieldField::Font}};
    for (QLabel* note : {m_ui->lblPrecious, m_ui->lblStored}) {
        QFont font = note->font();
        font.setFamily(AvailableFamily(QStringLiteral("Tahoma")));
        note->setFont(font);
    }
    for (const auto& [box, position] : m_boxes) {
        Handle(box, &QLineEdit::textChanged, "Change", this, [this] { m_changed = m_changed || !m_loading; });
    }
    Handle(m_ui->lstField, &QListWidget::currentRowChanged, "Click", this, [this] { lstField_Click(); });
    Handle(m_ui->cmdOK, &QPushButton::clicked, "Click", this, [this] { cmdOK_Click(); });
    Trap(module, "Form_Load", [this] { Form_Load(); });
    program.windows.Remember(*this);
}

fCustom::~fCustom() = default;

void fCustom::Form_Load()
{
    const QScopedValueRollback loading(m_loading, true);
    RecordList fields;
    if (m_program.sql.FieldList(fields) != succeeded) {
        return;
    }
    for (const RecordView& field : fields) {
        const std::int32_t number = field.Key();
        auto* item = new QListWidgetItem(FromUtf8(field.Text(FieldField::Desc)), m_ui->lstField);
        item->setData(numberRole, number);
    }
    // wide enough for the usual descriptions, in any font
    const QListWidget& list = *m_ui->lstField;
    const int widest =
        list.sizeHintForColumn(0) + list.verticalScrollBar()->sizeHint().width() + 2 * list.frameWidth();
    m_ui->lstField->setMinimumWidth(std::clamp(widest, list.minimumWidth(), 2 * list.minimumWidth()));
    m_ui->lstField->setCurrentRow(0);
}

/// Stores the previous field and shows the selected one. If storing fails, the previous field stays selected.
void fCustom::lstField_Click()
{
    auto reselect = qScopeGuard([this] {
        // after the list has handled the click
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (m_shown >= 0) {
                    const QSignalBlocker blocker(m_ui->lstField);
                    m_ui->lstField->setCurrentRow(m_shown);
                }
            },
            Qt::QueuedConnection);
    });
    if (!m_loading && !StoreShown()) {
        return;
    }
    Show(m_ui->lstField->currentRow());
    reselect.dismiss();
}

/// The number of a field is its position in the file, counted from 1.
void fCustom::Show(int row)
{
    const QScopedValueRollback loading(m_loading, true);
    RecordList fields;
    if (m_program.sql.FieldList(fields) != succeeded) {
        return;
    }
    const Record field(RecordAt(fields, m_ui->lstField->item(row)->data(numberRole).toInt() - 1));
    for (const auto& [box, position] : m_boxes) {
        box->setText(FromUtf8(field.Text(position)));
        box->setCursorPosition(0); // a long text shows its beginning
    }
    m_shown = row;
}

Status fCustom::Save(int row)
{
    RecordList fields;
    if (m_program.sql.FieldList(fields) != succeeded) {
        return failed;
    }
    QListWidgetItem* item = m_ui->lstField->item(row);
    Record field(RecordAt(fields, item->data(numberRole).toInt() - 1));
    item->setText(m_ui->txtDesc->text());
    for (const auto& [box, position] : m_boxes) {
        field.SetText(position, ToUtf8(box->text()));
    }
    return m_program.sql.FieldUpdate(field);
}

void fCustom::cmdOK_Click()
{
    if (StoreShown()) {
        accept();
    }
}

/// Stores the field in the boxes if anything was edited. Returns false if that fails.
bool fCustom::StoreShown()
{
    return m_shown < 0 || !m_changed || Save(m_shown) == succeeded;
}

} // namespace Tarno
