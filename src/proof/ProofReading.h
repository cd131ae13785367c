#pragma once

#include "base/FolderReader.h"
#include "base/Sha256.h"
#include "proof/LineParser.h"
#include "proof/ProofComparison.h"
#include "proof/SealLog.h"
#include "proof/Vault.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace kelvo {

/// Of an ISO 8601 moment; 0 for what is none.
std::int64_t secondsSince1970(std::string_view moment);

/// A log with what its lines say, before it is known whether it belongs.
struct ReadLog {
    ComparedLog log;
    std::vector<LoggedDecision> decisions;
    std::set<std::string> graphs;       ///< SHA-256 of the graph of each run
    std::set<std::string> withdrawn;    ///< blocks that a note takes back
    std::set<std::string> sealedGraphs; ///< that a sealed change of the organisation made
    std::set<std::string> supplied;     ///< evidence that was kept later
    bool torn = false;
};

/// A record file in the outputs folder.
struct ReadRecord {
    std::string name;
    std::optional<Sha256Digest> hash; ///< none where it cannot be read
    std::string reason;
};

/// What a record in the vault or the outputs folder adds to a decision.
struct KeptRecord {
    bool kept = false;    ///< the vault has the bytes of that hash
    bool adopted = false; ///< a line adopted it, so that its own time counts
    std::string asOf;     ///< where it was adopted
};

/// How far logs are read: the own one whole, the others up to a line, or not at all where they are
/// not named.
struct ReadLimits {
    std::string own;
    const std::map<std::string, std::int64_t>* until = nullptr; ///< none: all logs whole

    std::int64_t of(const std::string& log) const;
};

/// Reads the files that a comparison compares. Changes nothing.
class ProofReading {
public:
    explicit ProofReading(const ProofFolders& folders, ReadLimits limits = {});

    /// Reads all. The names in the outputs folder are listed first: whatever is found there was
    /// written before the logs were read.
    void read();

    std::vector<ReadLog> logs;
    std::vector<ReadLog> copies; ///< files that hold a log under a name that is not a log's
    std::vector<ReadRecord> records;
    std::string graphNow; ///< SHA-256 of the readiness graph, "" where there is none
    std::string organisationNow;

    /// What is kept of a decision's record; nothing for any other hash.
    const KeptRecord* keptOf(std::string_view hash) const;

    /// Whether the vault has a regular file of that name; its bytes are not looked at.
    bool inVault(const std::string& root) const;

    /// The organisation that a graph in the vault names.
    std::string organisationOf(const std::string& graph);

private:
    void listRecords();
    void readLogs();
    void readGraph();
    void hashRecords();
    void readVault();
    void take(KeptRecord& record, std::string_view bytes);
    std::optional<ReadLog> readLog(const std::filesystem::path& file);
    void readDecision(const SealLineView& line, DecisionLine& fact, ReadLog& into);

    ProofFolders folders_;
    ReadLimits limits_;
    Vault vault_;
    FolderReader outputFiles_;
    FolderReader vaultFiles_;
    std::unordered_map<Sha256Digest, KeptRecord, Sha256DigestHash> kept_; ///< of every decision
    std::vector<Sha256Digest> vaultNames_; ///< in an order of their own
    LineParser payloads_;
    SealLogReader lines_;
};

} // namespace kelvo
