#include "proof/LineParser.h"

#include "base/Json.h"
#include "base/Sha256.h"
#include "base/Time.h"

#include <simdjson.h>

#include <algorithm>
#include <array>
#include <bitset>
#include <cstring>
#include <vector>

namespace kelvo {
namespace {

/// Every member of any kind of line, sorted.
enum class Key : std::size_t {
    account,
    answered,
    approved,
    asked,
    block,
    computer,
    evidence,
    file,
    graph,
    kind,
    log,
    name,
    organisation,
    payload,
    prev,
    program,
    record,
    roles,
    root,
    run,
    seq,
    tagmanifest,
    ts,
    v,
};
constexpr std::array<std::string_view, 24> keyNames = {
    "account",      "answered", "approved", "asked",       "block",  "computer",
    "evidence",     "file",     "graph",    "kind",        "log",    "name",
    "organisation", "payload",  "prev",     "program",     "record", "roles",
    "root",         "run",      "seq",      "tagmanifest", "ts",     "v"};
using Keys = std::bitset<keyNames.size()>;

constexpr Keys keys(std::initializer_list<Key> list) {
    unsigned long long bits = 0;
    for (const Key key : list)
        bits |= 1ULL << static_cast<std::size_t>(key);
    return {bits};
}

const Keys everyLine = keys({Key::v, Key::seq, Key::prev, Key::ts, Key::kind});
const Keys approval = keys({Key::run, Key::account, Key::approved, Key::asked, Key::answered});
const Keys beginLine = everyLine | keys({Key::log, Key::organisation, Key::computer});
const Keys runLine =
    everyLine | keys({Key::run, Key::account, Key::program, Key::graph, Key::roles});
const Keys decisionLine =
    everyLine | approval | keys({Key::file, Key::record, Key::block, Key::payload, Key::evidence});
const Keys supplyLine = everyLine | approval | keys({Key::root, Key::name});
const Keys packageLine = everyLine | keys({Key::name, Key::tagmanifest});
const Keys numbers = keys({Key::v, Key::seq, Key::run});

/// The members of one line as they stand.
struct Members {
    Keys present;
    std::array<std::string_view, keyNames.size()> texts;
    std::array<std::int64_t, keyNames.size()> integers{};

    std::string_view text(Key key) const { return texts[static_cast<std::size_t>(key)]; }
    std::string string(Key key) const { return std::string(text(key)); }
    std::int64_t integer(Key key) const { return integers[static_cast<std::size_t>(key)]; }
    Approval given() const {
        return {string(Key::approved), string(Key::asked), string(Key::answered)};
    }
};

std::optional<std::string> readMembers(const simdjson::dom::object& object, Members& into) {
    for (const auto& [key, value] : object) {
        const auto found = std::lower_bound(keyNames.begin(), keyNames.end(), key);
        if (found == keyNames.end() || *found != key) return "a member that no line has";
        const auto at = static_cast<std::size_t>(found - keyNames.begin());
        if (into.present[at]) return "\"" + std::string(*found) + "\" stands there twice";
        into.present.set(at);
        const bool fits = numbers[at]
                              ? value.get_int64().get(into.integers[at]) == simdjson::SUCCESS
                              : value.get_string().get(into.texts[at]) == simdjson::SUCCESS;
        if (!fits) return "\"" + std::string(*found) + "\" is of another type";
    }
    return std::nullopt;
}

bool isHashOrNothing(std::string_view text) {
    return text.empty() || isHash(text);
}

/// The fact of a line whose members are those of its kind; none where they are not.
std::optional<SealFact> factOf(const Members& line) {
    const std::string_view kind = line.text(Key::kind);
    if (kind == "seal" || kind == "adopt") {
        if (line.present != decisionLine || !isHash(line.text(Key::record)) ||
            !isHash(line.text(Key::block))) {
            return std::nullopt;
        }
        return DecisionLine{kind == "adopt",
                            line.integer(Key::run),
                            line.string(Key::account),
                            line.string(Key::file),
                            line.string(Key::record),
                            line.string(Key::block),
                            {},
                            line.given(),
                            line.string(Key::evidence)};
    }
    if (kind == "run" && line.present == runLine && isHashOrNothing(line.text(Key::graph)) &&
        isHashOrNothing(line.text(Key::roles))) {
        return RunLine{line.integer(Key::run), line.string(Key::account), line.string(Key::program),
                       line.string(Key::graph), line.string(Key::roles)};
    }
    if (kind == "begin" && line.present == beginLine && isLogId(line.text(Key::log))) {
        return BeginLine{line.string(Key::log), line.string(Key::organisation),
                         line.string(Key::computer)};
    }
    if (kind == "supply" && line.present == supplyLine && isHash(line.text(Key::root))) {
        return SupplyLine{line.integer(Key::run), line.string(Key::account), line.string(Key::root),
                          line.string(Key::name), line.given()};
    }
    if (kind == "package" && line.present == packageLine && isHash(line.text(Key::tagmanifest))) {
        return PackageLine{line.string(Key::name), line.string(Key::tagmanifest)};
    }
    return std::nullopt;
}

} // namespace

bool isHash(std::string_view text) {
    return digestOfHex(text).has_value();
}

struct LineParser::State {
    simdjson::dom::parser parser;
    std::vector<char> bytes;
    std::size_t capacity = 0;

