#include "ui/CheckpointSheet.h"

#include "proof/Checkpoint.h"

#include <QDateTime>
#include <QFontDatabase>
#include <QLocale>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <functional>
#include <optional>
#include <vector>

namespace kelvo {
namespace {

/// In points, as everything on the page.
constexpr QSizeF pageSize(595, 842);
constexpr double margin = 64;
constexpr double width = 595 - 2 * margin;
constexpr double bottom = 842 - margin;

const QColor ink("#181c24");
const QColor quiet("#566071");
const QColor hairline("#b9c0cb");

QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

std::optional<Checkpoint> parsed(const QString& checkpoint) {
    auto found = parseCheckpoint(checkpoint.toStdString());
    if (!found || found->blocks.empty()) return std::nullopt;
    return std::move(*found);
}

QString linesUntil(const Checkpoint& checkpoint) {
    const QDateTime at = QDateTime::fromString(text(checkpoint.at()), Qt::ISODate).toUTC();
    return QStringLiteral("%1 lines until %2 UTC")
        .arg(checkpoint.lines())
        .arg(QLocale(QLocale::English).toString(at, QStringLiteral("d MMMM yyyy, HH:mm")));
}

QString keepThis(const Checkpoint& checkpoint) {
    const std::int64_t lines = checkpoint.blocks.front().lines;
    const bool one = checkpoint.blocks.size() == 1;
    return one ? QStringLiteral("Keep this page. When the audit package comes, its log must begin "
                                "with these %1 lines: head -n %1 of the log file, hashed with "
                                "sha256sum, gives the number above.")
                     .arg(lines)
               : QStringLiteral(
                     "Keep this page. When the audit package comes, each of its logs must "
                     "begin with the lines counted here: head -n %1 of the first log's "
                     "file, hashed with sha256sum, gives the first number above; the "
                     "others alike.")
                     .arg(lines);
}

/// Lays the page out from top to bottom and begins a new one where the next piece does not fit.
class Layout {
public:
    Layout(QPainter& painter, std::function<bool()> nextPage)
        : painter_(painter), nextPage_(std::move(nextPage)) {}

    void words(const QString& what, double size, QColor colour, bool bold = false) {
        QFont font = painter_.font();
        font.setFamilies({QStringLiteral("Noto Sans"), QStringLiteral("DejaVu Sans")});
        font.setPixelSize(static_cast<int>(size));
        font.setBold(bold);
        draw(what, font, colour, Qt::TextWordWrap);
    }
    void fixed(const QString& what, double size) {
        QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
        font.setPixelSize(static_cast<int>(size));
        draw(what, font, ink, Qt::TextWrapAnywhere);
    }
    void rule() {
        gap(10);
        painter_.setPen(QPen(hairline, 0.7));
        painter_.drawLine(QPointF(margin, y_), QPointF(margin + width, y_));
        gap(12);
    }
    void gap(double points) { y_ += points; }
    void received() {
        gap(26);
        if (!room(30)) return;
        QFont font = painter_.font();
        font.setPixelSize(11);
        painter_.setFont(font);
        painter_.setPen(quiet);
        painter_.drawText(QPointF(margin, y_ + 11), QStringLiteral("Received by"));
        painter_.drawText(QPointF(margin + 270, y_ + 11), QStringLiteral("on"));
        painter_.setPen(QPen(ink, 0.7));
        painter_.drawLine(QPointF(margin + 72, y_ + 13), QPointF(margin + 258, y_ + 13));
        painter_.drawLine(QPointF(margin + 290, y_ + 13), QPointF(margin + width, y_ + 13));
    }

private:
    bool room(double height) {
        if (done_) return false;
        if (y_ + height <= bottom) return true;
        done_ = !nextPage_();
        y_ = margin;
        return !done_;
    }
    void draw(const QString& what, const QFont& font, const QColor& colour, int flags) {
        painter_.setFont(font);
        const QRectF box =
            painter_.boundingRect(QRectF(margin, 0, width, 10'000), flags | Qt::AlignLeft, what);
        if (!room(box.height())) return;
        painter_.setPen(colour);
        painter_.drawText(QRectF(margin, y_, width, box.height() + 1), flags | Qt::AlignLeft, what);
        y_ += box.height() + 4;
    }

    QPainter& painter_;
    std::function<bool()> nextPage_;
    double y_ = margin;
    bool done_ = false;
};

void drawPages(QPainter& painter, const Checkpoint& checkpoint, std::function<bool()> nextPage) {
    Layout page(painter, std::move(nextPage));
    page.words(QStringLiteral("Seal log checkpoint"), 24, ink, true);
    page.gap(8);
    const QString organisation = text(checkpoint.blocks.front().of);
    if (!organisation.isEmpty()) page.words(organisation, 13, ink);
    page.words(linesUntil(checkpoint), 13, ink);
    page.rule();
    const bool many = checkpoint.blocks.size() > 2;
    for (const CheckpointBlock& block : checkpoint.blocks) {
        const auto groups = groupsOfEight(block.sha256);
        const std::size_t perLine = many ? 4 : 2;
        for (std::size_t first = 0; first < groups.size(); first += perLine) {
            QStringList line;
            for (std::size_t i = first; i < std::min(first + perLine, groups.size()); ++i)
                line.append(text(groups[i]));
            page.fixed(line.join(u' '), many ? 13 : 25);
        }
        page.gap(many ? 5 : 12);
    }
    page.rule();
    for (const CheckpointBlock& block : checkpoint.blocks) {
        page.fixed(text(checkpointText({{block}})).trimmed(), 9.6);
        page.gap(8);
    }
    page.words(keepThis(checkpoint), 11, quiet);
    page.received();
}

} // namespace

CheckpointSheet::CheckpointSheet(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
}

void CheckpointSheet::setCheckpoint(const QString& checkpoint) {
    if (checkpoint == checkpoint_) return;
    checkpoint_ = checkpoint;
    Q_EMIT changed();
    update();
}

QString CheckpointSheet::spoken() const {
    const auto checkpoint = parsed(checkpoint_);
    if (!checkpoint) return {};
    QStringList lines{QStringLiteral("Seal log checkpoint"), linesUntil(*checkpoint)};
    for (const CheckpointBlock& block : checkpoint->blocks) {
        QString grouped;
        for (std::size_t at = 0; at < block.sha256.size(); at += 4)
            grouped += text(block.sha256.substr(at, 4)) + u' ';
        lines.append(grouped.trimmed());
    }
    lines.append(keepThis(*checkpoint));
    return lines.join(QStringLiteral(". "));
}

void CheckpointSheet::paint(QPainter* painter) {
    painter->fillRect(boundingRect(), Qt::white);
    const auto checkpoint = parsed(checkpoint_);
    if (!checkpoint) return;
    painter->scale(QQuickPaintedItem::width() / pageSize.width(),
                   QQuickPaintedItem::height() / pageSize.height());
    drawPages(*painter, *checkpoint, [] { return false; });
}

bool writeCheckpointPdf(const QString& checkpointText, const QString& file) {
    const auto checkpoint = parsed(checkpointText);
    if (!checkpoint) return false;
    QPdfWriter writer(file);
    writer.setTitle(QStringLiteral("Seal log checkpoint"));
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins({});
    QPainter painter;
    if (!painter.begin(&writer)) return false;
    const double scale = writer.resolution() / 72.0;
    painter.scale(scale, scale);
    drawPages(painter, *checkpoint, [&writer] { return writer.newPage(); });
    return painter.end();
}

} // namespace kelvo
