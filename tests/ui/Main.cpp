#include "ui/MainWindow.h"

#include <QtQml/qqmlextensionplugin.h>
#include <gtest/gtest.h>

#include <QGuiApplication>

#include "Stage.h"

Q_IMPORT_QML_PLUGIN(KelvoPlugin)

int main(int argc, char** argv) {
    // Without a display, whatever the machine has.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    testing::InitGoogleTest(&argc, argv);
    const QGuiApplication application(argc, argv);
    kelvo::MainWindow::prepare();
    kelvo::test::Stage::onWarning = [](const std::string& warning) {
        ADD_FAILURE() << "warning: " << warning;
    };
    return RUN_ALL_TESTS();
}
