#pragma once

#include "ui/EngineView.h"

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QList>
#include <QQuickPaintedItem>
#include <deque>
#include <vector>

namespace kelvo {

/// The latest stretch of the run over totem-time: the dissipation rate with its limit, and under it
/// the state variables on one common scale.
class TraceItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(TracePicture)

    Q_PROPERTY(kelvo::EngineView* engine MEMBER view_ WRITE setEngine NOTIFY changed)
    Q_PROPERTY(QColor inkColor MEMBER ink_ NOTIFY changed)
    Q_PROPERTY(QColor quietColor MEMBER quiet_ NOTIFY changed)
    Q_PROPERTY(QColor lineColor MEMBER line_ NOTIFY changed)
    Q_PROPERTY(QColor rateColor MEMBER rate_ NOTIFY changed)
    Q_PROPERTY(QColor limitColor MEMBER limit_ NOTIFY changed)
    /// One for each state variable, and again from the first where there are more.
    Q_PROPERTY(QList<QColor> stateColors MEMBER states_ NOTIFY changed)
    Q_PROPERTY(double textSize MEMBER textSize_ NOTIFY changed)

public:
    explicit TraceItem(QQuickItem* parent = nullptr);

    void setEngine(EngineView* view);
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    struct Sample {
        double t = 0;
        double rate = 0;
        std::vector<double> states;
    };

    void sample();
    /// The x of a sample's time within a plot.
    double across(double t, const QRectF& plot) const;
    void paintFrame(QPainter& painter, const QRectF& plot, const QString& label) const;
    void paintRate(QPainter& painter, const QRectF& plot) const;
    QColor stateColour(std::size_t variable) const;
    void paintStates(QPainter& painter, const QRectF& plot) const;

    EngineView* view_ = nullptr;
    std::deque<Sample> samples_;
    QColor ink_ = Qt::black;
    QColor quiet_ = Qt::gray;
    QColor line_ = Qt::lightGray;
    QColor rate_ = Qt::blue;
    QColor limit_ = Qt::darkYellow;
    QList<QColor> states_;
    double textSize_ = 11;
};

} // namespace kelvo
