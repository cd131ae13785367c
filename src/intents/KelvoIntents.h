#pragma once

#include "compliance/SOC2Templates.h"
#include "ports/LanguageModel.h"

#include <tl/expected.hpp>

#include <array>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kelvo {

class EngineVM;

/// A control family as an intent's parameter.
enum class CCFamily { cc1, cc2, cc3, cc4, cc5, cc6, cc7, cc8, cc9 };

inline constexpr std::string_view ccFamilyTypeName = "SOC2 control family";
inline constexpr auto allCCFamilies = [] {
    std::array<CCFamily, SOC2Templates::count> all{};
    for (std::size_t i = 0; i < all.size(); ++i)
        all[i] = static_cast<CCFamily>(i);
    return all;
}();
static_assert(allCCFamilies.back() == CCFamily::cc9, "one enumerator a template");

/// "CC1" to "CC9": the id of the family's template.
std::string rawValue(CCFamily family);
/// How the family is shown and spoken.
std::string displayName(CCFamily family);
/// The family with exactly this raw value, if there is one.
std::optional<CCFamily> ccFamily(std::string_view raw);

/// Why an intent came to nothing.
struct IntentFailure {
    std::string description;
    bool operator==(const IntentFailure&) const = default;
};

/// Gets the intent's dialog, which is shown or spoken, or its failure. Called at most once, on the
/// engine's thread; never, where the engine ends first.
using IntentDone = std::function<void(tl::expected<std::string, IntentFailure>)>;

/// What the intents act on. What is referred to must outlive every intent that is under way.
struct IntentContext {
    EngineVM& engine;
    LanguageModel& model;
    std::span<const SOC2Template> families = SOC2Templates::all();
    /// Brings the application to the front; called by an intent that opens it, when its turn comes.
    std::function<void()> openApp{};
};

/// What an intent looks like from outside.
struct IntentType {
    std::string_view name;           ///< the type's name, unique among the intents
    std::string_view title;          ///< what it does
    bool opensApp = false;           ///< the application comes to the front when the intent runs
    std::string_view parameterTitle; ///< empty for an intent without a parameter
    bool operator==(const IntentType&) const = default;
};

// The four intents. Each hands the engine its work in turn: where the person is being asked
// something, the work waits, and the dialog is given once the work has been done, so that no dialog
// claims what has not happened yet.

/// Asks the model; builds what the question describes, or says the answer. The dialog is the
/// answer. A failing model call is the intent's failure and changes nothing.
struct AskKelvoAgentIntent {
    static constexpr IntentType type{"AskKelvoAgentIntent", "Ask the SOC2 agent", false,
                                     "Question"};
    std::string question{};

    void perform(const IntentContext& context, IntentDone done) const;
    bool operator==(const AskKelvoAgentIntent&) const = default;
};

/// Adds a control family to the system.
struct AdoptFamilyIntent {
    static constexpr IntentType type{"AdoptFamilyIntent", "Adopt a SOC2 control family", true,
                                     "Family"};
    CCFamily family{};

    void perform(const IntentContext& context, IntentDone done) const;
    bool operator==(const AdoptFamilyIntent&) const = default;
};

/// Starts the simulation.
struct PlayKelvoIntent {
    static constexpr IntentType type{"PlayKelvoIntent", "Run", true, {}};

    void perform(const IntentContext& context, IntentDone done) const;
    bool operator==(const PlayKelvoIntent&) const = default;
};

/// Asks the person at the computer to prove their presence, and then seals the staged measurement.
/// The dialog follows the answer and is the same whatever it was, also where nothing is staged.
struct SealKelvoIntent {
    static constexpr IntentType type{"SealKelvoIntent", "Approve and save", true, {}};

    void perform(const IntentContext& context, IntentDone done) const;
    bool operator==(const SealKelvoIntent&) const = default;
};

/// Whoever tells intents apart visits this with a function for each and no default, so that a
/// further intent does not compile before all of them know it.
using Intent =
    std::variant<AskKelvoAgentIntent, AdoptFamilyIntent, PlayKelvoIntent, SealKelvoIntent>;

/// One of each intent, with an empty parameter, in the order of the variant.
const std::vector<Intent>& oneOfEach();

const IntentType& typeOf(const Intent& intent);
void perform(const Intent& intent, const IntentContext& context, IntentDone done);

} // namespace kelvo
