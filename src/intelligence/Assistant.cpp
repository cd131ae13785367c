#include "intelligence/Assistant.h"

#include "intelligence/GenerableRecords.h"
#include "intelligence/ModelSession.h"

#include <utility>

namespace kelvo::Assistant {
namespace {

constexpr const char* instructions =
    "You are the assistant for a SOC 2 compliance app called Pellum. Answer ONLY from the context\n"
    "you are given — the user's current readiness, criteria, and gaps. Be concise and plain; never "
    "use\n"
    "internal/technical jargon (no \"bond graph\", \"totem\", \"dissipation\", \"causality\"). "
    "Never invent\n"
    "compliance facts — if the context does not say it, say you don't have that information.\n"
    "If the user is asking to DO something, map it to the `action` field. The action MUST be "
    "EXACTLY\n"
    "one of these tokens (no prose, no extra words):\n"
    "  none | play | pause | add_evidence | snapshot_os | generate:<criterionId>\n"
    "When the user asks to CREATE, WRITE, DRAFT, or GENERATE a policy/document for a criterion, "
    "use\n"
    "generate:<criterionId> with a REAL criterion id copied exactly from the context (e.g.\n"
    "generate:CC9-vendor-risk). For anything else — readiness questions, explanations, or anything "
    "you\n"
    "are unsure of — set action to \"none\". The answer must always be present and plain.";

} // namespace

void ask(LanguageModel& model, const std::string& question, const std::string& context,
         std::function<void(std::optional<AssistantReply>)> done) {
    if (!modelAvailable(model)) return done(std::nullopt);
    kelvo::generate<GeneratedAssistantReply>(
        model, instructions, "Current state:\n" + context + "\n\nUser: " + question,
        [done = std::move(done)](tl::expected<GeneratedAssistantReply, ModelFailure> reply) {
            if (!reply) return done(std::nullopt);
            done(AssistantReply{std::move(reply->answer), std::move(reply->action)});
        });
}

} // namespace kelvo::Assistant
