#include "qt/Strings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"
#include "support/Windows.h"
#include "ui/common/RememberedWindows.h"
#include "ui/common/SortableList.h"

#include <QHeaderView>
#include <QScreen>
#include <QSettings>
#include <QVBoxLayout>

using namespace Tarno;

namespace
{

/// A window with a list, whose columns are "Name", which is stretched, and as many others as wanted.
class ListWindow : public QDialog
{
public:
    explicit ListWindow(const RememberedWindows& windows, int otherColumns = 2)
    {
        setObjectName(QStringLiteral("fList"));
        resize(usualSize);
        QStringList headings{QStringLiteral("Name")};
        QStringList samples{QString()};
        for (int column = 0; column < otherColumns; ++column) {
            headings << QStringLiteral("Number");
            samples << QStringLiteral("12345");
        }
        list->setObjectName(QStringLiteral("lvwList"));
        list->SetHeadings(headings);
        list->FitColumns(samples, 0);
        list->SetRows({});
        (new QVBoxLayout(this))->addWidget(list);
        windows.Remember(*this);
    }

    void Open()
    {
        show();
        AwaitActive(*this);
    }

    static constexpr QSize usualSize{500, 300};

    SortableList* list = new SortableList;
};

/// The state file in a temporary folder.
struct State {
    void Put(const QString& key, const QVariant& value) const
    {
        QSettings(file, QSettings::IniFormat).setValue(key, value);
    }

    TemporaryFolder folder;
    QString file = FromUtf8(folder.PathOf("windows.ini"));
    RememberedWindows windows{file};
};

const QString geometryKey = QStringLiteral("fList/geometry");
const QString columnsKey = QStringLiteral("fList/lvwList");

} // namespace

