#include "ui/RingItem.h"

#include <QPainter>
#include <QPen>
#include <algorithm>
#include <cmath>

namespace kelvo {

RingItem::RingItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &RingItem::changed, this, [this] { update(); });
}

void RingItem::setValue(double value) {
    if (value == value_) return;
    value_ = value;
    Q_EMIT changed();
}

void RingItem::paint(QPainter* painter) {
    constexpr int fullTurn = 360 * 16; // the painter counts in sixteenths of a degree
    const double side = std::min(width(), height()) - thickness_;
    const QRectF box((width() - side) / 2, (height() - side) / 2, side, side);
    const double share = std::isfinite(value_) ? std::clamp(value_, 0.0, 1.0) : 0.0;
    painter->setPen(QPen(trackColor_, thickness_));
    painter->drawEllipse(box);
    if (share <= 0) return;
    painter->setPen(QPen(color_, thickness_, Qt::SolidLine, Qt::RoundCap));
    painter->drawArc(box, fullTurn / 4, -static_cast<int>(std::lround(share * fullTurn)));
}

} // namespace kelvo
