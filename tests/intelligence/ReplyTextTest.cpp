#include "intelligence/ReplyText.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace kelvo {
namespace {

struct Case {
    std::string_view reply;
    std::string_view expected;
};

TEST(ReplyText, LosesAThinkingBlockBeforeTheAnswer) {
    const std::vector<Case> cases = {
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
    for (const Case& each : cases)
        EXPECT_EQ(withoutThinking(each.reply), each.expected) << each.reply;
}

TEST(ReplyText, TakesAJsonDocumentOutOfItsFence) {
    const std::vector<Case> cases = {
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
    for (const Case& each : cases)
        EXPECT_EQ(jsonBody(each.reply), each.expected) << each.reply;
}

} // namespace
} // namespace kelvo
