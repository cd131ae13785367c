#pragma once

#include <QString>
#include <QStringList>

namespace kelvo::bench {

/// What one start of a windowed program took.
struct Launch {
    double firstFrame = 0; ///< milliseconds of wall-clock time from start to the first frame
    double memory = 0;     ///< MiB at rest: the proportional set size, one second after it
};

/// Starts a program on a copy of the sample organisation, off screen, in the software renderer and
/// without a session bus, waits for the first frame that the toolkit logs and for a moment of rest,
/// and ends it. Ends this program where the other draws nothing within ten seconds.
Launch launch(const QString& program, const QStringList& arguments);

} // namespace kelvo::bench
