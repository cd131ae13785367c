#include "ledger/RecordFile.h"

#include "base/Files.h"

namespace kelvo {

Json recordDocument(const Totem& totem, std::string_view payload, const std::string& asOf) {
    auto parsed = parseJson(payload);
    Json document = parsed && parsed->is_object() ? std::move(*parsed) : Json::object();
    if (!document.contains("sourceDb")) document["sourceDb"] = "collapse";
    if (!document.contains("title")) document["title"] = totem.title;
    document["asOf"] = asOf;
    document["firedBy"] = totem.firedBy;
    document["appBlockHash"] = totem.blockHash;
    document["appIndex"] = totem.index;
    document["payloadRoot"] = totem.payloadRoot;
    document["appPrev"] = totem.prev;
    return document;
}

std::string recordFileName(const Json& document, const Totem& totem) {
    const Json& source = document.at("sourceDb");
    return (source.is_string() ? source.get<std::string>() : "collapse") + "-" +
           std::to_string(totem.index) + "-" + totem.blockHash.substr(0, 12) + ".totem.json";
}

std::string writeRecordFile(const std::filesystem::path& directory, const Totem& totem,
                            std::string_view payload, const std::string& asOf) {
    const Json document = recordDocument(totem, payload, asOf);
    const auto bytes = writeJson(document, JsonLayout::pretty);
    if (!bytes) return "outputs: encode-failed";
    const std::string name = recordFileName(document, totem);
    if (!isPlainFileName(name)) return "outputs: \"" + name + "\" cannot be a file name";
    const auto written = writeFileAtomically(directory / name, *bytes);
    return written ? "→ outputs (bouncer will seal)" : "outputs: " + written.error().description;
}

} // namespace kelvo
