#include "ui/TraceItem.h"

#include "base/Text.h"
#include "ui/Curve.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <algorithm>
#include <cmath>

namespace kelvo {
namespace {

/// Ten seconds of running.
constexpr std::size_t samplesKept = 600;

/// What nobody sees on a screen, in pixels.
constexpr double tolerance = 0.1;

} // namespace

TraceItem::TraceItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &TraceItem::changed, this, [this] { update(); });
}

void TraceItem::setEngine(EngineView* view) {
    if (view == view_) return;
    view_ = view;
    connect(view, &EngineView::stateLineChanged, this, &TraceItem::sample);
    sample();
    Q_EMIT changed();
}

void TraceItem::sample() {
    const EngineVM& engine = view_->engine();
    const Integrator* integrator = engine.sim();
    if (integrator == nullptr) return;
    // A model that was installed anew begins at time 0.
    if (!samples_.empty() && integrator->t() <= samples_.back().t) samples_.clear();
    const double rate = integrator->t() > 0 ? *engine.rate : 0;
    samples_.push_back({integrator->t(), rate, integrator->state()});
    if (samples_.size() > samplesKept) samples_.pop_front();
    update();
}

void TraceItem::paint(QPainter* painter) {
    if (view_ == nullptr || samples_.empty()) return;
    const double label = textSize_ * 1.6;
    const double each = (height() - 2 * label - textSize_ * 0.5) / 2;
    if (each <= 4 || width() <= 4) return;
    const QRectF upper(0, label, width(), each);
    const QRectF lower(0, height() - each, width(), each);
    QFont font = painter->font();
    font.setPixelSize(static_cast<int>(textSize_));
    painter->setFont(font);
    paintRate(*painter, upper);
    paintStates(*painter, lower);
}

double TraceItem::across(double t, const QRectF& plot) const {
    const double span = std::max(view_->engine().dt() * static_cast<double>(samplesKept) / 4,
                                 samples_.back().t - samples_.front().t);
    return plot.left() + plot.width() * (t - samples_.front().t) / span;
}

void TraceItem::paintFrame(QPainter& painter, const QRectF& plot, const QString& label) const {
    painter.setPen(quiet_);
    painter.drawText(
        QRectF(plot.left(), plot.top() - textSize_ * 1.6, plot.width(), textSize_ * 1.4),
        Qt::AlignLeft | Qt::AlignVCenter, label);
    painter.setPen(QPen(line_, 1));
    painter.drawLine(plot.bottomLeft(), plot.bottomRight());
}

void TraceItem::paintRate(QPainter& painter, const QRectF& plot) const {
    const double limit = view_->rateThreshold();
    double top = limit * 1.35;
    for (const Sample& each : samples_) {
        if (std::isfinite(each.rate)) top = std::max(top, each.rate * 1.1);
    }
    const auto up = [&](double rate) {
        return plot.bottom() - plot.height() * (std::isfinite(rate) ? rate : 0.0) / top;
    };
    paintFrame(painter, plot,
               QStringLiteral("dissipation rate %1")
                   .arg(QString::fromStdString(fixed(samples_.back().rate, 3))));
    painter.setPen(limit_);
    painter.drawText(
        QRectF(plot.left(), plot.top() - textSize_ * 1.6, plot.width(), textSize_ * 1.4),
        Qt::AlignRight | Qt::AlignVCenter,
        QStringLiteral("limit %1").arg(QString::fromStdString(fixed(limit, 2))));
    painter.setPen(QPen(limit_, 1, Qt::DashLine));
    painter.drawLine(QPointF(plot.left(), up(limit)), QPointF(plot.right(), up(limit)));

    QPolygonF curve;
    for (const Sample& each : samples_)
        curve.append({across(each.t, plot), up(each.rate)});
    curve = simplified(curve, tolerance);
    QPainterPath area;
    area.addPolygon(curve);
    area.lineTo(curve.last().x(), plot.bottom());
    area.lineTo(curve.first().x(), plot.bottom());
    QColor fill = rate_;
    fill.setAlphaF(0.14F);
    painter.fillPath(area, fill);
    painter.setPen(QPen(rate_, textSize_ / 6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(curve);
}

QColor TraceItem::stateColour(std::size_t variable) const {
    if (states_.isEmpty()) return quiet_;
    return states_[static_cast<qsizetype>(variable) % states_.size()];
}

void TraceItem::paintStates(QPainter& painter, const QRectF& plot) const {
    const std::vector<StateVar>& variables = view_->engine().space()->states();
    const std::size_t count = std::min(variables.size(), samples_.back().states.size());
    double low = 0;
    double high = 1e-9;
    for (const Sample& each : samples_) {
        for (const double value : each.states) {
            if (!std::isfinite(value)) continue;
            low = std::min(low, value);
            high = std::max(high, value);
        }
    }
    const auto up = [&](double value) {
        const double share = ((std::isfinite(value) ? value : 0.0) - low) / (high - low);
        return plot.bottom() - plot.height() * share;
    };
    constexpr std::size_t namedOneByOne = 4;
    paintFrame(painter, plot,
               count <= namedOneByOne ? QStringLiteral("states")
                                      : QStringLiteral("%1 states").arg(count));
    double nameAt =
        plot.left() + painter.fontMetrics().horizontalAdvance(QStringLiteral("states  "));
    if (low < 0) {
        painter.setPen(QPen(line_, 1, Qt::DashLine));
        painter.drawLine(QPointF(plot.left(), up(0)), QPointF(plot.right(), up(0)));
    }
    for (std::size_t i = 0; i < count; ++i) {
        QPolygonF curve;
        for (const Sample& each : samples_) {
            const double value = i < each.states.size() ? each.states[i] : 0;
            curve.append({across(each.t, plot), up(value)});
        }
        const QColor colour = stateColour(i);
        if (count <= namedOneByOne) {
            const QString name = QString::fromStdString(variables[i].nodeID) +
                                 (variables[i].kind == StateKind::charge ? QStringLiteral("·q  ")
                                                                         : QStringLiteral("·p  "));
            painter.setPen(colour);
            painter.drawText(QPointF(nameAt, plot.top() - textSize_ * 0.55), name);
            nameAt += painter.fontMetrics().horizontalAdvance(name);
        }
        painter.setPen(QPen(colour, textSize_ / 8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(simplified(curve, tolerance));
    }
}

} // namespace kelvo
