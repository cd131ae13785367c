// Shows the stories of a folder in the real window on the real engine, without a display: says what
// happens and leaves pictures and record files. Presence and the file chooser are simulated; drafts
// are the built-in responder's own. For demonstrations and pictures only; the shipped program has
// no such doubles.
//
//   kelvo-demo-window-simulated-presence <folder of stories> <result folder>

#include "ui/Stage.h"

#include <QtQml/qqmlextensionplugin.h>

#include <QGuiApplication>
#include <cstdio>

Q_IMPORT_QML_PLUGIN(KelvoPlugin)

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s <folder of stories> <result folder>\n", argv[0]);
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    kelvo::MainWindow::prepare();
    bool warned = false;
    kelvo::test::Stage::onWarning = [&warned](const std::string&) { warned = true; };
    std::printf("DEMONSTRATION: presence is simulated. Nobody was asked anything.\n\n");
    try {
        std::filesystem::create_directories(argv[2]);
        for (const auto& scene : kelvo::test::scenesIn(argv[1])) {
            kelvo::test::Stage stage;
            stage.results = argv[2];
            for (const std::string& line : scene.lines) {
                if (!line.starts_with('?')) stage.act(line);
            }
        }
    } catch (const std::exception& fault) {
        std::printf("DEMONSTRATION FAILED: %s\n", fault.what());
        return 1;
    }
    std::printf(warned ? "DEMONSTRATION FAILED: the window warned, see above\n"
                       : "\nScreenshots and record files are in %s\n",
                argv[2]);
    return warned ? 1 : 0;
}
