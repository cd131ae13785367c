#pragma once

#include "responder/GroundTexts.h"
#include "responder/Stems.h"

#include <optional>
#include <string>
#include <string_view>

namespace kelvo {

/// Answers a mapping prompt ("Allowed criterion ids: …", "Document text:") with an EvidenceMapping
/// as JSON: the allowed criteria that the document's words speak of, and one sentence that names
/// those words. None for a prompt of another form.
std::optional<std::string> mappingReply(const Stems& stems, const GroundTexts& ground,
                                        std::string_view prompt);

} // namespace kelvo
