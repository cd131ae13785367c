#include "base/Sha256.h"
#include "base/Uuid.h"

#include <gtest/gtest.h>

#include <set>

namespace kelvo {
namespace {

TEST(Sha256, GivesThePublishedDigests) {
    // FIPS 180-4 examples and the empty message.
    EXPECT_EQ(sha256Hex(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(sha256Hex("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(sha256Hex(std::string(1000000, 'a')),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Sha256, AStreamHashesThePiecesAsOneAndStartsAfresh) {
    Sha256Stream stream;
    for (const char* piece : {"a", "", "bc"})
        stream.add(piece);
    EXPECT_EQ(stream.finish(), sha256("abc"));
    EXPECT_EQ(stream.finish(), sha256(""));
}

TEST(Uuid, IsRandomVersionFourInUpperCase) {
    std::set<std::string> seen;
    for (int i = 0; i < 1000; ++i) {
        const std::string id = randomUuid();
        ASSERT_TRUE(isUuid(id)) << id;
        EXPECT_EQ(id[14], '4');
        EXPECT_NE(std::string("89AB").find(id[19]), std::string::npos);
        EXPECT_EQ(id.find_first_of("abcdef"), std::string::npos);
        seen.insert(id);
    }
    EXPECT_EQ(seen.size(), 1000U);
}

TEST(Uuid, OnlyTheHyphenatedFormIsOne) {
    EXPECT_TRUE(isUuid("e621e1f8-C36C-495A-93FC-0C247A3E6E5F"));
    for (const char* bad :
         {"", "E621E1F8C36C495A93FC0C247A3E6E5F", "E621E1F8-C36C-495A-93FC-0C247A3E6E5",
          "E621E1F8-C36C-495A-93FC-0C247A3E6E5G", "{621E1F8-C36C-495A-93FC-0C247A3E6E5}"}) {
        EXPECT_FALSE(isUuid(bad)) << bad;
    }
}

} // namespace
} // namespace kelvo
