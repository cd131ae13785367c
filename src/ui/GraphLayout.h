#pragma once

#include "kernel/Model.h"

#include <QPointF>
#include <QSizeF>
#include <vector>

namespace kelvo {

/// Where the nodes of a graph are drawn: their centres in points, y downwards, within `size`.
struct GraphLayout {
    std::vector<QPointF> nodes;
    QSizeF size;
};

/// Spring-model positions by Graphviz (neato; hierarchical ones, dot, for a large graph), the same
/// for the same graph. Ends of bonds that name no node are left out. Without any node where
/// Graphviz finds no layout.
GraphLayout layOut(const BondGraph& graph);

} // namespace kelvo
