#include "support/TestClass.h"
#include "ui/common/KeyFilter.h"

#include <QClipboard>
#include <QLineEdit>

using namespace Tarno;

namespace
{

/// A visible box that accepts digits and ":".
class Filtered : public QLineEdit
{
public:
    Filtered()
    {
        new KeyFilter(this, QStringLiteral(":"));
        show();
        setFocus();
    }

    QString Typed(const char* text)
    {
        QTest::keyClicks(this, QLatin1String(text));
        return this->text();
    }

    QString Pasted(const char* text)
    {
        QApplication::clipboard()->setText(QString::fromUtf8(text));
        paste();
        return this->text();
    }
};

} // namespace

class tst_KeyFilter : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void setText_showsTheBeginningUnlessTheUserIsInTheBox()
    {
        QLineEdit box;
        const QString text = QStringLiteral("a text that is much longer than the box");
        KeyFilter::SetText(&box, text);
        QCOMPARE(box.cursorPosition(), 0);
        Filtered focused;
        KeyFilter::SetText(&focused, text);
        QCOMPARE(focused.cursorPosition(), text.size());
    }

    void typed_onlyAcceptedCharactersAppear()
    {
        Filtered box;
        QCOMPARE(box.Typed("a1 2-:x3."), QStringLiteral("12:3"));
    }

    void typed_inTheMiddle_movesTheCursorAfterIt()
    {
        Filtered box;
        box.Typed("1:2");
        box.setCursorPosition(1);
        QCOMPARE(box.Typed("x9y"), QStringLiteral("19:2"));
        QCOMPARE(box.cursorPosition(), 2);
    }

    void typed_overASelection_replacesIt()
    {
        Filtered box;
        box.Typed("12:34");
        box.setSelection(0, 2);
        QCOMPARE(box.Typed("5"), QStringLiteral("5:34"));
    }

    void typed_refusedOverASelection_keepsIt()
    {
        Filtered box;
        box.Typed("12:34");
        box.setSelection(0, 2);
        QCOMPARE(box.Typed("x"), QStringLiteral("12:34"));
    }

    void pasted_keepsAcceptedCharacters()
    {
        Filtered box;
        QCOMPARE(box.Pasted("at 06:45 pm"), QStringLiteral("06:45"));
        box.clear();
        QCOMPARE(box.Pasted("noon"), QString());
    }

    void pasted_inTheMiddle_keepsTheRest()
    {
        Filtered box;
        box.Typed("1:2");
        box.setCursorPosition(1);
        QCOMPARE(box.Pasted("x0y0z"), QStringLiteral("100:2"));
        QCOMPARE(box.cursorPosition(), 3);
    }

    void pasted_digitsEqualToTheirNeighbours_areKept()
    {
        Filtered box;
        box.Typed("11");
        box.setCursorPosition(1);
        QCOMPARE(box.Pasted("1a1"), QStringLiteral("1111"));
    }

    void setText_isNotFiltered()
    {
        Filtered box;
        KeyFilter::SetText(&box, QStringLiteral("never"));
        QCOMPARE(box.text(), QStringLiteral("never"));
        QVERIFY(box.hasAcceptableInput());
        QVERIFY(box.validator() != nullptr);
    }

    void setText_canBeEditedAfterwards()
    {
        Filtered box;
        KeyFilter::SetText(&box, QStringLiteral("never"));
        QTest::keyClick(&box, Qt::Key_Backspace);
        QCOMPARE(box.text(), QStringLiteral("neve"));
        QCOMPARE(box.Typed("r1"), QStringLiteral("neve1"));
        box.selectAll();
        QCOMPARE(box.Typed("6"), QStringLiteral("6"));
    }

    void setText_withoutFilter_setsTheText()
    {
        QLineEdit box;
        KeyFilter::SetText(&box, QStringLiteral("anything"));
        QCOMPARE(box.text(), QStringLiteral("anything"));
        QVERIFY(box.validator() == nullptr);
    }
};

TEST_CLASS(tst_KeyFilter)
#include "tst_KeyFilter.moc"
