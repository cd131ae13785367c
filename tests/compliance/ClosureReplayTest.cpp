#include "compliance/ClosureReplay.h"

#include "base/Json.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <random>

namespace kelvo {
namespace {

namespace fs = std::filesystem;
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

/// The rule once more, over the general reader and without any shortcut.
std::optional<std::string> closedBySlowReading(std::string_view text) {
    const auto document = parseJson(text);
    if (!document || !document->is_object()) return std::nullopt;
    const Json nothing;
    const auto member = [&](const char* key) -> const Json& {
        const auto found = document->find(key);
        return found == document->end() ? nothing : *found;
    };
    if (member("sourceDb") != "control") return std::nullopt;
    if (!member("gate_after").is_number() || member("gate_after").get<double>() != 1.0)
        return std::nullopt;
    const Json& root = member("evidence_root");
    if (!root.is_string() || root.get<std::string>().empty()) return std::nullopt;
    if (!member("criterion").is_string()) return std::nullopt;
    return member("criterion").get<std::string>();
}

std::string nested(std::size_t levels) {
    return R"({"x":)" + std::string(levels, '[') + std::string(levels, ']') +
           R"(,"sourceDb":"control","gate_after":1,"evidence_root":"ab","criterion":"A"})";
}

TEST(ClosureReader, TakesOnlyACompleteClosureAndTheLastOfRepeatedKeys) {
    const struct {
        std::string text;
        std::optional<std::string> criterion;
    } table[] = {
        {record("CC6-access"), "CC6-access"},
        {R"({"gate_after":1.0,"evidence_root":"x","criterion":"\u0041\/é","sourceDb":"contr\u006fl"})",
         "A/é"},
        {R"({"gate_after":10e-1,"evidence_root":"x","criterion":"","sourceDb":"control"})", ""},
        {R"({"gate_after":0.5,"evidence_root":"x","criterion":"A","sourceDb":"control"})", {}},
        {R"({"gate_after":true,"evidence_root":"x","criterion":"A","sourceDb":"control"})", {}},
        {R"({"gate_after":"1","evidence_root":"x","criterion":"A","sourceDb":"control"})", {}},
        {R"({"gate_after":1,"evidence_root":"","criterion":"A","sourceDb":"control"})", {}},
        {R"({"gate_after":1,"evidence_root":7,"criterion":"A","sourceDb":"control"})", {}},
        {R"({"gate_after":1,"evidence_root":"x","criterion":7,"sourceDb":"control"})", {}},
        {R"({"gate_after":1,"evidence_root":"x","criterion":"A","sourceDb":"collapse"})", {}},
        {R"({"gate_after":1,"evidence_root":"x","criterion":"A"})", {}},
        {R"({"gate_after":1,"evidence_root":"x","sourceDb":"control"})", {}},
        {R"({"criterion":"A","gate_after":1,"evidence_root":"x","sourceDb":"control","criterion":"B"})",
         "B"},
        {R"({"gate_after":1,"evidence_root":"x","criterion":"A","sourceDb":"control","gate_after":0})",
         {}},
        {R"({"gate_after":0,"evidence_root":"x","criterion":"A","sourceDb":"control","gate_\u0061fter":1})",
         "A"},
        {R"({"gate_after":1,"evidence_root":"x","criterion":"A","sourceDb":"control","criterion":null})",
         {}},
        {R"({"n":123456789012345678901234567890,)" + record("A").substr(1), "A"},
        {R"({"n":1e999,)" + record("A").substr(1), {}},
        {record("A") + " \n", "A"},
        {record("A") + "x", {}},
        {record("A") + record("A"), {}},
        {"\xEF\xBB\xBF" + record("A"), {}},
        {record("A\xFF"), {}},
        {record("A\xED\xA0\x80"), {}},
        {R"({"u":"\ud800",)" + record("A").substr(1), {}},
        {"[" + record("A") + "]", {}},
        {"{}", {}},
        {"", {}},
        {" ", {}},
        {"7", {}},
        {nested(jsonDepthLimit - 1), "A"},
        {nested(jsonDepthLimit + 2), {}},
        {nested(100'000), {}},
    };
    ClosureReader reader;
    for (const auto& row : table) {
        const auto closed = reader.closedCriterion(row.text);
        EXPECT_EQ(closed, row.criterion) << row.text.substr(0, 120);
        EXPECT_EQ(closedBySlowReading(row.text), row.criterion) << row.text.substr(0, 120);
    }
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

/// The i-th hostile entry of a directory, under a record's name.
void writeHostile(const fs::path& path, int i) {
    switch (i % 12) {
    case 0:
        return write(path, "");
    case 1:
        return write(path, record("bad").substr(0, 40));
    case 2:
        return write(path, "[" + record("bad") + "]");
    case 3:
        return write(path,
                     R"({"sourceDb":7,"gate_after":1,"evidence_root":"x","criterion":"bad"})");
    case 4:
        return write(path, std::string(5000, '['));
    case 5:
        ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
        return;
    case 6:
        fs::create_directory(path);
        return;
    case 7:
        return fs::create_symlink(path.parent_path() / "nowhere", path);
    case 8:
        return fs::create_symlink(path.parent_path(), path);
    case 9:
        return write(path, "{\"criterion\":\"bad\xC3\"}");
    case 10:
        write(path, record("bad"));
        return fs::resize_file(path, std::uintmax_t{1} << 33); // sparse: no disk is used
    default:
        return fs::create_symlink(path, path);
    }
}

TEST(SealedClosures, AHostileDirectoryClosesExactlyWhatIsValid) {
    const test::TemporaryDirectory folder;
    CriterionIds wanted{"bad", "never sealed"};
    CriterionIds valid;
    for (int i = 0; i < 10'000; ++i) {
        const fs::path path = folder.path() / ("control-" + std::to_string(i) + ".totem.json");
        if (i % 3 == 0) {
            writeHostile(path, i / 3);
        } else {
            const std::string id = "CC-" + std::to_string(i);
            write(path, record(id));
            wanted.insert(id);
            valid.insert(id);
        }
    }
    EXPECT_EQ(sealedClosures(folder.path(), wanted), valid);
}

} // namespace
} // namespace kelvo
