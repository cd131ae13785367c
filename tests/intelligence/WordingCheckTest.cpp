#include "intelligence/WordingCheck.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace kelvo::test {
namespace {

/// The text of a labelled sentence, without its marks.
std::string unmarked(const std::string& labelled) {
    std::string text;
    bool inKind = false;
    for (const char c : labelled) {
        if (c == '{') inKind = true;
        if (!inKind && c != '}') text += c;
        if (inKind && c == ':') inKind = false;
    }
    return text;
}

std::string marked(const std::string& text, const std::vector<WordingPlace>& places) {
    std::string labelled;
    std::size_t at = 0;
    for (const WordingPlace& place : places) {
        labelled += text.substr(at, place.start - at) + "{" + std::string(wordingKind(place.kind)) +
                    ":" + text.substr(place.start, place.length) + "}";
        at = place.start + place.length;
    }
    return labelled + text.substr(at);
}

TEST(WordingCheck, FindsEachLabelledPlaceAndIsSilentOnClearSentences) {
    constexpr std::chrono::sys_days day{std::chrono::year{2026} / 11 / 23};
    std::ifstream file(std::string(KELVO_DATA) + "/wording/sentences.txt");
    std::string facts;
    std::size_t sentences = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("facts: ")) facts = line;
        if (line.empty() || line.starts_with("# ") || line.starts_with("facts: ")) continue;
        const std::string text = unmarked(line);
        const WordingSources sources{facts, text, day};
        EXPECT_EQ(marked(text, wordingPlaces(text, sources)), line);
        ++sentences;
    }
    EXPECT_GT(sentences, 70U);
}

TEST(WordingCheck, TakesANumberThatThePersonWroteAsSourced) {
    const std::string drafted = "The service is back within 4 hours.";
    const std::string edited = "The service is back within 4 hours, the website within 2 days.";
    EXPECT_EQ(marked(edited, wordingPlaces(edited, {"", drafted, {}})),
              "The service is back within {number:4} hours, the website within 2 days.");
}

TEST(WordingCheck, CountsInWords) {
    const WordingPlace blank{};
    const WordingPlace vague{0, 0, WordingPlace::Kind::duty};
    EXPECT_EQ(wordingCount({blank, vague, blank, vague}), "2 empty places, 2 vague");
    EXPECT_EQ(wordingCount({blank}), "1 empty place");
    EXPECT_EQ(wordingCount({vague, vague}), "2 vague places");
    EXPECT_EQ(wordingCount({}), "No empty and no vague place found.");
}

} // namespace
} // namespace kelvo::test
