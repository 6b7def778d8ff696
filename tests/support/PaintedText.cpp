#include "support/PaintedText.h"

#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace {

/// Paints nothing and notes the texts with their places.
class TListeningEngine : public QPaintEngine {
public:
    TListeningEngine() : QPaintEngine(AllFeatures) {}
    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState &) override {}
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override {}
    void drawPath(const QPainterPath &) override {}
    void drawPolygon(const QPointF *, int, PolygonDrawMode) override {}
    void drawTextItem(const QPointF &at, const QTextItem &item) override
    {
        pieces.append({state->transform().map(at).x(), item.text()});
    }
    Type type() const override { return User; }

    QList<std::pair<qreal, QString>> pieces;
};

class TListener : public QPaintDevice {
public:
    explicit TListener(QSize size) : m_size(size) {}
    QPaintEngine *paintEngine() const override { return &engine; }
    mutable TListeningEngine engine;

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
            return m_size.width();
        case PdmHeight:
            return m_size.height();
        case PdmDepth:
            return 32;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return int(devicePixelRatioFScale());
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        default:
            return 0;
        }
    }

private:
    QSize m_size;
};

} // namespace

QString paintedText(QWidget *widget)
{
    TListener listener(widget->size());
    widget->render(&listener, {}, {}, QWidget::DrawWindowBackground);
    auto &pieces = listener.engine.pieces;
    std::stable_sort(pieces.begin(), pieces.end(),
                     [](const auto &left, const auto &right) { return left.first > right.first; });
    QString text;
    for (const auto &piece : std::as_const(pieces))
        text += piece.second;
    return text;
}
