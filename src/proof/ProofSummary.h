#pragma once

#include "proof/ProofKeeper.h"

#include <string>
#include <vector>

namespace kelvo {

/// What needs a look, in one sentence without its full stop: "3 records need a look", "1 log and 2
/// records need a look". To be asked only where something does.
std::string lookSentence(const ProofComparison& comparison, const std::vector<Unkept>& unkept);

/// What is in order all the same: "44 decisions are as they were sealed, and both logs are whole."
std::string stillHolds(const ProofComparison& comparison);

/// The lines of trouble for what is not kept yet, one a reason: "The evidence of 1 decision was not
/// kept: the disk is full.", "2 decisions are in no log yet: the folder is read-only."
std::vector<std::string> notKeptLines(const std::vector<Unkept>& unkept);

} // namespace kelvo
