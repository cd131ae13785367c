#include "proof/ProofReading.h"

#include "base/Time.h"
#include "proof/RecordRebuild.h"

#include <algorithm>
#include <chrono>
#include <limits>

namespace kelvo {
namespace fs = std::filesystem;
namespace {

constexpr std::string_view recordSuffix = ".totem.json";
constexpr std::string_view logPrefix = "seals-";
constexpr std::string_view logSuffix = ".ndjson";
constexpr std::size_t largestGraph = std::size_t{16} << 20;

std::vector<std::string> sortedNames(const FolderReader& folder) {
    std::vector<std::string> names;
    folder.eachName([&](std::string_view name) { names.emplace_back(name); });
    std::sort(names.begin(), names.end());
    return names;
}

/// An order of digests, any one, that mostly takes a single comparison of numbers.
bool before(const Sha256Digest& a, const Sha256Digest& b) {
    const Sha256DigestHash first;
    return first(a) != first(b) ? first(a) < first(b) : a < b;
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

std::int64_t ReadLimits::of(const std::string& log) const {
    if (until == nullptr || log == own) return std::numeric_limits<std::int64_t>::max();
    const auto found = until->find(log);
    return found == until->end() ? 0 : found->second;
}

ProofReading::ProofReading(const ProofFolders& folders, ReadLimits limits)
    : folders_(folders), limits_(std::move(limits)), vault_(folders, ""),
      outputFiles_(folders.outputs), vaultFiles_(folders.vault()) {
}

void ProofReading::read() {
    listRecords();
    readLogs();
    readGraph();
    hashRecords();
    readVault();
}

void ProofReading::listRecords() {
    outputFiles_.eachName([this](std::string_view name) {
        if (name.ends_with(recordSuffix)) records.push_back({std::string(name), {}, {}});
    });
}

void ProofReading::readLogs() {
    for (const std::string& name : sortedNames(FolderReader(folders_.proof()))) {
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
    std::int64_t limit = 0;
    const auto each = [&](const SealLineView& line) {
        if (const auto* begin = std::get_if<BeginLine>(&line.fact)) limit = limits_.of(begin->log);
        if (line.seq >= limit) return;
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
        } else if (auto* decision = std::get_if<DecisionLine>(&line.fact)) {
            readDecision(line, *decision, into);
            into.decisions.back().time = greatest;
        } else if (const auto* supply = std::get_if<SupplyLine>(&line.fact)) {
            into.supplied.insert(supply->root);
        }
    };
    const auto reading = lines_.read(file, each);
    if (!reading) return std::nullopt;
    log.end = reading->end;
    if (log.end.lines > limit) {
        if (limit == 0) return std::nullopt;
        log.end = {limit, hex(log.marks.back().head)};
        return into;
    }
    if (reading->damage) {
        log.damagedLine = reading->damage->line;
        log.unreadable = reading->damage->unreadable;
    }
    into.torn = reading->tornEnd();
    return into;
}

void ProofReading::readDecision(const SealLineView& line, DecisionLine& fact, ReadLog& into) {
    const PayloadFacts facts = payloads_.payloadFacts(line.payload);
    LoggedDecision decision;
    decision.log = into.log.id;
    decision.line = line.seq + 1;
    decision.computer = into.log.computer;
    decision.run = fact.run;
    decision.adopted = fact.adopted;
    decision.ts = line.ts;
    if (const auto digest = digestOfHex(fact.record)) {
        KeptRecord& record = kept_.try_emplace(*digest).first->second;
        record.adopted = record.adopted || fact.adopted;
    }
    decision.account = std::move(fact.account);
    decision.approved = std::move(fact.approval.sentence);
    decision.file = std::move(fact.file);
    decision.record = std::move(fact.record);
    decision.block = std::move(fact.block);
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

const KeptRecord* ProofReading::keptOf(std::string_view hash) const {
    const auto digest = digestOfHex(hash);
    const auto found = digest ? kept_.find(*digest) : kept_.end();
    return found == kept_.end() ? nullptr : &found->second;
}

bool ProofReading::inVault(const std::string& root) const {
    const auto digest = digestOfHex(root);
    return digest && std::binary_search(vaultNames_.begin(), vaultNames_.end(), *digest, before);
}

/// The bytes of a decision's record are here.
void ProofReading::take(KeptRecord& record, std::string_view bytes) {
    if (record.asOf.empty() && record.adopted) record.asOf = payloads_.payloadFacts(bytes).asOf;
}

void ProofReading::hashRecords() {
    for (ReadRecord& record : records) {
        const auto bytes = outputFiles_.read(record.name, largestRecord);
        if (!bytes) {
            record.reason = bytes.error().description;
        } else {
            const Sha256Digest digest = sha256(*bytes);
            record.hash = digest;
            if (const auto known = kept_.find(digest); known != kept_.end()) {
                take(known->second, *bytes);
                // Bytes that are the same have the same hash: they need not be hashed twice.
                const auto copy = vaultFiles_.read(hex(digest), largestRecord);
                known->second.kept = copy && *copy == *bytes;
            }
        }
    }
}

void ProofReading::readVault() {
    vaultNames_.reserve(2 * kept_.size());
    vaultFiles_.eachName([this](std::string_view name) {
        if (const auto digest = digestOfHex(name)) vaultNames_.push_back(*digest);
    });
    std::sort(vaultNames_.begin(), vaultNames_.end(), before);
    for (auto& [digest, record] : kept_) {
        if (record.kept) continue;
        const auto bytes = vaultFiles_.read(hex(digest), largestRecord);
        if (!bytes || sha256(*bytes) != digest) continue;
        record.kept = true;
        take(record, *bytes);
    }
}

} // namespace kelvo
