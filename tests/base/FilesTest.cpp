#include "base/Files.h"

#include "support/Child.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>

namespace kelvo {
namespace {

namespace fs = std::filesystem;

class Files : public ::testing::Test {
protected:
    fs::path at(const std::string& name) const { return directory_.path() / name; }

    std::size_t entries() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(directory_.path()), fs::directory_iterator()));
    }

private:
    test::TemporaryDirectory directory_;
};

TEST_F(Files, ReadsBackWhatWasWrittenWhole) {
    const std::string bytes = std::string("a\0b\n", 4) + std::string(3 << 20, 'x');
    ASSERT_TRUE(writeFileAtomically(at("f"), bytes).has_value());
    EXPECT_EQ(*readFile(at("f")), bytes);
    ASSERT_TRUE(writeFileAtomically(at("f"), "").has_value());
    EXPECT_EQ(*readFile(at("f")), "");
    EXPECT_EQ(entries(), 1U) << "nothing temporary stays behind";
    EXPECT_EQ(readFile("/proc/self/comm")->back(), '\n') << "a file that reports no size";
}

TEST_F(Files, PiecesAddUpToTheFileAndCanBeStopped) {
    const std::string bytes((5 << 19) + 17, 'y');
    ASSERT_TRUE(writeFileAtomically(at("f"), bytes).has_value());
    std::string read;
    ASSERT_TRUE(readFileInPieces(at("f"), [&](std::string_view piece, std::size_t size) {
                    EXPECT_EQ(size, bytes.size());
                    read += piece;
                    return true;
                }).has_value());
    EXPECT_EQ(read, bytes);
    int pieces = 0;
    ASSERT_TRUE(readFileInPieces(at("f"), [&](std::string_view, std::size_t) {
                    ++pieces;
                    return false;
                }).has_value());
    EXPECT_EQ(pieces, 1);
}

TEST_F(Files, RefusesWhatIsNoRegularFileWithoutBlocking) {
    fs::create_directory(at("folder"));
    ASSERT_EQ(::mkfifo(at("fifo").c_str(), 0600), 0);
    fs::create_symlink(at("nowhere"), at("dangling"));
    for (const char* name : {"folder", "fifo", "dangling", "missing"}) {
        const auto read = readFile(at(name));
        ASSERT_FALSE(read.has_value()) << name;
        EXPECT_TRUE(read.error().description.starts_with(std::string(name) + ": "));
    }
    EXPECT_FALSE(readFile("/dev/zero").has_value());
    ASSERT_TRUE(writeFileAtomically(at("f"), "12345").has_value());
    EXPECT_EQ(readFile(at("f"), 4).error().description, "f: larger than is read");
    EXPECT_TRUE(readFile(at("f"), 5).has_value());
}

TEST_F(Files, AFailedWriteLeavesTheOldFileAndNothingElse) {
    ASSERT_TRUE(writeFileAtomically(at("f"), "old").has_value());
    fs::create_directory(at("taken"));
    EXPECT_EQ(writeFileAtomically(at("taken"), "new").error().description, "taken: Is a directory");
    EXPECT_FALSE(writeFileAtomically(at("missing") / "f", "new").has_value());
    EXPECT_EQ(entries(), 2U);

    EXPECT_EQ(test::inChild([this] {
                  test::limitFilesTo(4096);
                  const auto written = writeFileAtomically(at("f"), std::string(100000, 'n'));
                  return written ? "written" : written.error().description;
              }),
              "f: File too large");
    EXPECT_EQ(*readFile(at("f")), "old");
    EXPECT_EQ(entries(), 2U);
}

TEST_F(Files, ALineBehindATornOneStandsOnALineOfItsOwn) {
    std::ofstream(at("log")) << "whole\ntorn";
    ASSERT_TRUE(appendLine(at("log"), "next\n").has_value());
    ASSERT_TRUE(appendLine(at("log"), "last\n").has_value());
    EXPECT_EQ(*readFile(at("log")), "whole\ntorn\nnext\nlast\n");
}

TEST_F(Files, OnlyOldLeftoversOfACrashAreRemoved) {
    const auto hourAgo = fs::file_time_type::clock::now() - std::chrono::hours(1);
    for (const char* name : {".kelvo-old.tmp", ".kelvo-young.tmp", ".kelvo-note", "mine.tmp"}) {
        std::ofstream(at(name)) << "x";
        if (name != std::string(".kelvo-young.tmp")) fs::last_write_time(at(name), hourAgo);
    }
    removeLeftovers(at(""), std::chrono::minutes(10));
    EXPECT_EQ(entries(), 3U);
    EXPECT_FALSE(fs::exists(at(".kelvo-old.tmp")));
    removeLeftovers(at("missing"), std::chrono::minutes(10));
}

TEST_F(Files, KnowsNamesThatStayInTheirFolder) {
    for (const char* good : {"a", "...", "a b", "é"})
        EXPECT_TRUE(isPlainFileName(good)) << good;
    for (const std::string& bad : {std::string(""), std::string("."), std::string(".."),
                                   std::string("a/b"), std::string("/"), std::string("a\0b", 3)}) {
        EXPECT_FALSE(isPlainFileName(bad)) << bad;
    }
    EXPECT_EQ(shownFileName("/x/caf\xE9.txt"), "caf\uFFFD.txt");
    EXPECT_EQ(shownFileName("/x/a\n\x1b[31m\x7f\u202Egpj.exe\u0085é"),
              "a␊␛[31m␡<U+202E>gpj.exe<U+0085>é");
}

} // namespace
} // namespace kelvo
