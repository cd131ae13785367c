#include "ledger/Log.h"

#include "base/Files.h"
#include "support/Child.h"
#include "support/Fakes.h"
#include "support/TemporaryDirectory.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <fstream>
#include <limits>
#include <sstream>

namespace kelvo {
namespace {

namespace fs = std::filesystem;

class LogTest : public testing::Test {
protected:
    std::string content() const { return readFile(file_).value_or("(no file)"); }
    std::ptrdiff_t entries() const {
        return std::distance(fs::directory_iterator(folder_.path()), fs::directory_iterator());
    }

    test::TemporaryDirectory folder_;
    test::FakeClock clock_;
    fs::path file_ = folder_.path() / "kelvosoc2.events.ndjson";
    Log log_{file_, clock_};
};

TEST_F(LogTest, AppendsOneSortedLineAnEvent) {
    log_.e("play", {{"t", 0.5}});
    EXPECT_EQ(content(), "{\"kind\":\"play\",\"t\":0.5,\"ts\":\"2026-01-31T09:15:02Z\"}\n");
    log_.e("pause", {{"t", 1}, {"risk", 0.25}});
    log_.e("idle");
    EXPECT_EQ(content(),
              "{\"kind\":\"play\",\"t\":0.5,\"ts\":\"2026-01-31T09:15:02Z\"}\n"
              "{\"kind\":\"pause\",\"risk\":0.25,\"t\":1,\"ts\":\"2026-01-31T09:15:02Z\"}\n"
              "{\"kind\":\"idle\",\"ts\":\"2026-01-31T09:15:02Z\"}\n");
    EXPECT_EQ(entries(), 1);
}

TEST_F(LogTest, KeepsKindAndTimeForItselfAndALineOnOneLine) {
    log_.e("k", {{"kind", "other"}, {"ts", "never"}, {"note", "a/b\nü"}});
    EXPECT_EQ(content(),
              "{\"kind\":\"k\",\"note\":\"a\\/b\\nü\",\"ts\":\"2026-01-31T09:15:02Z\"}\n");
}

TEST_F(LogTest, DropsAnEventThatJsonCannotHold) {
    log_.e("first");
    const std::string before = content();
    log_.e("k", {{"x", std::numeric_limits<double>::infinity()}});
    log_.e("k", {{"x", {{"deep", {std::numeric_limits<double>::quiet_NaN()}}}}});
    log_.e("k", {{"x", "\xFF"}});
    EXPECT_EQ(content(), before);
}

TEST_F(LogTest, DropsTheLineWhereNoFileCanBeWritten) {
    Log(folder_.path() / "missing" / "log", clock_).e("k");
    EXPECT_FALSE(fs::exists(folder_.path() / "missing"));

    Log(folder_.path(), clock_).e("k"); // a folder has the name
    EXPECT_EQ(entries(), 0);

    const fs::path pipe = folder_.path() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    Log(pipe, clock_).e("k"); // must not wait for a reader
    const int reader = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    Log(pipe, clock_).e("k");
    char byte = 0;
    EXPECT_EQ(::read(reader, &byte, 1), 0);
    ::close(reader);

    const fs::path loop = folder_.path() / "loop";
    fs::create_symlink(loop, loop);
    Log(loop, clock_).e("k");
    EXPECT_TRUE(fs::is_symlink(loop));
    EXPECT_EQ(entries(), 2);
}

TEST_F(LogTest, NeverReplacesALogThatItMayNotWrite) {
    log_.e("first");
    const std::string before = content();
    fs::permissions(folder_.path(), fs::perms::all);
    fs::permissions(file_, fs::perms::owner_read | fs::perms::others_read);
    const std::string done = test::inChild([this] {
        test::becomeNobody();
        log_.e("second");
        return std::string(::access(file_.c_str(), W_OK) == 0 ? "writable" : "refused");
    });
    EXPECT_EQ(done, "refused");
    EXPECT_EQ(content(), before);
    EXPECT_EQ(entries(), 1);
}

TEST_F(LogTest, TakesBackALineThatTheDiskCannotHoldWhole) {
    log_.e("first");
    const std::string before = content();
    const std::string done = test::inChild([this, &before] {
        test::limitFilesTo(before.size() + 10);
        log_.e("second");
        Log(folder_.path() / "new", clock_)
            .e("longer than the limit, as the only line", {{"note", std::string(200, 'x')}});
        return std::string("done");
    });
    EXPECT_EQ(done, "done");
    EXPECT_EQ(content(), before);
    EXPECT_EQ(entries(), 1);
    log_.e("third");
    EXPECT_EQ(content(), before + "{\"kind\":\"third\",\"ts\":\"2026-01-31T09:15:02Z\"}\n");
}

// The lines cross page borders, where a file system may hand out a half-written end of file.
TEST_F(LogTest, LinesOfSeveralProcessesNeverMix) {
    constexpr int writers = 4;
    constexpr int lines = 300;
    std::vector<pid_t> children;
    for (int writer = 0; writer < writers; ++writer) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (int line = 0; line < lines; ++line) {
                const auto length = static_cast<std::size_t>(line * 7919 % 9000);
                log_.e("w", {{"writer", writer},
                             {"line", line},
                             {"fill", std::string(length, static_cast<char>('a' + writer))}});
            }
            ::_exit(0);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = -1;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    std::vector<int> next(writers, 0);
    std::ifstream file(file_);
    for (std::string text; std::getline(file, text);) {
        const auto event = parseJson(text);
        ASSERT_TRUE(event) << text.substr(0, 200);
        const auto writer = event->at("writer").get<std::size_t>();
        EXPECT_EQ(event->at("line"), next.at(writer)++);
        const auto fill = event->at("fill").get<std::string>();
        EXPECT_TRUE(std::all_of(fill.begin(), fill.end(), [writer](char c) {
            return c == static_cast<char>('a' + static_cast<int>(writer));
        }));
    }
    EXPECT_EQ(next, std::vector<int>(writers, lines));
    EXPECT_EQ(entries(), 1);
}

} // namespace
} // namespace kelvo
