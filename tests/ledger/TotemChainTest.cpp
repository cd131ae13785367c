#include "ledger/TotemChain.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <tuple>

namespace kelvo {
namespace {

const std::string zeros = "0000000000000000000000000000000000000000000000000000000000000000";
const std::string emptyObjectRoot =
    "44136fa355b3678a1146ad16f7e8649e94fb4fc21fe77e8310c060f61caaff8a";

void appendObjects(TotemChain& chain, int count) {
    for (int i = 0; i < count; ++i)
        chain.append("{}", "seal", "HIPR:TouchID:present", "2026-01-31T09:15:02Z");
}

TEST(TotemChain, StartsAtTheGenesisTipAndSealsAPayloadByItsExactBytes) {
    TotemChain chain;
    EXPECT_EQ(chain.tip(), zeros);
    EXPECT_TRUE(chain.blocks().empty() && chain.verify());
    const Totem first = chain.append("{}", "a title", "HIPR:ownerAuth:present", "then");
    EXPECT_EQ(first, (Totem{0, zeros, emptyObjectRoot,
                            "94f41fe6025c00bddc5feda1d831a5415ebd5caa784be4351b55b8b722e6062e",
                            "a title", "HIPR:ownerAuth:present", "then"}));
    EXPECT_EQ(chain.blocks().back(), first);

    const Totem empty = chain.append("", "", "", "");
    EXPECT_EQ(empty.payloadRoot,
              "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    const Totem spaced = chain.append(std::string_view("{ }\0", 4), "", "", "");
    EXPECT_NE(spaced.payloadRoot, emptyObjectRoot);
    EXPECT_TRUE(chain.verify());
}

// The tip was computed by an independent program from the preimage's definition.
TEST(TotemChain, LinksEveryBlockToTheOneBefore) {
    TotemChain chain;
    appendObjects(chain, 11);
    for (std::size_t i = 1; i < 11; ++i) {
        EXPECT_EQ(chain.blocks()[i].index, static_cast<std::int64_t>(i));
        EXPECT_EQ(chain.blocks()[i].prev, chain.blocks()[i - 1].blockHash);
        EXPECT_EQ(chain.blocks()[i].payloadRoot, emptyObjectRoot);
    }
    EXPECT_EQ(chain.tip(), "c96ccc858c838f1602b94aa2081b29380724e64fb9d7a13084b7825b8b3b3bc4");
    EXPECT_EQ(chain.tip(),
              TotemChain::sha("10" + std::string(TotemChain::sep) + chain.blocks()[10].prev +
                              std::string(TotemChain::sep) + emptyObjectRoot));
    EXPECT_TRUE(chain.verify());
}

TEST(TotemChain, VerifyingNoticesEveryChangeOfWhatTheHashBinds) {
    TotemChain chain;
    appendObjects(chain, 4);
    ASSERT_TRUE(TotemChain::verify(chain.blocks()));
    const std::tuple<const char*, std::function<void(Totem&)>, bool> table[] = {
        {"index", [](Totem& b) { ++b.index; }, false},
        {"prev", [](Totem& b) { b.prev[63] = b.prev[63] == '1' ? '2' : '1'; }, false},
        {"prev cut short", [](Totem& b) { b.prev.pop_back(); }, false},
        {"payloadRoot", [](Totem& b) { b.payloadRoot[0] = '5'; }, false},
        {"blockHash", [](Totem& b) { b.blockHash.front() = 'x'; }, false},
        {"blockHash cut short", [](Totem& b) { b.blockHash.pop_back(); }, false},
        {"blockHash in capitals", [](Totem& b) { std::ranges::replace(b.blockHash, 'e', 'E'); },
         false},
        {"title", [](Totem& b) { b.title = "another"; }, true},
        {"firedBy", [](Totem& b) { b.firedBy = "another"; }, true},
        {"asOf", [](Totem& b) { b.asOf = "another"; }, true},
    };
    for (const auto& [what, change, verifies] : table) {
        for (std::size_t at = 0; at < chain.blocks().size(); ++at) {
            TotemChain::Blocks changed = chain.blocks();
            change(changed[at]);
            EXPECT_EQ(TotemChain::verify(changed), verifies) << what << " of " << at;
        }
    }
}

TEST(TotemChain, VerifyingNoticesABlockThatWasForgedWithAFittingHash) {
    TotemChain chain;
    appendObjects(chain, 3);
    TotemChain::Blocks forged = chain.blocks();
    const std::string sep(TotemChain::sep);
    forged[1].payloadRoot = TotemChain::sha("something else");
    forged[1].blockHash = TotemChain::sha("1" + sep + forged[1].prev + sep + forged[1].payloadRoot);
    EXPECT_FALSE(TotemChain::verify(forged));
    forged.pop_back();
    EXPECT_TRUE(TotemChain::verify(forged));
    forged.pop_front();
    EXPECT_FALSE(TotemChain::verify(forged));
}

TEST(Totem, IsTheSameAfterWritingAndReadingAndAFaultIsNamed) {
    TotemChain chain;
    const Totem totem = chain.append("{}", "Über/»title«", "HIPR:FaceID:present", "then");
    const auto text = writeJson(toJson(totem));
    ASSERT_TRUE(text);
    EXPECT_THAT(*text, testing::StartsWith("{\"asOf\":\"then\",\"blockHash\":\"94f41fe6"));
    Json value = *parseJson(*text);
    EXPECT_EQ(totemFromJson(value), totem);
    value["index"] = true;
    EXPECT_EQ(totemFromJson(value).error(), "index: expected an integer");
    value["index"] = 0;
    value.erase("firedBy");
    EXPECT_EQ(totemFromJson(value).error(), "firedBy: missing");
    EXPECT_EQ(totemFromJson(Json::array()).error(), "expected an object");
}

} // namespace
} // namespace kelvo
