#pragma once

#include "base/Json.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace kelvo::fuzz {

/// Reads a graph from any bytes. What could be read and can be written must read back equal.
template <class Read>
void jsonRoundTrip(const std::uint8_t* data, std::size_t size, Read read) {
    const auto json = parseJson({reinterpret_cast<const char*>(data), size});
    if (!json) return;
    const auto graph = read(*json);
    if (!graph) {
        if (graph.error().empty()) std::abort();
        return;
    }
    const auto text = writeJson(toJson(*graph));
    if (!text) return;
    if (read(parseJson(*text).value()) != graph) std::abort();
}

} // namespace kelvo::fuzz
