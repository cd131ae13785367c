// Packages of real folders, checked with the tools that an outsider has.

#include "proof/Package.h"

#include "proof/Sheets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <set>

#include "Office.h"

namespace kelvo::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class Packages : public testing::Test {
protected:
    Packages() {
        office.graph = R"({"organisation":"Lark\nspur","nodes":[
            {"id":"=A,\"1\"","g":0.5,"w":3,"evidence":"x GAP: a, b","title":"Ää","tsc":["CC6.1"]},
            {"id":"B","g":0,"w":1,"evidence":""}]})";
        ada = std::make_unique<Computer>(office, "larkspur-01");
    }

    void seal(const FurtherSeal& further, std::optional<StagedEvidence> evidence = {}) {
        Json payload = furtherPayload(further);
        payload["attested_at"] = iso8601(office.clock.now());
        ada->seal(payload, std::move(evidence));
    }
    void close(const std::string& criterion, const std::string& name, const std::string& text) {
        const StagedEvidence staged = ada->keeper->vault().stage(text);
        ada->seal({{"sourceDb", "control"},
                   {"criterion", criterion},
                   {"gate_after", 1},
                   {"owner", "Ada"},
                   {"generated", true},
                   {"attested_at", iso8601(office.clock.now())},
                   {"evidence_root", staged.root()},
                   {"evidence_name", name}},
                  staged);
    }
    void yearOfAda() {
        const auto day = [](const char* text) { return parseIsoDay(text).value(); };
        seal(AuditPeriod{true, day("2026-01-01"), day("2026-12-31"), {"Security"}, "CPA"});
        close("=A,\"1\"", "../a\x1b\nb.pdf", "evidence of A");
        close("B", "b.txt", "evidence of B");
        const StagedEvidence system = ada->keeper->vault().stage(std::string("the system"));
        seal(ReportDocument{{}, system.root(), ".hidden"}, system);
    }
    PackageRequest request(const std::string& folder) {
        const fs::path destination = office.directory.path() / folder;
        fs::create_directories(destination);
        const ProofComparison comparison = ada->compare();
        return {.folders = ada->folders(),
                .comparison = comparison,
                .checkpoint = ada->keeper->makeCheckpoint(comparison)->checkpoint,
                .destination = destination,
                .program = "1.0"};
    }
    /// The exit status of a command line.
    static int shell(const fs::path& folder, const std::string& command) {
        const std::string whole = "cd '" + folder.native() + "' && { " + command + "\n} >/dev/null";
        return WEXITSTATUS(std::system((whole + " 2>&1").c_str()));
    }
    static std::set<std::string> files(const fs::path& folder) {
        std::set<std::string> found;
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            if (entry.is_regular_file()) found.insert(fs::relative(entry.path(), folder));
        }
        return found;
    }
    fs::path kept(const std::string& text) { return ada->keeper->vault().path(sha256Hex(text)); }

    Office office;
    std::unique_ptr<Computer> ada;
};

TEST_F(Packages, PassTheirOwnManifestsAndListEveryFile) {
    yearOfAda();
    const auto written = writePackage(request("a"));
    ASSERT_TRUE(written) << written.error().description;
    const std::string check = "sha256sum --strict -c manifest-sha256.txt tagmanifest-sha256.txt";
    EXPECT_EQ(shell(written->folder, check), 0);
    const auto text = [&](const char* name) { return readFile(written->folder / name).value(); };
    EXPECT_EQ(sha256Hex(text("tagmanifest-sha256.txt")), written->number);
    std::string listed = text("manifest-sha256.txt") + text("tagmanifest-sha256.txt");
    for (const std::string& name : files(written->folder)) {
        if (name == "tagmanifest-sha256.txt") continue;
        EXPECT_THAT(listed, HasSubstr("  " + name + "\n"));
    }
    EXPECT_EQ(std::count(listed.begin(), listed.end(), '\n') + 1,
              static_cast<std::ptrdiff_t>(files(written->folder).size()));
    const std::string id = ada->compare().ownLog.substr(0, 8);
    EXPECT_EQ(written->folder.filename(), "kelvo-audit-" + id + "-000006-20260131");
    EXPECT_THAT(text("data/readiness.csv"),
                HasSubstr("\r\n\"'=A,\"\"1\"\"\",Ää,CC6.1,3,0.5,1,supported,annual,1,1,2027-02-01,"
                          "\"a, b\"," +
                          id + ":4\r\nB,"));
    EXPECT_THAT(text("data/evidence.csv"), HasSubstr("-_._a__b.pdf"));
    EXPECT_THAT(text("bag-info.txt"), HasSubstr("Source-Organization: Lark␊spur\n"));
    EXPECT_TRUE(fs::exists(written->folder / "data/documents/description-_hidden"));
    EXPECT_EQ(text(("data/logs/seals-" + id + ".ndjson").c_str()), readFile(ada->log()).value());
    const Json summary = Json::parse(text("data/summary.json"));
    EXPECT_EQ(summary["supported"], 1);
    EXPECT_EQ(summary["decisions"], 4);
    EXPECT_EQ(summary["assurance"]["B"], "supported");
    // The same logs at the same moment give the same bytes; a name that is taken is left alone.
    EXPECT_EQ(writePackage(request("b"))->number, written->number);
    EXPECT_FALSE(writePackage(request("b")));
}

