#include "base/Files.h"
#include "ledger/RecordFile.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <random>
#include <set>
#include <thread>

namespace kelvo {
namespace {

namespace fs = std::filesystem;

constexpr int kills = 220;
constexpr int histories = 40; ///< fewer than kills: later processes write over earlier ones' files
const std::string asOf = "2026-01-31T09:15:02Z";

std::string payloadOf(int history, int seal) {
    const Json payload = {{"sourceDb", "control"},
                          {"title", "t"},
                          {"history", history},
                          {"seal", seal},
                          {"fill", std::string(static_cast<std::size_t>(seal % 7) * 9000, 'x')}};
    return *writeJson(payload);
}

/// Seals until it is killed, and says after each seal that it is done.
[[noreturn]] void sealForever(const fs::path& folder, int history, int report) {
    TotemChain chain;
    for (int seal = 0;; ++seal) {
        const std::string payload = payloadOf(history, seal);
        const Totem totem = chain.append(payload, "t", "HIPR:TouchID:present", asOf);
        writeRecordFile(folder, totem, payload, asOf);
        const std::string line = recordFileName(recordDocument(totem, payload, asOf), totem) + "\n";
        if (::write(report, line.data(), line.size()) < 0) ::_exit(1);
    }
}

/// Kills a sealing process at a random moment after its first seal, and returns the names of the
/// records that it had finished.
std::set<std::string> killOne(const fs::path& folder, int history, std::mt19937& random) {
    int ends[2] = {-1, -1};
    if (::pipe(ends) != 0) throw std::runtime_error("pipe");
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(ends[0]);
        sealForever(folder, history, ends[1]);
    }
    ::close(ends[1]);
    std::string told;
    char piece[4096];
    const auto take = [&] {
        const ssize_t got = ::read(ends[0], piece, sizeof piece);
        if (got > 0) told.append(piece, static_cast<std::size_t>(got));
        return got > 0;
    };
    while (told.find('\n') == std::string::npos && take()) {
    }
    std::this_thread::sleep_for(
        std::chrono::microseconds(std::uniform_int_distribution<int>(0, 8000)(random)));
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    while (take()) {
    }
    ::close(ends[0]);
    std::set<std::string> names;
    for (std::size_t begin = 0, end = 0; (end = told.find('\n', begin)) != std::string::npos;
         begin = end + 1) {
        names.insert(told.substr(begin, end - begin));
    }
    return names;
}

/// Everything that an outsider can recompute from the file alone.
void expectWhole(const fs::path& file) {
    const auto bytes = readFile(file);
    ASSERT_TRUE(bytes) << file;
    auto document = parseJson(*bytes);
    ASSERT_TRUE(document) << file << document.error();
    const std::string sep(TotemChain::sep);
    const auto member = [&](const char* key) { return document->at(key).get<std::string>(); };
    const std::string index = std::to_string(document->at("appIndex").get<int>());
    const std::string hash =
        TotemChain::sha(index + sep + member("appPrev") + sep + member("payloadRoot"));
    EXPECT_EQ(member("appBlockHash"), hash) << file;
    EXPECT_EQ(file.filename(), "control-" + index + "-" + hash.substr(0, 12) + ".totem.json");
    const std::string root = member("payloadRoot");
    for (const char* key :
         {"appIndex", "appPrev", "payloadRoot", "appBlockHash", "firedBy", "asOf"}) {
        document->erase(key);
    }
    EXPECT_EQ(TotemChain::sha(*writeJson(*document)), root) << file;
}

TEST(KilledWhileSealing, LeavesEveryRecordWholeOrAbsent) {
    const test::TemporaryDirectory folder;
    std::mt19937 random(20260131); // NOLINT: which moments are hit differs anyway
    std::set<std::string> finished;
    for (int round = 0; round < kills; ++round) {
        finished.merge(killOne(folder.path(), round % histories, random));
        ASSERT_FALSE(testing::Test::HasFailure());
    }
    std::set<std::string> present;
    std::size_t leftOver = 0;
    for (const auto& entry : fs::directory_iterator(folder.path())) {
        const std::string name = entry.path().filename().string();
        if (!name.ends_with(".totem.json")) {
            EXPECT_TRUE(name.starts_with(".kelvo-") && name.ends_with(".tmp")) << name;
            ++leftOver;
            continue;
        }
        present.insert(name);
        expectWhole(entry.path());
    }
    for (const std::string& name : finished)
        EXPECT_TRUE(present.contains(name)) << "finished, but absent: " << name;
    RecordProperty("records", static_cast<int>(present.size()));
    RecordProperty("temporary_files_left", static_cast<int>(leftOver));
}

} // namespace
} // namespace kelvo
