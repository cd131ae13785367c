#include "ui/Symbols.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

namespace kelvo {
namespace {

QImage drawn(const QString& name, const QColor& tint) {
    QImage picture(48, 48, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    Symbols::paint(painter, name, tint, picture.rect());
    return picture;
}

int inkedPixels(const QImage& picture, const QColor& tint) {
    int inked = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QColor pixel = picture.pixelColor(x, y);
            if (pixel.alpha() < 250) continue;
            // Premultiplied pictures round.
            EXPECT_NEAR(pixel.red(), tint.red(), 2) << x << "," << y;
            EXPECT_NEAR(pixel.green(), tint.green(), 2) << x << "," << y;
            EXPECT_NEAR(pixel.blue(), tint.blue(), 2) << x << "," << y;
            ++inked;
        }
    }
    return inked;
}

TEST(Symbols, EveryNameHasADrawingOfItsOwnInTheTintAlone) {
    const char* const names[] = {"apple.intelligence",
                                 "arrow.clockwise",
                                 "arrow.down.right.circle",
                                 "checkmark.arrow.trianglehead.counterclockwise",
                                 "checkmark.circle.fill",
                                 "checkmark.seal.fill",
                                 "checkmark.shield",
                                 "circle",
                                 "doc.badge.gearshape",
                                 "doc.badge.plus",
                                 "doc.text",
                                 "exclamationmark.circle",
                                 "exclamationmark.triangle.fill",
                                 "link",
                                 "paperclip",
                                 "paperplane.fill",
                                 "pause.fill",
                                 "person.badge.shield.checkmark",
                                 "person.crop.circle.badge.checkmark",
                                 "play.fill",
                                 "touchid"};
    EXPECT_EQ(std::size(names), static_cast<std::size_t>(Symbols::names().size()));
    const QColor tint(20, 90, 160);
    QList<QImage> seen;
    for (const char* name : names) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(Symbols::contains(name));
        const QImage picture = drawn(name, tint);
        EXPECT_GT(inkedPixels(picture, tint), 40);
        EXPECT_FALSE(seen.contains(picture));
        seen.append(picture);
    }
}

TEST(Symbols, AnUnknownNameDrawsNothing) {
    EXPECT_FALSE(Symbols::contains("apple"));
    EXPECT_EQ(inkedPixels(drawn("apple", Qt::red), Qt::red), 0);
}

} // namespace
} // namespace kelvo
