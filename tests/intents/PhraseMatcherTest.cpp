#include "intents/PhraseMatcher.h"

#include "intents/IntentRequest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace kelvo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::string matched(std::string_view sentence) {
    const auto intent = matchPhrase(sentence);
    return intent ? intentId(*intent) : "nothing";
}

std::vector<std::string> offered(std::string_view typed) {
    std::vector<std::string> lines;
    for (const PhraseOffer& offer : phraseOffers(typed))
        lines.push_back((offer.whole ? "whole " : "") + offer.text);
    return lines;
}

std::vector<std::string> wordsOf(const std::string& text) {
    std::istringstream in(text);
    return {std::istream_iterator<std::string>(in), {}};
}

std::string sentence(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words)
        text += word + " ";
    return text;
}

TEST(KelvoShortcuts, HaveTheirPhrasesTitlesAndImagesInOrder) {
    std::vector<std::string> lines;
    for (const AppShortcut& each : KelvoShortcuts::appShortcuts()) {
        std::ostringstream line;
        line << each.intent.name << " | " << each.shortTitle << " | " << each.systemImageName;
        for (const std::string_view phrase : each.phrases)
            line << " | " << phrase;
        lines.push_back(line.str());
    }
    EXPECT_THAT(lines,
                ElementsAre("AskKelvoAgentIntent | Ask the agent | apple.intelligence | Ask {app}",
                            "AdoptFamilyIntent | Set up controls | checkmark.seal | "
                            "Set up {family} in {app} | Adopt {family} in {app}",
                            "PlayKelvoIntent | Run | play.fill | Run {app}",
                            "SealKelvoIntent | Approve and save | touchid | Approve in {app}"));
    EXPECT_EQ(KelvoShortcuts::spokenPhrases().size(), 21U);
    EXPECT_EQ(KelvoShortcuts::spokenPhrases().front().text, "Ask Kelvo SOC2");
    EXPECT_EQ(KelvoShortcuts::spokenPhrases()[10].text, "Adopt CC1 in Kelvo SOC2");
}

TEST(PhraseMatcher, UnderstandsEveryPhrase) {
    for (const SpokenPhrase& phrase : KelvoShortcuts::spokenPhrases())
        EXPECT_EQ(matchPhrase(phrase.text), phrase.intent) << phrase.text;
}

TEST(PhraseMatcher, ForgivesCasePunctuationAndSpelling) {
    struct Case {
        const char* said;
        const char* intent;
    };
    for (const Case& each :
         {Case{"adopt cc6 in kelvo soc2", "adopt:CC6"},
          Case{"ADOPT C C SIX IN KELVO S O C TWO", "adopt:CC6"},
          Case{"Set up C.C.6 in Kelvo SOC-2!", "adopt:CC6"},
          Case{" set  up\tcc six,\nin “Kelvo SOC 2”. ", "adopt:CC6"},
          Case{"run kelvo soc two", "run"}, Case{"Approve, in Kelvo SOC2", "approve"},
          Case{"ask kelvo soc 2", "ask"}, Case{"Ask Kelvo SOC2, what is CC6?", "ask:what is CC6?"},
          Case{"ask kelvo soc two — “Who?”", "ask:“Who?”"},
          Case{"Ask Kelvo SOC2: approve in Kelvo SOC2", "ask:approve in Kelvo SOC2"},
          Case{"Ask Kelvo SOC2 ...", "ask"}})
        EXPECT_EQ(matched(each.said), each.intent) << each.said;
}

