// Seals on real folders, what somebody then does to them, and what is told of it.

#include "base/Json.h"
#include "proof/SealLog.h"
#include "support/Child.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "Office.h"

namespace kelvo::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

std::string edited(std::string bytes, const std::string& before, const std::string& after) {
    return bytes.replace(bytes.find(before), before.size(), after);
}

class Keeper : public testing::Test {
protected:
    /// Two runs: on both days the identity first, on the first one a closing, too.
    void twoDays() {
        ada.identify();
        closing = ada.close("CC6-access", "every account was matched");
        office.clock.moment += std::chrono::hours(24);
        ada.start();
        ada.identify();
    }
    fs::path record() const { return office.outputs() / closing; }
    fs::path evidence() { return ada.folders().vault() / sha256Hex("every account was matched"); }
    void change(const fs::path& file, const std::string& before, const std::string& after) {
        const std::string bytes = edited(*readFile(file), before, after);
        fs::permissions(file, fs::perms::owner_all);
        office.write(file, bytes);
    }

    Office office;
    Computer ada{office, "larkspur-01"};
    std::string closing;
};

TEST_F(Keeper, BothDaysAreKeptThoughTheirFirstSealsHaveOneName) {
    twoDays();
    EXPECT_EQ(ada.says(), "3 decisions, log whole, no checkpoint yet");
    std::vector<std::string> kinds;
    SealLogReader()
        .read(ada.log(),
              [&](const SealLineView& line) { kinds.push_back(std::to_string(line.fact.index())); })
        .value();
    EXPECT_THAT(kinds, testing::ElementsAre("0", "1", "2", "2", "1", "2"));
    const auto found = ada.compare();
    EXPECT_EQ(found.decisions[1].evidence, LoggedDecision::Evidence::kept);
    EXPECT_EQ(found.decisions[1].criterion, "CC6-access");
    EXPECT_EQ(found.decisions[0].file, found.decisions[2].file);
    EXPECT_NE(found.decisions[0].record, found.decisions[2].record);
    for (const LoggedDecision& each : found.decisions)
        EXPECT_EQ(ada.keeper->vault().verify(each.record), Verification::same);
    EXPECT_EQ(fs::status(evidence()).permissions(), fs::perms::owner_read);
}

TEST_F(Keeper, EachTamperingIsTold) {
    twoDays();
    struct Case {
        const char* what;
        std::function<void()> done;
        const char* told;
    };
    const Case table[] = {
        {"record deleted", [&] { fs::remove(record()); }, "1 record is gone."},
        {"date changed", [&] { change(record(), "\"asOf\" : \"2026", "\"asOf\" : \"2025"); },
         "1 record was changed after it was sealed."},
        {"title changed", [&] { change(record(), "\"title\" : \"t", "\"title\" : \"T"); },
         "1 record was changed after it was sealed."},
        {"foreign record",
         [&] {
             office.write(
                 office.outputs() / "control-9-aaaaaaaaaaaa.totem.json",
                 R"({"sourceDb":"control","criterion":"B","gate_after":1,"evidence_root":"x"})");
         },
         "Readiness counts 1 record that no log knows."},
        {"evidence thrown away", [&] { fs::remove(evidence()); },
         "The kept evidence of 1 decision is gone."},
        {"line changed", [&] { change(ada.log(), "CC6-access", "CC6-acces5"); },
         "Line 5 of the log of larkspur-01 does not follow line 4."},
        {"last line cut",
         [&] {
             const std::string bytes = *readFile(ada.log());
             office.write(ada.log(), bytes.substr(0, bytes.rfind('\n', bytes.size() - 2) + 1));
         },
         "The log of larkspur-01 is shorter than it was."},
        {"log emptied", [&] { office.write(ada.log(), ""); }, "log of larkspur-01"},
        {"log removed", [&] { fs::remove(ada.log()); }, "The log of larkspur-01 is gone."},
    };
    const fs::path backup = office.directory.path() / "backup";
    const fs::path shared = office.directory.path() / "bondgraph";
    const fs::path log = ada.log();
    fs::copy(shared, backup, fs::copy_options::recursive);
    for (const Case& each : table) {
        SCOPED_TRACE(each.what);
        each.done();
        EXPECT_THAT(ada.says(), HasSubstr(each.told));
        fs::remove_all(shared);
        fs::copy(backup, shared, fs::copy_options::recursive);
        EXPECT_EQ(ada.says(), "3 decisions, log whole, no checkpoint yet");
    }
}

