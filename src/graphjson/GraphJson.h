#pragma once

#include "base/Json.h"
#include "kernel/Extraction.h"
#include "kernel/Model.h"

#include <tl/expected.hpp>

#include <string>

namespace kelvo {

/// The JSON form of a bond graph:
/// {"nodes":[{"id","kind","param"?}],"bonds":[{"a","b","causality","powerAToB"}]}. `param` is
/// written only where present; every other member is always written and required when read.
Json toJson(const BondGraph& graph);

/// The JSON form of an extracted graph:
/// {"nodes":[{"id","kind","param"?}],"bonds":[{"from","to"}]}.
Json toJson(const ExtractedGraph& graph);

/// Reads the form of `toJson(const BondGraph&)`. The error names the member and what is wrong with
/// it ("bonds[1].causality: …"). Reading does not validate the graph: any index is accepted.
tl::expected<BondGraph, std::string> readBondGraph(const Json& json);

/// Reads the form of `toJson(const ExtractedGraph&)`. Kinds are texts here and not looked at.
tl::expected<ExtractedGraph, std::string> readExtractedGraph(const Json& json);

} // namespace kelvo
