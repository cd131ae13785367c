#include "Speech.h"

#include <QByteArray>
#include <QFile>
#include <QProcess>
#include <QtEndian>
#include <algorithm>
#include <cmath>
#include <numbers>
#include <ostream>
#include <vector>

namespace kelvo::test {
namespace {

constexpr int wantedRate = 16000;
constexpr qsizetype headerSize = 44;
constexpr qsizetype silence = wantedRate * 3 / 10;

/// Band-limited interpolation by a windowed sinc (J. O. Smith, "Digital Audio Resampling").
std::vector<double> resampled(const std::vector<double>& in, int rate) {
    constexpr int half = 24;
    const double step = double(rate) / wantedRate;
    const double cut = 0.95 * std::min(1.0, 1.0 / step);
    std::vector<double> out(std::size_t(double(in.size()) / step));
    for (std::size_t i = 0; i < out.size(); ++i) {
        const double at = double(i) * step;
        const long first = std::max(0L, long(at) - half);
        const long last = std::min(long(in.size()) - 1, long(at) + half);
        for (long k = first; k <= last; ++k) {
            const double x = (double(k) - at) * std::numbers::pi;
            const double sinc = x == 0 ? 1.0 : std::sin(cut * x) / (cut * x);
            out[i] += in[std::size_t(k)] * cut * sinc * (0.5 + 0.5 * std::cos(x / (half + 1)));
        }
    }
    return out;
}

template <class Number>
void append(QByteArray& bytes, Number number) {
    Number little = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

QByteArray waveFile(const std::vector<double>& samples) {
    const auto size = quint32((qsizetype(samples.size()) + 2 * silence) * 2);
    QByteArray bytes("RIFF");
    append(bytes, quint32(36 + size));
    bytes.append("WAVEfmt ");
    append(bytes, quint32(16));
    append(bytes, quint16(1));
    append(bytes, quint16(1));
    append(bytes, quint32(wantedRate));
    append(bytes, quint32(wantedRate * 2));
    append(bytes, quint16(2));
    append(bytes, quint16(16));
    bytes.append("data");
    append(bytes, size);
    bytes.append(silence * 2, '\0');
    for (const double sample : samples)
        append(bytes, qint16(std::clamp(sample, -32768.0, 32767.0)));
    bytes.append(silence * 2, '\0');
    return bytes;
}

} // namespace

void PrintTo(const Voice& voice, std::ostream* out) {
    *out << voice.name << " at " << voice.wordsPerMinute;
}

QString speakToFile(const QString& text, const Voice& voice, const QString& path) {
    QProcess synthesiser;
    synthesiser.start("espeak-ng", {"-v", voice.name, "-s", QString::number(voice.wordsPerMinute),
                                    "-w", path, "--", text});
    if (!synthesiser.waitForFinished() || synthesiser.exitCode() != 0)
        return "espeak-ng: " + synthesiser.errorString() + synthesiser.readAllStandardError();
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite)) return file.errorString();
    const QByteArray spoken = file.readAll();
    if (spoken.size() <= headerSize) return "espeak-ng said nothing";
    const int rate = qFromLittleEndian<qint32>(spoken.constData() + 24);
    std::vector<double> samples;
    for (qsizetype i = headerSize; i + 1 < spoken.size(); i += 2)
        samples.push_back(qFromLittleEndian<qint16>(spoken.constData() + i));
    file.resize(0);
    file.seek(0);
    file.write(waveFile(resampled(samples, rate)));
    return {};
}

} // namespace kelvo::test
