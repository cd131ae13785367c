#pragma once

#include "intents/KelvoIntents.h"

#include <tl/expected.hpp>

#include <optional>
#include <string>
#include <string_view>

/// What a grammar-driven speech recogniser needs to hear the phrases of `KelvoShortcuts`, and what
/// it heard. A grammar alone would bend everything that is said into one of its phrases; so single
/// speech sounds and sentences that are none compete with the phrases.
namespace kelvo::VoiceGrammar {

/// The grammar, in the Java Speech Grammar Format 1.0.
std::string grammar();

/// The grammar's words with their sounds, one pronunciation a line, in the format of the CMU
/// Pronouncing Dictionary. The sounds are taken from `dictionary`, the whole text of one in the
/// same format, except those of the product's own name. Fails with the first word that it lacks.
tl::expected<std::string, std::string> pronunciations(std::string_view dictionary);

/// What a recogniser's hypothesis asks for, if anything. A stray sound before the phrase counts as
/// breath, two before an adoption; none is forgiven before the phrase that seals.
std::optional<Intent> heard(std::string_view hypothesis);

} // namespace kelvo::VoiceGrammar