TEST_F(Keeper, RestoresWhatIsGoneAndPutsWhatWasChangedAside) {
    twoDays();
    const std::string sealed = *readFile(record());
    change(record(), "\"asOf\" : \"2026", "\"asOf\" : \"2025");
    const auto aside = ada.keeper->restore(ada.compare(), closing);
    ASSERT_TRUE(aside) << aside.error().description;
    EXPECT_THAT(*readFile(office.outputs() / *aside), HasSubstr("\"asOf\" : \"2025"));
    EXPECT_EQ(*readFile(record()), sealed);
    fs::remove(record());
    EXPECT_EQ(ada.keeper->restore(ada.compare(), closing).value(), "");
    EXPECT_EQ(*readFile(record()), sealed);
    EXPECT_FALSE(ada.keeper->restore(ada.compare(), "../x"));
    EXPECT_EQ(ada.says(), "3 decisions, log whole, no checkpoint yet");
}

TEST_F(Keeper, SuppliesOnlyTheSealedFile) {
    twoDays();
    const std::string root = sha256Hex("every account was matched");
    fs::remove(evidence());
    Vault& vault = ada.keeper->vault();
    const Approval approval{"Supply the evidence review.txt — verify to keep", "t", "t"};
    EXPECT_FALSE(ada.keeper->supply(vault.stage(std::string("another")), root, "review.txt", "Ada",
                                    approval));
    EXPECT_FALSE(fs::exists(evidence()));
    ASSERT_TRUE(ada.keeper->supply(vault.stage(std::string("every account was matched")), root,
                                   "review.txt", "Ada Byron", approval));
    EXPECT_EQ(ada.says(), "3 decisions, log whole, no checkpoint yet");
}

TEST_F(Keeper, AdoptsEarlierRecordsInTheirOrderAndNothingThatCannotBeRebuilt) {
    twoDays();
    ada.keeper.reset();
    fs::remove_all(office.proof());
    fs::remove_all(office.directory.path() / "larkspur-01");
    Computer anew(office, "larkspur-01");
    change(record(), "\"owner\" : \"Ada", "\"owner\" : \"Eve");
    const auto names = recordFileNames(office.outputs());
    const std::vector<std::string> files(names.begin(), names.end());
    EXPECT_EQ(anew.keeper->adopt(files, "Ada", {"Adopt", "t", "t"}).value(), 1U)
        << "the changed owner is not what was sealed";
    change(record(), "\"owner\" : \"Eve", "\"owner\" : \"Ada");
    EXPECT_EQ(anew.keeper->adopt({closing}, "Ada", {"Adopt", "t", "t"}).value(), 1U);
    const auto found = anew.compare();
    ASSERT_EQ(found.decisions.size(), 2U);
    EXPECT_EQ(found.decisions[0].file, closing) << "by the record's time, not by the line's";
    EXPECT_EQ(found.decisions[0].evidence, LoggedDecision::Evidence::notKept);
    EXPECT_TRUE(found.decisions[0].adopted);
}

TEST_F(Keeper, ATornEndIsCutOffBeforeTheNextLine) {
    twoDays();
    const fs::path log = ada.log();
    const std::string whole = *readFile(log);
    office.write(log, whole + R"({"account":"Ada By)");
    ada.start();
    ada.identify();
    EXPECT_EQ(ada.says(), "4 decisions, log whole, no checkpoint yet");
    EXPECT_EQ(ada.log(), log);
    EXPECT_TRUE(readFile(log)->starts_with(whole));
}

