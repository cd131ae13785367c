#pragma once

#include "intelligence/GenerableRecords.h"
#include "ports/LanguageModel.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo::EvidenceMapper {

/// How many user-perceived characters of a document reach the model.
inline constexpr std::size_t charactersSent = 6000;

/// Asks the model which of `criterionIDs` a document is evidence for. The result is the model's own
/// and not checked against the ids; none when the model is unavailable or fails. `done` is called
/// once; from inside this call only where the model is unavailable.
void mapEvidence(LanguageModel& model, std::string_view text,
                 const std::vector<std::string>& criterionIDs,
                 std::function<void(std::optional<EvidenceMapping>)> done);

} // namespace kelvo::EvidenceMapper
