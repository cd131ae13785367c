// Which sections the right pane shows in which state, and in which order.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Stage.h"

namespace kelvo::test {
namespace {

using testing::ElementsAre;

class Sections : public testing::Test {
protected:
    std::vector<std::string> shown() {
        std::vector<std::string> names;
        for (const QQuickItem* item : stage.items()) {
            const QString name = item->objectName();
            if (name.endsWith("Section")) names.push_back(name.chopped(7).toStdString());
        }
        return names;
    }

    Stage stage;
};

TEST_F(Sections, WithoutAPersonAndWithoutAMesh) {
    stage.open();
    EXPECT_THAT(shown(),
                ElementsAre("assistant", "kyc", "nextAction", "evidence", "os", "provenance"));
}

TEST_F(Sections, WithoutAPersonAndWithAMesh) {
    stage.writeOrganisation();
    stage.open();
    EXPECT_THAT(shown(), ElementsAre("assistant", "kyc", "nextAction", "evidence", "readiness",
                                     "os", "provenance"));
}

TEST_F(Sections, OfEachRole) {
    stage.writeOrganisation();
    stage.open();
    stage.verify("Owner");
    EXPECT_THAT(shown(), ElementsAre("assistant", "identity", "nextAction", "evidence", "readiness",
                                     "os", "provenance"));
    stage.verify("Engineer");
    EXPECT_THAT(shown(), ElementsAre("assistant", "identity", "nextAction", "responsibilities",
                                     "os", "provenance"));
    stage.verify("Auditor");
    EXPECT_THAT(shown(),
                ElementsAre("assistant", "identity", "nextAction", "auditor", "os", "provenance"));
    stage.verify("Somebody else");
    EXPECT_THAT(shown(), ElementsAre("assistant", "identity", "nextAction", "evidence", "readiness",
                                     "os", "provenance"));
}

TEST_F(Sections, TheOwnerWithoutAMeshSeesOnlyTheEvidenceSection) {
    stage.open();
    stage.verify("Owner");
    EXPECT_THAT(shown(),
                ElementsAre("assistant", "identity", "nextAction", "evidence", "os", "provenance"));
}

TEST_F(Sections, APendingMeasurementComesAndGoes) {
    stage.open();
    stage.engine().pause();
    stage.settle();
    EXPECT_THAT(shown(), ElementsAre("assistant", "pending", "kyc", "nextAction", "evidence", "os",
                                     "provenance"));
    stage.engine().bondCollapse();
    stage.settle();
    EXPECT_EQ(stage.named("pendingSection"), nullptr);
}

TEST_F(Sections, ADraftComesAndGoes) {
    stage.writeOrganisation();
    stage.open();
    stage.verify("Owner");
    stage.engine().generatePolicy("CC6-access");
    stage.settle();
    EXPECT_EQ(stage.named("draftSection"), nullptr);
    stage.world.model.answer("The policy");
    stage.settle();
    EXPECT_THAT(shown(), ElementsAre("assistant", "identity", "nextAction", "draft", "evidence",
                                     "readiness", "os", "provenance"));
    stage.engine().discardGenerated();
    stage.settle();
    EXPECT_EQ(stage.named("draftSection"), nullptr);
}

} // namespace
} // namespace kelvo::test
