#include "ledger/RecordFile.h"

#include "base/Files.h"
#include "support/Child.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>

namespace kelvo {
namespace {

namespace fs = std::filesystem;
using testing::StartsWith;

const std::string asOf = "2026-01-31T09:15:02Z";
const std::string written = "→ outputs (bouncer will seal)";

class RecordFileTest : public testing::Test {
protected:
    Totem seal(std::string_view payload) {
        return chain_.append(payload, "a/b — ✓", "HIPR:TouchID:present", asOf);
    }
    std::string write(std::string_view payload) {
        return writeRecordFile(folder_.path(), seal(payload), payload, asOf).outcome;
    }
    std::vector<std::string> names() const {
        std::vector<std::string> all;
        for (const auto& entry : fs::directory_iterator(folder_.path()))
            all.push_back(entry.path().filename().string());
        return all;
    }

    TotemChain chain_;
    test::TemporaryDirectory folder_;
};

TEST_F(RecordFileTest, HoldsThePayloadAndTheSealInSortedOrder) {
    const std::string payload = R"({"risk":0.5,"state":[],"t":1,"tip":"0"})";
    ASSERT_EQ(write(payload), written);
    const Totem& totem = chain_.blocks().back();
    const std::string name = "collapse-0-" + totem.blockHash.substr(0, 12) + ".totem.json";
    ASSERT_EQ(names(), std::vector<std::string>{name});
    const std::string expected = R"({
  "appBlockHash" : ")" + totem.blockHash +
                                 R"(",
  "appIndex" : 0,
  "appPrev" : "0000000000000000000000000000000000000000000000000000000000000000",
  "asOf" : "2026-01-31T09:15:02Z",
  "firedBy" : "HIPR:TouchID:present",
  "payloadRoot" : ")" + totem.payloadRoot +
                                 R"(",
  "risk" : 0.5,
  "sourceDb" : "collapse",
  "state" : [],
  "t" : 1,
  "tip" : "0",
  "title" : "a\/b — ✓"
})";
    EXPECT_EQ(readFile(folder_.path() / name), expected);
}

TEST_F(RecordFileTest, LetsThePayloadNameSourceAndTitleOnly) {
    const std::string payload =
        R"({"sourceDb":"control","title":"mine","appIndex":99,"asOf":"x","firedBy":"x",
            "appBlockHash":"x","payloadRoot":"x","appPrev":"x","other":{"kept":[1,null]}})";
    const Totem totem = seal(payload);
    EXPECT_EQ(recordDocument(totem, payload, asOf), (Json{{"sourceDb", "control"},
                                                          {"title", "mine"},
                                                          {"appIndex", 0},
                                                          {"asOf", asOf},
                                                          {"firedBy", totem.firedBy},
                                                          {"appBlockHash", totem.blockHash},
                                                          {"payloadRoot", totem.payloadRoot},
                                                          {"appPrev", totem.prev},
                                                          {"other", {{"kept", {1, nullptr}}}}}));
    EXPECT_THAT(recordFileName(recordDocument(totem, payload, asOf), totem),
                StartsWith("control-0-"));

    const Totem next = seal("{}");
    const Json odd = recordDocument(next, R"({"sourceDb":null,"title":7})", asOf);
    EXPECT_EQ(odd.at("sourceDb"), nullptr);
    EXPECT_EQ(odd.at("title"), 7);
    EXPECT_THAT(recordFileName(odd, next), StartsWith("collapse-1-")) << "a source that is no text";
}

