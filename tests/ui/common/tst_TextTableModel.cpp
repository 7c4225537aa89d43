#include "support/TestClass.h"
#include "ui/common/TextTableModel.h"

#include <QAbstractItemModelTester>
#include <QFont>
#include <QIcon>
#include <QSignalSpy>

#include <limits>
#include <optional>

using namespace Tarno;

namespace
{

const QStringList headings{QStringLiteral("Name"), QStringLiteral("Time")};

TextTableModel::Row Row(const char* key, const char* first, const char* second)
{
    return {QString::fromUtf8(key), {QString::fromUtf8(first), QString::fromUtf8(second)}};
}

QString Cell(const TextTableModel& model, int row, int column)
{
    return model.index(row, column).data().toString();
}

/// The texts of the first column in the model's order.
QStringList Texts(const TextTableModel& model)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row) {
        texts << Cell(model, row, 0);
    }
    return texts;
}

QStringList List(const char* texts)
{
    return QString::fromUtf8(texts).split(QLatin1Char(' '));
}

} // namespace

class tst_TextTableModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void rows_areAsTheyWereSet()
    {
        TextTableModel model(headings, nullptr);
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(model.rowCount(), 0);
        QCOMPARE(model.columnCount(), 2);
        model.SetRows({Row("K1", "b", "10:00"), Row("K2", "a", "9:00")});
        QCOMPARE(model.rowCount(), 2);
        QCOMPARE(Cell(model, 0, 0), QStringLiteral("b"));
        QCOMPARE(Cell(model, 1, 1), QStringLiteral("9:00"));
        QCOMPARE(model.index(1, 0).data(TextTableModel::keyRole).toString(), QStringLiteral("K2"));
        QCOMPARE(model.index(1, 1).data(TextTableModel::keyRole).toString(), QStringLiteral("K2"));
    }

    void rows_setAgain_replaceTheOldOnes()
    {
        TextTableModel model(headings, nullptr);
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.SetRows({Row("K1", "b", ""), Row("K2", "a", "")});
        const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
        model.SetRows({Row("K3", "c", "")});
        QCOMPARE(resets.size(), 1);
        QCOMPARE(model.rowCount(), 1);
        QCOMPARE(Cell(model, 0, 0), QStringLiteral("c"));
        model.SetRows({});
        QCOMPARE(model.rowCount(), 0);
    }

    void lazyRows_areMadeWhenTheyAreNeeded()
    {
        TextTableModel model(headings, nullptr);
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        const QStringList names = List("b a c");
        int texts = 0;
        model.SetLazyRows({.count = 3,
                           .key = [](std::size_t row) { return QStringLiteral("K%1").arg(row); },
                           .text =
                               [&](std::size_t row, int column) {
                                   ++texts;
                                   return column == 0 ? names[static_cast<qsizetype>(row)] : QString();
                               }});
        const int before = texts; // the tester reads some
        QCOMPARE(model.rowCount(), 3);
        QCOMPARE(texts, before);
        QCOMPARE(Texts(model), names);
        model.sort(0);
        QCOMPARE(Texts(model), List("a b c"));
        QCOMPARE(model.index(0, 0).data(TextTableModel::keyRole).toString(), QStringLiteral("K1"));
        QCOMPARE(model.Find(QStringLiteral("K0")).row(), 1);
        QVERIFY(!model.Find(QStringLiteral("K3")).isValid());
        QVERIFY(!model.index(0, 0).data(Qt::CheckStateRole).isValid());
        model.SetRows({Row("K1", "d", "")});
        QCOMPARE(Texts(model), List("d"));
    }

    void rows_shorterThanTheHeadings_areFilledWithNothing()
    {
        TextTableModel model(headings, nullptr);
        model.SetRows({{QStringLiteral("K1"), {QStringLiteral("only")}}});
        QCOMPARE(Cell(model, 0, 1), QString());
        model.sort(1);
        QCOMPARE(Cell(model, 0, 0), QStringLiteral("only"));
    }

    void cell_hasNoOtherRoles()
    {
        TextTableModel model(headings, nullptr);
        model.SetRows({Row("K1", "b", "")});
        QVERIFY(!model.index(0, 0).data(Qt::EditRole).isValid());
        QVERIFY(!model.index(0, 0).data(Qt::CheckStateRole).isValid());
        QVERIFY(!model.data({}, Qt::DisplayRole).isValid());
        QVERIFY((model.index(0, 0).flags() & Qt::ItemIsEditable) == 0);
    }

    void headings_areShown()
    {
        const TextTableModel model(headings, nullptr);
        QCOMPARE(model.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Time"));
        QVERIFY(!model.headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
        QVERIFY(!model.headerData(0, Qt::Horizontal, Qt::DecorationRole).isValid());
    }

    void sortIcon_isInOneHeadingOnly()
    {
        TextTableModel model(headings, nullptr);
        const QSignalSpy changes(&model, &QAbstractItemModel::headerDataChanged);
        const auto icon = [&model](int column) {
            return model.headerData(column, Qt::Horizontal, Qt::DecorationRole).value<QIcon>();
        };
        model.SetRows({Row("K1", "b", "")});
        model.ShowSortIcon();
        QVERIFY(icon(0).isNull() && icon(1).isNull());
        model.sort(1, Qt::AscendingOrder);
        QVERIFY(icon(1).isNull());
        model.ShowSortIcon();
        QVERIFY(icon(0).isNull());
        const QImage ascending = icon(1).pixmap(16).toImage();
        QVERIFY(!ascending.isNull());
        model.sort(1, Qt::DescendingOrder);
        model.ShowSortIcon();
        QVERIFY(icon(1).pixmap(16).toImage() != ascending);
        model.sort(0, Qt::AscendingOrder);
        model.ShowSortIcon();
        QCOMPARE(icon(0).pixmap(16).toImage(), ascending);
        QVERIFY(icon(1).isNull());
        QCOMPARE(changes.size(), 4);
    }

    void sort_isCaseInsensitiveAndStable()
    {
        TextTableModel model(headings, nullptr);
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.SetRows({Row("1", "b", ""), Row("2", "A", ""), Row("3", "a", ""), Row("4", "B", "")});
        QVERIFY(!model.SortColumn());
        model.sort(0);
        QCOMPARE(model.SortColumn(), std::optional(0));
        QCOMPARE(Texts(model), List("A a b B"));
        model.sort(0, Qt::DescendingOrder);
        QCOMPARE(model.SortOrder(), Qt::DescendingOrder);
        QCOMPARE(Texts(model), List("b B A a"));
        model.sort(1);
        QCOMPARE(Texts(model), List("b A a B"));
        QCOMPARE(model.index(1, 0).data(TextTableModel::keyRole).toString(), QStringLiteral("2"));
    }

    void sort_usesNumbersIfThereAreSome()
    {
        TextTableModel model({QStringLiteral("Trips"), QStringLiteral("Name")}, nullptr);
        model.SetRows({{QStringLiteral("a"), {QStringLiteral("9 (few)"), QStringLiteral("x")}, {9}},
                       {QStringLiteral("b"), {QStringLiteral("100"), QStringLiteral("w")}, {100}},
                       {QStringLiteral("c"), {QStringLiteral("20"), QStringLiteral("y")}, {20}},
                       {QStringLiteral("d"), {QStringLiteral("9 (few)"), QStringLiteral("v")}, {9}}});
        const auto keys = [&model] {
            QString texts;
            for (int row = 0; row < model.rowCount(); ++row) {
                texts += model.index(row, 0).data(TextTableModel::keyRole).toString();
            }
            return texts;
        };
        model.sort(0);
        QCOMPARE(keys(), QStringLiteral("adcb"));
        model.sort(0, Qt::DescendingOrder);
        QCOMPARE(keys(), QStringLiteral("bcad"));
        model.sort(1);
        QCOMPARE(keys(), QStringLiteral("dbac")); // without numbers
    }

    void sort_usesTexts_whereTheNumberIsMissing()
    {
        constexpr double byText = std::numeric_limits<double>::quiet_NaN();
        TextTableModel model({QStringLiteral("Name"), QStringLiteral("Size")}, nullptr);
        model.SetRows(
            {{QStringLiteral("1"), {QStringLiteral("b"), QStringLiteral("9 kB")}, {byText, 9'000}},
             {QStringLiteral("2"), {QStringLiteral("a"), QStringLiteral("10 kB")}, {byText, 10'000}},
             {QStringLiteral("3"), {QStringLiteral("c"), QStringLiteral("1 MB")}, {byText, 1e6}}});
        model.sort(0);
        QCOMPARE(Texts(model), List("a b c"));
        model.sort(1);
        QCOMPARE(Texts(model), List("b a c"));
    }

    void sort_followsTheUsersLanguage()
    {
        const auto sorted = [](QLocale::Language language) {
            QLocale::setDefault(QLocale(language));
            TextTableModel model(headings, nullptr);
            model.SetRows(
                {Row("1", "Z", ""), Row("2", "\xC3\x96", ""), Row("3", "P", ""), Row("4", "O", "")});
            model.sort(0);
            return Texts(model);
        };
        QCOMPARE(sorted(QLocale::German), List("O \xC3\x96 P Z"));
        QCOMPARE(sorted(QLocale::Swedish), List("O P Z \xC3\x96"));
    }

    void sort_appliesToNewRows()
    {
        TextTableModel model(headings, nullptr);
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.SetRows({Row("1", "a", ""), Row("2", "b", "")});
        model.sort(0, Qt::DescendingOrder);
        QCOMPARE(Texts(model), List("b a"));
        model.SetRows({Row("1", "d", ""), Row("2", "c", ""), Row("3", "e", "")});
        QCOMPARE(Texts(model), List("e d c"));
    }

    void sort_movesPersistentIndexesWithTheirRows()
    {
        TextTableModel model(headings, nullptr);
        model.SetRows({Row("1", "c", ""), Row("2", "a", ""), Row("3", "b", "")});
        const QPersistentModelIndex first = model.index(0, 1);
        model.sort(0);
        QCOMPARE(first.row(), 2);
        QCOMPARE(first.column(), 1);
        model.sort(0, Qt::DescendingOrder);
        QCOMPARE(first.row(), 0);
        QCOMPARE(first.data(TextTableModel::keyRole).toString(), QStringLiteral("1"));
    }

    void states_hideAndMarkRows()
    {
        using State = TextTableModel::RowState;
        TextTableModel model(headings, nullptr);
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.SetRemark(QStringLiteral("just saved"));
        model.SetRows({Row("K1", "b", "1"), Row("K2", "a", "2"), Row("K3", "c", "3")},
                      {State::Marked, State::Hidden, State::Shown});
        QCOMPARE(Texts(model), List("b c"));
        const QModelIndex marked = model.index(0, 1);
        QVERIFY(marked.data(Qt::FontRole).value<QFont>().italic());
        QCOMPARE(marked.data(Qt::ToolTipRole).toString(), QStringLiteral("just saved"));
        QCOMPARE(marked.data(Qt::AccessibleDescriptionRole).toString(), QStringLiteral("just saved"));
        QVERIFY(!model.index(1, 0).data(Qt::FontRole).isValid());
        model.SetStates({State::Hidden, State::Hidden, State::Hidden});
        QCOMPARE(model.rowCount(), 0);
        model.SetStates({});
        QCOMPARE(Texts(model), List("b a c"));
    }

    void states_keepTheOrder()
    {
        using State = TextTableModel::RowState;
        TextTableModel model(headings, nullptr);
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.SetRows({Row("K1", "b", "1"), Row("K2", "a", "2"), Row("K3", "c", "3")});
        model.sort(0, Qt::DescendingOrder);
        model.SetStates({State::Shown, State::Hidden, State::Shown});
        QCOMPARE(Texts(model), List("c b"));
        const QPersistentModelIndex kept = model.index(0, 0);
        model.sort(0, Qt::AscendingOrder);
        QCOMPARE(Texts(model), List("b c"));
        QCOMPARE(kept.row(), 1);
        model.SetStates({});
        QCOMPARE(Texts(model), List("a b c"));
    }
};

TEST_CLASS(tst_TextTableModel)
#include "tst_TextTableModel.moc"
