#include "intelligence/ReplyText.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace kelvo {
namespace {

using Cases = std::vector<std::pair<std::string_view, std::string_view>>;

TEST(ReplyText, LosesAThinkingBlockBeforeTheAnswer) {
    const Cases cases = {
        {"answer", "answer"},
        {" \n answer \n", "answer"},
        {"<think>why</think>answer", "answer"},
        {"\n<think>\nwhy\n</think>\n\nanswer\n", "answer"},
        {"<think></think>", ""},
        {"<think>never ended", ""},
        {"it opened in the prompt</think>answer", "answer"},
        {R"({"a":"x</think>y"})", R"({"a":"x</think>y"})"},
        {"say <think>x</think> aloud", "say <think>x</think> aloud"},
        {"", ""},
    };
    for (const auto& [reply, expected] : cases)
        EXPECT_EQ(withoutThinking(reply), expected) << reply;
}

TEST(ReplyText, TakesAJsonDocumentOutOfItsFence) {
    const Cases cases = {
        {R"({"a":1})", R"({"a":1})"},
        {"```json\n{\"a\":1}\n```", R"({"a":1})"},
        {"```\n{\"a\":1}\n```\n", R"({"a":1})"},
        {"```json {\"a\":1}```", R"({"a":1})"},
        {"<think>x</think>```JSON\r\n{\"a\":1}\r\n```", R"({"a":1})"},
        {"Here: ```json\n{}\n```", "Here: ```json\n{}\n```"}, // no part of a longer text
        {"```json\n{\"a\":1}", "```json\n{\"a\":1}"},
        {"``````", ""},
        {"```", "```"},
        {"`````", "`````"},
    };
    for (const auto& [reply, expected] : cases)
        EXPECT_EQ(jsonBody(reply), expected) << reply;
}

} // namespace
} // namespace kelvo
