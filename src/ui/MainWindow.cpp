#include "ui/MainWindow.h"

#include "ui/AuditView.h"
#include "ui/BeginView.h"
#include "ui/EngineView.h"
#include "ui/ProofView.h"

#include <QGuiApplication>
#include <QOpenGLContext>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QScreen>
#include <QSize>
#include <QUrl>
#include <QVariant>

namespace kelvo {
namespace {

/// As large as shows the work at a glance, or as the screen has room for beside the desktop's bars.
QSize openingSize() {
    constexpr QSize wanted(1440, 900);
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen == nullptr ? wanted : (screen->availableSize() * 0.9).boundedTo(wanted);
}

} // namespace

void MainWindow::prepare() {
    // Without a usable graphics driver the scene graph would end the program.
    const QString platform = QGuiApplication::platformName();
    const bool onScreen = platform == u"xcb" || platform.startsWith(u"wayland");
    if (onScreen && qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND") && !QOpenGLContext().create()) {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    }
    QQuickStyle::setStyle(QStringLiteral("Fusion"));
}

MainWindow::MainWindow(EngineView& view, ProofView& proof, BeginView& begin, AuditView& audit) {
    qml_.addImportPath(QStringLiteral("qrc:/qt/qml"));
    qml_.setInitialProperties({{QStringLiteral("engine"), QVariant::fromValue(&view)},
                               {QStringLiteral("proof"), QVariant::fromValue(&proof)},
                               {QStringLiteral("begin"), QVariant::fromValue(&begin)},
                               {QStringLiteral("audit"), QVariant::fromValue(&audit)}});
    qml_.load(QUrl(QStringLiteral("qrc:/qt/qml/Kelvo/Main.qml")));
    if (QQuickWindow* loaded = window()) {
        loaded->resize(openingSize().expandedTo(loaded->minimumSize()));
        loaded->show();
    }
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
    // What the person is being asked stays in front.
    if (QWindow* asked = QGuiApplication::modalWindow()) {
        asked->raise();
        asked->requestActivate();
    }
}

} // namespace kelvo
