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

} // namespace
} // namespace kelvo
