// Any bytes as the JSON form of a bond graph, and the graph that comes of it as input to the
// kernel.

#include "graphjson/GraphJson.h"

#include "JsonRoundTrip.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    kelvo::fuzz::jsonRoundTrip(data, size, [](const kelvo::Json& json) {
        auto graph = kelvo::readBondGraph(json);
        if (graph) (void)graph->assignCausality();
        return graph;
    });
    return 0;
}
