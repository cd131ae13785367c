#include "ui/Symbols.h"

#include <QImage>
#include <QSvgRenderer>
#include <algorithm>
#include <array>
#include <cmath>

namespace kelvo {
namespace {

/// On a grid of 24 by 24. Shapes are stroked unless they ask for `@`, the tint, as their fill; the
/// cut is taken out of what the body drew.
struct Drawing {
    const char* name;
    const char* body;
    const char* cut = "";
};

constexpr std::array drawings{
    Drawing{"apple.intelligence",
            "<path d='M11 3.5c.8 4.6 3 6.8 7.5 7.6-4.5.8-6.7 3-7.5 7.6-.8-4.6-3-6.8-7.5-7.6 4.5-.8 "
            "6.7-3 7.5-7.6z'/>"
            "<path d='M18.8 15.6c.3 1.7 1.1 2.5 2.7 2.8-1.6.3-2.4 1.1-2.7 2.8-.3-1.7-1.1-2.5-2.7-"
            "2.8 1.6-.3 2.4-1.1 2.7-2.8z' fill='@' stroke='none'/>"},
    Drawing{"arrow.clockwise", "<path d='M19.2 12a7.2 7.2 0 1 1-2.3-5.3L19.5 9'/>"
                               "<path d='M19.6 4.4V9h-4.6'/>"},
    Drawing{"arrow.down.right.circle", "<circle cx='12' cy='12' r='8.7'/>"
                                       "<path d='M8.8 8.8l6.2 6.2'/><path d='M15 10.2V15h-4.8'/>"},
    Drawing{"checkmark.arrow.trianglehead.counterclockwise",
            "<path d='M4.8 12a7.2 7.2 0 1 0 2.3-5.3L4.5 9'/><path d='M4.4 4.4V9H9'/>"
            "<path d='M8.9 12.4l2.3 2.3 4.1-4.6'/>"},
    Drawing{"checkmark.circle.fill", "<circle cx='12' cy='12' r='9.4' fill='@' stroke='none'/>",
            "<path d='M7.9 12.4l2.8 2.8 5.3-6'/>"},
    Drawing{"checkmark.seal.fill",
            "<rect x='4.9' y='4.9' width='14.2' height='14.2' rx='3' fill='@' stroke='none'/>"
            "<rect x='4.9' y='4.9' width='14.2' height='14.2' rx='3' fill='@' stroke='none' "
            "transform='rotate(45 12 12)'/>",
            "<path d='M8.2 12.3l2.6 2.6 4.9-5.5'/>"},
    Drawing{"checkmark.shield",
            "<path d='M12 3.2l7 2.5v5.4c0 4.6-2.9 8-7 9.7-4.1-1.7-7-5.1-7-9.7V5.7z'/>"
            "<path d='M8.8 11.9l2.3 2.3 4.2-4.6'/>"},
    Drawing{"chevron.left", "<path d='M14.6 5.6L8.2 12l6.4 6.4'/>"},
    Drawing{"circle", "<circle cx='12' cy='12' r='8.7'/>"},
    Drawing{"clock", "<circle cx='12' cy='12' r='8.7'/><path d='M12 7.2V12l3.2 2.2'/>"},
    Drawing{"doc.badge.clock",
            "<path d='M10.6 20.3H7a2 2 0 0 1-2-2V5.7a2 2 0 0 1 2-2h6.5l4.5 4.5v2'/><path d='M13.3 "
            "3.9v4.4h4.5'/><circle cx='16.8' cy='17' r='4.1'/><path d='M16.8 14.9V17l1.5 1'/>"},
    Drawing{"doc.badge.gearshape",
            "<path d='M11 20.3H7a2 2 0 0 1-2-2V5.7a2 2 0 0 1 2-2h6.5l4.5 4.5v2.3'/>"
            "<path d='M13.3 3.9v4.4h4.5'/><circle cx='17' cy='17' r='2.6'/>"
            "<path d='M17 12.6v1.5M17 19.9v1.5M12.6 17h1.5M19.9 17h1.5M13.9 13.9l1 1M19.1 19.1l1 1"
            "M13.9 20.1l1-1M19.1 14.9l1-1'/>"},
    Drawing{"doc.badge.plus", "<path d='M11 20.3H7a2 2 0 0 1-2-2V5.7a2 2 0 0 1 2-2h6.5l4.5 4.5v3'/>"
                              "<path d='M13.3 3.9v4.4h4.5'/><path d='M17.2 14v7M13.7 17.5h7'/>"},
    Drawing{"doc.on.doc", "<rect x='8.4' y='8.4' width='11.2' height='11.6' rx='2'/><path d='M15.6 "
                          "8.2V6a2 2 0 0 0-2-2H6.4a2 2 0 0 0-2 2v7.6a2 2 0 0 0 2 2h1.8'/>"},
    Drawing{"doc.text",
            "<path d='M17 20.3H7a2 2 0 0 1-2-2V5.7a2 2 0 0 1 2-2h6.5L19 9.2v9.1a2 2 0 0 "
            "1-2 2z'/><path d='M13.3 3.9v5.3h5.5M8.5 13h7M8.5 16.5h5'/>"},
    Drawing{"envelope", "<rect x='3.6' y='5.6' width='16.8' height='12.8' rx='2'/><path d='M4.2 "
                        "7.2l7.8 5.8 7.8-5.8'/>"},
    Drawing{"exclamationmark.circle", "<circle cx='12' cy='12' r='8.7'/><path d='M12 7.7v5'/>"
                                      "<circle cx='12' cy='16' r='1.15' fill='@' stroke='none'/>"},
    Drawing{"exclamationmark.triangle.fill",
            "<path d='M12 4.2l8.6 15.3H3.4z' fill='@' stroke-width='2.4'/>",
            "<path d='M12 9.4v4.6'/><circle cx='12' cy='17.2' r='.4'/>"},
    Drawing{"folder", "<path d='M3.6 7.4a2 2 0 0 1 2-2h3.7l2 2.3h7.1a2 2 0 0 1 2 2v7a2 2 0 0 1-2 "
                      "2H5.6a2 2 0 0 1-2-2z'/>"},
    Drawing{"info.circle", "<circle cx='12' cy='12' r='8.7'/><path d='M12 11.2v5'/><circle cx='12' "
                           "cy='8' r='1.15' fill='@' stroke='none'/>"},
    Drawing{"line.3.horizontal", "<path d='M5 7.4h14M5 12h14M5 16.6h14'/>"},
    Drawing{"link",
            "<path d='M10.2 13.8a3.7 3.7 0 0 0 5.3 0l3.1-3.1a3.75 3.75 0 0 0-5.3-5.3l-1 1'/>"
            "<path d='M13.8 10.2a3.7 3.7 0 0 0-5.3 0l-3.1 3.1a3.75 3.75 0 0 0 5.3 5.3l1-1'/>"},
    Drawing{"lock", "<rect x='5.6' y='10.6' width='12.8' height='9.4' rx='2'/><path d='M8.4 "
                    "10.4V8a3.6 3.6 0 0 1 7.2 0v2.4'/>"},
    Drawing{"paperclip",
            "<path d='M19 11.3l-7.4 7.4a4.4 4.4 0 0 1-6.2-6.2l7.9-7.9a3 3 0 0 1 4.2 4.2l"
            "-7.6 7.6a1.45 1.45 0 0 1-2.1-2.1l6.6-6.6'/>"},
    Drawing{"paperplane.fill", "<path d='M3.4 11.2L20.6 3.6 15 20.6l-3.7-6.6z' fill='@'/>",
            "<path d='M11.6 13.4l4.6-5' stroke-width='1.5'/>"},
    Drawing{"pause.fill",
            "<rect x='6' y='5' width='4.2' height='14' rx='1.2' fill='@' stroke='none'/>"
            "<rect x='13.8' y='5' width='4.2' height='14' rx='1.2' fill='@' "
            "stroke='none'/>"},
    Drawing{"person.badge.shield.checkmark",
            "<circle cx='9.5' cy='7.6' r='3.6'/><path d='M2.9 19.6a6.6 6.6 0 0 1 8-6.2'/>"
            "<path d='M17 11.4l4.3 1.5v3.2c0 2.6-1.7 4.4-4.3 5.4-2.6-1-4.3-2.8-4.3-5.4v-3.2z'/>"
            "<path d='M15.2 16.4l1.4 1.4 2.4-2.7' stroke-width='1.5'/>"},
    Drawing{"person.crop.circle.badge.checkmark",
            "<path d='M11.4 20.6a8.7 8.7 0 1 1 9.2-9.2'/><circle cx='12' cy='9.8' r='3'/>"
            "<path d='M6.2 18.2c.9-2.3 2.9-3.6 5.6-3.6'/>"
            "<path d='M14.2 17.9l2.4 2.4 4.6-5'/>"},
    Drawing{"play.fill", "<path d='M7.6 5.2v13.6l11-6.8z' fill='@'/>"},
    Drawing{"plus", "<path d='M12 5.2v13.6M5.2 12h13.6'/>"},
    Drawing{"printer",
            "<path d='M7.4 8.6V4.2h9.2v4.4'/><path d='M7.2 16.8H5.6a2 2 0 0 1-2-2v-4.2a2 2 0 0 1 "
            "2-2h12.8a2 2 0 0 1 2 2v4.2a2 2 0 0 1-2 2h-1.6'/><path d='M7.4 14h9.2v6H7.4z'/>"},
    Drawing{"questionmark.circle",
            "<circle cx='12' cy='12' r='8.7'/><path d='M9.7 9.8a2.4 2.4 0 1 1 3.5 "
            "2.1c-.8.4-1.2.9-1.2 1.7'/><circle cx='12' cy='16.4' r='1.1' fill='@' stroke='none'/>"},
    Drawing{"quote.bubble",
            "<path d='M4 6.6a2 2 0 0 1 2-2h12a2 2 0 0 1 2 2v8a2 2 0 0 1-2 2h-6.2l-4 3.4v-3.4H6a2 2 "
            "0 0 1-2-2z'/><path d='M8.6 9h2v2.4h-2zM13.4 9h2v2.4h-2z' fill='@' stroke='none'/>"},
    Drawing{"square.and.arrow.down", "<path d='M12 3.8v10.4M8.2 10.6l3.8 3.8 3.8-3.8'/><path "
                                     "d='M4.4 15.6v2.6a2 2 0 0 0 2 2h11.2a2 2 0 0 0 2-2v-2.6'/>"},
    Drawing{
        "touchid",
        "<path d='M12 11v3.4c0 2.1-.4 4-1.2 5.8'/>"
        "<path d='M8.3 19.2c.8-1.5 1.2-3.1 1.2-4.9V11a2.5 2.5 0 0 1 5 0v3.2c0 2-.3 3.9-.9 5.7'/>"
        "<path d='M5.7 17.2c.6-1 .9-2.1.9-3.2v-3a5.4 5.4 0 0 1 10.8 0v3c0 1.6-.2 3.2-.6 4.8'/>"
        "<path d='M3.9 14.2V11c0-1.5.4-2.9 1.1-4.1'/>"
        "<path d='M7.1 4.5A8.1 8.1 0 0 1 20.1 11v2.8c0 .9-.1 1.8-.2 2.7'/>"},
    Drawing{"xmark", "<path d='M6.4 6.4l11.2 11.2M17.6 6.4L6.4 17.6'/>"},
};

const Drawing* find(const QString& name) {
    const auto found = std::find_if(drawings.begin(), drawings.end(), [&](const Drawing& each) {
        return name == QLatin1String(each.name);
    });
    return found == drawings.end() ? nullptr : &*found;
}

void render(QPainter& painter, const char* body, const QColor& tint, double width,
            const QRectF& box) {
    QString shapes = QString::fromLatin1(body);
    shapes.replace(u'@', tint.name());
    const QString document =
        QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 24 24'>"
                       "<g fill='none' stroke='%1' stroke-width='%2' stroke-linecap='round' "
                       "stroke-linejoin='round'>%3</g></svg>")
            .arg(tint.name())
            .arg(width)
            .arg(shapes);
    QSvgRenderer(document.toUtf8()).render(&painter, box);
}

} // namespace

bool Symbols::contains(const QString& name) {
    return find(name) != nullptr;
}

QStringList Symbols::names() {
    QStringList all;
    for (const Drawing& each : drawings)
        all.append(QLatin1String(each.name));
    return all;
}

void Symbols::paint(QPainter& painter, const QString& name, const QColor& tint, const QRectF& box) {
    const Drawing* drawing = find(name);
    if (drawing == nullptr || box.isEmpty()) return;
    // The cut must not reach through to what lies under the symbol, hence a picture of its own.
    const double scale = std::max(1.0, painter.deviceTransform().m11());
    QImage picture((box.size() * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    {
        QPainter inside(&picture);
        inside.setRenderHint(QPainter::Antialiasing);
        const QRectF whole = picture.rect();
        render(inside, drawing->body, tint, 1.7, whole);
        if (*drawing->cut != '\0') {
            inside.setCompositionMode(QPainter::CompositionMode_DestinationOut);
            render(inside, drawing->cut, Qt::black, 2.1, whole);
        }
    }
    painter.setOpacity(painter.opacity() * tint.alphaF());
    painter.drawImage(box, picture);
}

} // namespace kelvo
