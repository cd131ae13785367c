// Processes that are killed at a random moment of a seal leave records, vault and log whole.

#include "proof/SealLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <random>
#include <thread>

#include "Office.h"

namespace kelvo::test {
namespace {

/// 300 in the ordinary run; KELVO_KILLS asks for more.
int killsWanted() {
    const char* wanted = std::getenv("KELVO_KILLS");
    return wanted == nullptr ? 300 : std::atoi(wanted);
}

/// Seals until it is killed; one byte says that it has begun.
[[noreturn]] void sealForever(Office& office, int round, int report) {
    Computer ada(office, "larkspur-01");
    for (int seal = 0;; ++seal) {
        ada.close("C" + std::to_string(round),
                  std::string(static_cast<std::size_t>(seal % 5) * 30'000, 'x'));
        if (::write(report, "x", 1) < 0) ::_exit(1);
    }
}

TEST(KilledWhileKeeping, TheNextStartFindsNothingWrong) {
    std::mt19937 random(7); // NOLINT: which moments are hit differs anyway
    const int kills = killsWanted();
    constexpr int killsAnOffice = 25;
    std::size_t unlisted = 0;
    for (int done = 0; done < kills;) {
        Office office;
        for (int i = 0; i < killsAnOffice && done < kills; ++i, ++done) {
            int ends[2] = {-1, -1};
            ASSERT_EQ(::pipe(ends), 0);
            const pid_t child = ::fork();
            if (child == 0) sealForever(office, done, ends[1]);
            ::close(ends[1]);
            char begun = 0;
            ASSERT_EQ(::read(ends[0], &begun, 1), 1);
            std::this_thread::sleep_for(
                std::chrono::microseconds(std::uniform_int_distribution<int>(0, 4000)(random)));
            ::kill(child, SIGKILL);
            int status = 0;
            ::waitpid(child, &status, 0);
            ::close(ends[0]);
        }
        Computer ada(office, "larkspur-01");
        const ProofComparison found = ada.compare();
        for (const ProofTrouble& trouble : found.troubles) {
            // Killed between the record and its line: it may be adopted, and nothing else.
            const bool adoptable = trouble.kind == ProofTrouble::Kind::recordUnlisted ||
                                   trouble.kind == ProofTrouble::Kind::recordEarlier;
            EXPECT_TRUE(adoptable && trouble.adoptable)
                << static_cast<int>(trouble.kind) << " " << trouble.file << " " << trouble.reason;
            ++unlisted;
        }
        for (const LoggedDecision& decision : found.decisions) {
            ASSERT_EQ(ada.keeper->vault().verify(decision.record), Verification::same);
            ASSERT_EQ(ada.keeper->vault().verify(decision.evidenceRoot), Verification::same);
        }
        ASSERT_FALSE(HasFailure());
    }
    RecordProperty("kills", kills);
    RecordProperty("records_to_adopt", static_cast<int>(unlisted));
}

} // namespace
} // namespace kelvo::test
