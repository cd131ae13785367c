#include "ui/GraphLayout.h"

#include <graphviz/gvc.h>

#include <QPolygonF>
#include <QRectF>
#include <QTransform>
#include <memory>
#include <string>

namespace kelvo {
namespace {

/// Springs settle slowly; beyond this the hierarchical layout is what stays fast.
constexpr std::size_t largestForSprings = 200;

/// In points; the node attribute below has it in inches.
constexpr double nodeWidth = 36;

/// The library takes text it does not change as `char*`.
char* text(const char* constant) {
    return const_cast<char*>(constant);
}

GVC_t* context() {
    static const std::unique_ptr<GVC_t, int (*)(GVC_t*)> shared(gvContext(), gvFreeContext);
    return shared.get();
}

GraphLayout positions(Agraph_t* drawing, const std::vector<Agnode_t*>& nodes) {
    const boxf box = GD_bb(drawing);
    GraphLayout layout;
    layout.size = {box.UR.x - box.LL.x, box.UR.y - box.LL.y};
    layout.nodes.reserve(nodes.size());
    for (Agnode_t* node : nodes)
        layout.nodes.emplace_back(ND_coord(node).x - box.LL.x, box.UR.y - ND_coord(node).y);
    return layout;
}

/// Springs know no up or down: the turn that is least high leaves a wide picture the most room.
void lieDown(GraphLayout& layout) {
    const QPolygonF settled(QList<QPointF>(layout.nodes.begin(), layout.nodes.end()));
    QPolygonF flattest = settled;
    for (int degrees = 5; degrees < 180; degrees += 5) {
        const QPolygonF turned = QTransform().rotate(degrees).map(settled);
        if (turned.boundingRect().height() < flattest.boundingRect().height()) flattest = turned;
    }
    const double room = nodeWidth / 2;
    const QRectF box = flattest.boundingRect().adjusted(-room, -room, room, room);
    flattest.translate(-box.topLeft());
    layout = {{flattest.begin(), flattest.end()}, box.size()};
}

} // namespace

GraphLayout layOut(const BondGraph& graph) {
    agseterr(AGMAX);
    const std::unique_ptr<Agraph_t, int (*)(Agraph_t*)> drawing(
        agopen(text("bonds"), Agdirected, nullptr), agclose);
    agattr(drawing.get(), AGRAPH, text("overlap"), text("false"));
    agattr(drawing.get(), AGRAPH, text("overlap_scaling"), text("0"));
    agattr(drawing.get(), AGRAPH, text("splines"), text("false"));
    agattr(drawing.get(), AGRAPH, text("sep"), text("+6"));
    agattr(drawing.get(), AGRAPH, text("ranksep"), text("0.35"));
    agattr(drawing.get(), AGNODE, text("label"), text(""));
    agattr(drawing.get(), AGNODE, text("shape"), text("circle"));
    agattr(drawing.get(), AGNODE, text("width"), text("0.5"));
    agattr(drawing.get(), AGEDGE, text("len"), text("1.45"));

    std::vector<Agnode_t*> nodes;
    nodes.reserve(graph.nodes.size());
    for (std::size_t i = 0; i < graph.nodes.size(); ++i)
        nodes.push_back(agnode(drawing.get(), std::to_string(i).data(), 1));
    const auto at = [&](std::int64_t index) {
        const bool named = index >= 0 && static_cast<std::size_t>(index) < nodes.size();
        return named ? nodes[static_cast<std::size_t>(index)] : nullptr;
    };
    for (const Bond& bond : graph.bonds) {
        Agnode_t* from = at(bond.powerAToB ? bond.a : bond.b);
        Agnode_t* to = at(bond.powerAToB ? bond.b : bond.a);
        if (from != nullptr && to != nullptr) agedge(drawing.get(), from, to, nullptr, 1);
    }
    const bool springs = graph.nodes.size() <= largestForSprings;
    if (gvLayout(context(), drawing.get(), springs ? "neato" : "dot") != 0) return {};
    GraphLayout layout = positions(drawing.get(), nodes);
    gvFreeLayout(context(), drawing.get());
    if (springs) lieDown(layout);
    return layout;
}

} // namespace kelvo
