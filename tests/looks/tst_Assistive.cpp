// The texts that assistive tools read from every window.

#include "Controls.h"
#include "EveryWindow.h"
#include "support/TestClass.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QSet>
#include <QSlider>
#include <QTabWidget>

#include <algorithm>

using namespace Tarno;

namespace
{

QString AccessibleName(QWidget& widget)
{
    const QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&widget);
    return interface != nullptr ? interface->text(QAccessible::Name) : QString();
}

/// Whether `widget` acts, shows something or groups controls, so that it needs an accessible name.
bool NeedsName(const QWidget& widget)
{
    const auto* label = qobject_cast<const QLabel*>(&widget);
    const bool showsSomething = label != nullptr && (!label->text().isEmpty() || !label->pixmap().isNull());
    return showsSomething || IsComposite(widget) ||
           qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
           qobject_cast<const QLineEdit*>(&widget) != nullptr ||
           qobject_cast<const QAbstractSlider*>(&widget) != nullptr ||
           qobject_cast<const QGroupBox*>(&widget) != nullptr || widget.focusPolicy() != Qt::NoFocus;
}

/// Whether each part of `widget` has a name of its own, as tabs and menus do.
bool IsNamedByItsParts(const QWidget& widget)
{
    return qobject_cast<const QTabBar*>(&widget) != nullptr ||
           qobject_cast<const QMenuBar*>(&widget) != nullptr ||
           qobject_cast<const QTabWidget*>(&widget) != nullptr;
}

/// Returns the text of the label of `box`, or an empty string.
QString LabelOf(const QWidget& window, const QWidget& box)
{
    const QList<QLabel*> labels = ControlsOfKind<QLabel>(window);
    const auto label = std::find_if(labels.begin(), labels.end(),
                                    [&](const QLabel* candidate) { return candidate->buddy() == &box; });
    return label != labels.end() ? (*label)->text() : QString();
}

bool IsLabelled(const QWidget& window, const QWidget& box)
{
    return !box.accessibleName().isEmpty() || !LabelOf(window, box).isEmpty();
}

/// Describes a text of `control` that is read out differently from what is shown.
QString Misread(const QWidget& control, const QString& shown, const QString& spoken)
{
    return QStringLiteral("%1 shows \"%2\", read out as \"%3\"").arg(NameOf(control), shown, spoken);
}

QStringList UnnamedControls(const QWidget& window)
{
    QStringList unnamed;
    for (QWidget* control : Controls(window)) {
        if (NeedsName(*control) && !IsNamedByItsParts(*control) && AccessibleName(*control).isEmpty()) {
            unnamed << NameOf(*control);
        }
    }
    return unnamed;
}

/// Returns the names without letters or with a mnemonic marker.
QStringList UnreadableNames(const QWidget& window)
{
    static const QRegularExpression word(QStringLiteral("\\w"));
    QStringList odd;
    for (QWidget* control : Controls(window)) {
        const QString name = AccessibleName(*control);
        if (!name.isEmpty() && (!name.contains(word) || name.contains(QLatin1Char('&')))) {
            odd << NameOf(*control) + QStringLiteral(": ") + name;
        }
    }
    return odd;
}

/// Returns the controls in the tab order that have the name of an earlier one. The name of a combo box is its
/// value, and tools read its label as well.
QStringList RepeatedNames(const QWidget& window)
{
    QStringList repeated;
    QSet<QString> names;
    for (QWidget* control : Controls(window)) {
        const bool isOption = control->objectName().startsWith(QLatin1String("opt"));
        if (!control->isEnabled() || (control->focusPolicy() & Qt::TabFocus) == 0 || isOption ||
            IsNamedByItsParts(*control)) {
            continue;
        }
        const bool isChoice = qobject_cast<const QComboBox*>(control) != nullptr;
        const QString name = (isChoice ? LabelOf(window, *control) : QString()) + AccessibleName(*control);
        if (names.contains(name)) {
            repeated << NameOf(*control) + QStringLiteral(": ") + name;
        }
        names << name;
    }
    return repeated;
}

QStringList UnlabelledBoxes(const QWidget& window)
{
    QStringList unlabelled;
    for (const QWidget* control : Controls(window)) {
        const bool isBox = qobject_cast<const QLineEdit*>(control) != nullptr ||
                           qobject_cast<const QComboBox*>(control) != nullptr ||
                           qobject_cast<const QAbstractSpinBox*>(control) != nullptr ||
                           qobject_cast<const QPlainTextEdit*>(control) != nullptr ||
                           qobject_cast<const QAbstractItemView*>(control) != nullptr;
        if (isBox && !IsLabelled(window, *control)) {
            unlabelled << NameOf(*control);
        }
    }
    return unlabelled;
}

