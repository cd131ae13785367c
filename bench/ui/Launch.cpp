#include "Launch.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace kelvo::bench {
namespace {

[[noreturn]] void giveUp(const QString& program, const char* what) {
    std::fprintf(stderr, "%s %s\n", qPrintable(program), what);
    std::exit(1);
}

/// "Pss:  12345 kB" of the whole process, in MiB.
double proportionalSetSize(qint64 pid) {
    QFile rollup(QStringLiteral("/proc/%1/smaps_rollup").arg(pid));
    if (!rollup.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : rollup.readAll().split('\n')) {
        if (line.startsWith("Pss:"))
            return line.mid(4).trimmed().split(' ').first().toDouble() / 1024;
    }
    return 0;
}

void copySample(const QString& home) {
    namespace fs = std::filesystem;
    const fs::path root = home.toStdString();
    fs::create_directories(root / "bondgraphs/kelvo-soc2-app");
    fs::create_directories(root / "bondgraphs/bondgraph");
    fs::copy(fs::path(KELVO_EXAMPLES) / "outputs", root / "bondgraphs/bondgraph/outputs");
}

} // namespace

Launch launch(const QString& program, const QStringList& arguments) {
    const QTemporaryDir home;
    copySample(home.path());
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", home.path());
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("QT_QUICK_BACKEND", "software");
    environment.insert("QT_LOGGING_RULES", "qt.scenegraph.time.renderloop=true");
    environment.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    process.setProcessEnvironment(environment);
    process.setReadChannel(QProcess::StandardError);

    QElapsedTimer clock;
    clock.start();
    process.start(program, arguments);
    Launch result;
    while (result.firstFrame == 0) {
        if (clock.elapsed() > 10'000 || !process.waitForReadyRead(10'000)) {
            giveUp(program, "draws no frame");
        }
        const double elapsed = static_cast<double>(clock.nsecsElapsed()) / 1e6;
        while (process.canReadLine()) {
            if (process.readLine().contains("rendered")) result.firstFrame = elapsed;
        }
    }
    QThread::msleep(1000);
    result.memory = proportionalSetSize(process.processId());
    process.kill();
    process.waitForFinished();
    return result;
}

} // namespace kelvo::bench
