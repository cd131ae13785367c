#pragma once

#include <QString>
#include <iosfwd>

namespace kelvo::test {

/// A voice of espeak-ng and its pace.
struct Voice {
    const char* name;
    int wordsPerMinute;
};
void PrintTo(const Voice& voice, std::ostream* out);

/// Has espeak-ng speak `text` into a sound file as a recogniser wants it: WAV, one channel, 16
/// bits, 16 kHz, with a short silence around it. Returns why it could not; empty when it could.
QString speakToFile(const QString& text, const Voice& voice, const QString& path);

} // namespace kelvo::test