TEST(PhraseMatcher, IsDeafToWhatIsNoPhrase) {
    for (const char* said : {"",
                             " ",
                             "approve",
                             "approve kelvo soc2",
                             "approve in kelvo",
                             "approve in soc2",
                             "don't approve in Kelvo SOC2",
                             "approve in Kelvo SOC2 not",
                             "approve in Kelvo SOC3",
                             "approve in Kelvo SOC22",
                             "approve in Kelvo SOC to",
                             "improve in Kelvo SOC2",
                             "approve in Kelvo sock two",
                             "approve-in-kelvosoc2",
                             "appr0ve in Kelvo SOC2",
                             "а\u0440\u0440rove in Kelvo SOC2",
                             "approve\u200b in Kelvo SOC2",
                             "approve ≠ in Kelvo SOC2",
                             "approve in Kelvo SOC²",
                             "approve in Kelvo SO C2",
                             "a p p r o v e in Kelvo SOC2",
                             "approve and run in Kelvo SOC2",
                             "run Kelvo SOC2 Engine",
                             "adopt in Kelvo SOC2",
                             "adopt CC0 in Kelvo SOC2",
                             "adopt CC10 in Kelvo SOC2",
                             "adopt CC6 CC7 in Kelvo SOC2",
                             "adopt C6 in Kelvo SOC2",
                             "set CC6 up in Kelvo SOC2",
                             "\xff approve in Kelvo SOC2"})
        EXPECT_EQ(matched(said), "nothing") << said;
    EXPECT_EQ(matched("Ask Kelvo SOC2 " + std::string(20'000, 'x')), "nothing");
}

/// Every phrase with one word dropped, doubled, negated or put elsewhere, or one letter changed.
TEST(PhraseMatcher, NoNearMissRunsAnything) {
    int tried = 0;
    for (const SpokenPhrase& phrase : KelvoShortcuts::spokenPhrases()) {
        if (std::holds_alternative<AskKelvoAgentIntent>(phrase.intent)) continue;
        const std::vector<std::string> words = wordsOf(phrase.text);
        std::vector<std::string> misses;
        for (std::size_t i = 0; i < words.size(); ++i) {
            const auto at = static_cast<std::ptrdiff_t>(i);
            auto dropped = words;
            dropped.erase(dropped.begin() + at);
            auto doubled = words;
            doubled.insert(doubled.begin() + at, words[i]);
            auto negated = words;
            negated.insert(negated.begin() + at, "not");
            for (const auto& each : {dropped, doubled, negated})
                misses.push_back(sentence(each));
            if (i == 0) continue;
            auto swapped = words;
            std::swap(swapped[i - 1], swapped[i]);
            misses.push_back(sentence(swapped));
        }
        misses.push_back(phrase.text + " now");
        for (std::size_t i = 0; i < phrase.text.size(); ++i) {
            if (phrase.text[i] == ' ') continue;
            std::string changed = phrase.text;
            changed[i] = 'q';
            misses.push_back(changed);
        }
        tried += static_cast<int>(misses.size());
        for (const std::string& miss : misses)
            EXPECT_EQ(matched(miss), "nothing") << miss;
    }
    EXPECT_GT(tried, 700);
}

TEST(PhraseOffers, CompleteWhatIsBeingTyped) {
    EXPECT_THAT(offered("Adopt CC6 in Kelvo SOC2"), ElementsAre("whole Adopt CC6 in Kelvo SOC2"));
    EXPECT_THAT(offered("adopt cc6"), ElementsAre("Adopt CC6 in Kelvo SOC2"));
    EXPECT_THAT(offered("cc six"), ElementsAre("Set up CC6 in Kelvo SOC2"));
    EXPECT_THAT(offered("app kel"), ElementsAre("Approve in Kelvo SOC2"));
    EXPECT_THAT(offered("run"), ElementsAre("Run Kelvo SOC2"));
    EXPECT_THAT(offered("Ask Kelvo SOC2 what is left?"), ElementsAre("whole what is left?"));
    EXPECT_EQ(offered("kelvo").size(), 10U);
    for (const char* typed : {"", "ru", "--", "Ask Kelvo SOC2", "kelvo run", "weather", "run x"})
        EXPECT_THAT(offered(typed), IsEmpty()) << typed;
}

} // namespace
} // namespace kelvo
