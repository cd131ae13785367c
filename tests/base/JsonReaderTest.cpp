#include "base/JsonReader.h"

#include <gtest/gtest.h>

namespace kelvo {
namespace {

/// Reads the shape {"nodes":[{"id","w","param"?}],"tags"?} and gives the error, or none.
std::optional<std::string> errorOf(const std::string& text) {
    const Json document = *parseJson(text);
    JsonReader reader(document);
    reader.array("nodes", [](JsonReader& node) {
        node.string("id");
        node.integer("w");
        node.optionalNumber("param");
    });
    reader.optionalStrings("tags");
    return reader.error();
}

TEST(JsonReader, NamesTheFirstMemberThatIsWrong) {
    const std::pair<const char*, std::optional<std::string>> table[] = {
        {R"([])", "expected an object"},
        {R"({})", "nodes: missing"},
        {R"({"nodes":3})", "nodes: expected an array"},
        {R"({"nodes":[3]})", "nodes[0]: expected an object"},
        {R"({"nodes":[{"id":"a","w":1},{"id":"b","w":"1"}]})", "nodes[1].w: expected an integer"},
        {R"({"nodes":[{"id":"a","w":true}]})", "nodes[0].w: expected an integer"},
        {R"({"nodes":[{"id":"a","w":1.5}]})", "nodes[0].w: expected an integer"},
        {R"({"nodes":[{"id":"a","w":9223372036854775808}]})", "nodes[0].w: expected an integer"},
        {R"({"nodes":[{"id":"a","w":-9223372036854775809}]})", "nodes[0].w: expected an integer"},
        {R"({"nodes":[{"id":"a","w":1e300}]})", "nodes[0].w: expected an integer"},
        {R"({"nodes":[{"id":null,"w":1}]})", "nodes[0].id: expected a string"},
        {R"({"nodes":[{"id":"a","w":1,"param":true}]})", "nodes[0].param: expected a number"},
        {R"({"nodes":[],"tags":["x",1]})", "tags: expected only strings"},
        {R"({"nodes":[{"id":"a","w":3.0,"param":null,"more":[]}],"tags":null})", std::nullopt},
        {R"({"nodes":[{"id":"a","w":-9223372036854775808}]})", std::nullopt},
    };
    for (const auto& [text, error] : table)
        EXPECT_EQ(errorOf(text), error) << text;
}

TEST(JsonReader, KeepsTheFirstFailureAndReadsNothingAfterIt) {
    const Json document = *parseJson(R"({"a":1,"b":"x"})");
    JsonReader reader(document);
    EXPECT_EQ(reader.string("a"), "");
    EXPECT_EQ(reader.string("b"), "");
    reader.fail("c", "late");
    EXPECT_EQ(reader.error(), "a: expected a string");
}

} // namespace
} // namespace kelvo
