#include "qt/Strings.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"
#include "support/Windows.h"
#include "ui/common/SortableList.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QHelpEvent>
#include <QSignalSpy>
#include <QToolTip>

using namespace Tarno;

namespace
{

using Texts = std::vector<std::string>;

/// A visible list with the columns "Name" and "Number".
class ShownList : public SortableList
{
public:
    ShownList()
    {
        SetHeadings({QStringLiteral("Name"), QStringLiteral("Number")});
        resize(400, 300);
        show();
        AwaitActive(*this);
    }

    /// Shows rows with `names` as keys and names, and the length of each name as the number.
    void Show(const Texts& names)
    {
        std::vector<TextTableModel::Row> rows;
        for (const std::string& name : names) {
            rows.push_back({FromUtf8(name), {FromUtf8(name), QString::number(name.size())}});
        }
        SetRows(std::move(rows));
    }

    Texts Names() const
    {
        Texts names;
        for (int row = 0; row < model()->rowCount(); ++row) {
            names.push_back(ToUtf8(model()->index(row, 0).data().toString()));
        }
        return names;
    }

    std::string Selected() const { return ToUtf8(SelectedKey().value_or(QStringLiteral("(none)"))); }

    void ClickHeading(int column)
    {
        QTest::mouseClick(header()->viewport(), Qt::LeftButton, {},
                          QPoint(header()->sectionViewportPosition(column) + 10, header()->height() / 2));
    }

    QPoint PointIn(int row) const { return visualRect(model()->index(row, 0)).center(); }

    QPoint EmptySpace() const { return viewport()->rect().bottomLeft() + QPoint(10, -4); }
};

} // namespace

