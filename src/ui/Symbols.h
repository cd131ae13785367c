#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>
#include <QString>
#include <QStringList>

namespace kelvo {

/// The drawn icons behind the symbol names that the window uses.
namespace Symbols {

bool contains(const QString& name);
QStringList names();

/// Draws the symbol into `box`, every part of it in `tint`. Draws nothing for an unknown name.
void paint(QPainter& painter, const QString& name, const QColor& tint, const QRectF& box);

} // namespace Symbols
} // namespace kelvo
