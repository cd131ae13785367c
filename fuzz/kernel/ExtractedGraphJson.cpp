// Any bytes as the JSON form of an extracted graph, and its validation.

#include "graphjson/GraphJson.h"

#include "JsonRoundTrip.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    kelvo::fuzz::jsonRoundTrip(data, size, [](const kelvo::Json& json) {
        auto graph = kelvo::readExtractedGraph(json);
        if (graph) (void)graph->validated();
        return graph;
    });
    return 0;
}
