#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// A place of a draft that a person should look at before approving it.
struct WordingPlace {
    enum class Kind {
        frequency,  ///< "periodically"
        discretion, ///< "as appropriate"
        measure,    ///< "adequate"
        duty,       ///< "should"
        list,       ///< "etc."
        actor,      ///< "must be", and nobody is named in the sentence
        number,     ///< one that nobody has given
        blank,      ///< "[To be completed: …]"
    };

    std::size_t start = 0; ///< in bytes of the text, as is `length`
    std::size_t length = 0;
    Kind kind = Kind::blank;

    bool operator==(const WordingPlace&) const = default;
};

/// Where a draft's numbers may come from.
struct WordingSources {
    std::string_view facts;      ///< all that is on record for the criterion, its id included
    std::string_view drafted;    ///< the text as it was drafted: what is not in it, a person wrote
    std::chrono::sys_days day{}; ///< of drafting; a full date from then on is a plan, no fact
};

/// The places of an English text that are empty, vague or hold a number without a source, in the
/// order of the text; of those that overlap the widest. Pure, and linear in the text.
std::vector<WordingPlace> wordingPlaces(std::string_view text, const WordingSources& sources);

/// "frequency", "blank" …
std::string_view wordingKind(WordingPlace::Kind kind);

/// What the place leaves open: "how often?".
std::string_view wordingQuestion(WordingPlace::Kind kind);

/// "4 empty places, 2 vague" for people; for no places that none was found.
std::string wordingCount(const std::vector<WordingPlace>& places);

} // namespace kelvo
