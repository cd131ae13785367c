#include "base/Text.h"

#include "base/Time.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <tuple>

namespace kelvo {
namespace {

TEST(Text, CountsAndCutsWhatAPersonSeesAsCharacters) {
    const std::tuple<std::string, std::size_t, std::string> table[] = {
        {"", 0, ""},
        {"abc", 3, "ab"},
        {"e\u0301a\u0300x", 3, "e\u0301a\u0300"},
        {"\r\n\r\nz", 3, "\r\n\r\n"},
        {"👨‍👩‍👧👍🏽!", 3, "👨‍👩‍👧👍🏽"},
        {"🇩🇪🇫🇷🇮🇹", 3, "🇩🇪🇫🇷"},
        {"각\u1100\u1161x", 3, "각\u1100\u1161"},
        {"\xFF\xFEz", 3, "\xFF\xFE"},
    };
    for (const auto& [text, count, firstTwo] : table) {
        EXPECT_EQ(characterCount(text), count) << text;
        EXPECT_EQ(firstCharacters(text, 2), firstTwo) << text;
        EXPECT_EQ(firstCharacters(text, 99), text);
    }
}

TEST(Text, TrimsUnicodeWhiteSpaceOrOnlySpacesAndTabs) {
    EXPECT_EQ(trimmed(" \t\r\n\u00A0\u2003a b\u3000\u2028"), "a b");
    EXPECT_EQ(trimmed("\u200B"), "\u200B") << "zero width space is no white space";
    EXPECT_EQ(trimmed(" \n "), "");
    EXPECT_EQ(trimmedSpacesAndTabs(" \t a\n \t"), "a\n");
    EXPECT_EQ(trimmedSpacesAndTabs("  "), "");
}

TEST(Text, LowerCasesWithoutALocale) {
    EXPECT_EQ(lowerCased("CC6-ÄΣİ\xFF"), "cc6-äσi\xFF");
    EXPECT_TRUE(equalIgnoringCase("CC9-Vendor", "cc9-vENDOR"));
    EXPECT_FALSE(equalIgnoringCase("CC9", "CC9 "));
}

TEST(Text, KnowsWellFormedUtf8) {
    for (const char* good : {"", "aé…😀", "\xEF\xBF\xBD"})
        EXPECT_TRUE(isValidUtf8(good)) << good;
    for (const char* bad : {"\xC0\x80", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\xE2\x82", "\x80"}) {
        EXPECT_FALSE(isValidUtf8(bad));
        EXPECT_TRUE(isValidUtf8(toValidUtf8(bad)));
    }
    EXPECT_EQ(toValidUtf8("a\xFF\xFE z"), "a\uFFFD\uFFFD z");
}

TEST(Text, FormatsLikePrintfWhateverTheLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* locale : {"de_DE.UTF-8", "C.UTF-8"}) {
        std::setlocale(LC_ALL, locale);
        EXPECT_EQ(fixed(1.25, 1), "1.2") << "ties go to even, as the exact value is halfway";
        EXPECT_EQ(fixed(1234567.891, 2), "1234567.89");
        EXPECT_EQ(fixed(-0.00001, 4), "-0.0000");
        EXPECT_EQ(fixed(std::nan("-1"), 3), "nan");
        EXPECT_EQ(fixed(-std::numeric_limits<double>::infinity(), 3), "-inf");
        EXPECT_EQ(fixed(std::numeric_limits<double>::max(), 1).size(), 311U);
        EXPECT_EQ(percent(0.423), "42.3%");
    }
    std::setlocale(LC_ALL, before.c_str());
}

TEST(Text, TimeStampsCutFractionsOff) {
    using namespace std::chrono;
    EXPECT_EQ(iso8601(TimePoint(seconds(1769850902)) + milliseconds(999)), "2026-01-31T09:15:02Z");
    EXPECT_EQ(iso8601(TimePoint(milliseconds(-1))), "1969-12-31T23:59:59Z");
    EXPECT_EQ(iso8601(TimePoint(seconds(1709164800))), "2024-02-29T00:00:00Z");
}

} // namespace
} // namespace kelvo
