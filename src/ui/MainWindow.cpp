#include "ui/MainWindow.h"

#include "ui/EngineView.h"

#include <QGuiApplication>
#include <QOpenGLContext>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QUrl>
#include <QVariant>

namespace kelvo {

void MainWindow::prepare() {
    // Without a usable graphics driver the scene graph would end the program.
    const QString platform = QGuiApplication::platformName();
    const bool onScreen = platform == u"xcb" || platform.startsWith(u"wayland");
    if (onScreen && qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND") && !QOpenGLContext().create()) {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    }
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