TEST_F(Keeper, ALogThatIsNotAsItWasLeftIsToldAndNeverWrittenToAgain) {
    twoDays();
    const fs::path log = ada.log();
    const std::string whole = *readFile(log);
    const std::string continued = whole + *sealLineText({.seq = 6,
                                                         .prev = sha256Hex(whole),
                                                         .ts = "2026-02-01T09:15:02Z",
                                                         .fact = PackageLine{"x", sha256Hex("x")}});
    office.write(log, continued);
    ada.start();
    ada.identify();
    EXPECT_EQ(*readFile(log), continued);
    const fs::path second = ada.log();
    EXPECT_NE(second, log);
    EXPECT_THAT(ada.says(), HasSubstr("This computer's log was continued elsewhere"));
    // Set back, as from a backup.
    const std::string all = *readFile(second);
    const std::string earlier = all.substr(0, all.find('\n') + 1);
    office.write(second, earlier);
    ada.start();
    ada.identify();
    EXPECT_EQ(*readFile(second), earlier);
    EXPECT_THAT(ada.says(), HasSubstr("The log of larkspur-01 is shorter than it was."));
}

TEST_F(Keeper, WhatCannotBeKeptIsToldAndKeptLater) {
    ada.identify();
    fs::rename(office.proof(), office.directory.path() / "away");
    office.write(office.proof(), "a file where the folder was");
    closing = ada.close("A", "a");
    ASSERT_EQ(ada.keeper->unkept().size(), 1U);
    const Unkept unkept = ada.keeper->unkept().front();
    EXPECT_TRUE(unkept.line && unkept.record && unkept.evidence && !unkept.waiting);
    EXPECT_EQ(unkept.reason, "the folder is gone");
    EXPECT_TRUE(fs::exists(record())) << "the seal itself stands";
    EXPECT_FALSE(ada.keeper->retry());
    fs::remove(office.proof());
    fs::rename(office.directory.path() / "away", office.proof());
    office.clock.moment += std::chrono::minutes(1);
    EXPECT_TRUE(ada.keeper->retry());
    EXPECT_TRUE(ada.keeper->unkept().empty());
    EXPECT_EQ(ada.says(), "2 decisions, log whole, no checkpoint yet");
}

