#pragma once

#include "proof/ProofComparison.h"
#include "proof/ProofReading.h"
#include "proof/Waiting.h"

#include <string>
#include <vector>

namespace kelvo {

/// Compares the record files and the kept evidence with the decisions in `result`, and tells there
/// what is unlisted, altered, gone, not kept or not counted.
void compareRecords(const ProofInput& input, const ProofReading& reading, Waiting& waiting,
                    ProofComparison& result);

/// The criteria whose level is higher in the readiness graph than in the kept one of that hash,
/// without a decision that closes them.
std::vector<RaisedLevel> raisedLevels(const ProofFolders& folders, const std::string& graph,
                                      const std::vector<LoggedDecision>& decisions);

} // namespace kelvo
