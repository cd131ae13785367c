#include "ledger/RecordFile.h"

#include "base/Sha256.h"

#include <system_error>
#include <utility>

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
           abbreviated(totem.blockHash) + ".totem.json";
}

std::set<std::string> recordFileNames(const std::filesystem::path& directory) {
    std::set<std::string> names;
    std::error_code fault;
    for (std::filesystem::directory_iterator entry(directory, fault), end; !fault && entry != end;
         entry.increment(fault)) {
        std::string name = entry->path().filename().native();
        if (name.ends_with(".totem.json")) names.insert(std::move(name));
    }
    return names;
}

RecordWriting writeRecordFile(const std::filesystem::path& directory, const Totem& totem,
                              std::string_view payload, const std::string& asOf) {
    const Json document = recordDocument(totem, payload, asOf);
    auto bytes = writeJson(document, JsonLayout::pretty);
    if (!bytes) return {.outcome = "outputs: encode-failed"};
    const std::string source = sourceOf(document);
    if (!isPlainFileName(source)) {
        return {.outcome = "outputs: \"" + source + "\" cannot be part of a file name",
                .record = SealedRecord{"", std::move(*bytes)}};
    }
    SealedRecord record{recordFileName(document, totem), std::move(*bytes)};
    const auto written = writeFileAtomically(directory / record.file, record.bytes);
    if (written) return {"→ outputs (bouncer will seal)", std::move(record), std::nullopt};
    return {"outputs: " + written.error().description, std::move(record), written.error()};
}

} // namespace kelvo