TEST_F(Keeper, AFullDiskLosesNeitherLineNorEvidence) {
    ada.identify();
    ada.keeper.reset();
    const std::string told = inChild([this] {
        ada.start();
        limitFilesTo(1500);
        ada.close("A", std::string(100'000, 'x'));
        const auto unkept = ada.keeper->unkept();
        return unkept.empty() ? "kept" : unkept.front().reason;
    });
    EXPECT_EQ(told, "the disk is full");
    ada.start();
    EXPECT_THAT(ada.says(), HasSubstr("1 record")) << "sealed by a process that is gone";
    const auto found = ada.compare();
    EXPECT_TRUE(found.log(found.ownLog)->whole());
}

TEST_F(Keeper, OnlyOneProgramOfAnAccountWritesTheLog) {
    ada.identify();
    ProofKeeper second({ada.folders(), "larkspur-01", "id of larkspur-01", "1.0"}, office.clock);
    second.readOwnLog();
    (void)second.keep({.account = "Ada",
                       .file = "collapse-9-aaaaaaaaaaaa.totem.json",
                       .record = "{}",
                       .block = sha256Hex("b"),
                       .payload = "{}",
                       .approval = {"s", "t", "t"},
                       .evidence = std::nullopt,
                       .draft = std::nullopt});
    ASSERT_EQ(second.unkept().size(), 1U);
    EXPECT_THAT(second.unkept().front().reason, HasSubstr("another program"));
    ada.keeper.reset();
    EXPECT_TRUE(second.retry()) << "once the first has ended";
}

TEST_F(Keeper, TwoComputersCountEachDecisionOnceInOneOrder) {
    Computer grace(office, "larkspur-02");
    ada.identify();
    office.clock.moment += std::chrono::minutes(1);
    grace.close("A", "from grace");
    office.clock.moment += std::chrono::minutes(1);
    ada.close("A", "from ada");
    for (Computer* each : {&ada, &grace}) {
        EXPECT_EQ(each->says(), "3 decisions on 2 computers, logs whole, no checkpoint yet");
        const auto found = each->compare();
        std::vector<std::string> computers;
        for (const LoggedDecision& decision : found.decisions)
            computers.push_back(decision.computer);
        EXPECT_THAT(computers, testing::ElementsAre("larkspur-01", "larkspur-02", "larkspur-01"));
    }
    // What a synchronising program leaves.
    const fs::path theirs = grace.log();
    const std::string whole = *readFile(theirs);
    const fs::path copy = office.proof() / "seals-x.sync-conflict-20261123.ndjson";
    office.write(copy, whole.substr(0, whole.find('\n') + 1));
    EXPECT_EQ(ada.says(), "3 decisions on 2 computers, logs whole, no checkpoint yet");
    office.write(copy, edited(whole, "Ada Byron", "Eve Byron"));
    EXPECT_THAT(ada.says(),
                HasSubstr("Two copies of the log of larkspur-02 disagree from line 2 on."));
    fs::remove(copy);
    office.write(theirs, whole.substr(0, whole.find('\n') + 1));
    EXPECT_THAT(ada.says(), HasSubstr("The log of larkspur-02 is shorter than it was."));
    fs::remove(theirs);
    EXPECT_THAT(ada.says(), HasSubstr("The log of larkspur-02 is gone."));
    office.write(theirs, whole);
    EXPECT_EQ(ada.says(), "3 decisions on 2 computers, logs whole, no checkpoint yet");
}

TEST_F(Keeper, WhatAnotherComputerMayStillSendIsArrivingForADay) {
    Computer grace(office, "larkspur-02");
    ada.identify();
    const std::string file = grace.close("A", "from grace");
    fs::remove(office.outputs() / file);
    EXPECT_EQ(ada.says(), "2 decisions on 2 computers, logs whole, no checkpoint yet");
    EXPECT_THAT(grace.says(), HasSubstr("1 record is gone.")) << "its own is there or gone at once";
    office.clock.moment += std::chrono::hours(25);
    EXPECT_THAT(ada.says(), HasSubstr("1 record is gone."));
}

TEST_F(Keeper, ACheckpointHoldsUntilWhatItFixesChanges) {
    EXPECT_FALSE(ada.keeper->makeCheckpoint(ada.compare())) << "nothing is sealed";
    twoDays();
    const auto made = ada.keeper->makeCheckpoint(ada.compare()).value();
    EXPECT_EQ(ada.keeper->makeCheckpoint(ada.compare()).value().fileName, made.fileName);
    EXPECT_EQ(made.fileName, checkpointFileName(made.checkpoint));
    const auto answer = [&] {
        const auto check = checkCheckpoint(made.checkpoint, ada.compare());
        return check.answers.at(0).sentence;
    };
    EXPECT_EQ(answer(),
              "The log of larkspur-01 still begins with these 6 lines; nothing was added");
    ada.identify();
    EXPECT_EQ(answer(),
              "The log of larkspur-01 still begins with these 6 lines; 1 was added since");
    EXPECT_EQ(ada.says(), "4 decisions, log whole, last checkpoint 1 February (1 decision since)");
    // A log that was rewritten from the first line on, with every hash fitted.
    ada.keeper.reset();
    fs::remove_all(office.directory.path() / "larkspur-01");
    for (const auto& entry : fs::directory_iterator(office.proof())) {
        if (entry.path().extension() == ".ndjson") fs::remove(entry.path());
    }
    Computer doctored(office, "larkspur-01");
    doctored.identify();
    EXPECT_THAT(doctored.says(), HasSubstr(" is gone."));
    EXPECT_FALSE(checkCheckpoint(made.checkpoint, doctored.compare()).holds());
}

} // namespace
} // namespace kelvo::test
