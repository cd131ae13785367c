// Phrases, ids and requests, in tests/data/intents.

#include "base/Text.h"
#include "intents/IntentRequest.h"
#include "intents/KelvoShortcuts.h"
#include "intents/PhraseMatcher.h"
#include "intents/VoiceGrammar.h"
#include "support/Story.h"

#include <set>
#include <sstream>

namespace kelvo::test {
namespace {

std::string shown(const std::optional<Intent>& intent) {
    return intent ? intentId(*intent) : "none";
}

std::string shown(const tl::expected<Intent, std::string>& intent) {
    return intent ? intentId(*intent) : "REFUSED " + intent.error();
}

class IntentFacts : public Facts {
public:
    IntentFacts() {
        figures["matches"] = [](Rest said) { return shown(matchPhrase(said)); };
        figures["hears"] = [](Rest said) { return shown(VoiceGrammar::heard(said)); };
        figures["offers"] = [](Rest typed) {
            std::vector<std::string> lines;
            for (const PhraseOffer& offer : phraseOffers(typed))
                lines.push_back((offer.whole ? "whole " : "") + offer.text);
            return joined(lines, " | ");
        };
        figures["id"] = [](Rest id) { return shown(readIntentId(id)); };
        figures["request"] = [](Rest rest) {
            const auto space = std::min(rest.find(' '), rest.size());
            return shown(
                readIntent(rest.substr(0, space), rest.substr(std::min(space + 1, rest.size()))));
        };
        figures["longest"] = [](Rest size) -> std::string {
            const auto intent = readIntent("ask", std::string(std::stoul(size), 'x'));
            return intent ? "taken" : shown(intent);
        };
        figures["shortcuts"] = [](Rest) {
            std::vector<std::string> lines;
            for (const AppShortcut& each : KelvoShortcuts::appShortcuts()) {
                std::ostringstream line;
                line << each.intent.name << " | " << each.shortTitle << " | "
                     << each.systemImageName;
                for (const std::string_view phrase : each.phrases)
                    line << " | " << phrase;
                lines.push_back(line.str());
            }
            return joined(lines, "\n");
        };
        figures["phrases"] = [](Rest) {
            std::vector<std::string> lines;
            for (const SpokenPhrase& phrase : KelvoShortcuts::spokenPhrases()) {
                EXPECT_EQ(matchPhrase(phrase.text), phrase.intent) << phrase.text;
                lines.push_back(phrase.text);
            }
            return joined(lines, "\n");
        };
        figures["types"] = [](Rest) {
            std::vector<std::string> lines;
            for (const Intent& intent : {Intent(AskKelvoAgentIntent{}), Intent(AdoptFamilyIntent{}),
                                         Intent(PlayKelvoIntent{}), Intent(SealKelvoIntent{})}) {
                const IntentType& type = typeOf(intent);
                lines.push_back(std::string(type.title) + " | " + std::string(type.parameterTitle) +
                                (type.opensApp ? " | opens" : ""));
            }
            return joined(lines, "\n");
        };
    }
};

const int told = tellScenes<IntentFacts>("Facts", KELVO_DATA "/intents");

std::vector<std::string> wordsOf(const std::string& text) {
    std::istringstream in(text);
    return {std::istream_iterator<std::string>(in), {}};
}

/// Every phrase with one word dropped, doubled, negated or put elsewhere, or one letter changed.
TEST(PhraseMatcher, NoNearMissRunsAnything) {
    int tried = 0;
    const auto miss = [&tried](const std::string& said) {
        EXPECT_EQ(matchPhrase(said), std::nullopt) << said;
        ++tried;
    };
    for (const SpokenPhrase& phrase : KelvoShortcuts::spokenPhrases()) {
        if (std::holds_alternative<AskKelvoAgentIntent>(phrase.intent)) continue;
        const std::vector<std::string> words = wordsOf(phrase.text);
        for (std::size_t i = 0; i < words.size(); ++i) {
            auto changed = words;
            changed.erase(changed.begin() + static_cast<std::ptrdiff_t>(i));
            miss(joined(changed, " "));
            for (const std::string& more : {words[i], std::string("not")}) {
                changed = words;
                changed.insert(changed.begin() + static_cast<std::ptrdiff_t>(i), more);
                miss(joined(changed, " "));
            }
            if (i == 0) continue;
            changed = words;
            std::swap(changed[i - 1], changed[i]);
            miss(joined(changed, " "));
        }
        miss(phrase.text + " now");
        for (std::size_t i = 0; i < phrase.text.size(); ++i) {
            std::string changed = phrase.text;
            changed[i] = 'q';
            miss(changed);
        }
    }
    EXPECT_GT(tried, 700);
    EXPECT_EQ(matchPhrase("Ask Kelvo SOC2 " + std::string(20'000, 'x')), std::nullopt);
}

/// The words of the grammar's rules, without its signs.
std::set<std::string> saidWords() {
    std::string text = VoiceGrammar::grammar();
    const std::size_t start = text.find("<phrase> = ");
    text = text.substr(start, text.find("<other> = ") - start);
    for (char& sign : text) {
        if (std::string_view("()|=;").find(sign) != std::string_view::npos) sign = ' ';
    }
    const auto words = wordsOf(text);
    std::set<std::string> said(words.begin(), words.end());
    std::erase_if(said, [](const std::string& word) { return word.front() == '<'; });
    return said;
}

TEST(VoiceGrammar, KnowsTheSoundsOfEveryWordInIt) {
    EXPECT_NE(VoiceGrammar::grammar().find(" set up c c one in kelvo soc two\n"),
              std::string::npos);
    std::string dictionary = "one W AH N\none(2) HH W AH N\nonerous OW N\nsoc S OW K\n";
    for (const std::string& word : saidWords()) {
        if (word != "one" && word != "soc" && word != "kelvo") dictionary += word + " X\n";
    }
    const auto words = VoiceGrammar::pronunciations(dictionary);
    ASSERT_TRUE(words) << words.error();
    for (const char* line : {"\none W AH N\none(2) HH W AH N\n", "\nkelvo K EH L V OW\n",
                             "\nsoc S AA K\nsoc(2) EH S OW S IY\n"})
        EXPECT_NE(words->find(line), std::string::npos) << line;
    EXPECT_EQ(words->find("onerous"), std::string::npos);
    EXPECT_GT(saidWords().size(), 35U);
    for (const std::string& word : saidWords())
        EXPECT_NE(("\n" + *words).find("\n" + word + " "), std::string::npos) << word;
    EXPECT_EQ(VoiceGrammar::pronunciations("ask AE S K\n").error(), "adopt");
}

} // namespace
} // namespace kelvo::test
