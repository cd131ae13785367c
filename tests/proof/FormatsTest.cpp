// The formats to the byte, and readers of what somebody else may have written.

#include "base/Json.h"
#include "base/Sha256.h"
#include "proof/Checkpoint.h"
#include "proof/SealLog.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fstream>
#include <functional>

namespace kelvo {
namespace {

const std::string data = KELVO_PROOF_DATA;

std::vector<std::string> exampleLines() {
    const std::string text = *readFile(data + "/lines.ndjson");
    const auto end = text.find('\n') + 1;
    return {text.substr(0, end), text.substr(end)};
}

TEST(Formats, ALineIsWrittenAsInTheExample) {
    const auto lines = exampleLines();
    const SealLine begin{.seq = 0,
                         .prev = sha256Hex(""),
                         .ts = "2026-01-26T09:00:00Z",
                         .fact = BeginLine{"5B0E64C8-6C1D-4E0B-9D2A-3B1F7A90C2D4",
                                           "Larkspur Instruments (sample)", "larkspur-01"}};
    EXPECT_EQ(sealLineText(begin), lines[0]);
    EXPECT_EQ(sha256Hex(lines[0]),
              "237014d623b78a754d03badf9d63eade2bed4fae8e6e73bffad8ae3a6083dfcd");
    const Json line = *parseJson(lines[1]);
    const auto text = [&](const char* key) { return line.at(key).get<std::string>(); };
    EXPECT_EQ(sha256Hex(text("payload")),
              "722d999a69577697aaa29457e3fa9fd4ed64f039c369aea7834b5c7fddaf3115");
    const SealLine bond{
        .seq = 4,
        .prev = text("prev"),
        .ts = text("ts"),
        .fact = DecisionLine{.adopted = false,
                             .run = 1,
                             .account = "Ada Byron",
                             .file = text("file"),
                             .record = text("record"),
                             .block = text("block"),
                             .payload = text("payload"),
                             .approval = {text("approved"), text("asked"), text("answered")},
                             .evidence = "none"}};
    EXPECT_EQ(sealLineText(bond), lines[1]);
}

TEST(Formats, ACheckpointIsReadBackAlsoFromAMail) {
    const std::string text = *readFile(data + "/checkpoint.txt");
    const auto checkpoint = parseCheckpoint(text);
    ASSERT_TRUE(checkpoint) << checkpoint.error();
    EXPECT_EQ(checkpoint->lines(), 35);
    EXPECT_EQ(checkpointText(*checkpoint), text);
    std::string quoted = "On Monday Ada wrote:\r\n> ";
    for (const char c : text)
        quoted += c == '\n' ? std::string("  \r\n> ") : std::string(1, c);
    EXPECT_EQ(parseCheckpoint(quoted), checkpoint);
    EXPECT_EQ(checkpointMail(*checkpoint).subject, "Kelvo seal log checkpoint, 35 lines");
    for (const std::string& bad :
         {std::string("Dear auditor"), text.substr(0, 90), std::string(2 << 20, 'x'),
          std::string("Kelvo seal log checkpoint 1\nlog: x\n"), std::string()}) {
        EXPECT_FALSE(parseCheckpoint(bad)) << bad.substr(0, 40);
    }
    EXPECT_EQ(parseCheckpoint("Dear \x1b[31mauditor").error(),
              "This is not a checkpoint: its first line is “Dear ␛[31mauditor”.");
}

/// A small log: begin, run, and two package lines.
std::string smallLog() {
    std::string log;
    std::int64_t seq = 0;
    const SealFact facts[] = {BeginLine{"5B0E64C8-6C1D-4E0B-9D2A-3B1F7A90C2D4", "O", "c"},
                              RunLine{1, "Ada", "1", "", ""}, PackageLine{"a", sha256Hex("a")},
                              PackageLine{"b", sha256Hex("b")}};
    for (const SealFact& fact : facts) {
        log += *sealLineText(
            {.seq = seq++, .prev = sha256Hex(log), .ts = "2026-01-26T09:00:00Z", .fact = fact});
    }
    return log;
}

TEST(Formats, TheReaderStopsAtTheFirstLineThatDoesNotFollow) {
    const std::string whole = smallLog();
    const auto second = whole.find('\n') + 1;
    const auto third = whole.find('\n', second) + 1;
    const auto fourth = whole.find('\n', third) + 1;
    struct Case {
        std::string bytes;
        std::int64_t good;
        std::int64_t damaged; ///< 0 for none
        bool torn;
    };
    std::string changed = whole;
    changed[third + 20] ^= 1;
    const Case table[] = {
        {whole, 4, 0, false},
        {"", 0, 0, false},
        {whole.substr(0, whole.size() - 1), 3, 0, true},
        {whole.substr(0, third) + whole.substr(fourth), 2, 3, false},
        {whole.substr(0, third) + whole.substr(second, third - second) + whole.substr(third), 2, 3,
         false},
        {whole.substr(second), 0, 1, false},
        {whole + whole, 4, 5, false},
        {changed, 2, 3, false},
        {whole + "\n", 4, 5, false},
        {whole + "{}\n", 4, 5, false},
        {whole + std::string("\0\n", 2), 4, 5, false},
        {std::string(300, '[') + "\n", 0, 1, false},
        {whole + std::string(longestSealLine + 1, 'x'), 4, 5, false},
    };
    SealLogReader reader;
    int row = 0;
    for (const Case& each : table) {
        SCOPED_TRACE(++row);
        std::int64_t lines = 0;
        const auto reading = reader.readBytes(each.bytes, [&](const SealLineView&) { ++lines; });
        EXPECT_EQ(lines, each.good);
        EXPECT_EQ(reading.end.lines, each.good);
        EXPECT_EQ(reading.damage ? reading.damage->line : 0, each.damaged);
        EXPECT_EQ(reading.tornEnd(), each.torn);
    }
}

} // namespace
} // namespace kelvo
