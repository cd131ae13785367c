// The pictures of the model, and what fits where.

#include "ui/GraphLayout.h"

#include <gtest/gtest.h>

#include <QLineF>

#include "Stage.h"

namespace kelvo::test {
namespace {

TEST(GraphLayout, PlacesEveryNodeApartFromTheOthersAndAlwaysTheSame) {
    BondGraph chain;
    for (int i = 0; i < 50; ++i) {
        chain.nodes.push_back({"n" + std::to_string(i), NodeKind::j1});
        if (i > 0) chain.bonds.push_back({i - 1, i});
    }
    const GraphLayout layout = layOut(chain);
    ASSERT_EQ(layout.nodes.size(), 50U);
    for (std::size_t i = 0; i < layout.nodes.size(); ++i) {
        EXPECT_TRUE(QRectF(QPointF(), layout.size).contains(layout.nodes[i]));
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_GT(QLineF(layout.nodes[i], layout.nodes[j]).length(), 30) << i << " " << j;
    }
    EXPECT_EQ(layOut(chain).nodes, layout.nodes);
}

TEST(GraphLayout, LeavesOutBondsThatNameNoNode) {
    const BondGraph graph{{{"a", NodeKind::Se}, {"b", NodeKind::R}}, {{0, 1}, {0, 7}, {-1, 1}}};
    EXPECT_EQ(layOut(graph).nodes.size(), 2U);
    EXPECT_TRUE(layOut(BondGraph{}).nodes.empty());
}

TEST(Window, NoControlReachesOutOfItsPaneAtTheSmallestSize) {
    Stage stage;
    stage.writeOrganisation();
    stage.open(860, 560);
    for (const char* role : {"", "Owner", "Engineer", "Auditor"}) {
        SCOPED_TRACE(role);
        if (*role != '\0') stage.verify(role);
        for (QQuickItem* item : stage.items()) {
            if (!item->inherits("QQuickAbstractButton") && !item->inherits("QQuickText")) continue;
            const QRectF box = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
            EXPECT_GE(box.left(), -1) << item->property("text").toString().toStdString();
            EXPECT_LE(box.right(), 861) << item->property("text").toString().toStdString();
        }
    }
}

} // namespace
} // namespace kelvo::test
