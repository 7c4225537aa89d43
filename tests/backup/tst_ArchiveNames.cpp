// The names of files in archives, and those that pictures get.

#include "backup/ArchiveNames.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

class tst_ArchiveNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void pictureNames_differOnEverySystem()
    {
        PictureNames names;
        QCOMPARE(names.Add("pictures/a.jpg"), "pictures/a.jpg"s);
        QCOMPARE(names.Add("pictures/a.jpg"), "pictures/a-2.jpg"s);
        QCOMPARE(names.Add("pictures/A.JPG"), "pictures/A-3.JPG"s);
        QCOMPARE(names.Add("pictures/b/a.jpg"), "pictures/b/a.jpg"s);
        names.Reserve("pictures/c-2.jpg");
        QCOMPARE(names.Add("pictures/c.jpg"), "pictures/c.jpg"s);
        QCOMPARE(names.Add("pictures/C.jpg"), "pictures/C-3.jpg"s);
        QCOMPARE(names.Add("pictures/caf\u00e9"), "pictures/caf\u00e9"s);
        QCOMPARE(names.Add("pictures/CAFE\u0301"), "pictures/CAFE\u0301-2"s);
        QVERIFY(names.Has("PICTURES/C-2.jpg"));
        QVERIFY(!names.Has("pictures/d.jpg"));
    }

    void pictureNames_areValid_data()
    {
        QTest::addColumn<std::string>("wanted");
        QTest::addColumn<std::string>("name");
        const auto row = [](const std::string& wanted, const std::string& name) {
            QTest::newRow(("> " + wanted.substr(0, 30)).c_str()) << wanted << name;
        };
        row("pictures/a:b?.jpg", "pictures/a_b_.jpg");
        row("pictures/a\\b\n.jpg", "pictures/a_b_.jpg");
        row("pictures/nul.jpg", "pictures/_nul.jpg");
        row("pictures/ends. .", "pictures/ends");
        row("pictures/...", "pictures/_");
        row("pictures/.hidden", "pictures/.hidden");
        row("pictures/" + std::string(255, 'n') + ".jpeg", "pictures/" + std::string(230, 'n') + ".jpeg");
        std::string deep = "pictures";
        for (int level = 0; level < 600; ++level) {
            deep += "/d";
        }
        row(deep + "/a.jpg", "pictures/a.jpg");
    }

    void pictureNames_areValid()
    {
        QFETCH(std::string, wanted);
        QFETCH(std::string, name);
        QCOMPARE(PictureNames().Add(wanted), name);
        QCOMPARE(NameFault(name), ""s);
    }

    void longName_isCutBetweenCharacters()
    {
        std::string wanted = "pictures/x";
        for (int letter = 0; letter < 150; ++letter) {
            wanted += "\u00e9";
        }
        const std::string name = PictureNames().Add(wanted);
        QCOMPARE(NameFault(name), ""s);
        QCOMPARE(static_cast<int>(name.size()), 9 + 1 + 2 * 117);
    }

    void compressedPictures_areRecognised()
    {
        for (const char* name : {"a.jpg", "pictures/A.JPEG", "x.y.png", "a.gif", "a.webp"}) {
            QVERIFY2(IsCompressedPicture(name), name);
        }
        for (const char* name : {"a.bmp", "jpg", ".jpg", "a.jpg/b", "tarno.xml"}) {
            QVERIFY2(!IsCompressedPicture(name), name);
        }
    }
};

TEST_CLASS(tst_ArchiveNames)
#include "tst_ArchiveNames.moc"
