#include "intents/KelvoIntents.h"

#include "engine/EngineVM.h"
#include "intelligence/ModelSession.h"
#include "intelligence/SiriBridge.h"

#include <algorithm>
#include <utility>

namespace kelvo {
namespace {

/// Hands the engine work of an intent that opens the application. While the person is being asked
/// something, the window stays where it is, too: it must not cover the question.
void inFront(const IntentContext& context, std::function<void()> work) {
    context.engine.resumption()([openApp = context.openApp, work = std::move(work)] {
        if (openApp) openApp();
        work();
    });
}

} // namespace

std::string rawValue(CCFamily family) {
    return "CC" + std::to_string(static_cast<int>(family) + 1);
}

std::string displayName(CCFamily family) {
    return rawValue(family);
}

std::optional<CCFamily> ccFamily(std::string_view raw) {
    for (const CCFamily family : allCCFamilies) {
        if (rawValue(family) == raw) return family;
    }
    return std::nullopt;
}

void AskKelvoAgentIntent::perform(const IntentContext& context, IntentDone done) const {
    if (context.model.osMajorVersion() < requiredOsMajorVersion) {
        // Fixed text, see docs/decisions.md.
        return done("Apple Intelligence needs macOS 26.");
    }
    EngineVM& engine = context.engine;
    SiriBondGraph::ask(
        context.model, question,
        [&engine, resume = engine.resumption(), question = question,
         done = std::move(done)](tl::expected<SiriBondGraph::Answer, SiriBondGraph::Failure> got) {
            resume([&engine, question, done, got = std::move(got)] {
                if (!got) {
                    return done(
                        tl::unexpected(IntentFailure{SiriBondGraph::description(got.error())}));
                }
                if (got->graph) {
                    engine.siriBuilt(*got->graph, question);
                } else {
                    engine.siriSay(got->answer);
                }
                done(got->answer);
            });
        });
}

void AdoptFamilyIntent::perform(const IntentContext& context, IntentDone done) const {
    const std::string id = rawValue(family);
    const auto found = std::ranges::find(context.families, id, &SOC2Template::id);
    if (found == context.families.end()) return done("I don't know family " + id + ".");
    EngineVM& engine = context.engine;
    inFront(context, [&engine, adopted = *found, done = std::move(done)] {
        engine.adopt(adopted);
        done("Setting up " + adopted.title +
             ". Say “Run Kelvo SOC2”, then “Approve in Kelvo SOC2” to save it.");
    });
}

void PlayKelvoIntent::perform(const IntentContext& context, IntentDone done) const {
    EngineVM& engine = context.engine;
    inFront(context, [&engine, done = std::move(done)] {
        engine.play();
        done("Running. I’ll pause and ask you to approve if anything needs review.");
    });
}

void SealKelvoIntent::perform(const IntentContext& context, IntentDone done) const {
    EngineVM& engine = context.engine;
    inFront(context, [&engine, done = std::move(done)] {
        engine.bondCollapse();
        // Fixed text, see docs/decisions.md.
        done("Confirm with Touch ID to approve and save this to your record.");
    });
}

const std::vector<Intent>& oneOfEach() {
    static const auto all = []<std::size_t... i>(std::index_sequence<i...>) {
        return std::vector<Intent>{std::variant_alternative_t<i, Intent>()...};
    }
    (std::make_index_sequence<std::variant_size_v<Intent>>());
    return all;
}

const IntentType& typeOf(const Intent& intent) {
    return std::visit([](const auto& each) -> const IntentType& { return each.type; }, intent);
}

void perform(const Intent& intent, const IntentContext& context, IntentDone done) {
    std::visit([&](const auto& each) { each.perform(context, std::move(done)); }, intent);
}

} // namespace kelvo
