#include "ui/BondGraphItem.h"

#include <QFont>
#include <QFontMetricsF>
#include <QHoverEvent>
#include <QLineF>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <string_view>

namespace kelvo {
namespace {

/// Radius of a node where there is room enough, in the layout's points.
constexpr double layoutRadius = 18;

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString symbol(NodeKind kind) {
    // A junction is written as its bare number.
    if (kind == NodeKind::j0) return QStringLiteral("0");
    if (kind == NodeKind::j1) return QStringLiteral("1");
    return text(rawValue(kind));
}

} // namespace

BondGraphItem::BondGraphItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    setAcceptHoverEvents(true);
    connect(this, &BondGraphItem::changed, this, [this] { update(); });
}

void BondGraphItem::setEngine(EngineView* view) {
    if (view == view_) return;
    view_ = view;
    // The equations are published once a model is installed, the state line after each step.
    connect(view, &EngineView::equationsChanged, this, &BondGraphItem::takeModel);
    connect(view, &EngineView::stateLineChanged, this, [this] { update(); });
    takeModel();
    Q_EMIT changed();
}

const StateSpace* BondGraphItem::space() const {
    return view_ != nullptr && view_->engine().space() ? &*view_->engine().space() : nullptr;
}

void BondGraphItem::takeModel() {
    layout_ = space() == nullptr ? GraphLayout{} : layOut(space()->graph());
    greatestPower_ = 0;
    pointAt(std::nullopt, {});
    Q_EMIT modelChanged();
    update();
}

int BondGraphItem::nodeCount() const {
    return space() == nullptr ? 0 : static_cast<int>(space()->graph().nodes.size());
}

QString BondGraphItem::description() const {
    if (space() == nullptr) return {};
    const BondGraph& graph = space()->graph();
    return QStringLiteral("Bond graph of %1 elements and %2 bonds")
        .arg(graph.nodes.size())
        .arg(graph.bonds.size());
}

std::vector<double> BondGraphItem::powers() const {
    const EngineVM& engine = view_->engine();
    const Integrator* integrator = engine.sim();
    if (integrator == nullptr) return std::vector<double>(space()->graph().bonds.size(), 0.0);
    const Eval now =
        space()->derivatives(integrator->state(), Sources{{engine.seID(), *engine.drive}});
    std::vector<double> carried(now.effort.size());
    std::transform(now.effort.begin(), now.effort.end(), now.flow.begin(), carried.begin(),
                   [](double effort, double flow) {
                       const double power = std::abs(effort * flow);
                       return std::isfinite(power) ? power : 0.0;
                   });
    return carried;
}

BondGraphItem::Placement BondGraphItem::placement() const {
    const double margin = 1.6 * textSize_;
    const double scale =
        std::min({(width() - 2 * margin) / std::max(layout_.size.width(), 1.0),
                  (height() - 2 * margin) / std::max(layout_.size.height(), 1.0), textSize_ / 8});
    if (layout_.nodes.empty() || scale <= 0) return {};
    const QPointF origin((width() - layout_.size.width() * scale) / 2,
                         (height() - layout_.size.height() * scale) / 2);
    return {origin, scale, layoutRadius * scale * 0.64};
}

QPointF BondGraphItem::centre(const Placement& placement, std::size_t node) const {
    return placement.origin + layout_.nodes[node] * placement.scale;
}

QString BondGraphItem::pointedAt() const {
    if (!pointed_ || space() == nullptr) return {};
    const Node& node = space()->graph().nodes[*pointed_];
    const QString what = text(node.id) + QStringLiteral(" · ") + text(rawValue(node.kind));
    return node.param ? what + QStringLiteral(" %1").arg(*node.param) : what;
}

void BondGraphItem::pointAt(std::optional<std::size_t> node, QPointF pointer) {
    if (node == pointed_) return;
    pointed_ = node;
    pointer_ = pointer;
    Q_EMIT pointedAtChanged();
}

void BondGraphItem::hoverMoveEvent(QHoverEvent* event) {
    const Placement place = placement();
    std::optional<std::size_t> nearest;
    double reach = std::max(place.radius * 1.3, textSize_ * 0.8);
    for (std::size_t i = 0; place.scale > 0 && i < layout_.nodes.size(); ++i) {
        const double distance = QLineF(centre(place, i), event->position()).length();
        if (distance > reach) continue;
        reach = distance;
        nearest = i;
    }
    pointAt(nearest, event->position());
}

