// What assistive tools read out of every window.

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
#include <QSlider>
#include <QTabWidget>

#include <algorithm>

namespace
{

QString SpokenName(QWidget& widget)
{
    const QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&widget);
    return interface != nullptr ? interface->text(QAccessible::Name) : QString();
}

/// Whether it does, shows or groups something, so that a user has to be told what it is.
bool NeedsAName(const QWidget& widget)
{
    const auto* label = qobject_cast<const QLabel*>(&widget);
    const bool tells = label != nullptr && (!label->text().isEmpty() || !label->pixmap().isNull());
    return tells || IsComposite(widget) || qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
           qobject_cast<const QLineEdit*>(&widget) != nullptr ||
           qobject_cast<const QAbstractSlider*>(&widget) != nullptr ||
           qobject_cast<const QGroupBox*>(&widget) != nullptr || widget.focusPolicy() != Qt::NoFocus;
}

/// Tabs speak for themselves, one by one.
bool IsNamedByItsParts(const QWidget& widget)
{
    return qobject_cast<const QTabBar*>(&widget) != nullptr ||
           qobject_cast<const QTabWidget*>(&widget) != nullptr;
}

bool IsLabelled(const QWidget& window, const QWidget& box)
{
    const QList<QLabel*> labels = ControlsOfKind<QLabel>(window);
    return !box.accessibleName().isEmpty() ||
           std::any_of(labels.begin(), labels.end(),
                       [&](const QLabel* label) { return label->buddy() == &box; });
}

} // namespace

class tst_Assistive : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void window_hasAName_data() { AddEveryWindow(); }

    void window_hasAName()
    {
        QFETCH(QString, state);
        StateOf(state).show([](QWidget& window) { QVERIFY(!SpokenName(window).isEmpty()); });
    }

    void controls_haveNames_data() { AddEveryWindow(); }

    void controls_haveNames()
    {
        QFETCH(QString, state);
        StateOf(state).show([](QWidget& window) {
            QStringList nameless;
            for (QWidget* control : Controls(window)) {
                if (NeedsAName(*control) && !IsNamedByItsParts(*control) && SpokenName(*control).isEmpty()) {
                    nameless << NameOf(*control);
                }
            }
            QCOMPARE(Listed(nameless), QString());
        });
    }

    void names_areWordsWithoutMarks_data() { AddEveryWindow(); }

    void names_areWordsWithoutMarks()
    {
        QFETCH(QString, state);
        static const QRegularExpression word(QStringLiteral("\\w"));
        StateOf(state).show([](QWidget& window) {
            QStringList odd;
            for (QWidget* control : Controls(window)) {
                const QString name = SpokenName(*control);
                if (!name.isEmpty() && (!name.contains(word) || name.contains(QLatin1Char('&')))) {
                    odd << NameOf(*control) + QStringLiteral(": ") + name;
                }
            }
            QCOMPARE(Listed(odd), QString());
        });
    }

    void focusStops_haveDifferentNames_data() { AddEveryWindow(); }

    void focusStops_haveDifferentNames()
    {
        QFETCH(QString, state);
        StateOf(state).show([](QWidget& window) {
            QStringList names;
            for (QWidget* control : Controls(window)) {
                const bool isOption = control->objectName().startsWith(QLatin1String("opt"));
                if (control->isEnabled() && (control->focusPolicy() & Qt::TabFocus) != 0 && !isOption &&
                    !IsNamedByItsParts(*control)) {
                    names << SpokenName(*control);
                }
            }
            names.sort();
            QStringList different = names;
            different.removeDuplicates();
            QCOMPARE(Listed(names), Listed(different));
        });
    }

    void boxes_haveALabelOrAName_data() { AddEveryWindow(); }

    void boxes_haveALabelOrAName()
    {
        QFETCH(QString, state);
        StateOf(state).show([](QWidget& window) {
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
            QCOMPARE(Listed(unlabelled), QString());
        });
    }

    void cells_areReadable_data() { AddEveryWindow(); }

    void cells_areReadable()
    {
        QFETCH(QString, state);
        StateOf(state).show([](QWidget& window) {
            for (QAbstractItemView* list : ControlsOfKind<QAbstractItemView>(window)) {
                QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(list);
                QAccessibleTableInterface* table = spoken->tableInterface();
                QVERIFY2(table != nullptr, qPrintable(list->objectName()));
                const QAbstractItemModel* model = list->model();
                QCOMPARE(table->rowCount(), model->rowCount());
                QCOMPARE(table->columnCount(), model->columnCount());
                for (int row = 0; row < model->rowCount(); ++row) {
                    for (int column = 0; column < model->columnCount(); ++column) {
                        QCOMPARE(table->cellAt(row, column)->text(QAccessible::Name),
                                 model->index(row, column).data().toString());
                    }
                }
            }
        });
    }

    void tabs_areReadable_data() { AddEveryWindow(); }

    void tabs_areReadable()
    {
        QFETCH(QString, state);
        StateOf(state).show([](QWidget& window) {
            for (QTabBar* tabs : ControlsOfKind<QTabBar>(window)) {
                const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(tabs);
                for (int tab = 0; tab < tabs->count(); ++tab) {
                    QVERIFY(!tabs->tabText(tab).isEmpty());
                    QCOMPARE(spoken->child(tab)->text(QAccessible::Name), tabs->tabText(tab));
                }
            }
        });
    }

    void tools_haveToolTips_data() { AddEveryWindow(); }

    void tools_haveToolTips()
    {
        QFETCH(QString, state);
        StateOf(state).show([](QWidget& window) {
            QStringList without;
            for (const QToolButton* tool : ControlsOfKind<QToolButton>(window)) {
                if (tool->toolTip().isEmpty() || tool->toolTip().contains(QLatin1Char('&'))) {
                    without << NameOf(*tool);
                }
            }
            QCOMPARE(Listed(without), QString());
        });
    }
};

TEST_CLASS(tst_Assistive)
#include "tst_Assistive.moc"
