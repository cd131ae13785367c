#pragma once

#include "proof/Checkpoint.h"
#include "proof/ProofComparison.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// A record file of the package.
struct PackedRecord {
    std::string path;    ///< below "data/"; "" where it is not there
    std::string firedBy; ///< the presence record that the file holds
};

/// Evidence of the package, one a hash.
struct PackedEvidence {
    std::string root;
    std::string path; ///< below "data/"; "" where it is missing
    std::uintmax_t bytes = 0;
    std::vector<std::size_t> decisions; ///< its closings, as places in the list of decisions
};

/// What a package tells in its sheets.
struct PackageContent {
    ProofComparison comparison; ///< the logs as they are packed; its standing is the package's
    Checkpoint checkpoint;
    std::vector<PackedRecord> records;    ///< one a decision
    std::vector<PackedEvidence> evidence; ///< in the order of first closings
    std::vector<std::string> warnings;    ///< sentences
};

/// "5B0E64C8:6", lines counted from 1.
std::string logLine(const LoggedDecision& decision);

/// One cell as RFC 4180 has it. One that a spreadsheet would take for a formula begins with "'".
std::string csvCell(std::string_view text);

/// The three sheets: RFC 4180, UTF-8 with a byte order mark, CR LF. See docs/file-formats.md for
/// their columns.
std::string readinessSheet(const PackageContent& content);
std::string evidenceSheet(const PackageContent& content);
std::string decisionsSheet(const PackageContent& content);

/// summary.json.
std::string packageSummary(const PackageContent& content);

} // namespace kelvo
