// Controls and fields of a report: adding controls by type, finding controls and fields by name or position.

#include "reports/engine/Report.h"
#include "support/RaisedNumber.h"
#include "support/TestClass.h"

using namespace Tarno;

using Kind = ReportControl::Kind;

Q_DECLARE_METATYPE(ReportControl::Kind)

class tst_ReportControl : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void add_knownType_makesThatKind_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<Kind>("kind");
        QTest::newRow("label") << QStringLiteral("DDActiveReports.Label") << Kind::Label;
        QTest::newRow("field") << QStringLiteral("DDActiveReports.Field") << Kind::Field;
        QTest::newRow("line") << QStringLiteral("DDActiveReports.Line") << Kind::Line;
        QTest::newRow("image") << QStringLiteral("DDActiveReports.Image") << Kind::Picture;
    }

    void add_knownType_makesThatKind()
    {
        QFETCH(QString, type);
        QFETCH(Kind, kind);
        ReportControls controls;
        QCOMPARE(controls.Add(type).kind, kind);
    }

    void add_unknownType_isInvalidProcedureCall_data()
    {
        QTest::addColumn<QString>("type");
        QTest::newRow("none") << QString();
        QTest::newRow("without the engine's name") << QStringLiteral("Label");
        QTest::newRow("other control") << QStringLiteral("DDActiveReports.Barcode");
        QTest::newRow("with a suffix") << QStringLiteral("DDActiveReports.Label2");
    }

    void add_unknownType_isInvalidProcedureCall()
    {
        QFETCH(QString, type);
        ReportControls controls;
        QCOMPARE(RaisedNumber([&] { controls.Add(type); }), 5);
        QVERIFY(controls.begin() == controls.end());
    }

    void controls_keepTheOrderOfAdding()
    {
        ReportControls controls;
        QStringList names;
        for (const char* name : {"c", "a", "b"}) {
            controls.Add(QStringLiteral("DDActiveReports.Label")).Name = QLatin1String(name);
        }
        for (const ReportControl& control : controls) {
            names << control.Name;
        }
        QCOMPARE(names, (QStringList{QStringLiteral("c"), QStringLiteral("a"), QStringLiteral("b")}));
    }

    void controlByName_isCaseInsensitive()
    {
        ReportControls controls;
        controls.Add(QStringLiteral("DDActiveReports.Label")).Name = QStringLiteral("lblOther");
        controls.Add(QStringLiteral("DDActiveReports.Label")).Name = QStringLiteral("lblPrinted");
        controls[QStringLiteral("LBLprinted")].Text = QStringLiteral("today");
        QCOMPARE(controls[QStringLiteral("lblPrinted")].Text, QStringLiteral("today"));
        QCOMPARE(controls[QStringLiteral("lblOther")].Text, QString());
    }

    void controlByName_unknown_isSubscriptOutOfRange()
    {
        ReportControls controls;
        controls.Add(QStringLiteral("DDActiveReports.Label")).Name = QStringLiteral("lblPrinted");
        QCOMPARE(RaisedNumber([&] { controls[QStringLiteral("lblPrint")].Width = 1; }), 9);
    }

    void fields_areFoundByNameCaseInsensitively()
    {
        ReportFields fields;
        fields.Add(QStringLiteral("LocName"));
        fields.Add(QStringLiteral("LocGMT"));
        fields.SetValue(0, QStringLiteral("Sow and Pigs"));
        fields.SetValue(1, QStringLiteral("10"));
        QCOMPARE(fields.Count(), 2);
        QCOMPARE(fields.Value(QStringLiteral("locname")), QStringLiteral("Sow and Pigs"));
        QCOMPARE(fields.Value(QStringLiteral("LOCGMT")), QStringLiteral("10"));
        QVERIFY(!fields.Value(QStringLiteral("Loc")));
    }

    void fields_valueIsEmptyBeforeItIsSet()
    {
        ReportFields fields;
        fields.Add(QStringLiteral("LocName"));
        QCOMPARE(fields.Value(QStringLiteral("LocName")), QString());
    }

    void fields_positionOutOfRange_isSubscriptOutOfRange_data()
    {
        QTest::addColumn<int>("position");
        QTest::newRow("before the first") << -1;
        QTest::newRow("after the last") << 2;
    }

    void fields_positionOutOfRange_isSubscriptOutOfRange()
    {
        QFETCH(int, position);
        ReportFields fields;
        fields.Add(QStringLiteral("a"));
        fields.Add(QStringLiteral("b"));
        QCOMPARE(RaisedNumber([&] { fields.SetValue(position, QStringLiteral("x")); }), 9);
    }
};

TEST_CLASS(tst_ReportControl)
#include "tst_ReportControl.moc"
