#include "ui/MainWindow.h"

#include "ui/EngineView.h"

#include <QQuickStyle>
#include <QQuickWindow>
#include <QUrl>
#include <QVariant>

namespace kelvo {

void MainWindow::prepare() {
    QQuickStyle::setStyle(QStringLiteral("Fusion"));
}

MainWindow::MainWindow(EngineView& view) {
    qml_.addImportPath(QStringLiteral("qrc:/qt/qml"));
    qml_.setInitialProperties({{QStringLiteral("engine"), QVariant::fromValue(&view)},
                               {QStringLiteral("visible"), true}});
    qml_.load(QUrl(QStringLiteral("qrc:/qt/qml/Kelvo/Main.qml")));
}

MainWindow::~MainWindow() = default;

QQuickWindow* MainWindow::window() const {
    const QObjectList roots = qml_.rootObjects();
    return roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(roots.first());
}

void MainWindow::setDark(bool dark) {
    if (QQuickWindow* shown = window()) shown->setProperty("dark", dark);
}

void MainWindow::raise() {
    QQuickWindow* shown = window();
    if (shown == nullptr) return;
    if (shown->windowStates().testFlag(Qt::WindowMinimized)) shown->showNormal();
    shown->raise();
    shown->requestActivate();
}

} // namespace kelvo
