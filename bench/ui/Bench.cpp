// The start to the first frame, the memory at rest, the work of a frame and the frames at 60 Hz of
// the window, off screen in the software renderer.

#include "platform/desktop/QtTicker.h"
#include "ui/AuditView.h"
#include "ui/BeginView.h"
#include "ui/EngineView.h"
#include "ui/MainWindow.h"
#include "ui/ProofView.h"

#include <QtQml/qqmlextensionplugin.h>

#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <limits>

#include "BenchEngine.h"
#include "Launch.h"
#include "Table.h"

Q_IMPORT_QML_PLUGIN(KelvoPlugin)

namespace kelvo::bench {
namespace {

constexpr double frame = 1e9 / 60;

/// What a frame's work depends on.
struct Scene {
    const char* what;
    bool families = false; ///< all nine, instead of the start-up graph
    int totems = 0;
    int citations = 0;
};

constexpr Scene bare{"start-up graph, empty record"};
constexpr Scene scenes[] = {
    bare,
    {"start-up graph, 1,000 totems, 10,000 citations", false, 1000, 10'000},
    {"nine families, empty record", true},
    {"nine families, 1,000 totems, 10,000 citations", true, 1000, 10'000},
};

/// The window on an engine that plays a scene.
class Stage {
public:
    explicit Stage(const Scene& scene) {
        EngineVM& engine = bench_.engine();
        for (int i = 0; i < scene.totems; ++i) {
            engine.pause();
            engine.bondCollapse();
        }
        while (engine.citations->size() < static_cast<std::size_t>(scene.citations))
            engine.verifyKYC("Owner");
        for (const SOC2Template& family : engine.templates()) {
            if (scene.families) engine.adopt(family);
        }
        view_ = std::make_unique<EngineView>(engine);
        proof_ = std::make_unique<ProofView>(engine, programs_);
        begin_ = std::make_unique<BeginView>(
            engine, BeginView::Surroundings{.filePanel = filePanel_,
                                            .programs = programs_,
                                            .account = {},
                                            .openSample = [] { return false; }});
        audit_ = std::make_unique<AuditView>(engine, programs_);
        window_ = std::make_unique<MainWindow>(*view_, *proof_, *begin_, *audit_);
        window_->window()->resize(1440, 900);
        // At half the drive no model reaches the limit, and the loop runs on.
        engine.throttle();
        engine.play();
        // A full trace is the most that a frame has to draw.
        bench_.ticker.fire(700);
        for (int i = 0; i < 10; ++i)
            nextFrame();
    }

    /// One tick and the frame that shows it.
    void nextFrame() {
        QEventLoop shown;
        QObject::connect(&window(), &QQuickWindow::frameSwapped, &shown, &QEventLoop::quit);
        if (bench_.ticker.fire() != 1) std::abort();
        window().update();
        shown.exec();
    }

    QQuickWindow& window() { return *window_->window(); }
    BenchEngine& engine() { return bench_; }

private:
    BenchEngine bench_;
    test::FakePrograms programs_;
    test::FakeFilePanel filePanel_;
    std::unique_ptr<EngineView> view_;
    std::unique_ptr<ProofView> proof_;
    std::unique_ptr<BeginView> begin_;
    std::unique_ptr<AuditView> audit_;
    std::unique_ptr<MainWindow> window_;
};

double processorTime() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

/// Nanoseconds of processor time of one tick and its frame, in the fastest of several runs.
double frameWork(const Scene& scene) {
    Stage stage(scene);
    double fastest = std::numeric_limits<double>::infinity();
    for (int run = 0; run < 8; ++run) {
        constexpr int frames = 60;
        const double before = processorTime();
        for (int i = 0; i < frames; ++i)
            stage.nextFrame();
        fastest = std::min(fastest, (processorTime() - before) / frames);
    }
    return fastest;
}

struct Pace {
    int ticks = 0;
    int frames = 0;
    double longest = 0; ///< nanoseconds between two frames
};

/// Ten seconds at the ticker's own pace.
Pace pace(const Scene& scene) {
    Stage stage(scene);
    Pace result;
    QElapsedTimer sinceFrame;
    sinceFrame.start();
    QObject::connect(&stage.window(), &QQuickWindow::frameSwapped, [&] {
        ++result.frames;
        result.longest = std::max(result.longest, static_cast<double>(sinceFrame.nsecsElapsed()));
        sinceFrame.restart();
    });
    constexpr int seconds = 10;
    QtTicker ticker;
    QEventLoop loop;
    sinceFrame.restart();
    ticker.start([&] {
        stage.engine().ticker.fire();
        if (++result.ticks == 60 * seconds) loop.quit();
    });
    loop.exec();
    ticker.stop();
    return result;
}

Launch best(const QString& program, const QStringList& arguments) {
    Launch result = launch(program, arguments); // reads the files into the system's cache
    for (int i = 0; i < 10; ++i) {
        const Launch again = launch(program, arguments);
        result.firstFrame = std::min(result.firstFrame, again.firstFrame);
        result.memory = std::min(result.memory, again.memory);
    }
    return result;
}

void printLaunches(const QString& self) {
    const Launch empty = best(self, {QStringLiteral("--empty-window")});
    const Launch whole = best(QStringLiteral(KELVO_PROGRAM), {});
    std::printf("The program on the sample organisation, and an empty window of the toolkit\n");
    std::printf("  start to first frame %9s  %9s  %5.2f times\n",
                duration(whole.firstFrame * 1e6).c_str(), duration(empty.firstFrame * 1e6).c_str(),
                whole.firstFrame / empty.firstFrame);
    std::printf("  memory at rest       %5.0f MiB  %5.0f MiB  %5.2f times\n", whole.memory,
                empty.memory, whole.memory / empty.memory);
}

void printFrames() {
    std::printf("\nA tick and its frame, 1440x900, processor time\n");
    double base = 0;
    for (const Scene& scene : scenes) {
        const double time = frameWork(scene);
        if (base == 0) base = time;
        std::printf("  %-48s %9s  %5.2f times  %4.0f%% of a 60 Hz frame\n", scene.what,
                    duration(time).c_str(), time / base, 100 * time / frame);
    }
    std::printf("\nTen seconds of running at 60 Hz\n");
    for (const Scene& scene : scenes) {
        const Pace kept = pace(scene);
        std::printf("  %-48s %d ticks, %d frames, longest gap %s\n", scene.what, kept.ticks,
                    kept.frames, duration(kept.longest).c_str());
    }
}

int showEmptyWindow() {
    QQmlApplicationEngine engine;
    engine.loadData("import QtQuick.Controls\n"
                    "ApplicationWindow { width: 1440; height: 900; visible: true }");
    return QGuiApplication::exec();
}

} // namespace
} // namespace kelvo::bench

int main(int argc, char** argv) {
    using namespace kelvo::bench;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    kelvo::MainWindow::prepare();
    if (QGuiApplication::arguments().contains(QStringLiteral("--empty-window"))) {
        return showEmptyWindow();
    }
    printLaunches(QGuiApplication::applicationFilePath());
    printFrames();
    return 0;
}
