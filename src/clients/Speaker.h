#pragma once

#include <QString>
#include <QStringList>

namespace kelvo {

/// Speaks a text aloud by what the desktop has for it: speech-dispatcher, or else espeak-ng.
class Speaker {
public:
    /// What keeps it from speaking, each a sentence that names the package to install.
    static QStringList missing();

    /// Speaks and waits until the text has been spoken. False when nothing could speak it.
    static bool speak(const QString& text);
};

} // namespace kelvo
