#include "ui/SymbolItem.h"

#include "ui/Symbols.h"

#include <QtQml/qqmlinfo.h>

#include <algorithm>

namespace kelvo {

SymbolItem::SymbolItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
}

void SymbolItem::setName(const QString& name) {
    if (name == name_) return;
    name_ = name;
    if (!name.isEmpty() && !Symbols::contains(name)) {
        qmlWarning(this) << "no drawing for the symbol " << name;
    }
    Q_EMIT nameChanged();
    update();
}

void SymbolItem::setColor(const QColor& color) {
    if (color == color_) return;
    color_ = color;
    Q_EMIT colorChanged();
    update();
}

void SymbolItem::paint(QPainter* painter) {
    const double side = std::min(width(), height());
    const QRectF box((width() - side) / 2, (height() - side) / 2, side, side);
    Symbols::paint(*painter, name_, color_, box);
}

} // namespace kelvo
