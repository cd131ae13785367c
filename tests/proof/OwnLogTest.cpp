// The own log under a program that is running: what happens to it between two seals.

#include "proof/SealLog.h"
#include "support/Child.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Office.h"

namespace kelvo::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class OwnLog : public testing::Test {
protected:
    /// The kinds of the log's lines, as the places in their list; ends with "damaged" where it is.
    std::string kinds() {
        std::string all;
        const auto reading = SealLogReader().read(
            ada.log(), [&](const SealLineView& line) { all += std::to_string(line.fact.index()); });
        return reading && !reading->damage ? all : all + " damaged";
    }

    Office office;
    Computer ada{office, "larkspur-01"};
};

TEST_F(OwnLog, ANewLogBegunInTheMiddleOfARunTellsOfTheRunBeforeItsFirstDecision) {
    ada.identify();
    fs::remove(ada.log());
    ada.identify();
    ada.identify();
    EXPECT_EQ(kinds(), "0122");
    EXPECT_EQ(ada.says(), "The log of larkspur-01 is gone.");
}

TEST_F(OwnLog, IsReadAgainAfterItCouldNotBeRead) {
    ada.keeper.reset(); // and with it the lock, which a child would share
    const std::string told = inChild([&] {
        for (const auto& each : fs::recursive_directory_iterator(office.directory.path()))
            if (::chown(each.path().c_str(), 65534, 65534) != 0) return std::string("chown");
        (void)!::chown(office.directory.path().c_str(), 65534, 65534);
        becomeNobody();
        ada.start();
        ada.identify();
        const fs::path log = ada.log();
        fs::permissions(log, fs::perms::none);
        ada.identify();
        const bool waited = ada.keeper->unkept().size() == 1;
        fs::permissions(log, fs::perms::owner_read | fs::perms::owner_write);
        ada.identify();
        ada.identify();
        return kinds() + (waited ? " waited" : "");
    });
    EXPECT_EQ(told, "012222 waited");
}

TEST_F(OwnLog, ItsLastLineIsMissedOnceItWasSeen) {
    ada.identify();
    const std::string before = *readFile(ada.log());
    const std::string last = ada.identify();
    EXPECT_EQ(ada.says(), "2 decisions, log whole, no checkpoint yet");
    office.write(ada.log(), before);
    fs::remove(office.outputs() / last);
    ada.start();
    EXPECT_EQ(ada.says(), "The log of larkspur-01 is shorter than it was.");
}

TEST_F(OwnLog, WhatWasRememberedOfOthersIsKeptAsideWhereItCannotBeRead) {
    ada.identify();
    for (const auto& each : fs::directory_iterator(ada.folders().project))
        if (each.path().extension() == ".json") office.write(each.path(), "{torn");
    ada.start();
    ada.identify();
    std::size_t aside = 0;
    for (const auto& each : fs::directory_iterator(ada.folders().project))
        aside += each.path().extension() == ".unreadable" ? 1 : 0;
    EXPECT_EQ(aside, 1U);
    EXPECT_TRUE(ada.keeper->unkept().empty());
}

TEST_F(OwnLog, ARecordIsAdoptedOnceThoughItIsAskedTwice) {
    const std::string file = ada.identify();
    fs::remove_all(office.proof());
    fs::remove_all(ada.folders().project);
    fs::create_directories(ada.folders().project);
    ada.start();
    const Approval approval{adoptSentence(1), "2026-01-31T09:15:02Z", "2026-01-31T09:15:02Z"};
    EXPECT_EQ(ada.keeper->adopt({file}, "Ada Byron", approval), 1U);
    EXPECT_EQ(ada.keeper->adopt({file}, "Ada Byron", approval), 0U);
    EXPECT_EQ(kinds(), "012");
}

TEST_F(OwnLog, AnswersOfTheSealThatItWasAskedFor) {
    const fs::path file = office.write(office.directory.path() / "review.txt", "read");
    const auto staged = ada.keeper->vault().stage(file);
    fs::remove(file);
    ada.seal({{"sourceDb", "control"}, {"evidence_root", staged->root()}}, *staged);
    ASSERT_EQ(ada.keeper->unkept().size(), 1U) << "its evidence is gone";
    EXPECT_FALSE(ada.keeper->keep({.account = "Ada",
                                   .file = "a.totem.json",
                                   .record = "{}",
                                   .block = sha256Hex("b"),
                                   .payload = "{}",
                                   .approval = {},
                                   .evidence = std::nullopt,
                                   .draft = std::nullopt}))
        << "this one is kept, whatever waits before it";
}

TEST(ProofCheckpoint, HoldsAnOrganisationOfSeveralLinesInOne) {
    Office office;
    Computer ada(office, "larkspur-01");
    ada.keeper->runFiles(R"({"organisation":"A\nlines: 1","nodes":[]})", std::nullopt);
    ada.identify();
    const auto made = ada.keeper->makeCheckpoint(ada.compare());
    ASSERT_TRUE(made.has_value());
    EXPECT_EQ(parseCheckpoint(checkpointText(made->checkpoint)), made->checkpoint);
}

} // namespace
} // namespace kelvo::test
