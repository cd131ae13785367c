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

namespace {

std::string sourceOf(const Json& document) {
    const Json& source = document.at("sourceDb");
    return source.is_string() ? source.get<std::string>() : "collapse";
}

} // namespace

std::string recordFileName(const Json& document, const Totem& totem) {
    return sourceOf(document) + "-" + std::to_string(totem.index) + "-" +
           totem.blockHash.substr(0, 12) + ".totem.json";
}

std::string writeRecordFile(const std::filesystem::path& directory, const Totem& totem,
                            std::string_view payload, const std::string& asOf) {
    const Json document = recordDocument(totem, payload, asOf);
    const auto bytes = writeJson(document, JsonLayout::pretty);
    if (!bytes) return "outputs: encode-failed";
    const std::string source = sourceOf(document);
    if (!isPlainFileName(source)) {
        return "outputs: \"" + source + "\" cannot be part of a file name";
    }
    const auto written = writeFileAtomically(directory / recordFileName(document, totem), *bytes);
    return written ? "→ outputs (bouncer will seal)" : "outputs: " + written.error().description;
}

} // namespace kelvo
