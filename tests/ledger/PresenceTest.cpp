#include "ledger/Presence.h"

#include "support/Fakes.h"

#include <gtest/gtest.h>

namespace kelvo {
namespace {

TEST(Presence, RecordsWhatThePersonAnswered) {
    struct Case {
        bool answer;
        Biometry kind;
        const char* record;
    };
    const Case cases[] = {
        {true, Biometry::fingerprint, "HIPR:TouchID:present"},
        {false, Biometry::fingerprint, "HIPR:TouchID:DENIED"},
        {true, Biometry::face, "HIPR:FaceID:present"},
        {false, Biometry::face, "HIPR:FaceID:DENIED"},
        {true, Biometry::none, "HIPR:ownerAuth:present"},
        {false, Biometry::none, "HIPR:ownerAuth:DENIED"},
    };
    for (const Case& each : cases) {
        test::FakeAuthentication authentication;
        authentication.answer = each.answer;
        authentication.kind = each.kind;
        const Presence::Result result = Presence(authentication).require("Close gap: CC6.1");
        EXPECT_EQ(result.ok, each.answer) << each.record;
        EXPECT_EQ(result.record, each.record);
        EXPECT_EQ(authentication.reasons, std::vector<std::string>{"Close gap: CC6.1"});
    }
}

TEST(Presence, TakesTheKindThatIsReportedAfterTheAnswer) {
    test::FakeAuthentication authentication;
    authentication.kind = Biometry::none;
    authentication.whileAsking = [&] { authentication.kind = Biometry::fingerprint; };
    EXPECT_EQ(Presence(authentication).require("r").record, "HIPR:TouchID:present");
}

TEST(Presence, AsksNobodyWhereNobodyCanBeAsked) {
    const std::pair<std::string, std::string> cases[] = {
        {"", "HIPR-UNAVAILABLE: no policy"},
        {"no such account", "HIPR-UNAVAILABLE: no such account"},
    };
    for (const auto& [why, record] : cases) {
        test::FakeAuthentication authentication;
        authentication.unavailable = why;
        const Presence::Result result = Presence(authentication).require("r");
        EXPECT_EQ(result.record, record);
        EXPECT_FALSE(result.ok);
        EXPECT_TRUE(authentication.reasons.empty());
    }
}

} // namespace
} // namespace kelvo