class tst_RememberedWindows : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void sizeAndPosition_areRestored()
    {
        const State state;
        constexpr QRect wanted(70, 80, 450, 350);
        {
            ListWindow window(state.windows);
            window.Open();
            QCOMPARE(window.size(), ListWindow::usualSize);
            window.setGeometry(wanted);
            window.close();
        }
        ListWindow window(RememberedWindows(state.file)); // another run
        window.Open();
        QCOMPARE(window.geometry(), wanted);
        QVERIFY(!window.isMaximized());
    }

    void maximised_isRestoredWithTheSizeBefore()
    {
        const State state;
        {
            ListWindow window(state.windows);
            window.Open();
            window.showMaximized();
            window.close();
        }
        ListWindow window(state.windows);
        window.Open();
        QVERIFY(window.isMaximized());
        QCOMPARE(window.normalGeometry().size(), ListWindow::usualSize);
    }

    void windowThatWasNeverShown_isNotRemembered()
    {
        const State state;
        {
            ListWindow window(state.windows);
            window.resize(300, 310);
        }
        QVERIFY(!QFileInfo::exists(state.file));
    }

    void size_largerThanTheScreen_isCut()
    {
        const State state;
        const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
        state.Put(geometryKey, QRect(0, 0, 4000, 400));
        ListWindow window(state.windows);
        window.Open();
        QCOMPARE(window.size(), QSize(room.width(), 400));
    }

    void position_onAScreenThatIsGone_isIgnored()
    {
        const State state;
        QPoint usual;
        {
            ListWindow window(RememberedWindows(FromUtf8(state.folder.PathOf("other.ini"))));
            window.resize(450, 350);
            window.Open();
            usual = window.pos();
        }
        state.Put(geometryKey, QRect(5000, 80, 450, 350));
        ListWindow window(state.windows);
        window.Open();
        QCOMPARE(window.size(), QSize(450, 350));
        QCOMPARE(window.pos(), usual);
    }

    void geometry_thatIsDamaged_isIgnored_data()
    {
        QTest::addColumn<QVariant>("saved");
        QTest::newRow("missing") << QVariant();
        QTest::newRow("text") << QVariant(QStringLiteral("large"));
        QTest::newRow("bytes") << QVariant(QByteArray("\x01\xD9\xD0\xCB\0\3", 6));
        QTest::newRow("empty") << QVariant(QRect(10, 10, 0, 0));
        QTest::newRow("negative") << QVariant(QRect(10, 10, -5, 500));
    }

    void geometry_thatIsDamaged_isIgnored()
    {
        QFETCH(QVariant, saved);
        const State state;
        state.Put(geometryKey, saved);
        ListWindow window(state.windows);
        window.Open();
        QCOMPARE(window.size(), ListWindow::usualSize);
    }

    void columns_areRestored()
    {
        const State state;
        int wanted = 0;
        {
            ListWindow window(state.windows);
            window.Open();
            wanted = window.list->columnWidth(1) + 20;
            window.list->header()->resizeSection(1, wanted);
            window.list->model()->sort(1);
            window.close();
        }
        ListWindow window(state.windows);
        window.Open();
        QCOMPARE(window.list->columnWidth(1), wanted);
        const auto* model = static_cast<TextTableModel*>(window.list->model());
        QVERIFY(!model->SortColumn()); // the sort order is not remembered
        QCOMPARE(window.list->header()->length(), window.list->viewport()->width());
    }

    void columns_thatTheUserDidNotChange_areNotRemembered()
    {
        const State state;
        ListWindow window(state.windows);
        window.Open();
        window.resize(600, 300); // changes the stretched column only
        window.close();
        QVERIFY(!QSettings(state.file, QSettings::IniFormat).contains(columnsKey));
    }

    void columns_thatDoNotFit_areIgnored_data()
    {
        QTest::addColumn<QVariant>("saved");
        QTest::newRow("fewer") << QVariant(QVariantList{0, 100});
        QTest::newRow("more") << QVariant(QVariantList{0, 100, 100, 100});
        QTest::newRow("another one stretched") << QVariant(QVariantList{100, 0, 100});
        QTest::newRow("too narrow") << QVariant(QVariantList{0, 1, 100});
        QTest::newRow("negative") << QVariant(QVariantList{0, -100, 100});
        QTest::newRow("together wider than the screen") << QVariant(QVariantList{0, 500, 500});
        QTest::newRow("far too wide") << QVariant(QVariantList{0, 2'000'000'000, 2'000'000'000});
        QTest::newRow("texts") << QVariant(QStringLiteral("0,wide,wide").split(QLatin1Char(',')));
    }

    void columns_thatDoNotFit_areIgnored()
    {
        QFETCH(QVariant, saved);
        const State state;
        ListWindow fresh(state.windows);
        state.Put(columnsKey, saved);
        const ListWindow window(state.windows);
        for (const int column : {1, 2}) {
            QCOMPARE(window.list->columnWidth(column), fresh.list->columnWidth(column));
        }
    }

    void selectedRow_belongsToTheFolder()
    {
        const State state;
        state.folder.MakeFolder("one");
        state.folder.MakeFolder("two");
        const QString one = FromUtf8(state.folder.PathOf("one"));
        const QString two = FromUtf8(state.folder.PathOf("two"));
        state.windows.SetSelectedRow(one, QStringLiteral("K3"));
        state.windows.SetSelectedRow(two, QStringLiteral("K5"));
        QCOMPARE(state.windows.SelectedRow(one), QStringLiteral("K3"));
        QCOMPARE(state.windows.SelectedRow(two), QStringLiteral("K5"));
        QCOMPARE(state.windows.SelectedRow(two + QStringLiteral("/../one/")), QStringLiteral("K3"));
        QCOMPARE(state.windows.SelectedRow(FromUtf8(state.folder.Path())), QString());
    }

    void backUpFolder_belongsToTheLog()
    {
        const State state;
        state.folder.MakeFolder("one");
        state.folder.MakeFolder("two");
        const QString one = FromUtf8(state.folder.PathOf("one"));
        const QString two = FromUtf8(state.folder.PathOf("two"));
        const QString usual = QDir::toNativeSeparators(one + QStringLiteral("/backups"));
        QCOMPARE(state.windows.BackUpFolder(one), usual);
        state.windows.SetBackUpFolder(two, QStringLiteral("/media/stick"));
        QCOMPARE(state.windows.BackUpFolder(one), usual);
        QCOMPARE(state.windows.BackUpFolder(two), QStringLiteral("/media/stick"));
        QCOMPARE(state.windows.BackUpFolder(one + QStringLiteral("/../two/")),
                 QStringLiteral("/media/stick"));
    }

    void file_thatIsUseless_isIgnored_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("damaged") << QStringLiteral("damaged");
        QTest::newRow("a folder") << QStringLiteral("folder");
        QTest::newRow("below a file") << QStringLiteral("damaged/windows.ini");
    }

    void file_thatIsUseless_isIgnored()
    {
        QFETCH(QString, file);
        const TemporaryFolder folder;
        folder.Write("damaged", "[fList\ngeometry=@Variant(\xFF\xFF\n=[]%%\n=\x80\n[selected]\n=@@(");
        folder.MakeFolder("folder");
        const RememberedWindows windows(FromUtf8(folder.PathOf(ToUtf8(file))));
        {
            ListWindow window(windows);
            window.Open();
            QCOMPARE(window.size(), ListWindow::usualSize);
            window.close();
        }
        windows.SetSelectedRow(FromUtf8(folder.Path()), QStringLiteral("K1"));
        ListWindow window(windows);
        window.Open();
        QCOMPARE(window.size(), ListWindow::usualSize);
    }

    void defaultFile_isOutsideTheDataFolder()
    {
        const QString file = RememberedWindows::DefaultFile();
        QVERIFY(file.endsWith(QLatin1String("/tarno-state/windows.ini")));
        QVERIFY(QDir::isAbsolutePath(file));
    }
};

TEST_CLASS(tst_RememberedWindows)
#include "tst_RememberedWindows.moc"
