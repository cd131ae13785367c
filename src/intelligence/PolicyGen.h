#pragma once

#include "ports/LanguageModel.h"

#include <functional>
#include <optional>
#include <string>

namespace kelvo::PolicyGen {

/// Asks the model for a formal document for one criterion, grounded only in what the criterion's
/// evidence text says before its "GAP:" marker. The text is trimmed; none when the model is
/// unavailable, fails or writes nothing. `done` is called once; from inside this call only where
/// the model is unavailable.
void generate(LanguageModel& model, const std::string& criterionID,
              const std::string& criterionEvidence, const std::string& owner,
              std::function<void(std::optional<std::string>)> done);

} // namespace kelvo::PolicyGen
