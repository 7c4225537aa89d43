#include "support/TestClass.h"
#include "support/Windows.h"
#include "ui/common/ChoiceBox.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QToolTip>

using namespace Tarno;

namespace
{

const QString place = QStringLiteral("Pier");
const QString longPlace = QStringLiteral("The second sandbank behind the old lighthouse, at low tide only");

/// A narrow box in a window.
class Choices : public QWidget
{
public:
    Choices()
    {
        m_box.addItems({place, longPlace});
        m_box.setFixedWidth(120);
        show();
        AwaitActive(*this);
    }

    /// Points at the box for a while and returns the tool tip.
    QString ToolTip()
    {
        QToolTip::hideText();
        const QPoint position = m_box.rect().center();
        QHelpEvent help(QEvent::ToolTip, position, m_box.mapToGlobal(position));
        QApplication::sendEvent(&m_box, &help);
        return help.isAccepted() ? QToolTip::text() : QString();
    }

    ChoiceBox m_box{this};
};

} // namespace

class tst_ChoiceBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void longTexts_doNotWidenTheBox()
    {
        ChoiceBox box;
        const int before = box.sizeHint().width();
        box.addItem(longPlace.repeated(4));
        QCOMPARE(box.sizeHint().width(), before);
        QCOMPARE(box.minimumSizeHint().width(), before);
    }

    void longText_hasAToolTip()
    {
        Choices window;
        QCOMPARE(window.ToolTip(), QString());
        window.m_box.setCurrentIndex(1);
        QCOMPARE(window.ToolTip(), longPlace);
        QCOMPARE(window.m_box.currentText(), longPlace);
    }

    void longText_endsWithAnEllipsis()
    {
        Choices window;
        window.m_box.setCurrentIndex(1);
        const QImage shown = window.m_box.grab().toImage();
        bool isElided = false;
        for (qsizetype length = 1; length < longPlace.size() && !isElided; ++length) {
            window.m_box.setItemText(1, longPlace.left(length) + QChar(0x2026));
            isElided = window.m_box.grab().toImage() == shown;
        }
        QVERIFY(isElided);
    }

    void longItem_hasAToolTip()
    {
        Choices window;
        window.m_box.showPopup();
        QCOMPARE(window.m_box.itemData(0, Qt::ToolTipRole), QVariant());
        QCOMPARE(window.m_box.itemData(1, Qt::ToolTipRole).toString(), longPlace);
        QCOMPARE(window.m_box.view()->textElideMode(), Qt::ElideRight);
        window.m_box.hidePopup();
    }
};

TEST_CLASS(tst_ChoiceBox)
#include "tst_ChoiceBox.moc"
