#include "proof/Criteria.h"

#include "base/JsonReader.h"
#include "base/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kelvo {
namespace {

constexpr std::array<std::string_view, 8> frequencies = {
    "once", "annual", "semiannual", "quarterly", "monthly", "weekly", "daily", "event"};

std::string gapIn(std::string_view evidence) {
    constexpr std::string_view marker = "GAP:";
    const auto at = evidence.find(marker);
    if (at == evidence.npos) return {};
    return std::string(trimmedSpacesAndTabs(evidence.substr(at + marker.size())));
}

std::string optionalText(const Json& node, const char* key) {
    const auto found = node.find(key);
    return found != node.end() && found->is_string() ? found->get<std::string>() : "";
}

/// The members that the program's own reader passes over.
void readOwn(const Json& node, Criterion& into, std::vector<std::string>& remarks) {
    into.title = optionalText(node, "title");
    const auto services = node.find("tsc");
    if (services != node.end() && services->is_array()) {
        for (const Json& each : *services) {
            if (each.is_string()) into.trustServices.push_back(each.get<std::string>());
        }
    }
    const auto frequency = node.find("frequency");
    if (frequency == node.end() || frequency->is_null()) return;
    const std::string name = optionalText(node, "frequency");
    const auto found = std::find(frequencies.begin(), frequencies.end(), name);
    if (found == frequencies.end()) {
        remarks.push_back("The frequency of " + withControlsShown(into.id) +
                          " is none that is known; it counts as annual.");
        return;
    }
    into.frequency = static_cast<Frequency>(found - frequencies.begin());
}

} // namespace

std::string_view nameOf(Frequency frequency) {
    return frequencies[static_cast<std::size_t>(frequency)];
}

tl::expected<Criteria, std::string> readCriteria(std::string_view graph) {
    const auto document = parseJson(graph);
    if (!document) return tl::unexpected(document.error());
    Criteria criteria;
    JsonReader reader(*document);
    reader.array("nodes", [&criteria](JsonReader& member) {
        criteria.list.push_back({.id = member.string("id"),
                                 .level = member.number("g"),
                                 .weight = member.integer("w"),
                                 .gap = gapIn(member.string("evidence")),
                                 .title = {},
                                 .trustServices = {},
                                 .frequency = Frequency::annual});
    });
    if (reader.error()) return tl::unexpected(*reader.error());
    criteria.organisation = optionalText(*document, "organisation");
    const Json& nodes = document->at("nodes");
    for (std::size_t i = 0; i < criteria.list.size(); ++i)
        readOwn(nodes[i], criteria.list[i], criteria.remarks);
    return criteria;
}

} // namespace kelvo
