#pragma once

#include "intents/KelvoIntents.h"

#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// An intent with the phrases by which it is called.
struct AppShortcut {
    IntentType intent;
    std::vector<std::string_view> phrases; ///< with "{app}" and "{family}" in place of their names
    std::string_view shortTitle;
    std::string_view systemImageName;
};

/// A phrase as it is said, and what it asks for. The question of an ask is empty: it is still to be
/// asked for.
struct SpokenPhrase {
    std::string text;
    Intent intent;
    bool operator==(const SpokenPhrase&) const = default;
};

/// The phrases that call the intents.
namespace KelvoShortcuts {

/// What the application is called when it is spoken to.
inline constexpr std::string_view applicationName = "Kelvo SOC2";

/// The four shortcuts, in the order in which they are shown.
const std::vector<AppShortcut>& appShortcuts();

/// Every phrase of every shortcut, with each family in turn.
const std::vector<SpokenPhrase>& spokenPhrases();

/// The shortcut that calls this intent.
const AppShortcut& shortcutOf(const Intent& intent);

} // namespace KelvoShortcuts
} // namespace kelvo