    /// The top level of a document that is an object.
    std::optional<simdjson::dom::object> object(std::string_view text) {
        const std::size_t size = text.size();
        if (size > capacity) {
            std::size_t wanted = std::max<std::size_t>(capacity, 4096);
            while (wanted < size)
                wanted *= 2;
            if (parser.allocate(wanted, jsonDepthLimit + 1) != simdjson::SUCCESS) {
                return std::nullopt;
            }
            capacity = wanted;
            bytes.resize(wanted + simdjson::SIMDJSON_PADDING);
        }
        if (size > 0) std::memcpy(bytes.data(), text.data(), size);
        simdjson::dom::object found;
        if (parser.parse(bytes.data(), size, false).get_object().get(found) != simdjson::SUCCESS) {
            return std::nullopt;
        }
        return found;
    }
};

LineParser::LineParser() : state_(std::make_unique<State>()) {
}
LineParser::~LineParser() = default;

tl::expected<LineParser::Line, std::string> LineParser::parse(std::string_view text) {
    const auto object = state_->object(text);
    if (!object) return tl::unexpected(std::string("not a JSON object"));
    Members members;
    if (auto fault = readMembers(*object, members)) return tl::unexpected(std::move(*fault));
    if (members.present[static_cast<std::size_t>(Key::v)] && members.integer(Key::v) != 1) {
        return tl::unexpected(std::string("of another version of this format"));
    }
    auto fact = factOf(members);
    if (!fact) return tl::unexpected(std::string("its members are not those of its kind"));
    if (!parseIso8601(members.text(Key::ts))) {
        return tl::unexpected(std::string("\"ts\" is no time"));
    }
    return Line{.seq = members.integer(Key::seq),
                .prev = members.text(Key::prev),
                .ts = members.text(Key::ts),
                .fact = std::move(*fact),
                .payload = members.text(Key::payload)};
}

PayloadFacts LineParser::payloadFacts(std::string_view json) {
    PayloadFacts facts;
    facts.sourceDb = "collapse";
    const auto object = state_->object(json);
    if (!object) return facts;
    facts.isObject = true;
    double gate = 0;
    const std::array<std::pair<std::string_view, std::string_view*>, 12> texts = {{
        {"sourceDb", &facts.sourceDb},
        {"criterion", &facts.criterion},
        {"evidence_root", &facts.evidenceRoot},
        {"evidence_name", &facts.evidenceName},
        {"evidence_summary", &facts.evidenceSummary},
        {"note", &facts.note},
        {"about", &facts.about},
        {"graph_after", &facts.graphAfter},
        {"asOf", &facts.asOf},
        {"firedBy", &facts.firedBy},
        {"owner", &facts.owner},
        {"attested_at", &facts.attestedAt},
    }};
    const std::array<std::pair<std::string_view, bool*>, 3> flags = {{
        {"attested", &facts.attested},
        {"os_attested", &facts.device},
        {"generated", &facts.generated},
    }};
    for (const auto& [key, value] : *object) {
        if (key == "kyc") facts.identity = true;
        if (key == "gate_after" && value.get_double().get(gate) != simdjson::SUCCESS) gate = 0;
        for (const auto& [name, into] : texts) {
            if (key == name && value.get_string().get(*into) != simdjson::SUCCESS) *into = {};
        }
        for (const auto& [name, into] : flags) {
            if (key == name && value.get_bool().get(*into) != simdjson::SUCCESS) *into = false;
        }
    }
    if (facts.sourceDb.empty()) facts.sourceDb = "collapse";
    facts.closes = facts.sourceDb == "control" && gate == 1.0 && !facts.evidenceRoot.empty();
    return facts;
}

std::string LineParser::organisationOf(std::string_view graph) {
    const auto object = state_->object(graph);
    std::string_view name;
    if (!object || object->at_key("organisation").get_string().get(name) != simdjson::SUCCESS) {
        return {};
    }
    return std::string(name);
}

} // namespace kelvo
