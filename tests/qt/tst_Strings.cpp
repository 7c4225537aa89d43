#include "qt/Strings.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

using namespace Tarno;

class tst_Strings : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void text_roundTrips_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("letters") << QByteArray("Pittwater");
        QTest::newRow("two bytes") << QByteArray("Bod\xC3\xB8");
        QTest::newRow("three bytes") << QByteArray("\xE6\xB5\x9C\xE5\x90\x8D\xE6\xB9\x96");
        QTest::newRow("outside the first plane") << QByteArray("\xF0\x9F\x90\x9F!");
        QTest::newRow("zero byte") << QByteArray("a\0b", 3);
        QTest::newRow("byte order marks") << QByteArray("\xEF\xBB\xBF\xEF\xBB\xBFx\xEF\xBB\xBF");
        QTest::newRow("byte order mark alone") << QByteArray("\xEF\xBB\xBF");
    }

    void text_roundTrips()
    {
        QFETCH(QByteArray, text);
        const std::string bytes = text.toStdString();
        QCOMPARE(ToUtf8(FromUtf8(bytes)), bytes);
        QCOMPARE(FromUtf8(bytes).toUtf8(), text);
    }

    void toUtf8_loneSurrogate_becomesTheReplacementCharacter_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("utf8");
        const QChar high(0xD83D);
        const QChar low(0xDC1F);
        const QString a(QLatin1Char('a'));
        QTest::newRow("high alone") << QString(high) << QByteArray("\xEF\xBF\xBD");
        QTest::newRow("low alone") << QString(low) << QByteArray("\xEF\xBF\xBD");
        QTest::newRow("high before a letter") << (QString(high) + a)
                                              << QByteArray("\xEF\xBF\xBD"
                                                            "a");
        QTest::newRow("low after a letter") << (a + low) << QByteArray("a\xEF\xBF\xBD");
        QTest::newRow("reversed pair") << (QString(low) + high) << QByteArray("\xEF\xBF\xBD\xEF\xBF\xBD");
        QTest::newRow("valid pair") << (QString(high) + low) << QByteArray("\xF0\x9F\x90\x9F");
    }

    void toUtf8_loneSurrogate_becomesTheReplacementCharacter()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, utf8);
        QCOMPARE(ToUtf8(text), utf8.toStdString());
    }

    void fromUtf8_invalidBytes_becomeTheReplacementCharacter()
    {
        QCOMPARE(FromUtf8("a\xFF"
                          "b"),
                 QString(QLatin1Char('a')) + QChar(0xFFFD) + QLatin1Char('b'));
    }

    void shownLines_convertsEveryBreakToALineFeed_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("shown");
        QTest::newRow("nothing") << ""
                                 << "";
        QTest::newRow("one line") << "a"
                                  << "a";
        QTest::newRow("encoded") << "a~CL~b"
                                 << "a\nb";
        QTest::newRow("at both ends") << "~CL~a~CL~"
                                      << "\na\n";
        QTest::newRow("empty lines") << "a~CL~~CL~b"
                                     << "a\n\nb";
        QTest::newRow("raw carriage return and line feed") << "a\r\nb"
                                                           << "a\nb";
        QTest::newRow("raw line feed") << "a\nb"
                                       << "a\nb";
        QTest::newRow("raw carriage return") << "a\rb"
                                             << "a\nb";
        QTest::newRow("Unicode separators") << "a\u2028b\u2029c"
                                            << "a\nb\nc";
        QTest::newRow("characters that QTextDocument reserves") << "a\uFDD0b\uFDD1c"
                                                                << "a\nb\nc";
        QTest::newRow("no-break space") << "6\u00A0kg"
                                        << "6\u00A0kg";
        QTest::newRow("incomplete code") << "a~CL b"
                                         << "a~CL b";
        QTest::newRow("letter case") << "a~cl~b"
                                     << "a~cl~b";
    }

    void shownLines_convertsEveryBreakToALineFeed()
    {
        QFETCH(QString, stored);
        QFETCH(QString, shown);
        QCOMPARE(ShownLines(ToUtf8(stored)), shown);
    }

    void storedLines_encodesEveryLineFeed_data()
    {
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("stored");
        QTest::newRow("nothing") << ""
                                 << "";
        QTest::newRow("one line") << "a"
                                  << "a";
        QTest::newRow("two lines") << "a\nb"
                                   << "a~CL~b";
        QTest::newRow("at both ends") << "\na\n"
                                      << "~CL~a~CL~";
        QTest::newRow("empty lines") << "a\n\n\nb"
                                     << "a~CL~~CL~~CL~b";
    }

    void storedLines_encodesEveryLineFeed()
    {
        QFETCH(QString, shown);
        QFETCH(QString, stored);
        QCOMPARE(StoredLines(shown), ToUtf8(stored));
        QCOMPARE(ShownLines(ToUtf8(stored)), shown);
    }

    void shownInOneLine_convertsBreaksToBlanks()
    {
        QCOMPARE(ToUtf8(ShownInOneLine("Victor Harbor~CL~Granite\nIsland")), "Victor Harbor Granite Island");
    }
};

TEST_CLASS(tst_Strings)
#include "tst_Strings.moc"
