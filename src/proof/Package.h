#pragma once

#include "proof/Bag.h"
#include "proof/Checkpoint.h"
#include "proof/ProofComparison.h"

#include <filesystem>
#include <string>
#include <vector>

namespace kelvo {

/// What is handed over. A value, so that it can be written on another thread.
struct PackageRequest {
    ProofFolders folders;
    ProofComparison comparison;          ///< of all logs, as they are to be packed
    Checkpoint checkpoint;               ///< of these logs
    std::filesystem::path destination;   ///< a folder
    std::string program;                 ///< version
    std::vector<std::string> warnings{}; ///< what is told and did not keep it from being written
    bool anyway = false;                 ///< write what there is
};

struct PackageWritten {
    std::filesystem::path folder;
    std::string number; ///< SHA-256 of the tag manifest
};

/// Why a package of these logs would not be whole, a sentence each: no period, a log that is
/// damaged, gone, changed or in two copies, a record or kept evidence that is not there. Looks at
/// names only.
std::vector<std::string> packageRefusals(const ProofFolders& folders,
                                         const ProofComparison& comparison);

/// "kelvo-audit-<first 8 of the own log's id>-<its lines, 6 digits>-<YYYYMMDD of the checkpoint>".
std::string packageName(const Checkpoint& checkpoint);

/// Writes the folder: logs, records, evidence, the report's documents, graph and role files,
/// checkpoints and sheets, with their manifests. Every file's bytes are compared with the hash that
/// was sealed; where one is not there or another, this fails with the sentence, or goes on
/// `anyway` and says so among the warnings. On failure nothing is left behind.
tl::expected<PackageWritten, FileError> writePackage(PackageRequest request,
                                                     const Bag::Progress& progress = {});

} // namespace kelvo
