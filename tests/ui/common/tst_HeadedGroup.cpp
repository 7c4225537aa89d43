#include "support/TestClass.h"
#include "ui/common/HeadedGroup.h"

#include <QLabel>
#include <QVBoxLayout>

using namespace Tarno;

namespace
{

QFont Bold(QFont font)
{
    font.setBold(true);
    return font;
}

/// Returns the columns of `group` that its heading paints, counted from the left.
int HeadingWidth(QWidget& group)
{
    const QImage shown = group.grab().toImage();
    const QColor background = shown.pixelColor(shown.width() - 1, shown.height() - 1);
    int last = 0;
    for (int x = 0; x < shown.width(); ++x) {
        for (int y = 0; y < shown.height() / 2; ++y) {
            last = shown.pixelColor(x, y) != background ? x : last;
        }
    }
    return static_cast<int>(last / shown.devicePixelRatio());
}

} // namespace

class tst_HeadedGroup : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void heading_isBoldAndFits()
    {
        HeadedGroup group(QStringLiteral("Species You Encountered/Caught:"));
        const int bold = QFontMetrics(Bold(group.font())).horizontalAdvance(group.title());
        QVERIFY(group.minimumSizeHint().width() >= bold);
        group.resize(400, 100);
        QVERIFY(HeadingWidth(group) > group.fontMetrics().horizontalAdvance(group.title()));
    }

    void controls_areNotBold()
    {
        HeadedGroup group(QStringLiteral("Tide Times:"));
        auto* label = new QLabel(&group);
        QVERIFY(!label->font().bold());
    }

    void group_hasNoFrame()
    {
        HeadedGroup group;
        group.resize(200, 100);
        QCOMPARE(HeadingWidth(group), 0);
    }

    void headingWithinAnotherGroup_isNotBold()
    {
        HeadedGroup outer;
        HeadedGroup inner(QStringLiteral("Started, and much more than that:"), &outer);
        inner.resize(400, 100);
        QVERIFY(HeadingWidth(inner) <= inner.fontMetrics().horizontalAdvance(inner.title()));
    }
};

TEST_CLASS(tst_HeadedGroup)
#include "tst_HeadedGroup.moc"
