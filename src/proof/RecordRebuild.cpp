#include "proof/RecordRebuild.h"

#include "base/JsonReader.h"
#include "base/Sha256.h"
#include "base/Time.h"
#include "ledger/RecordFile.h"

namespace kelvo {
namespace {

std::string textIn(const Json& document, const char* key) {
    const auto found = document.find(key);
    return found != document.end() && found->is_string() ? found->get<std::string>() : "";
}

/// The payload whose hash is `root`. A seal adds "sourceDb" and "title" where they are missing, so
/// each may have been there or not.
std::optional<std::string> payloadOf(const Json& document, const std::string& root) {
    Json sealed = document;
    for (const char* key :
         {"asOf", "firedBy", "appBlockHash", "appIndex", "payloadRoot", "appPrev"}) {
        sealed.erase(key);
    }
    for (const bool withSource : {true, false}) {
        for (const bool withTitle : {true, false}) {
            Json candidate = sealed;
            if (!withSource) candidate.erase("sourceDb");
            if (!withTitle) candidate.erase("title");
            auto bytes = writeJson(candidate);
            if (bytes && sha256Hex(*bytes) == root) return bytes;
            if (candidate.empty() && sha256Hex("") == root) return "";
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<RebuiltRecord> rebuildRecord(std::string_view name, std::string_view bytes) {
    const auto document = parseJson(bytes);
    if (!document || !document->is_object()) return std::nullopt;
    JsonReader reader(*document);
    RebuiltRecord record;
    Totem& totem = record.totem;
    totem.index = reader.integer("appIndex");
    totem.prev = reader.string("appPrev");
    totem.payloadRoot = reader.string("payloadRoot");
    totem.blockHash = reader.string("appBlockHash");
    totem.title = reader.string("title");
    totem.firedBy = reader.string("firedBy");
    totem.asOf = reader.string("asOf");
    if (reader.error() || totem.index < 0 || !document->contains("sourceDb") ||
        !parseIso8601(totem.asOf)) {
        return std::nullopt;
    }
    const std::string separator(TotemChain::sep);
    if (TotemChain::sha(std::to_string(totem.index) + separator + totem.prev + separator +
                        totem.payloadRoot) != totem.blockHash ||
        recordFileName(*document, totem) != name) {
        return std::nullopt;
    }
    auto payload = payloadOf(*document, totem.payloadRoot);
    if (!payload) return std::nullopt;
    record.payload = std::move(*payload);
    record.evidenceRoot = textIn(*document, "evidence_root");
    record.evidenceSummary = textIn(*document, "evidence_summary");
    record.criterion = textIn(*document, "criterion");
    return record;
}

} // namespace kelvo
