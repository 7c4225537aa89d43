#include "core/Conversions.h"
#include "qt/Strings.h"
#include "support/ExpectedReports.h"
#include "support/TestClass.h"
#include "ui/entry/FieldRules.h"

using namespace Tarno;

namespace
{

/// Parses a date and returns it as "yyyy-mm-dd", or "none".
std::string Read(const QString& text, const QString& locale)
{
    const auto date = ParseUserDate(text, QLocale(locale));
    return date ? FromDate(*date) : "none";
}

std::string CheckedDate(const std::string& typed, bool& ok)
{
    std::string text = typed;
    CheckDateFormat(text, ok);
    return text;
}

std::string CheckedTime(const std::string& typed, bool& ok)
{
    std::string text = typed;
    CheckTimeFormat(text, ok);
    return text;
}

} // namespace

class tst_FieldRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { QLocale::setDefault(QLocale::c()); }

    void parseUserDate_acceptsTheFormatOfTheLocale_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("date");
        const auto row = [](const char* locale, const char* text, const char* date) {
            QTest::addRow("%s: %s", locale, text) << locale << text << date;
        };
        for (const char* locale : {"C", "en_US", "de_DE", "en_AU"}) {
            row(locale, "2003-02-05", "2003-02-05");
            row(locale, "2003-2-5", "2003-02-05");
            row(locale, " 2003-02-05 ", "2003-02-05");
            row(locale, "2004-02-29", "2004-02-29");
            row(locale, "2000-02-29", "2000-02-29");
            row(locale, "0001-01-01", "0001-01-01");
            row(locale, "9999-12-31", "9999-12-31");
        }
        row("en_US", "2/5/03", "2003-02-05");
        row("en_US", "02/05/03", "2003-02-05");
        row("en_US", "2/5/2003", "2003-02-05");
        row("en_US", "12/31/1999", "1999-12-31");
        row("en_US", "2/29/04", "2004-02-29");
        row("de_DE", "5.2.03", "2003-02-05");
        row("de_DE", "05.02.03", "2003-02-05");
        row("de_DE", "5.2.2003", "2003-02-05");
        row("de_DE", "31.12.9999", "9999-12-31");
        row("de_DE", " 5.2.2003 ", "2003-02-05");
        row("en_AU", "5/2/03", "2003-02-05");
        row("en_AU", "05/02/2003", "2003-02-05");
        row("C", "5 Feb 2003", "2003-02-05");
        row("C", "29 Feb 2004", "2004-02-29");
        row("C", "5 feb 2003", "2003-02-05");
        // two-digit years
        row("de_DE", "1.1.00", "2000-01-01");
        row("de_DE", "29.2.00", "2000-02-29");
        row("de_DE", "31.12.29", "2029-12-31");
        row("de_DE", "1.1.30", "1930-01-01");
        row("de_DE", "31.12.99", "1999-12-31");
        row("en_US", "12/31/29", "2029-12-31");
        row("en_US", "1/1/30", "1930-01-01");
    }

    void parseUserDate_acceptsTheFormatOfTheLocale()
    {
        QFETCH(QString, locale);
        QFETCH(QString, text);
        QFETCH(QString, date);
        QCOMPARE(Read(text, locale), date.toStdString());
    }

    void parseUserDate_everyDayInTheShortFormat_roundTrips_data()
    {
        QTest::addColumn<QString>("locale");
        for (const char* locale : {"C", "en_US", "en_GB", "en_AU", "de_DE", "fr_FR", "es_AR", "nb_NO",
                                   "ja_JP", "pt_BR", "sv_SE"}) {
            QTest::newRow(locale) << locale;
        }
    }

    void parseUserDate_everyDayInTheShortFormat_roundTrips()
    {
        QFETCH(QString, locale);
        const QLocale users(locale);
        for (QDate day(2003, 12, 25); day <= QDate(2005, 1, 5); day = day.addDays(1)) {
            const QString written = users.toString(day, QLocale::ShortFormat);
            const QString expected = day.toString(Qt::ISODate);
            QVERIFY2(Read(written, locale) == expected.toStdString(),
                     qPrintable(written + QStringLiteral(" reads ") + FromUtf8(Read(written, locale))));
        }
    }

    void parseUserDate_invalid_isNothing_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("text");
        for (const char* locale : {"C", "en_US", "de_DE", "en_AU"}) {
            for (const char* text : {"",
                                     " ",
                                     "-",
                                     "2003",
                                     "2003-02",
                                     "2003-02-29",
                                     "1900-02-29",
                                     "2003-13-01",
                                     "2003-00-10",
                                     "2003-04-31",
                                     "2003-02-00",
                                     "0000-01-01",
                                     "10000-01-01",
                                     "-2003-02-05",
                                     "2003-02-05x",
                                     "2003--5",
                                     "2003-02-05-01",
                                     "yesterday",
                                     "2003.02.05.",
                                     "\xEF\xBC\x92\xEF\xBC\x90-02-05"}) {
                QTest::addRow("%s: %s", locale, text) << locale << text;
            }
        }
        QTest::newRow("German format in an American locale") << "en_US"
                                                             << "5.2.2003";
        QTest::newRow("American format in a German locale") << "de_DE"
                                                            << "2/5/2003";
        QTest::newRow("day 31 of February") << "de_DE"
                                            << "31.2.2003";
        QTest::newRow("not a leap year, short") << "de_DE"
                                                << "29.2.03";
        QTest::newRow("year 0, short") << "de_DE"
                                       << "1.1.0000";
        QTest::newRow("year with a sign") << "de_DE"
                                          << "5.2.-2003";
        QTest::newRow("year with a sign, short") << "de_DE"
                                                 << "5.2.-03";
        QTest::newRow("month 13") << "en_AU"
                                  << "1/13/2003";
    }

    void parseUserDate_invalid_isNothing()
    {
        QFETCH(QString, locale);
        QFETCH(QString, text);
        QCOMPARE(Read(text, locale), "none");
    }

    void checkDateFormat_date_isRewritten_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("text");
        QTest::newRow("no zeros") << "2003-2-5"
                                  << "2003-02-05";
        QTest::newRow("already normalised") << "2003-12-31"
                                            << "2003-12-31";
        QTest::newRow("year of four digits") << "0087-1-2"
                                             << "0087-01-02";
        QTest::newRow("the format of the locale") << "5 Feb 2003"
                                                  << "2003-02-05";
    }

    void checkDateFormat_date_isRewritten()
    {
        QFETCH(QString, typed);
        QFETCH(QString, text);
        const ExpectedReports none;
        bool ok = false;
        QCOMPARE(CheckedDate(typed.toStdString(), ok), text.toStdString());
        QVERIFY(ok);
    }

    void checkDateFormat_invalid_staysUnchanged_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::newRow("nothing") << "";
        QTest::newRow("blank") << " ";
        QTest::newRow("day that does not exist") << "2003-2-29";
        QTest::newRow("time") << "06:30";
    }

    void checkDateFormat_invalid_staysUnchanged()
    {
        QFETCH(QString, typed);
        const ExpectedReports none;
        bool ok = true;
        QCOMPARE(CheckedDate(typed.toStdString(), ok), typed.toStdString());
        QVERIFY(!ok);
    }

    void checkDateFormat_followsTheUsersLocale()
    {
        bool ok = false;
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(CheckedDate("5.2.2003", ok), "2003-02-05");
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        QCOMPARE(CheckedDate("2/5/2003", ok), "2003-02-05");
        QLocale::setDefault(QLocale(QLocale::English, QLocale::Australia));
        QCOMPARE(CheckedDate("2/5/2003", ok), "2003-05-02");
    }

    void checkTimeFormat_time_isRewritten_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("text");
        const auto row = [](const char* typed, const char* text) { QTest::newRow(typed) << typed << text; };
        row("0630", "06:30");
        row("6:5", "06:05");
        row("06:30", "06:30");
        row("0000", "00:00");
        row("2359", "23:59");
        row("23:59", "23:59");
        row("0:0", "00:00");
        row("006:007", "06:07");
        row(" 6: 5 ", "06:05");
        row("12:3.5", "12:04");
        row("12:2.5", "12:02");
        row("22.5:00", "22:00");
        row("7:59.5", "7:59.5");
        row("6.30", "06:30");
    }

    void checkTimeFormat_time_isRewritten()
    {
        QFETCH(QString, typed);
        QFETCH(QString, text);
        const ExpectedReports none;
        bool ok = false;
        QCOMPARE(CheckedTime(typed.toStdString(), ok), text.toStdString());
        QCOMPARE(ok, typed != QLatin1String("7:59.5")); // 59.5 rounds to 60
    }

    void checkTimeFormat_word_staysUnchanged_data()
    {
        QTest::addColumn<QString>("word");
        QTest::newRow("nothing") << "";
        QTest::newRow("never") << "never";
        QTest::newRow("sets") << "sets";
        QTest::newRow("rises") << "rises";
    }

    void checkTimeFormat_word_staysUnchanged()
    {
        QFETCH(QString, word);
        const ExpectedReports none;
        bool ok = false;
        QCOMPARE(CheckedTime(word.toStdString(), ok), word.toStdString());
        QVERIFY(ok);
    }

    void checkTimeFormat_invalid_staysUnchangedWithoutAReport_data()
    {
        QTest::addColumn<QString>("typed");
        for (const char* typed : {"630", "6", "12345", "24:00", "2400", "7:60", "0760", "23.5:00", "-1:30",
                                  "1:-1", "Never", "sets ", "99999:00", "1:99999", "noon.",
                                  // two, three or five characters, but more bytes
                                  "\u00E4\u00F6", "\u00E430", "\u6B63\u5348", "\u6B63", "0\u00E4630"}) {
            QTest::newRow(typed) << typed;
        }
    }

    void checkTimeFormat_invalid_staysUnchangedWithoutAReport()
    {
        QFETCH(QString, typed);
        const ExpectedReports none;
        bool ok = true;
        QCOMPARE(CheckedTime(typed.toStdString(), ok), typed.toStdString());
        QVERIFY(!ok);
    }

    void checkTimeFormat_partNotANumber_isReported_data()
    {
        QTest::addColumn<QString>("typed");
        for (const char* typed :
             {":", "7:", ":30", "x:30", "7:x", "noon", "1:2:3", "06:30:00", "....", "7:.", "\xEF\xBC\x98:00",
              // four characters, but more bytes
              "m\u00E9di", "\u00E4\u00F6\u00FC\u00DF", "\u00E4630", "063\u00E4",
              "\u6B63\u5348\u904E\u304E"}) {
            QTest::newRow(typed) << typed;
        }
    }

    void checkTimeFormat_partNotANumber_isReported()
    {
        QFETCH(QString, typed);
        ExpectedReports reports;
        reports.Expect("fEntry", "CheckTimeFormat", ErrorNumber::TypeMismatch);
        bool ok = true;
        QCOMPARE(CheckedTime(typed.toStdString(), ok), typed.toStdString());
        QVERIFY(!ok);
        ok = true;
        std::string text = typed.toStdString();
        CheckTimeFormatSilently(text, ok); // not expected, so a report fails the test
        QCOMPARE(text, typed.toStdString());
        QVERIFY(!ok);
    }
};

TEST_CLASS(tst_FieldRules)
#include "tst_FieldRules.moc"
