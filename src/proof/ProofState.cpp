#include "proof/ProofState.h"

#include "base/Json.h"
#include "base/JsonReader.h"
#include "base/Sha256.h"
#include "base/Text.h"
#include "base/Time.h"
#include "proof/LineParser.h"

#include <unistd.h>

#include <array>

namespace kelvo {
namespace {

Json toJson(const LogPosition& at) {
    return {{"head", at.head}, {"lines", at.lines}};
}

tl::expected<LogPosition, std::string> positionIn(const Json& value) {
    JsonReader reader(value);
    LogPosition at;
    at.lines = reader.integer("lines");
    at.head = reader.string("head");
    if (reader.error()) return tl::unexpected(*reader.error());
    if (at.lines < 0 || !isHash(at.head)) return tl::unexpected(std::string("no place in a log"));
    return at;
}

/// Calls `each(name, value)` for the members of the member `key`, which must be an object.
template <class Each>
std::optional<std::string> eachMember(const Json& document, const char* key, Each each) {
    const auto found = document.find(key);
    if (found == document.end() || !found->is_object()) return std::string(key) + ": no object";
    for (const auto& [name, value] : found->items()) {
        if (auto fault = each(name, value)) return std::string(key) + "." + name + ": " + *fault;
    }
    return std::nullopt;
}

} // namespace

std::string proofStateFileName(std::string_view machineId) {
    return "proof-" + sha256Hex(machineId).substr(0, 8) + ".json";
}

std::string hostName() {
    std::array<char, 256> name{};
    if (::gethostname(name.data(), name.size() - 1) != 0) return "";
    return toValidUtf8(name.data());
}

std::string machineId() {
    const auto id = readFile("/etc/machine-id", 4096);
    const std::string text(trimmed(id.value_or("")));
    return text.empty() ? hostName() : text;
}

std::string proofStateText(const ProofState& state) {
    Json seen = Json::object();
    for (const auto& [id, log] : state.seen) {
        seen[id] = {{"computer", toValidUtf8(log.computer)},
                    {"head", log.at.head},
                    {"lines", log.at.lines},
                    {"organisation", toValidUtf8(log.organisation)}};
    }
    Json missed = Json::object();
    for (const auto& [what, since] : state.missed)
        missed[toValidUtf8(what)] = since;
    const Json document = {{"after", toJson(state.after)},
                           {"before", toJson(state.before)},
                           {"log", state.log},
                           {"missed", missed},
                           {"seen", seen}};
    return writeJson(document).value_or("") + "\n";
}

tl::expected<ProofState, std::string> parseProofState(std::string_view text) {
    const auto document = parseJson(text);
    if (!document) return tl::unexpected(document.error());
    JsonReader reader(*document);
    ProofState state;
    state.log = reader.string("log");
    if (reader.error()) return tl::unexpected(*reader.error());
    if (!isLogId(state.log)) return tl::unexpected(std::string("log: no id of a log"));
    for (auto [key, into] :
         {std::pair{"before", &state.before}, std::pair{"after", &state.after}}) {
        auto at = positionIn(document->value(key, Json()));
        if (!at) return tl::unexpected(std::string(key) + ": " + at.error());
        *into = std::move(*at);
    }
    auto fault =
        eachMember(*document, "seen",
                   [&](const std::string& id, const Json& value) -> std::optional<std::string> {
                       auto at = positionIn(value);
                       if (!at) return at.error();
                       JsonReader log(value);
                       state.seen[id] = {*at, log.string("computer"), log.string("organisation")};
                       return log.error();
                   });
    if (fault) return tl::unexpected(*fault);
    fault =
        eachMember(*document, "missed",
                   [&](const std::string& what, const Json& value) -> std::optional<std::string> {
                       if (!value.is_string() || !parseIso8601(value.get<std::string>()))
                           return "no time";
                       state.missed[what] = value.get<std::string>();
                       return std::nullopt;
                   });
    if (fault) return tl::unexpected(*fault);
    return state;
}

} // namespace kelvo