TEST_F(RecordFileTest, IsWrittenForAPayloadThatIsNoObjectButNotWithoutAJsonForm) {
    for (const char* payload : {"", "[1]", "null", "{\"a\":", "{\"a\":\"\xFF\"}"}) {
        const Totem totem = seal(payload);
        const Json document = recordDocument(totem, payload, asOf);
        EXPECT_EQ(document.size(), 8U) << payload;
        EXPECT_EQ(document.at("sourceDb"), "collapse");
        EXPECT_EQ(document.at("title"), "a/b — ✓");
        EXPECT_EQ(writeRecordFile(folder_.path(), totem, payload, asOf).outcome, written);
    }
    EXPECT_EQ(names().size(), 5U);
    const Totem noText = chain_.append("{}", "\xFF", "HIPR:TouchID:present", asOf);
    EXPECT_EQ(writeRecordFile(folder_.path(), noText, "{}", asOf).outcome,
              "outputs: encode-failed");
    EXPECT_EQ(names().size(), 5U);
}

TEST_F(RecordFileTest, RefusesASourceThatIsNoPlainFileName) {
    const fs::path inner = folder_.path() / "inner";
    fs::create_directory(inner);
    for (const char* source : {"../x", "a/b", "/tmp/x", "", ".", "..", "a\\u0000b"}) {
        const std::string payload = "{\"sourceDb\":\"" + std::string(source) + "\"}";
        const std::string outcome = writeRecordFile(inner, seal(payload), payload, asOf).outcome;
        EXPECT_THAT(outcome, testing::AllOf(StartsWith("outputs: \""),
                                            testing::EndsWith("cannot be part of a file name")));
    }
    EXPECT_TRUE(fs::is_empty(inner));
    EXPECT_EQ(names(), std::vector<std::string>{"inner"});
}

TEST_F(RecordFileTest, ReplacesOnlyTheFileOfTheSameSeal) {
    const Totem totem = seal("{}");
    ASSERT_EQ(writeRecordFile(folder_.path(), totem, "{}", "earlier").outcome, written);
    ASSERT_EQ(writeRecordFile(folder_.path(), totem, "{}", asOf).outcome, written);
    ASSERT_EQ(names().size(), 1U);
    EXPECT_EQ(parseJson(*readFile(folder_.path() / names().front()))->at("asOf"), asOf);
}

TEST_F(RecordFileTest, SaysWhyItCannotBeWrittenAndLeavesTheChainWhole) {
    EXPECT_THAT(writeRecordFile(folder_.path() / "missing", seal("{}"), "{}", asOf).outcome,
                testing::AllOf(StartsWith("outputs: "),
                               testing::EndsWith(".totem.json: No such file or directory")));
    EXPECT_FALSE(fs::exists(folder_.path() / "missing"));

    const Totem taken = seal("{}");
    const fs::path name = folder_.path() / recordFileName(recordDocument(taken, "{}", asOf), taken);
    fs::create_directory(name);
    EXPECT_THAT(writeRecordFile(folder_.path(), taken, "{}", asOf).outcome,
                testing::EndsWith("Is a directory"));
    EXPECT_TRUE(fs::is_directory(name));
    EXPECT_EQ(names().size(), 1U) << "a temporary file was left behind";

    const std::string longName = "{\"sourceDb\":\"" + std::string(300, 'n') + "\"}";
    EXPECT_THAT(write(longName), testing::EndsWith("File name too long"));
    EXPECT_EQ(chain_.blocks().size(), 3U);
    EXPECT_TRUE(chain_.verify());
}

TEST_F(RecordFileTest, LeavesNothingOfAFileThatDidNotFit) {
    ASSERT_EQ(write("{}"), written);
    const std::string before = *readFile(folder_.path() / names().front());
    const std::string outcome = test::inChild([this] {
        test::limitFilesTo(64);
        return write("{\"n\":1}") +
               writeRecordFile(folder_.path(), chain_.blocks()[0], "{}", "x").outcome;
    });
    EXPECT_THAT(outcome, testing::EndsWith("File too large"));
    EXPECT_THAT(outcome, testing::Not(testing::HasSubstr(written)));
    ASSERT_EQ(names().size(), 1U);
    EXPECT_EQ(readFile(folder_.path() / names().front()), before);
}

} // namespace
} // namespace kelvo
