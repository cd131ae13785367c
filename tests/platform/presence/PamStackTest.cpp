#include <gmock/gmock.h>

#include <tuple>

#include "PresenceDesk.h"

namespace kelvo {
namespace {

using test::TestStack;

class Answers : public PamConversation {
public:
    explicit Answers(std::deque<std::string> answers) : answers_(std::move(answers)) {}

    void tell(const std::string& text, bool isError) override {
        heard.push_back((isError ? "error " : "info ") + text);
    }
    std::optional<SecretText> ask(const std::string& prompt, bool echo) override {
        heard.push_back((echo ? "echo " : "secret ") + prompt);
        if (answers_.empty()) return std::nullopt;
        const std::string answer = std::move(answers_.front());
        answers_.pop_front();
        return SecretText(answer);
    }

    std::vector<std::string> heard;

private:
    std::deque<std::string> answers_;
};

class PamStackTest : public testing::Test {
protected:
    PamStackTest() {
        folder_.service("desk", "auth required @matrix\naccount required @matrix\n");
        folder_.service("loud",
                        "auth required @matrix verbose\naccount required @matrix verbose\n");
    }
    bool prove(const std::string& service, const std::string& user, Answers& answers) const {
        return TestStack(folder_.path(), service, user).prove(answers);
    }

    test::PamFolder folder_;
};

TEST_F(PamStackTest, ProvesOnlyTheAccountsOwnPasswordAndAGoodAccount) {
    const std::tuple<const char*, const char*, std::deque<std::string>, bool> table[] = {
        {"right", "ada", {"correct horse"}, true},
        {"wrong", "ada", {"correct  horse"}, false},
        {"empty", "ada", {""}, false},
        {"cancelled", "ada", {}, false},
        {"an account that is not let in", "bob", {"correct horse"}, false},
        {"an unknown account", "eve", {"correct horse"}, false},
    };
    for (const auto& [what, user, given, proved] : table) {
        Answers answers(given);
        EXPECT_EQ(prove("desk", user, answers), proved) << what;
        EXPECT_EQ(answers.heard.size(), 1U) << what;
    }
}

TEST_F(PamStackTest, RunsTheAccountCheckAfterAStackThatAsksNothing) {
    folder_.service("permits", "auth required pam_permit.so\naccount required pam_deny.so\n");
    folder_.service("denies", "auth required pam_deny.so\naccount required pam_permit.so\n");
    folder_.service("both", "auth required pam_permit.so\naccount required pam_permit.so\n");
    Answers nobody({});
    EXPECT_FALSE(prove("permits", "ada", nobody));
    EXPECT_FALSE(prove("denies", "ada", nobody));
    EXPECT_TRUE(prove("both", "ada", nobody));
}

TEST_F(PamStackTest, HearsModulesThatExpectNoAnswer) {
    Answers answers({"correct horse"});
    EXPECT_TRUE(prove("loud", "ada", answers));
    EXPECT_THAT(answers.heard, testing::Contains(testing::StartsWith("info ")));
    Answers wrong({"x"});
    EXPECT_FALSE(prove("loud", "ada", wrong));
}

TEST_F(PamStackTest, SaysWhenThereIsNoServiceAtAll) {
    EXPECT_EQ(TestStack(folder_.path(), "desk", "ada").unavailableReason(), std::nullopt);
    const TestStack missing(folder_.path(), "missing", "ada");
    ASSERT_TRUE(missing.unavailableReason());
    EXPECT_THAT(*missing.unavailableReason(), testing::StartsWith("no PAM service \"missing\": "));
    Answers answers({"correct horse"});
    EXPECT_FALSE(missing.prove(answers));

    folder_.service("other", "auth required @matrix\naccount required @matrix\n");
    EXPECT_EQ(missing.unavailableReason(), std::nullopt);
}

TEST(SystemPamStack, HasAStackForThisProgramOnThisMachine) {
    EXPECT_EQ(PamStack("kelvo-soc2", "nobody").unavailableReason(), std::nullopt);
}

} // namespace
} // namespace kelvo