/// Returns the cells of `list` that are read out differently from what is shown. A painted cell has a
/// sentence that contains its text.
QStringList MisreadCells(QAbstractItemView& list)
{
    QAccessibleTableInterface* table = QAccessible::queryAccessibleInterface(&list)->tableInterface();
    const QAbstractItemModel& model = *list.model();
    if (table == nullptr) {
        return {NameOf(list) + QStringLiteral(" is not a table")};
    }
    if (table->rowCount() != model.rowCount() || table->columnCount() != model.columnCount()) {
        return {QStringLiteral("%1 is %2 x %3, read out as %4 x %5")
                    .arg(NameOf(list))
                    .arg(model.rowCount())
                    .arg(model.columnCount())
                    .arg(table->rowCount())
                    .arg(table->columnCount())};
    }
    QStringList misread;
    for (int row = 0; row < model.rowCount(); ++row) {
        for (int column = 0; column < model.columnCount(); ++column) {
            const QModelIndex cell = model.index(row, column);
            const QString shown = cell.data().toString();
            const QString sentence = cell.data(Qt::AccessibleTextRole).toString();
            const QString spoken = table->cellAt(row, column)->text(QAccessible::Name);
            if (spoken != (sentence.isEmpty() ? shown : sentence) || !spoken.contains(shown)) {
                misread << Misread(list, shown, spoken);
            }
        }
    }
    return misread;
}

QStringList MisreadLists(const QWidget& window)
{
    QStringList misread;
    for (QAbstractItemView* list : ControlsOfKind<QAbstractItemView>(window)) {
        misread << MisreadCells(*list);
    }
    return misread;
}

/// Returns the tabs without a text or with a different accessible name.
QStringList MisreadTabs(const QWidget& window)
{
    QStringList misread;
    for (QTabBar* tabs : ControlsOfKind<QTabBar>(window)) {
        const QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(tabs);
        for (int tab = 0; tab < tabs->count(); ++tab) {
            const QString shown = tabs->tabText(tab).remove(QLatin1Char('&')); // of the mnemonic
            const QString spoken = accessible->child(tab)->text(QAccessible::Name);
            if (shown.isEmpty() || spoken != shown) {
                misread << Misread(*tabs, shown, spoken);
            }
        }
    }
    return misread;
}

QStringList ToolsWithoutToolTips(const QWidget& window)
{
    QStringList without;
    for (const QToolButton* tool : ControlsOfKind<QToolButton>(window)) {
        if (tool->toolTip().isEmpty() || tool->toolTip().contains(QLatin1Char('&'))) {
            without << NameOf(*tool);
        }
    }
    return without;
}

struct Findings {
    QString windowName;
    QStringList unnamedControls;
    QStringList unreadableNames;
    QStringList repeatedNames;
    QStringList unlabelledBoxes;
    QStringList misreadLists;
    QStringList misreadTabs;
    QStringList toolsWithoutToolTips;
};

Findings Inspect(QWidget& window)
{
    return {AccessibleName(window), UnnamedControls(window),     UnreadableNames(window),
            RepeatedNames(window),  UnlabelledBoxes(window),     MisreadLists(window),
            MisreadTabs(window),    ToolsWithoutToolTips(window)};
}

} // namespace

class tst_Assistive : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void window_hasAName_data() { AddEveryWindow(); }

    void window_hasAName() { QVERIFY(!m_visits.Found().windowName.isEmpty()); }

    void controls_haveNames_data() { AddEveryWindow(); }

    void controls_haveNames() { QCOMPARE(Joined(m_visits.Found().unnamedControls), QString()); }

    void names_areWordsWithoutMnemonicMarkers_data() { AddEveryWindow(); }

    void names_areWordsWithoutMnemonicMarkers()
    {
        QCOMPARE(Joined(m_visits.Found().unreadableNames), QString());
    }

    void focusStops_haveDifferentNames_data() { AddEveryWindow(); }

    void focusStops_haveDifferentNames() { QCOMPARE(Joined(m_visits.Found().repeatedNames), QString()); }

    void boxes_haveALabelOrAName_data() { AddEveryWindow(); }

    void boxes_haveALabelOrAName() { QCOMPARE(Joined(m_visits.Found().unlabelledBoxes), QString()); }

    void cells_areReadable_data() { AddEveryWindow(); }

    void cells_areReadable() { QCOMPARE(Joined(m_visits.Found().misreadLists), QString()); }

    void tabs_areReadable_data() { AddEveryWindow(); }

    void tabs_areReadable() { QCOMPARE(Joined(m_visits.Found().misreadTabs), QString()); }

    void tools_haveToolTips_data() { AddEveryWindow(); }

    void tools_haveToolTips() { QCOMPARE(Joined(m_visits.Found().toolsWithoutToolTips), QString()); }

private:
    SharedVisits<Findings> m_visits{Inspect};
};

TEST_CLASS(tst_Assistive)
#include "tst_Assistive.moc"
