// What is drawn: the model, its curves, symbols and rings.

#include "ui/Curve.h"
#include "ui/GraphLayout.h"
#include "ui/Symbols.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QLineF>
#include <QPainter>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <map>

#include "Stage.h"

namespace kelvo::test {
namespace {

TEST(GraphLayout, PlacesEveryNodeApartFromTheOthersAndLeavesOutBondsThatNameNone) {
    BondGraph chain;
    for (int i = 0; i < 50; ++i) {
        chain.nodes.push_back({"n" + std::to_string(i), NodeKind::j1});
        if (i > 0) chain.bonds.push_back({i - 1, i});
    }
    chain.bonds.insert(chain.bonds.end(), {{0, 70}, {-1, 1}});
    const GraphLayout layout = layOut(chain);
    ASSERT_EQ(layout.nodes.size(), 50U);
    for (std::size_t i = 0; i < layout.nodes.size(); ++i) {
        EXPECT_TRUE(QRectF(QPointF(), layout.size).contains(layout.nodes[i]));
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_GT(QLineF(layout.nodes[i], layout.nodes[j]).length(), 30) << i << " " << j;
    }
    EXPECT_GT(layout.size.width(), layout.size.height());
    EXPECT_EQ(layOut(chain).nodes, layout.nodes);
    EXPECT_TRUE(layOut(BondGraph{}).nodes.empty());
}

TEST(GraphLayout, LiesAsFlatAsItCan) {
    const BondGraph star{
        {{"j", NodeKind::j1}, {"a", NodeKind::R}, {"b", NodeKind::R}, {"c", NodeKind::R}},
        {{0, 1}, {0, 2}, {0, 3}}};
    for (const BondGraph& graph :
         {star, BondGraph{{{"a", NodeKind::Se}, {"b", NodeKind::R}}, {{0, 1}}}}) {
        const QSizeF size = layOut(graph).size;
        EXPECT_GT(size.width(), size.height());
    }
}

TEST(Curve, StaysWithinItsToleranceInFarFewerPoints) {
    QPolygonF points;
    for (int i = 0; i < 600; ++i) {
        // A swing, a jump, a spike of one sample, a flat end.
        points.append({0.7 * i, i < 300 ? 40 * std::sin(i / 40.0) : i == 450 ? 5.0 : 80.0});
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
    EXPECT_EQ(simplified(QPolygonF({{0, 0}, {0, 5}, {0, 9}}), 0.3).last(), QPointF(0, 9));
    EXPECT_TRUE(simplified({}, 0.3).isEmpty());
}

/// The pixels of an item that have exactly this colour, in the item's own coordinates.
QList<QPointF> inked(Stage& stage, const QQuickItem& item, const char* colour) {
    const QRect box = item.mapRectToScene(item.boundingRect()).toRect();
    const QImage picture = stage.window().grabWindow().copy(box);
    const QColor ink = item.property(colour).value<QColor>();
    QList<QPointF> found;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y) == ink) found.append(QPointF(x, y));
        }
    }
    return found;
}

/// Where the pointer finds each element of the model's picture: the middle of those places.
std::map<std::string, QPointF> elements(Stage& stage) {
    const QQuickItem& picture = stage.theOne("kelvo::BondGraphItem");
    std::map<std::string, std::pair<QPointF, int>> sums;
    for (int x = 0; x < picture.width(); x += 6) {
        for (int y = 0; y < picture.height(); y += 6) {
            QTest::mouseMove(&stage.window(), picture.mapToScene(QPointF(x, y)).toPoint());
            auto& [sum, count] = sums[picture.property("pointedAt").toString().toStdString()];
            sum += QPointF(x, y);
            ++count;
        }
    }
    std::map<std::string, QPointF> middles;
    for (const auto& [name, sum] : sums)
        middles[name] = sum.first / sum.second;
    return middles;
}

TEST(Pictures, NameTheElementUnderThePointerAndForgetTheModelBefore) {
    Stage stage;
    stage.act("open");
    stage.act("adopt CC1");
    const auto found = elements(stage);
    EXPECT_EQ(found.size(), stage.engine().space()->graph().nodes.size() + 1) << "and nothing";
    EXPECT_TRUE(found.contains("owner · Se") && found.contains("owner_j0 · j0"));
}

TEST(Pictures, DrawTheCausalStrokeAtTheEndThatTheEffortReaches) {
    Stage stage;
    stage.act("open");
    stage.act(R"(load {"nodes":[{"id":"s","kind":"Se"},{"id":"r","kind":"R","param":1}],)"
              R"("bonds":[{"from":"s","to":"r"}]})");
    const auto found = elements(stage);
    const auto strokes = inked(stage, stage.theOne("kelvo::BondGraphItem"), "inkColor");
    ASSERT_FALSE(strokes.isEmpty());
    for (const QPointF& at : strokes)
        EXPECT_LT(QLineF(at, found.at("r · R 1")).length(),
                  QLineF(at, found.at("s · Se")).length());
}

TEST(Pictures, ShowTheCurvesOfTheRunAndNoneOfTheModelBefore) {
    Stage stage;
    stage.act("open");
    const auto curve = [&] {
        return inked(stage, stage.theOne("kelvo::TraceItem"), "rateColor").size();
    };
    EXPECT_LT(curve(), 10);
    stage.act("play");
    stage.act("fire 40");
    EXPECT_GT(curve(), 40);
    stage.act("adopt CC1");
    EXPECT_LT(curve(), 10);
}

TEST(Symbols, EachHasADrawingOfItsOwnInTheTintAlone) {
    const QColor tint(20, 90, 160);
    QList<QImage> seen;
    EXPECT_GE(Symbols::names().size(), 21);
    for (const QString& name : Symbols::names() + QStringList{"apple"}) {
        QImage picture(48, 48, QImage::Format_ARGB32);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        Symbols::paint(painter, name, tint, picture.rect());
        int opaque = 0;
        for (int at = 0; at < 48 * 48; ++at) {
            const QColor pixel = picture.pixelColor(at % 48, at / 48);
            if (pixel.alpha() < 250) continue;
            const int off = std::abs(pixel.red() - tint.red()) +
                            std::abs(pixel.green() - tint.green()) +
                            std::abs(pixel.blue() - tint.blue());
            EXPECT_LE(off, 4) << name.toStdString(); // premultiplied pictures round
            ++opaque;
        }
        EXPECT_EQ(opaque > 40, Symbols::contains(name)) << name.toStdString();
        EXPECT_FALSE(seen.contains(picture)) << name.toStdString();
        seen.append(picture);
    }
}

TEST(Ring, ThatHasNoNumberIsEmpty) {
    Stage stage;
    stage.act("organisation");
    stage.act("open");
    stage.act("owner");
    QQuickItem& ring = stage.theOne("kelvo::RingItem");
    const auto filled = [&](double value) {
        ring.setProperty("value", value);
        stage.act("rest");
        return inked(stage, ring, "color").size();
    };
    EXPECT_GT(filled(1.0), 20);
    EXPECT_GT(filled(2.0), 20);
    EXPECT_EQ(filled(-1.0), 0);
    EXPECT_EQ(filled(std::nan("")), 0);
}

} // namespace
} // namespace kelvo::test