void BondGraphItem::hoverLeaveEvent(QHoverEvent* /*event*/) {
    pointAt(std::nullopt, {});
}

void BondGraphItem::paint(QPainter* painter) {
    const Placement place = placement();
    if (space() == nullptr || place.scale <= 0) return;
    const BondGraph& graph = space()->graph();
    const auto at = [&](std::int64_t node) {
        return centre(place, static_cast<std::size_t>(node));
    };

    const std::vector<double> carried = powers();
    for (const double power : carried)
        greatestPower_ = std::max(greatestPower_, power);
    for (std::size_t i = 0; i < graph.bonds.size(); ++i) {
        QLineF line(at(graph.bonds[i].a), at(graph.bonds[i].b));
        const double whole = line.length();
        const double gap = place.radius + place.scale * 3;
        if (whole <= 2 * gap) continue;
        const Ends ends{line.pointAt(gap / whole), line.pointAt(1 - gap / whole)};
        paintBond(*painter, graph.bonds[i], ends,
                  greatestPower_ > 0 ? carried[i] / greatestPower_ : 0,
                  std::min(textSize_, 1.2 * place.radius));
    }
    const bool named = place.radius > 0.75 * textSize_;
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        paintNode(*painter, graph.nodes[i], centre(place, i), place.radius);
        if (named) paintName(*painter, graph.nodes[i], centre(place, i), place.radius);
    }
}

void BondGraphItem::paintBond(QPainter& painter, const Bond& bond, Ends ends, double share,
                              double size) const {
    const double weight = std::sqrt(share); // small powers stay visible beside large ones
    const double pen = size / 10 * (1 + 1.6 * weight);
    const auto mix = [weight](float low, float high) {
        return low + (high - low) * static_cast<float>(weight);
    };
    const QColor colour =
        QColor::fromRgbF(mix(quiet_.redF(), source_.redF()), mix(quiet_.greenF(), source_.greenF()),
                         mix(quiet_.blueF(), source_.blueF()));
    painter.setPen(QPen(colour, pen, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(ends.from, ends.to);

    const QLineF along(ends.from, ends.to);
    const QPointF step(along.dx() / along.length(), along.dy() / along.length());
    const QPointF aside(step.y(), -step.x());
    const double barb = size * 0.55;
    const QPointF tip = bond.powerAToB ? ends.to : ends.from;
    const QPointF back = bond.powerAToB ? -step : step;
    painter.drawLine(tip, tip + back * barb + aside * barb * 0.7);

    if (bond.causality == Causality::unset) return;
    const QPointF stroked = bond.causality == Causality::aSetsEffort ? ends.to : ends.from;
    painter.setPen(QPen(ink_, size / 7, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(stroked + aside * barb * 0.75, stroked - aside * barb * 0.75);
}

QColor BondGraphItem::tint(NodeKind kind) const {
    if (isSource(kind)) return source_;
    if (isStorage(kind)) return storage_;
    return kind == NodeKind::R ? resistor_ : quiet_;
}

void BondGraphItem::paintNode(QPainter& painter, const Node& node, QPointF centre,
                              double radius) const {
    painter.setPen(QPen(tint(node.kind), textSize_ / 9));
    painter.setBrush(surface_);
    if (!isJunction(node.kind)) painter.drawEllipse(centre, radius, radius);
    QFont font = painter.font();
    font.setPixelSize(std::max(6, static_cast<int>(std::min(textSize_ * 1.1, radius * 1.05))));
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(isJunction(node.kind) ? ink_ : tint(node.kind));
    painter.drawText(QRectF(centre.x() - 2 * radius, centre.y() - radius, 4 * radius, 2 * radius),
                     Qt::AlignCenter, symbol(node.kind));
}

void BondGraphItem::paintName(QPainter& painter, const Node& node, QPointF centre,
                              double radius) const {
    const QString name = text(node.id);
    if (name == symbol(node.kind)) return;
    QFont font = painter.font();
    font.setPixelSize(std::max(6, static_cast<int>(textSize_ * 0.8)));
    font.setBold(false);
    painter.setFont(font);
    painter.setPen(quiet_);
    const double room = 8 * textSize_;
    painter.drawText(QRectF(centre.x() - room / 2, centre.y() + radius + 1, room, 1.3 * textSize_),
                     Qt::AlignCenter, QFontMetricsF(font).elidedText(name, Qt::ElideMiddle, room));
}

} // namespace kelvo
