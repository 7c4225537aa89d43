#include "support/TestClass.h"
#include "support/Windows.h"
#include "ui/common/ClickLabel.h"

#include <QSignalSpy>

using namespace Tarno;

namespace
{

/// A window with a label.
class Labels : public QWidget
{
public:
    Labels()
    {
        resize(200, 100);
        m_label.setText(QStringLiteral("+"));
        m_label.setGeometry(50, 30, 24, 24);
        show();
        AwaitActive(*this);
    }

    QImage Look() { return m_label.grab().toImage(); }

    QPoint Centre() const { return m_label.geometry().center(); }

    ClickLabel m_label{this};
};

} // namespace

class tst_ClickLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void press_clicksAndLooksPressedUntilRelease()
    {
        Labels window;
        QTest::mouseMove(window.windowHandle(), QPoint(1, 1));
        const QImage atRest = window.Look();
        const QSignalSpy clicks(&window.m_label, &ClickLabel::Clicked);
        QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, window.Centre());
        QCOMPARE(clicks.count(), 1);
        const QImage pressed = window.Look();
        QVERIFY(pressed != atRest);
        QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, window.Centre());
        QVERIFY(window.Look() != pressed);
        QCOMPARE(clicks.count(), 1);
    }

    void mouse_overTheLabel_highlightsIt()
    {
        Labels window;
        QTest::mouseMove(window.windowHandle(), QPoint(1, 1));
        const QImage atRest = window.Look();
        QTest::mouseMove(window.windowHandle(), window.Centre());
        Await([&] { return window.m_label.underMouse(); }, "the mouse is not over the label");
        QVERIFY(window.Look() != atRest);
    }

    void otherButton_doesNotClick()
    {
        Labels window;
        const QSignalSpy clicks(&window.m_label, &ClickLabel::Clicked);
        Click(window.m_label, Qt::RightButton);
        QCOMPARE(clicks.count(), 0);
    }
};

TEST_CLASS(tst_ClickLabel)
#include "tst_ClickLabel.moc"
