#include "base/Json.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace kelvo {
namespace {

TEST(Json, WritesEachValueInTheSharedForm) {
    const std::pair<Json, const char*> table[] = {
        {nullptr, "null"},
        {true, "true"},
        {1.0, "1"},
        {-0.0, "-0"},
        {0.1, "0.1"},
        {9.86783e-05, "9.86783e-05"},
        {100000.0, "100000"},
        {9007199254740992.0, "9007199254740992"},
        {1e22, "1e+22"},
        {0.1 + 0.2, "0.30000000000000004"},
        {std::numeric_limits<std::int64_t>::min(), "-9223372036854775808"},
        {std::numeric_limits<std::uint64_t>::max(), "18446744073709551615"},
        {"a/b — \"q\" \\ \n\x01\x1f", "\"a\\/b — \\\"q\\\" \\\\ \\n\\u0001\\u001f\""},
        {Json::array(), "[]"},
        {Json::object(), "{}"},
        {{{"b", 1}, {"a/", {1, 2}}, {"Z", nullptr}}, R"({"Z":null,"a\/":[1,2],"b":1})"},
    };
    for (const auto& [value, text] : table)
        EXPECT_EQ(writeJson(value), text);
    EXPECT_EQ(writeJson({{"b", {1, 2}}, {"a", Json::object()}}, JsonLayout::pretty),
              "{\n  \"a\" : {},\n  \"b\" : [\n    1,\n    2\n  ]\n}");
}

TEST(Json, RefusesWhatJsonCannotHold) {
    EXPECT_EQ(writeJson(std::nan("")), std::nullopt);
    EXPECT_EQ(writeJson({{"x", {1, std::numeric_limits<double>::infinity()}}}), std::nullopt);
    EXPECT_EQ(writeJson("\xC3("), std::nullopt);
    EXPECT_EQ(writeJson({{"\xFF", 1}}), std::nullopt);
    Json deep = 1;
    for (std::size_t i = 0; i < jsonDepthLimit; ++i)
        deep = Json::array({deep});
    EXPECT_TRUE(writeJson(deep).has_value());
    EXPECT_EQ(writeJson(Json::array({deep})), std::nullopt);
}

TEST(Json, NumbersReadBackToTheSameBits) {
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        const auto bits = random();
        const auto number = std::bit_cast<double>(bits);
        if (!std::isfinite(number)) continue;
        const auto text = writeJson(number);
        ASSERT_TRUE(text.has_value());
        const auto back = parseJson(*text)->get<double>();
        ASSERT_EQ(std::bit_cast<std::uint64_t>(back), bits) << *text;
    }
}

TEST(Json, ANegativeZeroKeepsItsSignWhenItIsReadAndWrittenAgain) {
    for (const char* text :
         {"-0", "[-0,-0.5,-10,0]", R"({"a":-0,"b":"-0, -0","c":[-0]})", R"("\"-0")"}) {
        EXPECT_EQ(writeJson(*parseJson(text)), text);
    }
}

TEST(Json, ReadsStrictly) {
    const std::string tooDeep = std::string(jsonDepthLimit + 1, '[');
    for (const std::string& text :
         {std::string(""), std::string("{\"a\":1,}"), std::string("[1] x"), std::string("{'a':1}"),
          std::string("\xEF\xBB\xBF{}"), std::string("\"\xC3(\""), std::string("1e999"),
          std::string("[NaN]"), std::string("\"\\ud800\""), std::string("// c\n{}"), tooDeep,
          std::string("{}\0garbage", 10), std::string("[\"a\0b\"]", 7),
          "[\"" + std::string(200000, '\xC3')}) {
        const auto parsed = parseJson(text);
        ASSERT_FALSE(parsed.has_value()) << text;
        EXPECT_FALSE(parsed.error().empty());
        EXPECT_LT(parsed.error().size(), 1000U) << "one line that can be shown";
        EXPECT_TRUE(writeJson(parsed.error())) << "and logged";
    }
    EXPECT_EQ(*parseJson(R"({"a":1,"a":2})"), (Json{{"a", 2}})) << "the last of repeated keys";
    EXPECT_TRUE(parseJson("[\"" + tooDeep + "\"]").has_value()) << "brackets inside a string";
}

} // namespace
} // namespace kelvo
