#include "intelligence/PolicyGen.h"

#include "base/Text.h"
#include "intelligence/ModelSession.h"

#include <utility>

namespace kelvo::PolicyGen {
namespace {

constexpr const char* instructions =
    "You are a SOC 2 compliance writer. Given a criterion id and the organization's ACTUAL facts "
    "and\n"
    "architecture for it, WRITE a concise formal policy/register/runbook document grounded ONLY "
    "in\n"
    "those facts. Do not invent controls not present in the facts. Use plain professional "
    "English.\n"
    "Output the document text only — no preamble, no commentary.";

} // namespace

void generate(LanguageModel& model, const std::string& criterionID,
              const std::string& criterionEvidence, const std::string& owner,
              std::function<void(std::optional<std::string>)> done) {
    if (!modelAvailable(model)) return done(std::nullopt);
    const std::string_view facts =
        trimmed(std::string_view(criterionEvidence).substr(0, criterionEvidence.find("GAP:")));
    generateText(model, instructions,
                 "Criterion: " + criterionID + "\nDocument owner: " + owner +
                     "\nOrganization's actual facts/architecture for this criterion:\n" +
                     std::string(facts) + "\n\nWrite the formal document now.",
                 [done = std::move(done)](tl::expected<std::string, ModelFailure> text) {
                     if (!text) return done(std::nullopt);
                     const std::string_view document = trimmed(*text);
                     if (document.empty()) return done(std::nullopt);
                     done(std::string(document));
                 });
}

} // namespace kelvo::PolicyGen
