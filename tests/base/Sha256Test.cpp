#include "base/Sha256.h"

#include <gtest/gtest.h>

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

} // namespace
} // namespace kelvo
