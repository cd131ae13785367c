#include "support/World.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvo {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

TEST(Adoption, ComposesWhatIsAdoptedInTableOrder) {
    test::World world;
    EngineVM& vm = world.start();
    world.transcript();
    vm.adopt(vm.templates()[5]);
    EXPECT_THAT(
        world.transcript(),
        ElementsAre(
            "drive 1.000", "status loaded 7 nodes, 2 states",
            "cite System: 1 families, growing | kernel SCAP (Karnopp causality)",
            R"(event {"kind":"graph_loaded","nodes":7,"note":"System: 1 families, growing","states":2})",
            StartsWith("cards "),
            "status System: 1 families, 2 states (latest +CC6 ×8). Play to charge, then Bond to "
            "checkpoint.",
            "cite Adopted CC6 into system: Logical & Physical Access (SSO, MFA, MDM) | compose "
            "· 1 families, 2 states",
            R"(event {"cc":"CC6","controls":8,"families":1,"kind":"adopt_compose","states":2})"));
    EXPECT_EQ(vm.currentTemplate->value(), "CC6");
    EXPECT_EQ(vm.seID(), "owner");
    vm.adopt(vm.templates()[0]);
    EXPECT_EQ(vm.space()->graph().nodes[2].id, "f1_TF_CC1") << "CC1 comes first in the table";
    EXPECT_EQ(vm.space()->graph().nodes[7].id, "f2_TF_CC6");
    vm.play();
    world.ticker.fire(3);
    vm.adopt(vm.templates()[0]);
    EXPECT_EQ(vm.adopted->size(), 2U);
    EXPECT_EQ(*vm.t, 0) << "adopting again restarts time";
}

TEST(Adoption, OneFamilyStaysCalmAndAllNinePauseAtTick169) {
    for (std::size_t family = 0; family < 9; ++family) {
        test::World world;
        EngineVM& vm = world.start();
        vm.adopt(vm.templates()[family]);
        vm.play();
        EXPECT_EQ(world.ticker.fire(600), 600) << vm.templates()[family].id;
    }
    test::World world;
    EngineVM& vm = world.start();
    for (const SOC2Template& each : vm.templates())
        vm.adopt(each);
    vm.play();
    EXPECT_EQ(world.ticker.fire(1000), 169);
    vm.bondCollapse();
    EXPECT_EQ(vm.citations->front().claim, "Checkpointed system state: 9 families");
}

} // namespace
} // namespace kelvo
