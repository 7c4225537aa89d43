#include "FieldPicker.h"

#include "core/Conversions.h"
#include "qt/Icons.h"
#include "qt/Strings.h"
#include "store/RecordLayouts.h"
#include "ui/common/BoxWidth.h"
#include "ui/common/Handle.h"
#include "ui_FieldPicker.h"

#include <QShortcut>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <initializer_list>
#include <string>

namespace Tarno
{

namespace
{

constexpr int numberRole = Qt::UserRole; // the field number of an item

void AddItem(QListWidget* list, const RecordView& field)
{
    auto* item = new QListWidgetItem(FromUtf8(field.Text(FieldField::Desc)), list);
    item->setData(numberRole, field.Key());
}

/// Returns the selected row, or -1.
int SelectedRow(const QListWidget* list)
{
    const QList<QListWidgetItem*> selected = list->selectedItems();
    return selected.isEmpty() ? -1 : list->row(selected.first());
}

} // namespace

FieldPicker::FieldPicker(QWidget* parent) : QWidget(parent), m_ui(std::make_unique<Ui::FieldPicker>())
{
    m_ui->setupUi(this);
    QListWidget* available = m_ui->lstAvail;
    QListWidget* chosen = m_ui->lstRpt;
    constexpr int shownLetters = 30; // of a field's description
    WidenLists({available, chosen}, shownLetters);

    struct Tool {
        QPushButton* button;
        const char* icon;
        QKeyCombination key;
        std::function<void()> act;
    };

    const std::initializer_list<Tool> tools{
        {m_ui->cmdMove, "move", Qt::CTRL | Qt::Key_Right, [=, this] { Move(available, chosen); }},
        {m_ui->cmdMoveAll, "move-all", Qt::CTRL | Qt::SHIFT | Qt::Key_Right,
         [=, this] { MoveAll(available, chosen); }},
        {m_ui->cmdBack, "back", Qt::CTRL | Qt::Key_Left, [=, this] { Move(chosen, available); }},
        {m_ui->cmdBackAll, "back-all", Qt::CTRL | Qt::SHIFT | Qt::Key_Left,
         [=, this] { MoveAll(chosen, available); }},
        {m_ui->cmdUp, "up", Qt::CTRL | Qt::Key_Up, [this] { MoveBy(-1); }},
        {m_ui->cmdDn, "down", Qt::CTRL | Qt::Key_Down, [this] { MoveBy(1); }},
    };
    for (const Tool& tool : tools) {
        tool.button->setIcon(DrawnIcon(QLatin1String(tool.icon)));
        // a button ignores its own shortcut while it is still animating the previous key press
        connect(new QShortcut(tool.key, this), &QShortcut::activated, tool.button, &QPushButton::click);
        Handle(tool.button, &QPushButton::clicked, "Click", this, tool.act);
    }
    Handle(available, &QListWidget::itemDoubleClicked, "DblClick", this, [this] { m_ui->cmdMove->click(); });
    Handle(chosen, &QListWidget::itemDoubleClicked, "DblClick", this, [this] { m_ui->cmdBack->click(); });
}

FieldPicker::~FieldPicker() = default;

void FieldPicker::Clear()
{
    m_ui->lstAvail->clear();
    m_ui->lstRpt->clear();
}

void FieldPicker::ShowDefault(const RecordList& fields)
{
    Clear();
    for (const RecordView& field : fields) {
        AddItem(field.Text(FieldField::DefaultFlag) == "0" ? m_ui->lstAvail : m_ui->lstRpt, field);
    }
}

void FieldPicker::ShowSelection(const RecordList& fields, const ReportSelection& selection)
{
    Clear();
    const std::vector<std::string>& numbers = selection.numbers;
    for (const RecordView& field : fields) {
        if (std::find(numbers.begin(), numbers.end(), field.Text(FieldField::FieldNo)) == numbers.end()) {
            AddItem(m_ui->lstAvail, field);
        }
    }
    for (const std::string& number : numbers) {
        for (const RecordView& field : fields) {
            if (field.Text(FieldField::FieldNo) == number) {
                AddItem(m_ui->lstRpt, field);
            }
        }
    }
}

std::vector<std::int32_t> FieldPicker::Chosen() const
{
    const int count = m_ui->lstRpt->count();
    std::vector<std::int32_t> numbers;
    numbers.reserve(static_cast<std::size_t>(count));
    for (int row = 0; row < count; ++row) {
        numbers.push_back(m_ui->lstRpt->item(row)->data(numberRole).toInt());
    }
    return numbers;
}

bool FieldPicker::IsDescending() const
{
    return m_ui->chkDesc->isChecked();
}

void FieldPicker::ShowSortField()
{
    const QListWidgetItem* first = m_ui->lstRpt->item(0);
    m_ui->chkDesc->setEnabled(first != nullptr);
    m_ui->chkDesc->setText(first == nullptr
                               ? QString()
                               : QStringLiteral("Sort by ") +
                                     first->text().replace(QLatin1Char('&'), QLatin1String("&&")) +
                                     QStringLiteral(" Desc"));
    m_ui->chkDesc->setAccessibleName(first == nullptr ? QStringLiteral("Sort descending") : QString());
}

void FieldPicker::FocusChosen()
{
    m_ui->lstRpt->setFocus();
}

/// Moves the selected field to the end of the other list.
void FieldPicker::Move(QListWidget* from, QListWidget* to)
{
    const int row = SelectedRow(from);
    if (row >= 0) {
        to->addItem(from->takeItem(row));
        Q_EMIT Changed();
    }
}

void FieldPicker::MoveAll(QListWidget* from, QListWidget* to)
{
    while (from->count() > 0) {
        to->addItem(from->takeItem(0));
    }
    Q_EMIT Changed();
}

/// Moves the selected field of the report up or down, unless it is already at that end.
void FieldPicker::MoveBy(int rows)
{
    QListWidget* list = m_ui->lstRpt;
    const int row = SelectedRow(list);
    const int target = row + rows;
    if (row < 0 || target < 0 || target >= list->count()) {
        return;
    }
    list->insertItem(target, list->takeItem(row));
    list->setCurrentRow(target);
    Q_EMIT Changed();
}

} // namespace Tarno
