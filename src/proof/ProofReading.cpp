#include "proof/ProofReading.h"

#include "base/Time.h"
#include "proof/RecordRebuild.h"

#include <dirent.h>

#include <algorithm>
#include <chrono>

namespace kelvo {
namespace fs = std::filesystem;
namespace {

constexpr std::string_view recordSuffix = ".totem.json";
constexpr std::string_view logPrefix = "seals-";
constexpr std::string_view logSuffix = ".ndjson";
constexpr std::size_t largestGraph = std::size_t{16} << 20;

/// The names in a folder that may be regular files.
std::vector<std::string> namesIn(const fs::path& folder) {
    std::vector<std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> opened(::opendir(folder.c_str()), ::closedir);
    if (!opened) return names;
    while (const dirent* entry = ::readdir(opened.get())) {
        if (entry->d_type == DT_REG || entry->d_type == DT_LNK || entry->d_type == DT_UNKNOWN) {
            names.emplace_back(entry->d_name);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

/// The first 8 digits that a log's name holds; none for another name.
std::optional<std::string_view> digitsOf(std::string_view name) {
    if (name.size() != logPrefix.size() + 8 + logSuffix.size() || !name.starts_with(logPrefix) ||
        !name.ends_with(logSuffix)) {
        return std::nullopt;
    }
    return name.substr(logPrefix.size(), 8);
}

} // namespace

std::int64_t secondsSince1970(std::string_view moment) {
    const auto parsed = parseIso8601(moment);
    if (!parsed) return 0;
    return std::chrono::duration_cast<std::chrono::seconds>(parsed->time_since_epoch()).count();
}

ProofReading::ProofReading(const ProofFolders& folders) : folders_(folders), vault_(folders, "") {
}

void ProofReading::read() {
    listRecords();
    readLogs();
    readGraph();
    readVault();
    hashRecords();
}

void ProofReading::listRecords() {
    for (std::string& name : namesIn(folders_.outputs)) {
        if (std::string_view(name).ends_with(recordSuffix)) {
            records.push_back({std::move(name), {}, {}});
        }
    }
}

void ProofReading::readLogs() {
    for (const std::string& name : namesIn(folders_.proof())) {
        if (name.starts_with('.')) continue;
        auto log = readLog(folders_.proof() / name);
        const auto digits = digitsOf(name);
        if (!log) continue;
        log->log.fileName = name;
        // A log whose first line cannot be read still has a log's name.
        const std::string& id = log->log.id;
        const bool itself = digits && (id.empty() || id.substr(0, 8) == *digits);
        if (!itself && id.empty()) continue;
        (itself ? logs : copies).push_back(std::move(*log));
    }
}

std::optional<ReadLog> ProofReading::readLog(const fs::path& file) {
    ReadLog into;
    ComparedLog& log = into.log;
    std::string greatest;
    const auto each = [&](const SealLineView& line) {
        if (line.ts < log.lastTs && !log.clockSetBackAt) log.clockSetBackAt = line.seq + 1;
        log.lastTs = line.ts;
        greatest = std::max(greatest, log.lastTs);
        log.marks.push_back({.head = line.head, .ts = secondsSince1970(line.ts)});
        if (const auto* begin = std::get_if<BeginLine>(&line.fact)) {
            log.id = begin->log;
            log.organisation = begin->organisation;
            log.computer = begin->computer;
        } else if (const auto* run = std::get_if<RunLine>(&line.fact)) {
            log.account = run->account;
            log.graph = run->graph;
            if (!run->graph.empty()) into.graphs.insert(run->graph);
        } else if (const auto* decision = std::get_if<DecisionLine>(&line.fact)) {
            readDecision(line, *decision, into);
            into.decisions.back().time = greatest;
        } else if (const auto* supply = std::get_if<SupplyLine>(&line.fact)) {
            into.supplied.insert(supply->root);
        }
    };
    const auto reading = lines_.read(file, each);
    if (!reading) return std::nullopt;
    log.end = reading->end;
    if (reading->damage) {
        log.damagedLine = reading->damage->line;
        log.unreadable = reading->damage->unreadable;
    }
    into.torn = reading->tornEnd();
    return into;
}

void ProofReading::readDecision(const SealLineView& line, const DecisionLine& fact, ReadLog& into) {
    const PayloadFacts facts = payloads_.payloadFacts(line.payload);
    LoggedDecision decision;
    decision.log = into.log.id;
    decision.line = line.seq + 1;
    decision.computer = into.log.computer;
    decision.run = fact.run;
    decision.adopted = fact.adopted;
    decision.ts = line.ts;
    decision.account = fact.account;
    decision.approved = fact.approval.sentence;
    decision.file = fact.file;
    decision.record = fact.record;
    decision.block = fact.block;
    decision.kind = facts.identity ? std::string_view("identity") : facts.sourceDb;
    decision.criterion = facts.criterion;
    decision.closes = facts.closes;
    decision.owner = facts.owner;
    decision.attestedAt = facts.attestedAt;
    if (facts.attested) {
        decision.means = LoggedDecision::Means::attestation;
    } else if (facts.device) {
        decision.means = LoggedDecision::Means::device;
    } else if (facts.generated) {
        decision.means = LoggedDecision::Means::policy;
    }
    if (auto further = readFurtherSeal(facts.sourceDb, line.payload)) {
        decision.further = std::make_shared<const FurtherSeal>(std::move(*further));
    }
    decision.evidenceRoot = facts.evidenceRoot;
    decision.evidenceName = facts.evidenceName;
    decision.byStatement = !facts.evidenceSummary.empty() &&
                           isHexOf(sha256(facts.evidenceSummary), facts.evidenceRoot);
    constexpr std::string_view refused = "not kept: ";
    if (fact.evidence == "none" || facts.evidenceRoot.empty()) {
        decision.evidence = LoggedDecision::Evidence::none;
    } else if (fact.evidence.starts_with(refused)) {
        decision.evidence = LoggedDecision::Evidence::notKept;
        decision.reason = fact.evidence.substr(refused.size());
    } else {
        decision.evidence = LoggedDecision::Evidence::kept;
    }
    if (facts.note == "withdrawal") into.withdrawn.emplace(facts.about);
    if (!facts.graphAfter.empty()) into.sealedGraphs.emplace(facts.graphAfter);
    if (fact.adopted) adopted_.insert(fact.record);
    kept.try_emplace(fact.record);
    into.decisions.push_back(std::move(decision));
}

void ProofReading::readGraph() {
    const auto graph = readFile(folders_.outputs / "soc2-mesh-bondgraph.json", largestGraph);
    if (!graph) return;
    graphNow = sha256Hex(*graph);
    organisationNow = payloads_.organisationOf(*graph);
}

std::string ProofReading::organisationOf(const std::string& graph) {
    const auto bytes = vault_.read(graph, largestGraph);
    return bytes ? payloads_.organisationOf(*bytes) : "";
}

void ProofReading::readVault() {
    for (auto& [hash, record] : kept) {
        const auto bytes = vault_.read(hash, largestRecord);
        if (!bytes) continue;
        record.kept = true;
        if (adopted_.contains(hash)) record.asOf = payloads_.payloadFacts(*bytes).asOf;
    }
}

void ProofReading::hashRecords() {
    std::vector<ReadRecord> readable;
    for (ReadRecord& record : records) {
        const fs::path path = folders_.outputs / record.name;
        const auto bytes = readFile(path, largestRecord);
        if (!bytes) {
            // What is no file is no record, whatever its name.
            std::error_code unknown;
            if (!fs::is_regular_file(path, unknown)) continue;
            record.reason = bytes.error().description;
        } else {
            record.hash = sha256Hex(*bytes);
            const auto known = kept.find(record.hash);
            if (known != kept.end() && known->second.asOf.empty() &&
                adopted_.contains(record.hash)) {
                known->second.asOf = payloads_.payloadFacts(*bytes).asOf;
            }
        }
        readable.push_back(std::move(record));
    }
    records = std::move(readable);
}

} // namespace kelvo
