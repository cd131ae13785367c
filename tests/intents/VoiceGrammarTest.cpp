#include "intents/VoiceGrammar.h"

#include "intents/IntentRequest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iterator>
#include <set>
#include <sstream>

namespace kelvo {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

const std::string dictionary =
    "adopt AH D AA P T\napprove AH P R UW V\nask AE S K\nc S IY\n"
    "eight EY T\nfive F AY V\nfour F AO R\nin IH N\nnine N AY N\n"
    "one W AH N\none(2) HH W AH N\nonerous OW N\nrun R AH N\nset S EH T\n"
    "seven S EH V AH N\nsix S IH K S\nsoc S OW K\nthree TH R IY\n"
    "two T UW\nup AH P\n"
    "approved x\ncan't x\ndisapprove x\ndo x\ndon't x\neleven x\nimprove x\nit x\nlater x\n"
    "move x\nnever x\nnot x\nplease x\nprove x\nremove x\nrunning x\nten x\ntomorrow x\n"
    "will x\nzero x\n";

TEST(VoiceGrammar, SpellsThePhrasesAsTheyAreSaid) {
    const std::string text = VoiceGrammar::grammar();
    EXPECT_THAT(text, HasSubstr("#JSGF V1.0;\n"));
    for (const char* phrase : {" ask kelvo soc two\n", " set up c c one in kelvo soc two\n",
                               " adopt c c nine in kelvo soc two\n", " run kelvo soc two\n",
                               " approve in kelvo soc two;\n"})
        EXPECT_THAT(text, HasSubstr(phrase));
}

TEST(VoiceGrammar, KnowsTheSoundsOfEveryWordInIt) {
    const auto words = VoiceGrammar::pronunciations(dictionary);
    ASSERT_TRUE(words) << words.error();
    EXPECT_THAT(*words, HasSubstr("\none W AH N\none(2) HH W AH N\n"));
    EXPECT_THAT(*words, HasSubstr("\nkelvo K EH L V OW\n"));
    EXPECT_THAT(*words, HasSubstr("\nsoc S AA K\nsoc(2) EH S OW S IY\n"));
    EXPECT_THAT(*words, Not(HasSubstr("onerous")));
    std::set<std::string> known;
    std::istringstream lines(*words);
    for (std::string line; std::getline(lines, line);)
        known.insert(line.substr(0, line.find(' ')));
    const std::string text = VoiceGrammar::grammar();
    const std::size_t start = text.find("<phrase> = ");
    std::string rules = text.substr(start, text.find("<other> = ") - start);
    for (char& sign : rules) {
        if (std::string_view("()|=;").find(sign) != std::string_view::npos) sign = ' ';
    }
    std::istringstream tokens(rules);
    std::set<std::string> said{std::istream_iterator<std::string>(tokens), {}};
    for (const char* rule : {"<phrase>", "<rival>"})
        said.erase(rule);
    EXPECT_GT(said.size(), 35U);
    for (const std::string& word : said)
        EXPECT_TRUE(known.contains(word)) << word;
}

TEST(VoiceGrammar, NamesTheWordThatADictionaryLacks) {
    const auto words = VoiceGrammar::pronunciations("ask AE S K\n");
    ASSERT_FALSE(words);
    EXPECT_EQ(words.error(), "adopt");
}

TEST(VoiceGrammar, ForgivesABreathExceptBeforeTheSeal) {
    struct Case {
        const char* hypothesis;
        const char* intent;
    };
    for (const Case& each :
         {Case{"adopt c c six in kelvo soc two", "adopt:CC6"},
          Case{"sound_z sound_uw adopt c c six in kelvo soc two", "adopt:CC6"},
          Case{"sound_z sound_z sound_z adopt c c six in kelvo soc two", "nothing"},
          Case{"run sound_z kelvo soc two", "nothing"},
          Case{"run kelvo soc two sound_z", "nothing"}, Case{"sound_hh run kelvo soc two", "run"},
          Case{"sound_aa sound_t run kelvo soc two", "nothing"}, Case{"ask kelvo soc two", "ask"},
          Case{"ask kelvo soc two tomorrow", "nothing"}, Case{"not run kelvo soc two", "nothing"},
          Case{"approve in kelvo soc two", "approve"},
          Case{"sound_t approve in kelvo soc two", "nothing"}, Case{"sound_t", "nothing"},
          Case{"", "nothing"}}) {
        const auto intent = VoiceGrammar::heard(each.hypothesis);
        EXPECT_EQ(intent ? intentId(*intent) : "nothing", each.intent) << each.hypothesis;
    }
}

} // namespace
} // namespace kelvo
