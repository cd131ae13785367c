#include "ui/Curve.h"

#include <algorithm>
#include <limits>

namespace kelvo {

QPolygonF simplified(const QPolygonF& points, double tolerance) {
    if (points.size() < 3) return points;
    QPolygonF kept{points.first()};
    double low = -std::numeric_limits<double>::infinity();
    double high = -low;
    for (qsizetype i = 1; i < points.size(); ++i) {
        const double dx = points[i].x() - kept.last().x();
        const double slope = (points[i].y() - kept.last().y()) / dx;
        if (!(slope >= low && slope <= high)) {
            kept.append(points[i - 1]);
            low = -std::numeric_limits<double>::infinity();
            high = -low;
        }
        const double step = points[i].x() - kept.last().x();
        const double rise = points[i].y() - kept.last().y();
        if (step <= 0) continue;
        low = std::max(low, (rise - tolerance) / step);
        high = std::min(high, (rise + tolerance) / step);
    }
    kept.append(points.last());
    return kept;
}

} // namespace kelvo
