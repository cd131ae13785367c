#include "ledger/Notify.h"

#include "base/Uuid.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace kelvo {
namespace {

class Desktop : public Notifications {
public:
    bool hasApplicationIdentity() const override { return registered; }
    void requestAuthorization() override { ++requests; }
    void post(const Notification& notification, std::function<void()> undelivered) override {
        posted.push_back(notification);
        lost = std::move(undelivered);
    }
    void console(const std::string& line) override { lines.push_back(line); }

    bool registered = true;
    int requests = 0;
    std::vector<Notification> posted;
    std::vector<std::string> lines;
    std::function<void()> lost;
};

TEST(Notify, ShowsEachNotificationUnderAnIdentifierOfItsOwn) {
    Desktop desktop;
    Notify notify(desktop);
    notify.requestAuth();
    EXPECT_EQ(desktop.requests, 1);
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
    Desktop desktop;
    desktop.registered = false;
    Notify notify(desktop);
    notify.requestAuth();
    notify.fire("title", "body");
    EXPECT_EQ(desktop.requests, 0);
    EXPECT_TRUE(desktop.posted.empty());
    EXPECT_EQ(desktop.lines, std::vector<std::string>{"[notify] title — body"});
}

TEST(Notify, WritesAConsoleLineForWhatNoServiceTook) {
    Desktop desktop;
    { Notify(desktop).fire("title", "body"); }
    EXPECT_TRUE(desktop.lines.empty());
    desktop.lost(); // the answer comes when the caller is gone
    EXPECT_EQ(desktop.lines, std::vector<std::string>{"[notify] title — body"});
}

} // namespace
} // namespace kelvo
