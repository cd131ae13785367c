#include "compliance/ControlClosure.h"

#include "compliance/ClosureReplay.h"

#include <gtest/gtest.h>

namespace kelvo {
namespace {

const ControlClosure closure{
    .criterion = "CC6-access",
    .gateBefore = 0.5,
    .owner = "unverified",
    .readinessBefore = 0.25,
    .readinessAfter = 0.75,
    .attestedAt = "2026-01-31T09:15:02Z",
    .presence = "HIPR-OK",
    .tip = "00",
    .evidenceRoot = "ab",
    .evidenceName = "a/é.pdf",
};

TEST(ControlClosure, ThePayloadHoldsTheTwelveSharedMembersInSortedOrder) {
    EXPECT_EQ(writeJson(controlPayload(closure)),
              "{\"attested_at\":\"2026-01-31T09:15:02Z\",\"criterion\":\"CC6-access\","
              "\"evidence_name\":\"a\\/é.pdf\",\"evidence_root\":\"ab\",\"gate_after\":1,"
              "\"gate_before\":0.5,\"owner\":\"unverified\",\"presence\":\"HIPR-OK\","
              "\"readiness_after\":0.75,\"readiness_before\":0.25,\"sourceDb\":\"control\","
              "\"tip\":\"00\"}");
}

TEST(ControlClosure, TheReplayRecognisesWhatIsSealed) {
    ClosureReader reader;
    for (const JsonLayout layout : {JsonLayout::compact, JsonLayout::pretty})
        EXPECT_EQ(reader.closedCriterion(*writeJson(controlPayload(closure), layout)),
                  "CC6-access");
}

TEST(ControlClosure, TheLargestRecordOfAPolicyCanBeReadBack) {
    const std::string id(64U << 10, '\x01'); // six bytes each when written
    const std::string evidence(256U << 10, '\x01');
    ControlClosure largest = closure;
    largest.criterion = id;
    largest.evidenceName = "policy-" + id + ".txt";
    Json record = controlPayload(largest);
    record.update(Json{{"source_variables", evidence},
                       {"title", "Sealed generated policy " + id},
                       {"evidence_summary", "generated from graph variables"}});
    const auto text = writeJson(record, JsonLayout::pretty);
    ASSERT_TRUE(text);
    EXPECT_LT(text->size(), largestRecordFile - 100'000) << "with room for the rest of a record";
    EXPECT_EQ(ClosureReader().closedCriterion(*text), id);
}

} // namespace
} // namespace kelvo
