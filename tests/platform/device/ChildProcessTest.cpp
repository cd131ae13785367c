#include "platform/device/ChildProcess.h"

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <thread>

namespace kelvo::device {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

Deadline soon() {
    return Clock::now() + 60s;
}

std::optional<std::string> shell(const std::string& script, Deadline deadline = soon()) {
    ChildProcess tools(Environment{{"LC_ALL", "C"}});
    return tools.run("/bin/sh", {"-c", script}, deadline);
}

/// True when this process has no child left, running or dead.
bool childless() {
    return ::waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD;
}

/// Whether the process ends by itself within a generous time; it is no child of ours.
bool isGone(pid_t process) {
    for (int i = 0; i < 2000; ++i) {
        if (::kill(process, 0) != 0 && errno == ESRCH) return true;
        // An orphan that its new parent has not collected yet is dead, too.
        std::ifstream status("/proc/" + std::to_string(process) + "/stat");
        std::string text((std::istreambuf_iterator<char>(status)), {});
        const auto state = text.rfind(") ");
        if (state != std::string::npos && text[state + 2] == 'Z') return true;
        std::this_thread::sleep_for(5ms);
    }
    return false;
}

TEST(ChildProcess, GivesAllOfTheOutputWhateverTheExitStatus) {
    EXPECT_EQ(shell("echo one; echo two >&2; exit 3"), "one\n");
    EXPECT_EQ(shell("true"), "");
    EXPECT_EQ(shell("kill -9 $$"), "");
    const auto much = shell("head -c 1000000 /dev/zero");
    ASSERT_TRUE(much);
    EXPECT_EQ(much->size(), 1'000'000U);
    EXPECT_EQ(shell("exec 1>&-; sleep 0.05; true"), "") << "closes its output before it ends";
    EXPECT_TRUE(childless());
}

TEST(ChildProcess, WhatCannotBeLaunchedGivesNothing) {
    ChildProcess tools(Environment{});
    EXPECT_EQ(tools.run("/nonexistent/tool", {}, soon()), std::nullopt);
    EXPECT_EQ(tools.run("/etc/passwd", {}, soon()), std::nullopt);
    EXPECT_EQ(tools.run("/bin/true", {}, Clock::now() - 1s), std::nullopt) << "no time left";
    EXPECT_TRUE(childless());
}

TEST(ChildProcess, TheChildSeesOnlyTheGivenEnvironmentAndNoDescriptorOrInputOfOurs) {
    ::setenv("KELVO_TEST_SECRET", "x", 1);
    const int leak = ::dup(STDERR_FILENO);
    ChildProcess tools(Environment{{"LC_ALL", "C"}, {"HOME", "/nowhere"}});
    EXPECT_EQ(tools.run("/usr/bin/env", {}, soon()), "HOME=/nowhere\nLC_ALL=C\n");
    EXPECT_EQ(tools.run("/bin/cat", {}, soon()), "");
    const auto descriptors = tools.run("/bin/ls", {"/proc/self/fd"}, soon());
    EXPECT_EQ(descriptors, "0\n1\n2\n3\n") << "3 is the listed folder itself";
    ::close(leak);
    ::unsetenv("KELVO_TEST_SECRET");
}

TEST(ChildProcess, AToolThatHangsIsEndedWithAllThatItStarted) {
    const test::TemporaryDirectory folder;
    const std::string file = (folder.path() / "pid").string();
    const std::pair<const char*, std::string> table[] = {
        {"sleeps", "echo $$ > " + file + "; exec sleep 1000"},
        {"ignores signals",
         "trap '' TERM INT HUP; echo $$ > " + file + "; while :; do sleep 1; done"},
        {"has a child", "sleep 1000 & echo $! > " + file + "; wait"},
        {"writes without end", "echo $$ > " + file + "; exec yes"},
        {"closes its output", "exec 1>&-; echo $$ > " + file + "; exec sleep 1000"},
    };
    for (const auto& [what, script] : table) {
        // Again with more time, should the script not have come to its first line.
        pid_t left = 0;
        for (auto limit = 300ms; left == 0 && limit < 60s; limit *= 4) {
            EXPECT_EQ(shell(script, Clock::now() + limit), std::nullopt) << what;
            EXPECT_TRUE(childless()) << what;
            std::ifstream(file) >> left;
        }
        ASSERT_GT(left, 0) << what;
        EXPECT_TRUE(isGone(left)) << what;
        std::filesystem::remove(file);
    }
}

TEST(ChildProcess, WhatAToolLeavesBehindIsNeitherWaitedForNorLeft) {
    const auto output = shell("sleep 1000 & echo $!");
    ASSERT_TRUE(output);
    EXPECT_TRUE(isGone(std::stoi(*output)));
    EXPECT_TRUE(childless());
}

} // namespace
} // namespace kelvo::device
