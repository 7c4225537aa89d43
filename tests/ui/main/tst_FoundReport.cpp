#include "FindTest.h"
#include "support/Platform.h"
#include "support/TestClass.h"
#include "ui/reports/LogPreviewTest.h"

#include <QProcess>

using namespace Tarno;

// The report of the trips that a query finds.

namespace
{

/// Opens the report builder for the trips found and runs `steps` on it.
template <typename Steps>
void OpenBuilder(const QWidget& window, Steps&& steps)
{
    WhileOpen(
        "fRptLog", [&] { Press(window, Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier); },
        [&](QDialog& builder) {
            steps(builder);
            Click(builder, "cmdClose");
        });
}

/// Returns the report of the trips found, with one column: the start date.
Shown ReportFound(TestProgram& program, const QWidget& window)
{
    Shown shown;
    OpenBuilder(window, [&](QDialog& builder) {
        Show(builder, {1});
        shown = Preview(program, builder);
    });
    return shown;
}

QStringList FooterTexts(const Shown& shown)
{
    QStringList texts;
    for (const RtfRow& row : shown.all.footer) {
        for (const QString& cell : row.cells) {
            if (!cell.isEmpty()) {
                texts << cell;
            }
        }
    }
    return texts;
}

/// Describes every control of the builder: its name, caption, and whether it is enabled and visible.
QStringList Described(const QWidget& builder)
{
    QStringList controls;
    for (const auto* control : builder.findChildren<QWidget*>()) {
        controls << control->objectName() + QLatin1Char('|') + control->property("text").toString() +
                        QLatin1Char('|') + QString::number(control->isEnabled()) +
                        QString::number(control->isVisible());
    }
    return controls;
}

} // namespace

class tst_FoundReport : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void query_restrictsTheRowsAndIsInTheFooter()
    {
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "squid");
        const Shown shown = ReportFound(program, window);
        QCOMPARE(shown.rows, (Rows{"2003-02-05", "2003-03-07"}));
        QCOMPARE(FooterTexts(shown), QStringList(QStringLiteral("Trips found by: squid")));
        QVERIFY(List(window).isEnabled());
        QCOMPARE(Keys(window), (Texts{"K1", "K3"}));
    }

    void noQuery_reportsAllTripsWithoutAFooter_data()
    {
        QTest::addColumn<QString>("query");
        QTest::newRow("closed") << QString();
        QTest::newRow("empty") << "";
        QTest::newRow("blanks") << "  ";
        QTest::newRow("only a fault") << "foo:bar";
    }

    void noQuery_reportsAllTripsWithoutAFooter()
    {
        QFETCH(QString, query);
        FourTrips program;
        ShownLog window(program);
        if (!query.isNull()) {
            FindTrips(window, qPrintable(query));
        }
        const Shown shown = ReportFound(program, window);
        QCOMPARE(shown.rows, (Rows{"2003-02-05", "2003-02-06", "2003-03-07", "2003-03-08"}));
        QCOMPARE(FooterTexts(shown), QStringList());
    }

    void closedBar_reportsAllTrips()
    {
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "squid");
        Press(window, Qt::Key_Escape);
        QCOMPARE(ReportFound(program, window).rows.size(), std::size_t{4});
    }

    void savedTrip_thatIsNotFound_isNotReported()
    {
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "squid");
        Press(window, Qt::Key_Return);
        DeleteSelected(program, window);
        FindTrips(window, "trout");
        Press(window, Qt::Key_Return);
        Press(window, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(MarkedKeys(window), Texts{"K1"});
        QCOMPARE(ReportFound(program, window).rows, Rows{"2003-02-06"});
    }

    void reports_ofTheToolbar_coverAllTrips()
    {
        FourTrips program;
        ShownLog window(program);
        FindTrips(window, "squid");
        WhileOpen(
            "fRptLog", [&] { window.Reports(); },
            [&](QDialog& builder) {
                Show(builder, {1});
                const Shown shown = Preview(program, builder);
                QCOMPARE(shown.rows.size(), std::size_t{4});
                QCOMPARE(FooterTexts(shown), QStringList());
                Click(builder, "cmdClose");
            });
    }

    void builder_isTheSame()
    {
        FourTrips program;
        ShownLog window(program);
        QStringList usual;
        WhileOpen(
            "fRptLog", [&] { window.Reports(); },
            [&](QDialog& builder) {
                usual = Described(builder);
                Click(builder, "cmdClose");
            });
        FindTrips(window, "squid");
        OpenBuilder(window, [&](QDialog& builder) {
            QCOMPARE(Described(builder).join(QLatin1Char('\n')), usual.join(QLatin1Char('\n')));
        });
    }

    void query_oddCharacters_areInTheFooter_data()
    {
        QTest::addColumn<QString>("query");
        QTest::newRow("marks") << "2003 -\"{a} \\b & <c>\"";
        QTest::newRow("accents") << QStringLiteral(u"2003 -caf\u00E9 -\u9BDB");
        QTest::newRow("blanks") << "  2003   bream ";
    }

    void query_oddCharacters_areInTheFooter()
    {
        QFETCH(QString, query);
        FourTrips program;
        ShownLog window(program);
        Press(window, Qt::Key_F, Qt::ControlModifier);
        FindBox(window).setText(query);
        const Shown shown = ReportFound(program, window);
        QCOMPARE(shown.all.fault, QString());
        QCOMPARE(FooterTexts(shown).join(QString()).simplified(),
                 (QStringLiteral("Trips found by: ") + query).simplified());
    }

    void footer_isOnEveryPage()
    {
        NOT_ON_WINDOWS("pdftotext");
        FourTrips program;
        for (int trip = 0; trip < 80; ++trip) {
            program.AddEntry({{EntryField::StartDate, "2004-01-01"},
                              {EntryField::LocNo, "1"},
                              {EntryField::BaitUsed, "Squid"}});
        }
        ShownLog window(program);
        FindTrips(window, "bait:squid");
        const QString path = FromUtf8(program.folder.PathOf("found.pdf"));
        OpenBuilder(window, [&](QDialog& builder) {
            Show(builder, {1});
            WhileOpen(
                "fPreview", [&] { Click(builder, "cmdPreview"); },
                [&](QDialog& preview) {
                    program.files.ExpectSave({.title = QStringLiteral("Save Report to PDF"),
                                              .filter = QStringLiteral("PDF Documents (*.pdf)"),
                                              .folder = FromUtf8(program.folder.Path() + '/'),
                                              .fileName = QStringLiteral("PDF Files"),
                                              .suffix = QStringLiteral(".pdf")},
                                             path);
                    Find<QAction>(preview, "&PDF Export").trigger();
                    preview.close();
                });
        });
        QProcess reader;
        reader.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
        QVERIFY(reader.waitForFinished(awaitTimeout));
        const QStringList pages =
            QString::fromUtf8(reader.readAllStandardOutput()).split(QLatin1Char('\f'), Qt::SkipEmptyParts);
        QVERIFY(pages.size() > 2);
        for (const QString& page : pages) {
            QCOMPARE(page.count(QStringLiteral("Trips found by: bait:squid")), 1);
        }
    }
};

TEST_CLASS(tst_FoundReport)
#include "tst_FoundReport.moc"