TEST_F(Packages, AreFoundOutByTheirRecipeAlsoWithManifestsMadeAnew) {
    yearOfAda();
    const auto written = writePackage(request("a"));
    ASSERT_TRUE(written) << written.error().description;
    const std::string anew =
        "; find data -type f | sort | xargs -d '\\n' sha256sum > manifest-sha256.txt;"
        "find * -maxdepth 0 -type f ! -name 'tagm*' | xargs sha256sum > tagmanifest-sha256.txt";
    const fs::path folder = written->folder.parent_path() / "tampered";
    const auto tampered = [&](const std::string& what) {
        fs::remove_all(folder);
        fs::copy(written->folder, folder, fs::copy_options::recursive);
        shell(folder, what);
        return shell(folder, "sh check.sh");
    };
    EXPECT_EQ(tampered("true" + anew), 0);
    EXPECT_EQ(tampered("echo >> data/readiness.csv"), 1);
    EXPECT_EQ(tampered("ln -s /etc/passwd data/link"), 1);
    for (const char* each : {
             "sed -i s/evidence/Evidence/ data/evidence/*",
             "sed -i 's/2026-01-31T/2025-01-31T/' data/records/*/*",
             "sed -i 's/Approve it/Approve that/' data/logs/*",
             "sed -i 4d data/logs/*",
             "printf '{' >> data/logs/*",
             "rm data/records/*/000003-*",
             "cd data/records/* && cp 000003-* 000009-x; cd ../../..",
             "sed -i 's/^lines: 6/lines: 5/' data/checkpoint.txt",
         }) {
        EXPECT_EQ(tampered(each + anew), 1) << each;
    }
    EXPECT_EQ(tampered("true"), 0);
    // A checkpoint that somebody else kept, of more lines.
    const std::string given = "sed 's/^lines: .*/lines: 7/' data/checkpoint.txt > ../given.txt; ";
    EXPECT_EQ(shell(folder, given + "sh check.sh ../given.txt"), 1);
}

TEST_F(Packages, LeaveNothingBehindWhereTheyAreStoppedOrRefused) {
    EXPECT_THAT(packageRefusals(ada->folders(), ada->compare()),
                ElementsAre("No audit period is set."));
    yearOfAda();
    EXPECT_THAT(packageRefusals(ada->folders(), ada->compare()), IsEmpty());
    int pieces = 0;
    EXPECT_FALSE(writePackage(request("a"), [&](auto, auto) { return ++pieces < 3; }));
    EXPECT_THAT(files(office.directory.path() / "a"), IsEmpty());

    fs::permissions(kept("evidence of A"), fs::perms::owner_all);
    office.write(kept("evidence of A"), "something else");
    const auto refused = writePackage(request("a"));
    ASSERT_FALSE(refused);
    EXPECT_THAT(refused.error().description, HasSubstr("is not the one that was sealed"));
    EXPECT_THAT(files(office.directory.path() / "a"), IsEmpty());

    PackageRequest anyway = request("a");
    anyway.anyway = true;
    const auto written = writePackage(anyway);
    ASSERT_TRUE(written) << written.error().description;
    const Json summary = Json::parse(*readFile(written->folder / "data/summary.json"));
    EXPECT_EQ(summary["warnings"].size(), 1U);
    EXPECT_EQ(summary["assurance"]["=A,\"1\""], "missing");
    EXPECT_EQ(summary["supported"], 0.25);
    EXPECT_THAT(*readFile(written->folder / "data/evidence.csv"), HasSubstr(",missing,,"));

    fs::remove(kept("evidence of B"));
    EXPECT_THAT(packageRefusals(ada->folders(), ada->compare()),
                ElementsAre(HasSubstr("The evidence b.txt of larkspur-01, line 5, is not here.")));
}

TEST_F(Packages, HoldOfOtherLogsWhatWasReadBefore) {
    yearOfAda();
    Computer grace(office, "larkspur-02");
    grace.close("B", "one");
    ProofInput input = ada->keeper->input(std::nullopt);
    const ProofComparison read = compareProof(input);
    for (const ComparedLog& log : read.logs)
        input.until[log.id] = log.end.lines;
    grace.close("B", "two");
    Computer late(office, "larkspur-03");
    late.identify();
    ada->identify();
    PackageRequest request = this->request("a");
    request.comparison = compareProof(input);
    EXPECT_EQ(request.comparison.decisions.size(), read.decisions.size() + 1);
    request.checkpoint = ada->keeper->makeCheckpoint(request.comparison)->checkpoint;
    const auto written = writePackage(request);
    ASSERT_TRUE(written) << written.error().description;
    const std::string id = read.logs[1].id.substr(0, 8);
    const auto log = readFile(written->folder / "data/logs" / ("seals-" + id + ".ndjson")).value();
    EXPECT_EQ(sha256Hex(log), read.logs[1].end.head);
    EXPECT_EQ(files(written->folder / "data/logs").size(), 2U);
}

} // namespace
} // namespace kelvo::test
