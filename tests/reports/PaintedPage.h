#pragma once

#include "reports/engine/PaintPage.h"

#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QStringList>
#include <QtTest/QTest>

#include <algorithm>
#include <functional>
#include <vector>

namespace Tarno
{

struct PaintedText {
    QString text;
    QPointF baseline; ///< left end of the baseline, in twips from the page's upper left corner
    qreal width = 0;
    QString family;
    bool bold = false;
    QRectF clip; ///< empty if the text is not clipped
};

/// A paint device that records the texts, lines and pictures of a page with their positions in twips.
class PaintedPage : public QPaintDevice
{
public:
    PaintedPage(const Document& document, std::size_t page)
        : PaintedPage([&](QPainter& painter) { PaintPage(painter, document, page); })
    {
    }

    /// Records what `paint` paints.
    explicit PaintedPage(const std::function<void(QPainter&)>& paint) : m_engine(*this)
    {
        QPainter painter(this);
        paint(painter);
    }

    QStringList Texts() const
    {
        QStringList all;
        for (const PaintedText& text : texts) {
            all << text.text;
        }
        return all;
    }

    /// Returns the text equal to `words`; aborts the test if it was not painted.
    const PaintedText& Text(const QString& words) const
    {
        const auto found = std::find_if(texts.begin(), texts.end(),
                                        [&](const PaintedText& text) { return text.text == words; });
        if (found == texts.end()) {
            qFatal("not painted: %s, but %s", qPrintable(words), qPrintable(Texts().join(QLatin1Char(0x7c))));
        }
        return *found;
    }

    std::vector<PaintedText> texts;
    std::vector<QLineF> rules;
    std::vector<QRectF> pictures;

    QPaintEngine* paintEngine() const override { return &m_engine; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
        case PdmHeight:
            return 30000;
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 1440;
        case PdmDepth:
            return 32;
        case PdmDevicePixelRatio:
            return 1;
        default:
            return QPaintDevice::metric(metric);
        }
    }

private:
    class Engine final : public QPaintEngine
    {
    public:
        explicit Engine(PaintedPage& page) : QPaintEngine(AllFeatures), m_page(page) {}

        bool begin(QPaintDevice* /*device*/) override { return true; }

        bool end() override { return true; }

        Type type() const override { return User; }

        void updateState(const QPaintEngineState& state) override
        {
            if (state.state().testFlag(DirtyTransform)) {
                m_transform = state.transform();
            }
            if (state.state().testFlag(DirtyClipRegion)) {
                m_clip = state.clipOperation() == Qt::NoClip ? QRectF()
                                                             : QRectF(state.clipRegion().boundingRect());
            }
            if (state.state().testFlag(DirtyClipPath)) {
                m_clip = state.clipOperation() == Qt::NoClip ? QRectF() : state.clipPath().boundingRect();
            }
        }

        void drawTextItem(const QPointF& position, const QTextItem& item) override
        {
            m_page.texts.push_back({item.text(), m_transform.map(position), item.width(),
                                    item.font().family(), item.font().bold(), m_transform.mapRect(m_clip)});
        }

        void drawLines(const QLineF* lines, int count) override
        {
            for (int line = 0; line < count; ++line) {
                m_page.rules.push_back(m_transform.map(lines[line]));
            }
        }

        void drawImage(const QRectF& place, const QImage& /*picture*/, const QRectF& /*part*/,
                       Qt::ImageConversionFlags /*flags*/) override
        {
            m_page.pictures.push_back(m_transform.mapRect(place));
        }

        void drawPixmap(const QRectF& place, const QPixmap& /*picture*/, const QRectF& /*part*/) override
        {
            m_page.pictures.push_back(m_transform.mapRect(place));
        }

        void drawPolygon(const QPointF* /*points*/, int /*count*/, PolygonDrawMode /*mode*/) override {}

    private:
        PaintedPage& m_page;
        QTransform m_transform;
        QRectF m_clip;
    };

    mutable Engine m_engine;
};

} // namespace Tarno
