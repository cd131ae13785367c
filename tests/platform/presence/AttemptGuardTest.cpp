#include "platform/presence/AttemptGuard.h"

#include <gtest/gtest.h>

namespace kelvo {
namespace {

using std::chrono::seconds;

class AttemptGuardTest : public testing::Test {
protected:
    /// A prompt that fails `after` its opening.
    void fail(seconds after) {
        guard_.failed(now_, now_ + after);
        now_ += after;
    }

    AttemptGuard guard_;
    AttemptGuard::Clock::time_point now_{seconds(1000)};
};

TEST_F(AttemptGuardTest, StopsAskingForAWhileAfterThreeFastFailuresAndThenGivesThreeAgain) {
    fail(seconds(2));
    fail(seconds(2));
    EXPECT_FALSE(guard_.wait(now_));
    fail(seconds(2));
    EXPECT_EQ(guard_.wait(now_), seconds(30));
    EXPECT_EQ(guard_.wait(now_ + std::chrono::milliseconds(29'500)), seconds(1));
    EXPECT_FALSE(guard_.wait(now_ + seconds(30)));
    now_ += seconds(31);
    fail(seconds(1));
    fail(seconds(1));
    EXPECT_FALSE(guard_.wait(now_));
    fail(seconds(1));
    EXPECT_TRUE(guard_.wait(now_));
}

TEST_F(AttemptGuardTest, CountsOnlyFastFailuresInARow) {
    fail(seconds(1));
    fail(seconds(1));
    fail(seconds(10)); // somebody who takes the time to think
    fail(seconds(1));
    fail(seconds(1));
    EXPECT_FALSE(guard_.wait(now_));
    guard_.proved();
    fail(seconds(1));
    EXPECT_FALSE(guard_.wait(now_));
}

} // namespace
} // namespace kelvo
