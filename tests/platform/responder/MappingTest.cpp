#include "intelligence/EvidenceMapper.h"
#include "support/Fakes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>

#include "LabelledSet.h"
#include "responder/BuiltInResponder.h"
#include "responder/CriterionRanking.h"

namespace kelvo::test {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

/// Asks the real mapping call with the built-in responder behind the port.
EvidenceMapping mapped(const std::string& text, const GroundTexts& ground = labelledGround()) {
    const BuiltInResponder responder([&] { return ground; });
    std::vector<std::string> ids;
    for (const auto& each : ground.criteria)
        ids.push_back(each.id);
    FakeModel model;
    std::optional<EvidenceMapping> result;
    EvidenceMapper::mapEvidence(model, text, ids,
                                [&](auto mapping) { result = std::move(mapping); });
    model.answer(responder.respond(model.requests.front()));
    EXPECT_TRUE(result.has_value());
    return result.value_or(EvidenceMapping{});
}

struct Quality {
    int right = 0;
    int proposed = 0;
    int expected = 0;
    double precision() const { return static_cast<double>(right) / proposed; }
    double recall() const { return static_cast<double>(right) / expected; }
};

Quality measure(const std::string& part) {
    Quality quality;
    for (const LabelledDocument& document : labelledDocuments(part)) {
        const auto criteria = mapped(document.text).criteria;
        quality.proposed += static_cast<int>(criteria.size());
        quality.expected += static_cast<int>(document.expected.size());
        for (const std::string& id : document.expected)
            quality.right += static_cast<int>(std::count(criteria.begin(), criteria.end(), id));
    }
    std::cout << part << ": precision " << quality.precision() << " (" << quality.right << " of "
              << quality.proposed << "), recall " << quality.recall() << " (" << quality.right
              << " of " << quality.expected << ")\n";
    return quality;
}

TEST(Mapping, FindsTheCriteriaOfTheTuningDocuments) {
    const Quality quality = measure("tuning");
    EXPECT_GE(quality.precision(), 0.85);
    EXPECT_GE(quality.recall(), 0.85);
}

TEST(Mapping, FindsTheCriteriaOfDocumentsThatNothingWasTunedOn) {
    const Quality quality = measure("held");
    EXPECT_GE(quality.precision(), 0.85);
    EXPECT_GE(quality.recall(), 0.85);
}

} // namespace
} // namespace kelvo::test
