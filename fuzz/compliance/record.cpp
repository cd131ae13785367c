// The fast reader of record files decides as the general reader does.

#include "base/Json.h"
#include "compliance/ClosureReplay.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

using kelvo::Json;

const Json* member(const Json& record, const char* key) {
    const auto found = record.find(key);
    return found == record.end() ? nullptr : &*found;
}

std::optional<std::string> closedBySlowReading(std::string_view text) {
    const auto document = kelvo::parseJson(text);
    if (!document || !document->is_object()) return std::nullopt;
    const Json* source = member(*document, "sourceDb");
    const Json* gate = member(*document, "gate_after");
    const Json* root = member(*document, "evidence_root");
    const Json* criterion = member(*document, "criterion");
    if (source == nullptr || *source != "control") return std::nullopt;
    if (gate == nullptr || !gate->is_number() || gate->get<double>() != 1.0) return std::nullopt;
    if (root == nullptr || !root->is_string() || *root == "") return std::nullopt;
    if (criterion == nullptr || !criterion->is_string()) return std::nullopt;
    return criterion->get<std::string>();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    // Where nesting ends the two differ by a level.
    if (std::count_if(text.begin(), text.end(), [](char c) { return c == '[' || c == '{'; }) > 250)
        return 0;
    static kelvo::ClosureReader reader;
    if (reader.closedCriterion(text) != closedBySlowReading(text)) std::abort();
    return 0;
}
