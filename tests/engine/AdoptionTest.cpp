#include "EngineTest.h"

namespace kelvo::test {
namespace {

class Adoption : public EngineTest {};

TEST_F(Adoption, ComposesWhatIsAdoptedInTableOrder) {
    world.start();
    world->adopt(world->templates()[5]);
    EXPECT_TRUE(happened(
        world,
        {"drive 1.000", "status loaded 7 nodes, 2 states",
         "cite System: 1 families, growing | kernel SCAP (Karnopp causality)",
         R"(event {"kind":"graph_loaded","nodes":7,"note":"System: 1 families, growing","states":2})",
         "cards *",
         R"(status System: 1 families, 2 states (latest +CC6 ×8). Play to charge, then Bond to checkpoint.)",
         R"(cite Adopted CC6 into system: Logical & Physical Access (SSO, MFA, MDM) | compose · 1 families, 2 states)",
         R"(event {"cc":"CC6","controls":8,"families":1,"kind":"adopt_compose","states":2})"}));
    EXPECT_EQ(world->currentTemplate->value(), "CC6");
    EXPECT_EQ(world->seID(), "owner");
    world->adopt(world->templates()[0]);
    EXPECT_EQ(world->space()->graph().nodes[2].id, "f1_TF_CC1") << "CC1 comes first in the table";
    EXPECT_EQ(world->space()->graph().nodes[7].id, "f2_TF_CC6");
    world->play();
    world.ticker.fire(3);
    world->adopt(world->templates()[0]);
    EXPECT_EQ(world->adopted->size(), 2U);
    EXPECT_EQ(*world->t, 0) << "adopting again restarts time";
}

TEST_F(Adoption, OneFamilyStaysCalmAndAllNinePauseAtTick169) {
    world.start();
    for (const SOC2Template& family : world->templates()) {
        World alone;
        alone.start();
        alone->adopt(family);
        alone->play();
        EXPECT_EQ(alone.ticker.fire(600), 600) << family.id;
        world->adopt(family);
    }
    world->play();
    EXPECT_EQ(world.ticker.fire(1000), 169);
    world->bondCollapse();
    EXPECT_EQ(world->citations->front().claim, "Checkpointed system state: 9 families");
}

} // namespace
} // namespace kelvo::test
