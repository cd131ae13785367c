#include "intents/KelvoShortcuts.h"

#include <algorithm>

namespace kelvo::KelvoShortcuts {
namespace {

constexpr std::string_view appPlace = "{app}";
constexpr std::string_view familyPlace = "{family}";

std::string filled(std::string text, std::string_view place, std::string_view name) {
    const std::size_t at = text.find(place);
    return at == std::string::npos ? text : text.replace(at, place.size(), name);
}

std::vector<SpokenPhrase> expand(std::string_view phrase, const IntentType& type) {
    const std::string text = filled(std::string(phrase), appPlace, applicationName);
    if (type == AskKelvoAgentIntent::type) return {{text, AskKelvoAgentIntent{}}};
    if (type == PlayKelvoIntent::type) return {{text, PlayKelvoIntent{}}};
    if (type == SealKelvoIntent::type) return {{text, SealKelvoIntent{}}};
    std::vector<SpokenPhrase> each;
    each.reserve(allCCFamilies.size());
    for (const CCFamily family : allCCFamilies) {
        each.push_back({filled(text, familyPlace, displayName(family)), AdoptFamilyIntent{family}});
    }
    return each;
}

} // namespace

const std::vector<AppShortcut>& appShortcuts() {
    static const std::vector<AppShortcut> shortcuts{
        {AskKelvoAgentIntent::type, {"Ask {app}"}, "Ask the agent", "apple.intelligence"},
        {AdoptFamilyIntent::type,
         {"Set up {family} in {app}", "Adopt {family} in {app}"},
         "Set up controls",
         "checkmark.seal"},
        {PlayKelvoIntent::type, {"Run {app}"}, "Run", "play.fill"},
        {SealKelvoIntent::type, {"Approve in {app}"}, "Approve and save", "touchid"},
    };
    return shortcuts;
}

const std::vector<SpokenPhrase>& spokenPhrases() {
    static const std::vector<SpokenPhrase> all = [] {
        std::vector<SpokenPhrase> phrases;
        for (const AppShortcut& shortcut : appShortcuts()) {
            for (const std::string_view phrase : shortcut.phrases)
                std::ranges::move(expand(phrase, shortcut.intent), std::back_inserter(phrases));
        }
        return phrases;
    }();
    return all;
}

const AppShortcut& shortcutOf(const Intent& intent) {
    return *std::ranges::find(appShortcuts(), typeOf(intent), &AppShortcut::intent);
}

} // namespace kelvo::KelvoShortcuts
