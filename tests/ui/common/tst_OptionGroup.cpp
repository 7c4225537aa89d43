#include "support/TestClass.h"
#include "support/Windows.h"
#include "ui/common/OptionGroup.h"

#include <QRadioButton>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Tarno;

namespace
{

/// A window with the groups "optWind" (three buttons) and "optWeather" (two buttons).
class Options : public QWidget
{
public:
    Options()
    {
        auto* column = new QVBoxLayout(this);
        for (const char* name : {"optWind_0", "optWind_1", "optWind_2", "optWeather_0", "optWeather_1"}) {
            auto* button = new QRadioButton(QLatin1String(name), this);
            button->setObjectName(QLatin1String(name));
            column->addWidget(button);
        }
        show();
    }

    QRadioButton& Button(const char* name) { return *findChild<QRadioButton*>(QLatin1String(name)); }
};

const QString wind = QStringLiteral("optWind");
const QString weather = QStringLiteral("optWeather");

} // namespace

class tst_OptionGroup : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void buttons_areFoundByTheirNames()
    {
        Options window;
        QCOMPARE(OptionGroup(&window, wind).Count(), 3);
        QCOMPARE(OptionGroup(&window, weather).Count(), 2);
        QCOMPARE(OptionGroup(&window, QStringLiteral("optTide")).Count(), 0);
    }

    void buttons_ofAnotherGroup_areNotChanged()
    {
        Options window;
        OptionGroup winds(&window, wind);
        OptionGroup weathers(&window, weather);
        winds.Choose(2);
        weathers.Choose(0);
        QCOMPARE(winds.Chosen(), std::optional(2));
        QCOMPARE(weathers.Chosen(), std::optional(0));
        winds.Choose(std::nullopt);
        QCOMPARE(weathers.Chosen(), std::optional(0));
    }

    void choose_unchecksTheOthers()
    {
        Options window;
        OptionGroup group(&window, wind);
        QCOMPARE(group.Chosen(), std::optional<int>());
        for (const int index : {0, 2, 1}) {
            group.Choose(index);
            QCOMPARE(group.Chosen(), std::optional(index));
            QCOMPARE(window.Button("optWind_0").isChecked() + window.Button("optWind_1").isChecked() +
                         window.Button("optWind_2").isChecked(),
                     1);
        }
    }

    void choose_none_unchecksTheChosenButton()
    {
        Options window;
        OptionGroup group(&window, wind);
        group.Choose(std::nullopt);
        QCOMPARE(group.Chosen(), std::optional<int>());
        group.Choose(1);
        group.Choose(std::nullopt);
        QCOMPARE(group.Chosen(), std::optional<int>());
        QVERIFY(!window.Button("optWind_1").isChecked());
        group.Choose(2); // the group is exclusive again
        group.Choose(0);
        QVERIFY(!window.Button("optWind_2").isChecked());
    }

    void choose_unknownIndex_choosesNone_data()
    {
        QTest::addColumn<int>("index");
        QTest::newRow("after the last") << 3;
        QTest::newRow("negative") << -1;
        QTest::newRow("automatic id of QButtonGroup") << -2;
        QTest::newRow("far out of range") << 32767;
    }

    void choose_unknownIndex_choosesNone()
    {
        QFETCH(int, index);
        Options window;
        OptionGroup group(&window, wind);
        group.Choose(1);
        group.Choose(index);
        QCOMPARE(group.Chosen(), std::optional<int>());
    }

    void choose_emitsNoClick()
    {
        Options window;
        OptionGroup group(&window, wind);
        const QSignalSpy clicks(&group, &OptionGroup::Clicked);
        group.Choose(1);
        group.Choose(std::nullopt);
        QCOMPARE(clicks.size(), 0);
    }

    void click_emitsTheIndex()
    {
        Options window;
        OptionGroup group(&window, wind);
        const QSignalSpy clicks(&group, &OptionGroup::Clicked);
        window.Button("optWind_2").click();
        window.Button("optWind_2").click(); // already chosen
        window.Button("optWeather_0").click();
        QCOMPARE(clicks.size(), 2);
        QCOMPARE(clicks.at(0).at(0).toInt(), 2);
        QCOMPARE(group.Chosen(), std::optional(2));
    }

    void click_afterNone_emitsTheFirst()
    {
        Options window;
        OptionGroup group(&window, wind);
        group.Choose(0);
        group.Choose(std::nullopt);
        const QSignalSpy clicks(&group, &OptionGroup::Clicked);
        window.Button("optWind_0").click();
        QCOMPARE(clicks.size(), 1);
        QCOMPARE(group.Chosen(), std::optional(0));
    }

    void arrowKey_emitsTheIndex()
    {
        Options window;
        AwaitActive(window);
        OptionGroup group(&window, wind);
        group.Choose(0);
        const QSignalSpy clicks(&group, &OptionGroup::Clicked);
        window.Button("optWind_0").setFocus();
        QTest::keyClick(&window.Button("optWind_0"), Qt::Key_Down);
        QCOMPARE(clicks.size(), 1);
        QCOMPARE(group.Chosen(), std::optional(1));
    }

    void tab_entersAtTheChosenButton()
    {
        Options window;
        AwaitActive(window);
        OptionGroup winds(&window, wind);
        const OptionGroup weathers(&window, weather);
        winds.Choose(0);
        winds.Choose(2);
        window.Button("optWeather_1").setFocus();
        Press(window, Qt::Key_Tab);
        QCOMPARE(window.focusWidget(), &window.Button("optWind_2"));
        // focus alone does not move the tab stop
        window.Button("optWind_0").setFocus();
        Press(window, Qt::Key_Tab);
        QCOMPARE(window.focusWidget(), &window.Button("optWeather_0"));
        Press(window, Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(window.focusWidget(), &window.Button("optWind_2"));
        // without a choice, the first button is the tab stop
        window.Button("optWeather_0").setFocus();
        winds.Choose(std::nullopt);
        Press(window, Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(window.focusWidget(), &window.Button("optWind_0"));
    }

    void letter_choosesTheNextOptionThatStartsWithIt()
    {
        Options window;
        AwaitActive(window);
        const char* captions[] = {"Run &Out", "Bottom", "&Run In"};
        for (int index = 0; index < 3; ++index) {
            window.Button(("optWind_" + std::to_string(index)).c_str())
                .setText(QLatin1String(captions[index]));
        }
        OptionGroup group(&window, wind);
        const QSignalSpy clicks(&group, &OptionGroup::Clicked);
        window.Button("optWind_0").setFocus();
        for (const int expected : {2, 0, 2}) {
            Type(window, "r");
            QCOMPARE(group.Chosen(), std::optional(expected));
            QCOMPARE(window.focusWidget(), &window.Button(("optWind_" + std::to_string(expected)).c_str()));
        }
        Type(window, "B");
        QCOMPARE(group.Chosen(), std::optional(1));
        Type(window, "x");
        Press(window, Qt::Key_R, Qt::ControlModifier);
        QCOMPARE(group.Chosen(), std::optional(1));
        QCOMPARE(clicks.size(), 4);
    }
};

TEST_CLASS(tst_OptionGroup)
#include "tst_OptionGroup.moc"
