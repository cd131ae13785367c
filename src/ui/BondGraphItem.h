#pragma once

#include "ui/EngineView.h"
#include "ui/GraphLayout.h"

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QPointF>
#include <QQuickPaintedItem>
#include <cstddef>
#include <optional>

namespace kelvo {

/// The installed model as a bond graph (notation: Karnopp, Margolis and Rosenberg, System
/// Dynamics): elements by their symbol, the half arrow at the end towards which power counts as
/// positive, the causal stroke at the end where the effort arrives. The more power a bond carries
/// at the present state, the heavier it is drawn.
class BondGraphItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(BondGraphPicture)

    Q_PROPERTY(kelvo::EngineView* engine MEMBER view_ WRITE setEngine NOTIFY changed)
    Q_PROPERTY(QColor inkColor MEMBER ink_ NOTIFY changed)
    Q_PROPERTY(QColor quietColor MEMBER quiet_ NOTIFY changed)
    Q_PROPERTY(QColor surfaceColor MEMBER surface_ NOTIFY changed)
    Q_PROPERTY(QColor sourceColor MEMBER source_ NOTIFY changed)
    Q_PROPERTY(QColor storageColor MEMBER storage_ NOTIFY changed)
    Q_PROPERTY(QColor resistorColor MEMBER resistor_ NOTIFY changed)
    Q_PROPERTY(double textSize MEMBER textSize_ NOTIFY changed)
    Q_PROPERTY(int nodeCount READ nodeCount NOTIFY modelChanged)
    Q_PROPERTY(QString description READ description NOTIFY modelChanged)
    Q_PROPERTY(QString pointedAt READ pointedAt NOTIFY pointedAtChanged)
    Q_PROPERTY(QPointF pointer MEMBER pointer_ NOTIFY pointedAtChanged)

public:
    explicit BondGraphItem(QQuickItem* parent = nullptr);

    void setEngine(EngineView* view);
    int nodeCount() const;
    /// The graph in words, for those who do not see it.
    QString description() const;
    /// What the element under the pointer is, with its parameter; empty where there is none.
    QString pointedAt() const;
    void paint(QPainter* painter) override;

protected:
    void hoverMoveEvent(QHoverEvent* event) override;
    void hoverLeaveEvent(QHoverEvent* event) override;

Q_SIGNALS:
    void changed();
    void modelChanged();
    void pointedAtChanged();

private:
    struct Ends {
        QPointF from;
        QPointF to;
    };
    /// How the layout lies in the item.
    struct Placement {
        QPointF origin;
        double scale = 0; ///< 0 where there is no room to draw
        double radius = 0;
    };

    const StateSpace* space() const;
    void takeModel();
    Placement placement() const;
    QPointF centre(const Placement& placement, std::size_t node) const;
    void pointAt(std::optional<std::size_t> node, QPointF pointer);
    std::vector<double> powers() const;
    QColor tint(NodeKind kind) const;
    void paintBond(QPainter& painter, const Bond& bond, Ends ends, double share, double size) const;
    void paintNode(QPainter& painter, const Node& node, QPointF centre, double radius) const;
    void paintName(QPainter& painter, const Node& node, QPointF centre, double radius) const;

    EngineView* view_ = nullptr;
    GraphLayout layout_;
    double greatestPower_ = 0; ///< since the model was installed
    QColor ink_ = Qt::black;
    QColor quiet_ = Qt::gray;
    QColor surface_ = Qt::white;
    QColor source_ = Qt::blue;
    QColor storage_ = Qt::darkGreen;
    QColor resistor_ = Qt::darkYellow;
    double textSize_ = 12;
    std::optional<std::size_t> pointed_; ///< the node under the pointer
    QPointF pointer_;
};

} // namespace kelvo
