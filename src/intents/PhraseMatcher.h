#pragma once

#include "intents/KelvoShortcuts.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// What a sentence asks for, if it is one of the phrases of `KelvoShortcuts`, whole and in order.
/// Letter case, punctuation and white space are forgiven, digits may be words ("six") and
/// abbreviations may be spelled ("c c six"). Nothing else is: a sentence with a word more, less or
/// other than a phrase asks for nothing, so no near-miss runs anything. Only an ask goes on after
/// its phrase; what follows is the question, as it was written, empty where nothing follows.
std::optional<Intent> matchPhrase(std::string_view sentence);

/// Something to offer a person who is still typing. Nothing runs before they choose it.
struct PhraseOffer {
    Intent intent;
    std::string text;            ///< the phrase, or the question that would be asked
    std::string_view shortTitle; ///< what it does
    bool whole = false;          ///< `typed` is the phrase and not only a part of it
};

/// The phrases that `typed` may be on the way to: each of its words begins a word of the phrase, in
/// order. One offer an intent, at most ten; none for less than three letters and digits, and no ask
/// without a question.
std::vector<PhraseOffer> phraseOffers(std::string_view typed);

} // namespace kelvo
