#include "compliance/ClosureReplay.h"

#include "base/Json.h"
#include "compliance/ControlClosure.h"
#include "support/SlowRecordReader.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <random>

namespace kelvo {
namespace {

namespace fs = std::filesystem;
using support::closedBySlowReading;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

void write(const fs::path& file, std::string_view bytes) {
    std::ofstream out(file, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string record(const std::string& criterion) {
    return R"({"sourceDb":"control","gate_after":1,"evidence_root":"ab","criterion":")" +
           criterion + "\"}";
}

TEST(ClosureReader, AgreesWithTheGeneralReaderOnDamagedRecords) {
    std::mt19937 random(20260131);
    const std::string whole =
        R"({"a":[1,-0.5e3,true,null,{"k\n":"\u00e9é"}],"gate_after":1.0,"sourceDb":"control",)"
        R"("evidence_root":"f00","criterion":"A\"\\","z":12345678901234567890123})";
    const std::string alphabet = "{}[]\",:\\0123456789.eE+-tfnulrsdx \n\x01\xC3\xA9\xFF";
    const auto below = [&](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    ClosureReader reader;
    int closing = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string text = whole;
        for (std::size_t edits = below(3); edits > 0; --edits) {
            const std::size_t at = below(text.size());
            switch (below(3)) {
            case 0:
                text[at] = alphabet[below(alphabet.size())];
                break;
            case 1:
                text.erase(at, 1 + below(4));
                break;
            default:
                text.insert(at, 1, alphabet[below(alphabet.size())]);
            }
            if (text.empty()) break;
        }
        const auto slow = closedBySlowReading(text);
        if (slow) ++closing;
        ASSERT_EQ(reader.closedCriterion(text), slow) << text;
    }
    EXPECT_GT(closing, 4'000) << "enough of them must still be records";
}

TEST(SealedClosures, OnlyRecordNamesDirectlyInsideCount) {
    const test::TemporaryDirectory folder;
    const fs::path& at = folder.path();
    write(at / "control-0-aaaaaaaaaaaa.totem.json", record("A"));
    write(at / "control-1-aaaaaaaaaaaa.totem.json", record("A"));
    write(at / ".totem.json", record("B"));
    write(at / "control-2-aaaaaaaaaaaa.totem.json.tmp", record("C"));
    write(at / "control-3-aaaaaaaaaaaa.TOTEM.JSON", record("C"));
    write(at / "evidence-4-aaaaaaaaaaaa.totem.json", record("not in the mesh"));
    fs::create_directory(at / "below");
    write(at / "below" / "control-5-aaaaaaaaaaaa.totem.json", record("C"));
    fs::create_symlink(at / "below" / "control-5-aaaaaaaaaaaa.totem.json",
                       at / "linked.totem.json");
    EXPECT_THAT(sealedClosures(at, {"A", "B", "D"}), ElementsAre("A", "B"));
    EXPECT_THAT(sealedClosures(at, {"C"}), ElementsAre("C")) << "through the link";
    EXPECT_THAT(sealedClosures(at / "missing", {"A"}), IsEmpty());
    EXPECT_THAT(sealedClosures(at, {}), IsEmpty());
}

TEST(SealedClosures, ARecordLargerThanTheBoundClosesNothing) {
    const test::TemporaryDirectory folder;
    const std::string text = record("A");
    write(folder.path() / "a.totem.json", text + std::string(largestRecordFile - text.size(), ' '));
    write(folder.path() / "b.totem.json",
          record("B") + std::string(largestRecordFile - text.size() + 1, ' '));
    write(folder.path() / "huge.totem.json", record("C"));
    fs::resize_file(folder.path() / "huge.totem.json", std::uintmax_t{1} << 34);
    EXPECT_THAT(sealedClosures(folder.path(), {"A", "B", "C"}), ElementsAre("A"));
}

TEST(SealedClosures, AHostileDirectoryClosesExactlyWhatIsValid) {
    const test::TemporaryDirectory folder;
    CriterionIds wanted{"bad", "never sealed"};
    CriterionIds valid;
    int entries = 0;
    const auto name = [&] {
        return folder.path() / ("control-" + std::to_string(entries++) + ".totem.json");
    };
    for (int round = 0; round < 20; ++round) {
        for (const std::string& text :
             {std::string(), record("bad").substr(0, 40), "[" + record("bad") + "]",
              std::string(R"({"sourceDb":7,"gate_after":1,"evidence_root":"x","criterion":"bad"})"),
              std::string(5000, '['), std::string("{\"criterion\":\"bad\xC3\"}")})
            write(name(), text);
        ASSERT_EQ(::mkfifo(name().c_str(), 0600), 0);
        fs::create_directory(name());
        fs::create_symlink(folder.path() / "nowhere", name());
        fs::create_symlink(folder.path(), name());
        const fs::path itself = name();
        fs::create_symlink(itself, itself);
        const fs::path sparse = name();
        write(sparse, record("bad"));
        fs::resize_file(sparse, std::uintmax_t{1} << 33);
        for (int i = 0; i < 4; ++i) {
            const std::string id = "CC-" + std::to_string(entries);
            write(name(), record(id));
            wanted.insert(id);
            valid.insert(id);
        }
    }
    EXPECT_EQ(sealedClosures(folder.path(), wanted), valid);
}

TEST(SealedClosures, TheLargestRecordOfAPolicyCanBeReadBack) {
    const std::string id(64U << 10, '\x01'); // six bytes each when written
    const std::string evidence(256U << 10, '\x01');
    ControlClosure largest;
    largest.criterion = id;
    largest.evidenceRoot = "ab";
    largest.evidenceName = "policy-" + id + ".txt";
    Json document = controlPayload(largest);
    document.update(Json{{"source_variables", evidence},
                         {"title", "Sealed generated policy " + id},
                         {"evidence_summary", "generated from graph variables"}});
    const auto text = writeJson(document, JsonLayout::pretty);
    ASSERT_TRUE(text);
    EXPECT_LT(text->size(), largestRecordFile - 100'000) << "with room for the rest of a record";
    EXPECT_EQ(ClosureReader().closedCriterion(*text), id);
}

} // namespace
} // namespace kelvo
