#include "base/Uuid.h"
#include "ledger/Notify.h"
#include "ledger/Presence.h"
#include "support/Fakes.h"

#include <gtest/gtest.h>

#include <set>
#include <tuple>

namespace kelvo {
namespace {

const test::FakeClock clock;

TEST(Presence, RecordsWhatThePersonAnswered) {
    const std::tuple<bool, Biometry, const char*> table[] = {
        {true, Biometry::fingerprint, "HIPR:TouchID:present"},
        {false, Biometry::fingerprint, "HIPR:TouchID:DENIED"},
        {true, Biometry::face, "HIPR:FaceID:present"},
        {false, Biometry::face, "HIPR:FaceID:DENIED"},
        {true, Biometry::none, "HIPR:ownerAuth:present"},
        {false, Biometry::none, "HIPR:ownerAuth:DENIED"},
    };
    for (const auto& [answer, kind, record] : table) {
        test::FakeAuthentication authentication;
        authentication.answer = answer;
        authentication.kind = kind;
        const Presence::Result result = Presence(authentication, clock).require("Close gap: CC6.1");
        EXPECT_EQ(result.ok, answer) << record;
        EXPECT_EQ(result.record, record);
        EXPECT_EQ(authentication.reasons, std::vector<std::string>{"Close gap: CC6.1"});
    }
}

TEST(Presence, TakesTheKindThatIsReportedAfterTheAnswer) {
    test::FakeAuthentication authentication;
    authentication.kind = Biometry::none;
    authentication.whileAsking = [&] { authentication.kind = Biometry::fingerprint; };
    EXPECT_EQ(Presence(authentication, clock).require("r").record, "HIPR:TouchID:present");
}

TEST(Presence, AsksNobodyWhereNobodyCanBeAsked) {
    const std::pair<std::string, std::string> cases[] = {
        {"", "HIPR-UNAVAILABLE: no policy"},
        {"no such account", "HIPR-UNAVAILABLE: no such account"},
    };
    for (const auto& [why, record] : cases) {
        test::FakeAuthentication authentication;
        authentication.unavailable = why;
        const Presence::Result result = Presence(authentication, clock).require("r");
        EXPECT_EQ(result.record, record);
        EXPECT_FALSE(result.ok);
        EXPECT_TRUE(authentication.reasons.empty());
    }
}

TEST(Notify, ShowsEachNotificationUnderAnIdentifierOfItsOwn) {
    test::FakeNotifications desktop;
    Notify notify(desktop);
    notify.requestAuth();
    EXPECT_EQ(desktop.authorizationRequests, 1);
    std::set<std::string> identifiers;
    for (int i = 0; i < 20; ++i)
        notify.fire("⚠ Risk", "Look at it.");
    for (const Notification& each : desktop.posted) {
        EXPECT_TRUE(isUuid(each.identifier)) << each.identifier;
        EXPECT_EQ(each.title + "|" + each.body, "⚠ Risk|Look at it.");
        identifiers.insert(each.identifier);
    }
    EXPECT_EQ(identifiers.size(), 20U);
    EXPECT_TRUE(desktop.lines.empty());
}

TEST(Notify, WritesAConsoleLineWithoutAnApplicationIdentity) {
    test::FakeNotifications desktop;
    desktop.registered = false;
    Notify notify(desktop);
    notify.requestAuth();
    notify.fire("title", "body");
    EXPECT_EQ(desktop.authorizationRequests, 0);
    EXPECT_TRUE(desktop.posted.empty());
    EXPECT_EQ(desktop.lines, std::vector<std::string>{"[notify] title — body"});
}

TEST(Notify, WritesAConsoleLineForWhatNoServiceTook) {
    test::FakeNotifications desktop;
    { Notify(desktop).fire("title", "body"); }
    EXPECT_TRUE(desktop.lines.empty());
    desktop.lost(); // the answer comes when the caller is gone
    EXPECT_EQ(desktop.lines, std::vector<std::string>{"[notify] title — body"});
}

} // namespace
} // namespace kelvo
