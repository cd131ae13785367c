#include "base/Uuid.h"

#include <gtest/gtest.h>

#include <set>

namespace kelvo {
namespace {

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
