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

/// Spring-model positions by Graphviz (neato), turned to be wider than high; for a large graph
/// hierarchical ones (dot). The same for the same graph. Ends of bonds that name no node are left
/// out. Without any node where Graphviz finds no layout.
GraphLayout layOut(const BondGraph& graph);

} // namespace kelvo
