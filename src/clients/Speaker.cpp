#include "clients/Speaker.h"

#include <QProcess>
#include <QStandardPaths>

namespace kelvo {
namespace {

const QString dispatcher = QStringLiteral("spd-say");
const QString synthesiser = QStringLiteral("espeak-ng");

bool isInstalled(const QString& program) {
    return !QStandardPaths::findExecutable(program).isEmpty();
}

bool ranWell(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments);
    return process.waitForFinished(-1) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

} // namespace

QStringList Speaker::missing() {
    if (isInstalled(dispatcher) || isInstalled(synthesiser)) return {};
    return {QStringLiteral("Nothing that speaks is installed (Debian package speech-dispatcher or "
                           "espeak-ng).")};
}

bool Speaker::speak(const QString& text) {
    // The dispatcher knows the person's own voice and pace, but may be installed without a voice.
    return (isInstalled(dispatcher) && ranWell(dispatcher, {"--wait", "--", text})) ||
           (isInstalled(synthesiser) && ranWell(synthesiser, {"--", text}));
}

} // namespace kelvo
