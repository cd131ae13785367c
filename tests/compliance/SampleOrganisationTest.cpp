#include "base/Files.h"
#include "compliance/RoleMap.h"
#include "compliance/SOC2Mesh.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kelvo {
namespace {

const std::filesystem::path examples = KELVO_EXAMPLES;

TEST(SampleOrganisation, ItsReadinessFileHasThirteenCriteriaInEveryState) {
    const auto mesh = SOC2Mesh::load(examples / "outputs" / "soc2-mesh-bondgraph.json");
    ASSERT_TRUE(mesh) << mesh.error();
    EXPECT_EQ(mesh->nodes.size(), 13U);
    EXPECT_EQ(mesh->metCount(), 4);
    EXPECT_NE(mesh->find("CC6-access"), nullptr);
    EXPECT_NE(mesh->find("CC9-vendor-risk"), nullptr);
    EXPECT_EQ(mesh->highestImpactGap()->id, "CC6-devices");
    for (const SOC2Mesh::Node& gap : mesh->gaps())
        EXPECT_NE(SOC2Mesh::gapText(gap), gap.evidence) << gap.id << " says what is missing";
    EXPECT_DOUBLE_EQ(mesh->readiness().value, 29.0 / 58);
}

TEST(SampleOrganisation, ItsRolesNameOnlyCriteriaThatThereAreAndCoverEveryWayToClose) {
    const auto mesh = SOC2Mesh::load(examples / "outputs" / "soc2-mesh-bondgraph.json");
    const auto roles = RoleMap::load(examples / "outputs" / "roles-bondgraph.json");
    ASSERT_TRUE(mesh && roles);
    std::vector<std::string> ways;
    for (const std::string& name : roles->roleNames()) {
        for (const RoleMap::Control& control : roles->controlsFor(name)) {
            EXPECT_NE(mesh->find(control.criterion), nullptr) << control.criterion;
            ways.push_back(control.close);
        }
    }
    for (const char* way : {"os", "generate", "attest"})
        EXPECT_NE(std::find(ways.begin(), ways.end(), way), ways.end()) << way;
    EXPECT_TRUE(roles->controlsFor("Owner").empty());
    EXPECT_TRUE(roles->role("Auditor")->readonly);
}

} // namespace
} // namespace kelvo
