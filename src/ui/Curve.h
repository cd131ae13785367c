#pragma once

#include <QPolygonF>

namespace kelvo {

/// A curve in few points: every point that is left out lies within `tolerance`, counted along y, of
/// the result. `points` are finite and their x never decrease. Stroking a smooth curve of hundreds
/// of points would take most of a frame's time.
///
/// A sleeve of slopes narrows from the last kept point until a point falls outside it (one pass;
/// the cone intersection method for piecewise linear approximation).
QPolygonF simplified(const QPolygonF& points, double tolerance);

} // namespace kelvo
