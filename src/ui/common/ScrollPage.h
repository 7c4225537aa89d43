#pragma once

#include <QScrollArea>

namespace Tarno
{

/// A frameless container that is as large as its widget needs, and scrolls if the window has less room. A
/// control that gets the focus is scrolled into view. While the page scrolls, the wheel scrolls it and does
/// not change the values of combo boxes, sliders and spin boxes.
class ScrollPage : public QScrollArea
{
    Q_OBJECT

public:
    explicit ScrollPage(QWidget* parent = nullptr);
    ScrollPage(const ScrollPage&) = delete;
    ScrollPage& operator=(const ScrollPage&) = delete;
    ~ScrollPage() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void AdoptWidget();
    void FitWidget();
    void ShowFocus(QWidget* focus);
};

} // namespace Tarno
