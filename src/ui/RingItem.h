#pragma once

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QQuickPaintedItem>

namespace kelvo {

/// A share of a whole as a ring that fills clockwise from the top.
class RingItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(Ring)

    Q_PROPERTY(double value MEMBER value_ WRITE setValue NOTIFY changed)
    Q_PROPERTY(double thickness MEMBER thickness_ NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY changed)
    Q_PROPERTY(QColor trackColor MEMBER trackColor_ NOTIFY changed)

public:
    explicit RingItem(QQuickItem* parent = nullptr);

    /// Drawn as the nearest of 0 to 1; one that is not a number as 0.
    void setValue(double value);
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    double value_ = 0;
    double thickness_ = 8;
    QColor color_ = Qt::black;
    QColor trackColor_ = Qt::lightGray;
};

} // namespace kelvo
