#include "ui/common/TextTableModel.h"

#include <QAbstractItemModelTester>
#include <QIcon>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>
#include <numeric>

class tst_TextTableModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void rows_areAsTheyWereSet();
    void rows_setAgain_replaceTheOldOnes();
    void rows_shorterThanTheHeadings_areFilledWithNothing();
    void cell_hasNoOtherRoles();
    void headings_areShown();
    void sortIcon_isInOneHeadingOnly();
    void comesBefore_isCaseBlind();
    void comesBefore_followsTheUsersLanguage();
    void comesBefore_afterNewRows_readsThem();
};

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
QStringList Sorted(const TextTableModel& model)
{
    std::vector<int> rows(static_cast<std::size_t>(model.rowCount()));
    std::iota(rows.begin(), rows.end(), 0);
    std::stable_sort(rows.begin(), rows.end(), [&](int left, int right) {
        return model.ComesBefore(model.index(left, 0), model.index(right, 0));
    });
    QStringList texts;
    for (const int row : rows) {
        texts << Cell(model, row, 0);
    }
    return texts;
}

} // namespace

void tst_TextTableModel::cleanup()
{
    QLocale::setDefault(QLocale::c());
}

void tst_TextTableModel::rows_areAsTheyWereSet()
{
    TextTableModel model(headings, nullptr);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(model.columnCount(), 2);
    model.SetRows({Row("K1", "b", "10:00"), Row("K2", "a", "9:00")});
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(Cell(model, 0, 0), QStringLiteral("b"));
    QCOMPARE(Cell(model, 1, 1), QStringLiteral("9:00"));
    QCOMPARE(model.index(1, 0).data(TextTableModel::KeyRole).toString(), QStringLiteral("K2"));
    QCOMPARE(model.index(1, 1).data(TextTableModel::KeyRole).toString(), QStringLiteral("K2"));
}

void tst_TextTableModel::rows_setAgain_replaceTheOldOnes()
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

void tst_TextTableModel::rows_shorterThanTheHeadings_areFilledWithNothing()
{
    TextTableModel model(headings, nullptr);
    model.SetRows({{QStringLiteral("K1"), {QStringLiteral("only")}}});
    QCOMPARE(Cell(model, 0, 1), QString());
    QVERIFY(!model.ComesBefore(model.index(0, 1), model.index(0, 1)));
}

void tst_TextTableModel::cell_hasNoOtherRoles()
{
    TextTableModel model(headings, nullptr);
    model.SetRows({Row("K1", "b", "")});
    QVERIFY(!model.index(0, 0).data(Qt::EditRole).isValid());
    QVERIFY(!model.index(0, 0).data(Qt::CheckStateRole).isValid());
    QVERIFY(!model.data({}, Qt::DisplayRole).isValid());
    QVERIFY((model.index(0, 0).flags() & Qt::ItemIsEditable) == 0);
}

void tst_TextTableModel::headings_areShown()
{
    const TextTableModel model(headings, nullptr);
    QCOMPARE(model.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Time"));
    QVERIFY(!model.headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
    QVERIFY(!model.headerData(0, Qt::Horizontal, Qt::DecorationRole).isValid());
}

void tst_TextTableModel::sortIcon_isInOneHeadingOnly()
{
    TextTableModel model(headings, nullptr);
    const QSignalSpy changes(&model, &QAbstractItemModel::headerDataChanged);
    const auto icon = [&model](int column) {
        return model.headerData(column, Qt::Horizontal, Qt::DecorationRole).value<QIcon>();
    };
    model.SetSortIcon(1, Qt::AscendingOrder);
    QVERIFY(icon(0).isNull());
    const QImage ascending = icon(1).pixmap(16).toImage();
    QVERIFY(!ascending.isNull());
    model.SetSortIcon(1, Qt::DescendingOrder);
    QVERIFY(icon(1).pixmap(16).toImage() != ascending);
    model.SetSortIcon(0, Qt::AscendingOrder);
    QCOMPARE(icon(0).pixmap(16).toImage(), ascending);
    QVERIFY(icon(1).isNull());
    model.SetSortIcon(std::nullopt, Qt::AscendingOrder);
    QVERIFY(icon(0).isNull());
    QCOMPARE(changes.size(), 4);
}

void tst_TextTableModel::comesBefore_isCaseBlind()
{
    TextTableModel model(headings, nullptr);
    model.SetRows({Row("1", "b", ""), Row("2", "A", ""), Row("3", "a", ""), Row("4", "B", "")});
    QCOMPARE(Sorted(model), QStringList({QStringLiteral("A"), QStringLiteral("a"), QStringLiteral("b"),
                                         QStringLiteral("B")}));
    QVERIFY(!model.ComesBefore(model.index(1, 0), model.index(2, 0)));
    QVERIFY(!model.ComesBefore(model.index(2, 0), model.index(1, 0)));
}

void tst_TextTableModel::comesBefore_followsTheUsersLanguage()
{
    const auto sorted = [](QLocale::Language language) {
        QLocale::setDefault(QLocale(language));
        TextTableModel model(headings, nullptr);
        model.SetRows({Row("1", "Z", ""), Row("2", "\xC3\x96", ""), Row("3", "P", ""), Row("4", "O", "")});
        return Sorted(model).join(QString());
    };
    QCOMPARE(sorted(QLocale::German), QString::fromUtf8("O\xC3\x96PZ"));
    QCOMPARE(sorted(QLocale::Swedish), QString::fromUtf8("OPZ\xC3\x96"));
}

void tst_TextTableModel::comesBefore_afterNewRows_readsThem()
{
    TextTableModel model(headings, nullptr);
    model.SetRows({Row("1", "a", ""), Row("2", "b", "")});
    QVERIFY(model.ComesBefore(model.index(0, 0), model.index(1, 0)));
    model.SetRows({Row("1", "d", ""), Row("2", "c", "")});
    QVERIFY(!model.ComesBefore(model.index(0, 0), model.index(1, 0)));
}

QTEST_MAIN(tst_TextTableModel)
#include "tst_TextTableModel.moc"
