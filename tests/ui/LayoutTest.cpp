// The pictures of the model, and what fits where.

#include "ui/Curve.h"
#include "ui/GraphLayout.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QLineF>
#include <QScreen>
#include <QSet>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>

#include "Stage.h"

namespace kelvo::test {
namespace {

QQuickItem& theOne(Stage& stage, const char* type) {
    for (QQuickItem* item : stage.items()) {
        if (item->inherits(type)) return *item;
    }
    throw std::runtime_error(std::string("no ") + type);
}

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
    EXPECT_GT(layout.size.width(), layout.size.height());
    EXPECT_EQ(layOut(chain).nodes, layout.nodes);
}

TEST(GraphLayout, LeavesOutBondsThatNameNoNode) {
    const BondGraph graph{{{"a", NodeKind::Se}, {"b", NodeKind::R}}, {{0, 1}, {0, 7}, {-1, 1}}};
    EXPECT_EQ(layOut(graph).nodes.size(), 2U);
    EXPECT_TRUE(layOut(BondGraph{}).nodes.empty());
}

TEST(Curve, StaysWithinItsToleranceInFarFewerPoints) {
    QPolygonF points;
    for (int i = 0; i < 600; ++i) {
        const double x = 0.7 * i;
        // A swing, a jump, a spike of one sample, a flat end.
        points.append({x, i < 300 ? 40 * std::sin(i / 40.0) : i == 450 ? 5.0 : 80.0});
    }
    const QPolygonF kept = simplified(points, 0.3);
    EXPECT_LT(kept.size(), 60);
    EXPECT_EQ(kept.first(), points.first());
    EXPECT_EQ(kept.last(), points.last());
    for (const QPointF& point : points) {
        const auto right = std::find_if(kept.begin() + 1, kept.end() - 1,
                                        [&](const QPointF& each) { return each.x() >= point.x(); });
        const QPointF left = *(right - 1);
        const double share = (point.x() - left.x()) / (right->x() - left.x());
        EXPECT_NEAR(left.y() + share * (right->y() - left.y()), point.y(), 0.3 + 1e-9) << point.x();
    }
    const QPolygonF vertical({{0, 0}, {0, 5}, {0, 9}});
    EXPECT_EQ(simplified(vertical, 0.3).last(), QPointF(0, 9));
    EXPECT_TRUE(simplified({}, 0.3).isEmpty());
}

TEST(Pictures, TheElementUnderThePointerIsNamed) {
    Stage stage;
    stage.open(1440, 900);
    stage.engine().adopt(stage.engine().templates().front());
    stage.settle();
    const QQuickItem& picture = theOne(stage, "kelvo::BondGraphItem");
    QSet<QString> named;
    for (int x = 0; x < picture.width(); x += 6) {
        for (int y = 0; y < picture.height(); y += 6) {
            QTest::mouseMove(&stage.window(), picture.mapToScene(QPointF(x, y)).toPoint());
            named.insert(picture.property("pointedAt").toString());
        }
    }
    const BondGraph& graph = stage.engine().space()->graph();
    EXPECT_EQ(named.size(), static_cast<qsizetype>(graph.nodes.size() + 1)) << "and nothing beside";
    EXPECT_TRUE(named.contains("owner · Se"))
        << QStringList(named.values()).join(", ").toStdString();
    EXPECT_TRUE(named.contains("owner_j0 · j0"));
}

TEST(Pictures, ARunLeavesItsCurves) {
    Stage stage;
    stage.open(1440, 900);
    const auto inked = [&] {
        const QQuickItem& trace = theOne(stage, "kelvo::TraceItem");
        const QRect box = trace.mapRectToScene(trace.boundingRect()).toRect();
        const QImage picture = stage.window().grabWindow().copy(box);
        const QColor ink = trace.property("rateColor").value<QColor>();
        int count = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                count += picture.pixelColor(x, y) == ink ? 1 : 0;
        }
        return count;
    };
    EXPECT_LT(inked(), 10);
    stage.engine().play();
    stage.world.ticker.fire(40);
    stage.settle();
    EXPECT_GT(inked(), 40);
}

TEST(Window, OpensWithinTheScreenWhereItHasRoomForTheSmallestSize) {
    Stage stage;
    stage.open();
    EngineView view(stage.engine());
    const MainWindow another(view);
    const QSize screen = another.window()->screen()->availableSize();
    ASSERT_GT(screen.height(), 560);
    ASSERT_LT(screen.height(), 900) << "else nothing is shown here";
    EXPECT_LT(another.window()->height(), screen.height());
    EXPECT_GE(another.window()->height(), 560);
    EXPECT_GE(another.window()->width(), 860);
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
