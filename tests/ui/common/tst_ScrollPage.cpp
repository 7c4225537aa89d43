#include "support/TestClass.h"
#include "support/Windows.h"
#include "ui/common/ScreenFit.h"
#include "ui/common/ScrollPage.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>
#include <QVBoxLayout>
#include <QWheelEvent>

using namespace Tarno;

namespace
{

/// A window with a scroll page, which contains boxes, a combo box and a slider, above a button.
class Pages : public QDialog
{
public:
    Pages()
    {
        auto* content = new QWidget;
        auto* boxes = new QVBoxLayout(content);
        m_choice->addItems({QStringLiteral("Top"), QStringLiteral("Run Out"), QStringLiteral("Bottom")});
        boxes->addWidget(m_choice);
        boxes->addWidget(m_slider);
        constexpr int count = 20;
        for (int index = 0; index < count; ++index) {
            boxes->addWidget(new QLineEdit);
        }
        boxes->addWidget(m_last);
        m_page->setWidget(content);
        auto* column = new QVBoxLayout(this);
        column->addWidget(m_page);
        column->addWidget(m_button);
    }

    void Open()
    {
        show();
        AwaitActive(*this);
        QCoreApplication::processEvents();
    }

    /// Turns the wheel over `widget`. Like Qt for a real wheel, passes an ignored event to the parents.
    static void Wheel(QWidget& widget)
    {
        QWidget* receiver = &widget;
        bool isAccepted = false;
        while (!isAccepted && !receiver->isWindow()) {
            const QPointF position(receiver->rect().center());
            QWheelEvent turn(position, receiver->mapToGlobal(position), {}, QPoint(0, -120), Qt::NoButton, {},
                             Qt::NoScrollPhase, false);
            isAccepted = QApplication::sendEvent(receiver, &turn) && turn.isAccepted();
            receiver = receiver->parentWidget();
        }
    }

    ScrollPage* m_page = new ScrollPage;
    QComboBox* m_choice = new QComboBox;
    QSlider* m_slider = new QSlider(Qt::Horizontal);
    QLineEdit* m_last = new QLineEdit;
    QPushButton* m_button = new QPushButton(QStringLiteral("Close"));
};

constexpr QSize large(1920, 1080);
constexpr QSize small(640, 400);

} // namespace

class tst_ScrollPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void page_thatFits_isAsLargeAsItsWidget()
    {
        const ScreenFit fit(large);
        Pages window;
        window.Open();
        QCOMPARE(window.m_page->size(), window.m_page->widget()->size());
        QVERIFY(!window.m_page->verticalScrollBar()->isVisible());
        QVERIFY(window.minimumSize().height() >= window.m_page->widget()->minimumSizeHint().height());
    }

    void window_largerThanTheScreen_scrolls()
    {
        const ScreenFit fit(small);
        Pages window;
        window.Open();
        QVERIFY(window.height() <= fit.Room(window).height());
        QVERIFY(window.m_page->verticalScrollBar()->isVisible());
        QVERIFY(!window.m_page->horizontalScrollBar()->isVisible());
        QVERIFY(window.rect().contains(window.m_button->geometry()));
        QCOMPARE(window.m_button->height(), window.m_button->sizeHint().height());
    }

    void window_thatGrowsBeyondTheScreen_scrolls()
    {
        const ScreenFit fit(large);
        Pages window;
        window.Open();
        window.m_last->setMinimumHeight(large.height());
        Await([&] { return window.m_page->verticalScrollBar()->isVisible(); }, "the page does not scroll");
        QVERIFY(window.height() <= fit.Room(window).height());
    }

    void window_withItsOwnSize_keepsItIfItFits()
    {
        const ScreenFit fit(large);
        Pages window;
        constexpr QSize wanted(1000, 900);
        window.resize(wanted);
        window.Open();
        QCOMPARE(window.size(), wanted);
    }

    void focus_scrollsIntoView()
    {
        const ScreenFit fit(small);
        Pages window;
        window.Open();
        QVERIFY(window.m_last->visibleRegion().isEmpty());
        window.m_last->setFocus();
        QCOMPARE(window.m_last->visibleRegion().boundingRect(), window.m_last->rect());
    }

    void wheel_overAValue_scrollsThePage()
    {
        const ScreenFit fit(small);
        Pages window;
        window.Open();
        window.m_choice->setFocus();
        for (QWidget* control :
             {static_cast<QWidget*>(window.m_choice), static_cast<QWidget*>(window.m_slider)}) {
            const int before = window.m_page->verticalScrollBar()->value();
            Pages::Wheel(*control);
            QVERIFY(window.m_page->verticalScrollBar()->value() > before);
        }
        QCOMPARE(window.m_choice->currentIndex(), 0);
        QCOMPARE(window.m_slider->value(), 0);
    }

    void wheel_onAPageThatFits_changesTheValue()
    {
        const ScreenFit fit(large);
        Pages window;
        window.Open();
        window.m_choice->setFocus();
        Pages::Wheel(*window.m_choice);
        QCOMPARE(window.m_choice->currentIndex(), 1);
    }
};

TEST_CLASS(tst_ScrollPage)
#include "tst_ScrollPage.moc"