class tst_SortableList : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void sortIcon_movesNoHeading_data()
    {
        QTest::addColumn<Qt::LayoutDirection>("direction");
        QTest::newRow("left to right") << Qt::LeftToRight;
        QTest::newRow("right to left") << Qt::RightToLeft;
    }

    void sortIcon_movesNoHeading()
    {
        QFETCH(Qt::LayoutDirection, direction);
        ShownList list;
        list.setLayoutDirection(direction);
        list.FitColumns({QStringLiteral("name"), QStringLiteral("number")}, 0);
        list.Show({"b", "a"});
        const auto headings = [&list] { return list.header()->grab().toImage(); };
        const QImage before = headings();
        list.model()->sort(1);
        static_cast<TextTableModel*>(list.model())->ShowSortIcon();
        const QImage after = headings();
        const int start = list.header()->sectionViewportPosition(1);
        const QRect heading(start, 0, list.header()->sectionSize(1), list.header()->height());
        const int room = list.style()->pixelMetric(QStyle::PM_SmallIconSize) +
                         2 * list.style()->pixelMetric(QStyle::PM_HeaderMargin);
        const bool fromLeft = direction == Qt::LeftToRight;
        const QRect words = fromLeft ? heading.adjusted(0, 0, -room, 0) : heading.adjusted(room, 0, 0, 0);
        QVERIFY(words.width() >= list.header()->fontMetrics().horizontalAdvance(QStringLiteral("Number")));
        QCOMPARE(after.copy(words), before.copy(words));
        QVERIFY(after.copy(heading) != before.copy(heading));
    }

    void model_passesTheModelTester()
    {
        ShownList list;
        const QAbstractItemModelTester tester(list.model(),
                                              QAbstractItemModelTester::FailureReportingMode::QtTest);
        list.Show({"b", "c", "a"});
        list.ClickHeading(0);
        list.ClickHeading(0);
        list.Show({"d", "e"});
        list.Show({});
        QCOMPARE(list.RowCount(), 0);
    }

    void rows_areInTheGivenOrderBeforeTheFirstClick()
    {
        ShownList list;
        list.Show({"b", "c", "a"});
        QCOMPARE(list.RowCount(), 3);
        QCOMPARE(list.Names(), (Texts{"b", "c", "a"}));
        list.Show({"z", "y"});
        QCOMPARE(list.Names(), (Texts{"z", "y"}));
    }

    void heading_clicked_sortsAndReverses()
    {
        ShownList list;
        list.Show({"b", "c", "a"});
        list.ClickHeading(0);
        QCOMPARE(list.Names(), (Texts{"a", "b", "c"}));
        list.ClickHeading(0);
        QCOMPARE(list.Names(), (Texts{"c", "b", "a"}));
        list.ClickHeading(0);
        QCOMPARE(list.Names(), (Texts{"a", "b", "c"}));
    }

    void rows_equal_keepTheirOrderInBothDirections()
    {
        ShownList list;
        list.Show({"b", "ccc", "a", "dd"});
        list.ClickHeading(1);
        QCOMPARE(list.Names(), (Texts{"b", "a", "dd", "ccc"}));
        list.ClickHeading(1);
        QCOMPARE(list.Names(), (Texts{"ccc", "dd", "b", "a"}));
    }

    void rows_new_keepTheSortOrder()
    {
        ShownList list;
        list.Show({"b", "c", "a"});
        list.ClickHeading(0);
        list.ClickHeading(0);
        list.Show({"e", "g", "f"});
        QCOMPARE(list.Names(), (Texts{"g", "f", "e"}));
        list.ClickHeading(0);
        QCOMPARE(list.Names(), (Texts{"e", "f", "g"}));
    }

    void selection_startsAtTheFirstRow()
    {
        ShownList list;
        QCOMPARE(list.Selected(), "(none)");
        list.Show({"b", "c", "a"});
        QCOMPARE(list.Selected(), "b");
    }

    void selection_isKeptByKey()
    {
        ShownList list;
        list.Show({"b", "c", "a"});
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.PointIn(2));
        QCOMPARE(list.Selected(), "a");
        list.ClickHeading(0);
        QCOMPARE(list.Selected(), "a");
        list.Show({"0", "c", "a", "b"});
        QCOMPARE(list.Selected(), "a");
    }

    void selection_rowRemoved_movesToItsNeighbour()
    {
        ShownList list;
        list.Show({"b", "d", "a", "c"});
        list.ClickHeading(0);
        list.ClickHeading(0); // d, c, b, a
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.PointIn(1));
        list.Show({"b", "d", "a"});
        QCOMPARE(list.Selected(), "b"); // now at the place of c
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.PointIn(2));
        list.Show({"b", "d"});
        QCOMPARE(list.Selected(), "b"); // the last row
    }

    void selectKey_scrollsToTheRow()
    {
        ShownList list;
        Texts names;
        for (char letter = 'a'; letter <= 'z'; ++letter) {
            names.emplace_back(1, letter);
        }
        list.Show(names);
        list.Show(names);
        QVERIFY(list.SelectKey(QStringLiteral("z")));
        QCOMPARE(list.Selected(), "z");
        QVERIFY(list.viewport()->rect().contains(list.visualRect(list.currentIndex())));
        QVERIFY(!list.SelectKey(QStringLiteral("0")));
        QCOMPARE(list.Selected(), "z");
    }

    void boxes_areCheckedBySpaceAndByClicks()
    {
        ShownList list;
        list.SetRows({{QStringLiteral("a"), {QStringLiteral("bream"), QStringLiteral("5")}, {}, false},
                      {QStringLiteral("b"), {QStringLiteral("squid"), QStringLiteral("5")}, {}, true}});
        const QSignalSpy changed(&list, &SortableList::ChecksChanged);
        QCOMPARE(list.CheckedKeys(), std::vector<QString>{QStringLiteral("b")});
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                          list.visualRect(list.model()->index(0, 1)).center()); // the cell without the box
        QTest::keyClick(&list, Qt::Key_Space);
        QCOMPARE(list.CheckedKeys(), (std::vector<QString>{QStringLiteral("a"), QStringLiteral("b")}));
        QTest::keyClick(&list, Qt::Key_Space);
        QCOMPARE(list.CheckedKeys(), std::vector<QString>{QStringLiteral("b")});
        const QRect cell = list.visualRect(list.model()->index(1, 0));
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, QPoint(cell.left() + 8, cell.center().y()));
        QCOMPARE(list.CheckedKeys(), std::vector<QString>());
        QCOMPARE(changed.size(), 3);
    }

    void boxes_areCheckedTogether_andSortedWithTheirRows()
    {
        ShownList list;
        list.SetRows({{QStringLiteral("b"), {QStringLiteral("squid")}, {}, false},
                      {QStringLiteral("a"), {QStringLiteral("bream")}, {}, false}});
        const QSignalSpy changed(&list, &SortableList::ChecksChanged);
        list.ClickHeading(0);
        QTest::keyClick(&list, Qt::Key_Space); // squid, which is now below
        QCOMPARE(list.CheckedKeys(), std::vector<QString>{QStringLiteral("b")});
        list.CheckAll(true);
        QCOMPARE(list.CheckedKeys(), (std::vector<QString>{QStringLiteral("b"), QStringLiteral("a")}));
        list.CheckAll(false);
        QCOMPARE(list.CheckedKeys(), std::vector<QString>());
        QCOMPARE(changed.size(), 3);
        list.Show({"bream"}); // without boxes
        QTest::keyClick(&list, Qt::Key_Space);
        QCOMPARE(list.CheckedKeys(), std::vector<QString>());
    }

    void selection_ctrlClickAndCtrlSpace_keepIt()
    {
        ShownList list;
        list.Show({"b", "c", "a"});
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier, list.PointIn(0));
        QCOMPARE(list.Selected(), "b");
        QTest::keyClick(&list, Qt::Key_Space, Qt::ControlModifier);
        QCOMPARE(list.Selected(), "b");
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier, list.PointIn(1));
        QCOMPARE(list.Selected(), "c");
    }

    void selection_allRowsRemoved_isNone()
    {
        ShownList list;
        list.Show({"b"});
        list.Show({});
        QCOMPARE(list.Selected(), "(none)");
        list.Show({"x"});
        QCOMPARE(list.Selected(), "x");
    }

    void selection_keysDifferingInCase_areDistinguished()
    {
        ShownList list;
        list.Show({"k1", "K1"});
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.PointIn(1));
        list.Show({"k1", "K1"});
        QCOMPARE(list.Selected(), "K1");
    }

    void selection_keysWithTheSamePrefix_areDistinguished()
    {
        ShownList list;
        list.Show({"K1"});
        list.Show({"K11", "K10", "K1"});
        QCOMPARE(list.Selected(), "K1");
    }

    void pressed_isEmittedAfterTheRowIsSelected_data()
    {
        QTest::addColumn<Qt::MouseButton>("button");
        QTest::newRow("left") << Qt::LeftButton;
        QTest::newRow("right") << Qt::RightButton;
    }

    void pressed_isEmittedAfterTheRowIsSelected()
    {
        QFETCH(Qt::MouseButton, button);
        ShownList list;
        list.Show({"b", "c", "a"});
        std::string selectedThen;
        Qt::MouseButton emitted = Qt::NoButton;
        connect(&list, &SortableList::Pressed, this, [&](Qt::MouseButton pressed) {
            selectedThen = list.Selected();
            emitted = pressed;
        });
        QTest::mouseClick(list.viewport(), button, {}, list.PointIn(1));
        QCOMPARE(selectedThen, "c");
        QCOMPARE(emitted, button);
    }

    void pressed_onEmptySpace_keepsTheSelection()
    {
        ShownList list;
        list.Show({"b", "c", "a"});
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.PointIn(1));
        const QSignalSpy presses(&list, &SortableList::Pressed);
        QTest::mouseClick(list.viewport(), Qt::RightButton, {}, list.EmptySpace());
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.EmptySpace());
        QCOMPARE(presses.size(), 2);
        QCOMPARE(list.Selected(), "c");
    }

    void openRequested_data()
    {
        QTest::addColumn<QString>("way");
        QTest::addColumn<int>("times");
        QTest::newRow("double click") << "double" << 1;
        QTest::newRow("double click of the right button") << "double right" << 0;
        QTest::newRow("click") << "click" << 0;
        QTest::newRow("Return") << "return" << 1;
        QTest::newRow("Enter") << "enter" << 1;
        QTest::newRow("another key") << "a" << 0;
    }

    void openRequested()
    {
        QFETCH(QString, way);
        QFETCH(int, times);
        ShownList list;
        list.Show({"b", "c", "a"});
        const QSignalSpy requests(&list, &SortableList::OpenRequested);
        if (way == QLatin1String("double")) {
            QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, list.PointIn(1));
        } else if (way == QLatin1String("double right")) {
            QTest::mouseDClick(list.viewport(), Qt::RightButton, {}, list.PointIn(1));
        } else if (way == QLatin1String("click")) {
            QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.PointIn(1));
        } else if (way == QLatin1String("return")) {
            QTest::keyClick(&list, Qt::Key_Return);
        } else if (way == QLatin1String("enter")) {
            QTest::keyClick(&list, Qt::Key_Enter);
        } else {
            QTest::keyClick(&list, Qt::Key_A);
        }
        QCOMPARE(requests.size(), times);
    }

    void openRequested_nothingSelected_isNotEmitted()
    {
        ShownList list;
        const QSignalSpy requests(&list, &SortableList::OpenRequested);
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, list.EmptySpace());
        QTest::keyClick(&list, Qt::Key_Return);
        QCOMPARE(requests.size(), 0);
    }

    void toolTip_ofAShortenedCell_isItsWholeText()
    {
        ShownList list;
        const QString name =
            QStringLiteral("The second sandbank behind the old lighthouse, at low tide only");
        list.Show({"Pier", ToUtf8(name)});
        list.header()->setSectionResizeMode(QHeaderView::Fixed);
        list.setColumnWidth(0, 100);
        list.setToolTip(QStringLiteral("usual"));
        const auto toolTip = [&](int row) {
            QToolTip::hideText();
            const QPoint position = list.PointIn(row);
            QHelpEvent help(QEvent::ToolTip, position, list.viewport()->mapToGlobal(position));
            QApplication::sendEvent(list.viewport(), &help);
            return QToolTip::text();
        };
        QVERIFY(toolTip(0) != QStringLiteral("Pier"));
        QCOMPARE(toolTip(1), name);
        QToolTip::hideText();
    }

    void setUsable_false_leavesNoDarkRow()
    {
        ShownList list;
        list.Show({"a", "b", "c"});
        list.SetUsable(false);
        const QImage rows = list.viewport()->grab().toImage();
        const auto background = [&](int row) {
            const QRect cell = list.visualRect(list.model()->index(row, 0));
            return rows.pixelColor((cell.topRight() - QPoint(4, -2)) * rows.devicePixelRatio());
        };
        QCOMPARE(list.Selected(), std::string("a"));
        QCOMPARE(background(0), background(1));
        QCOMPARE(background(0), list.palette().color(QPalette::Window));
    }

    void setUsable_greysAndRestoresTheList()
    {
        ShownList list;
        const QColor usual = list.palette().color(QPalette::Base);
        const QColor greyed = list.palette().color(QPalette::Window);
        QVERIFY(usual != greyed);
        list.SetUsable(false);
        QVERIFY(!list.isEnabled());
        QCOMPARE(list.palette().color(QPalette::Base), greyed);
        QCOMPARE(list.palette().color(QPalette::AlternateBase), greyed);
        list.SetUsable(true);
        QVERIFY(list.isEnabled());
        QCOMPARE(list.palette().color(QPalette::Base), usual);
    }

    void columns_fitTheirTexts()
    {
        ShownList list;
        const QString wide = QStringLiteral("a very wide number for the column");
        list.FitColumns({{}, wide}, 0);
        QVERIFY(list.columnWidth(1) > list.fontMetrics().horizontalAdvance(wide));
        QCOMPARE(list.columnWidth(0) + list.columnWidth(1), list.viewport()->width());
    }

    void hint_isShownWhileTheListIsEmpty()
    {
        ShownList list;
        const auto looks = [&list] { return list.viewport()->grab().toImage(); };
        const QImage nothing = looks();
        list.SetHint(QStringLiteral("Nothing here yet"));
        QVERIFY(looks() != nothing);
        QCOMPARE(list.accessibleDescription(), QStringLiteral("Nothing here yet"));
        list.Show({"a"});
        const QImage one = looks();
        QCOMPARE(list.accessibleDescription(), QString());
        list.SetHint(QString());
        QCOMPARE(looks(), one);
        list.SetHint(QStringLiteral("Nothing again"));
        list.Show({});
        QCOMPARE(list.accessibleDescription(), QStringLiteral("Nothing again"));
        QVERIFY(looks() != nothing);
    }

    void typing_searchesTheSortedColumn()
    {
        ShownList list;
        list.Show({"bream", "3 fish", "a"});             // numbers 5, 6 and 1
        list.setCurrentIndex(list.model()->index(0, 1)); // like a click in the second column
        list.keyboardSearch(QStringLiteral("3"));
        QCOMPARE(list.SelectedKey(), std::optional(QStringLiteral("3 fish")));
        list.keyboardSearch({});
        list.ClickHeading(1);
        list.keyboardSearch(QStringLiteral("1"));
        QCOMPARE(list.SelectedKey(), std::optional(QStringLiteral("a")));
    }

    void hiddenSelection_returnsWithItsRow()
    {
        using State = TextTableModel::RowState;
        ShownList list;
        list.Show({"one", "two", "three"});
        list.SelectKey(QStringLiteral("three"));
        QSignalSpy changes(&list, &SortableList::SelectionChanged);
        list.SetStates({State::Shown, State::Shown, State::Hidden});
        QCOMPARE(list.Selected(), "one");
        QCOMPARE(changes.size(), 1);
        list.SetStates({State::Hidden, State::Shown, State::Hidden});
        QCOMPARE(list.Selected(), "two");
        list.SetStates({State::Hidden, State::Hidden, State::Hidden});
        QCOMPARE(list.Selected(), "(none)");
        list.SetStates({});
        QCOMPARE(list.Selected(), "three");
        QCOMPARE(list.RowCount(), 3);
    }

    void hiddenSelection_isForgottenWithAnotherSelection()
    {
        using State = TextTableModel::RowState;
        ShownList list;
        list.Show({"one", "two", "three"});
        list.SelectKey(QStringLiteral("three"));
        list.SetStates({State::Shown, State::Shown, State::Hidden});
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.PointIn(1));
        list.SetStates({});
        QCOMPARE(list.Selected(), "two");
    }
};

TEST_CLASS(tst_SortableList)
#include "tst_SortableList.moc"
