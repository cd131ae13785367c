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

struct Shortcut {
    AppShortcut operator()(const AskKelvoAgentIntent& intent) const {
        return {intent.type, {"Ask {app}"}, "Ask the agent", "apple.intelligence"};
    }
    AppShortcut operator()(const AdoptFamilyIntent& intent) const {
        return {intent.type,
                {"Set up {family} in {app}", "Adopt {family} in {app}"},
                "Set up controls",
                "checkmark.seal"};
    }
    AppShortcut operator()(const PlayKelvoIntent& intent) const {
        return {intent.type, {"Run {app}"}, "Run", "play.fill"};
    }
    AppShortcut operator()(const SealKelvoIntent& intent) const {
        return {intent.type, {"Approve in {app}"}, "Approve and save", "touchid"};
    }
};

/// A phrase with each value that it can name.
struct Expand {
    const std::string& text;

    std::vector<SpokenPhrase> operator()(const AskKelvoAgentIntent& intent) const {
        return {{text, intent}};
    }
    std::vector<SpokenPhrase> operator()(const AdoptFamilyIntent&) const {
        std::vector<SpokenPhrase> each;
        each.reserve(allCCFamilies.size());
        for (const CCFamily family : allCCFamilies)
            each.push_back(
                {filled(text, familyPlace, displayName(family)), AdoptFamilyIntent{family}});
        return each;
    }
    std::vector<SpokenPhrase> operator()(const PlayKelvoIntent& intent) const {
        return {{text, intent}};
    }
    std::vector<SpokenPhrase> operator()(const SealKelvoIntent& intent) const {
        return {{text, intent}};
    }
};

} // namespace

const std::vector<AppShortcut>& appShortcuts() {
    static const std::vector<AppShortcut> shortcuts = [] {
        std::vector<AppShortcut> all;
        for (const Intent& intent : oneOfEach())
            all.push_back(std::visit(Shortcut(), intent));
        return all;
    }();
    return shortcuts;
}

const std::vector<SpokenPhrase>& spokenPhrases() {
    static const std::vector<SpokenPhrase> all = [] {
        std::vector<SpokenPhrase> phrases;
        for (const Intent& intent : oneOfEach()) {
            for (const std::string_view phrase : shortcutOf(intent).phrases) {
                const std::string text = filled(std::string(phrase), appPlace, applicationName);
                std::ranges::move(std::visit(Expand{text}, intent), std::back_inserter(phrases));
            }
        }
        return phrases;
    }();
    return all;
}

const AppShortcut& shortcutOf(const Intent& intent) {
    return appShortcuts()[intent.index()];
}

} // namespace kelvo::KelvoShortcuts
