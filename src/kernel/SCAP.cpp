#include "kernel/Literal.h"

namespace kelvo {

tl::expected<BondGraph, GraphError> BondGraph::assignCausality() const {
    return reference::assignCausality(*this);
}

} // namespace kelvo
