#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kelvo {

/// Writes a policy from a drafting prompt ("Criterion: …", "Document owner: …", the facts) in the
/// form that an auditor expects: purpose, scope, policy statements, responsibilities, review. Every
/// statement is one of the given facts, as given; what the facts do not say is left as a blank that
/// begins "[To be completed:". None for a prompt of another form.
std::optional<std::string> draftPolicy(std::string_view prompt);

} // namespace kelvo
