#include "Stage.h"

#include <QtQuickTest/quicktest.h>

#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QTest>
#include <algorithm>
#include <stdexcept>

namespace kelvo::test {
namespace {

QtMessageHandler previousHandler = nullptr;

void hearWarnings(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if ((type == QtWarningMsg || type == QtCriticalMsg) && Stage::onWarning) {
        Stage::onWarning(message.toStdString());
    }
    if (previousHandler != nullptr) previousHandler(type, context, message);
}

void collect(QQuickItem* item, QList<QQuickItem*>& found) {
    if (!item->isVisible()) return;
    found.append(item);
    QList<QQuickItem*> children = item->childItems();
    // A list keeps its rows in the order in which it made them.
    if (item->parentItem() != nullptr && item->parentItem()->inherits("QQuickListView")) {
        std::stable_sort(children.begin(), children.end(),
                         [](const auto* a, const auto* b) { return a->y() < b->y(); });
    }
    for (QQuickItem* child : children)
        collect(child, found);
}

QString labelOf(const QQuickItem* item) {
    const QString text = item->property("text").toString();
    return text.isEmpty() ? item->property("placeholderText").toString() : text;
}

} // namespace

std::optional<QString> pictureFolder() {
    const QByteArray folder = qgetenv("KELVO_SCREENSHOTS");
    if (folder.isEmpty()) return std::nullopt;
    return QString::fromUtf8(folder);
}

std::function<void(const std::string&)> Stage::onWarning;

Stage::Stage() {
    previousHandler = qInstallMessageHandler(hearWarnings);
}

Stage::~Stage() {
    main_.reset();
    view_.reset();
    qInstallMessageHandler(previousHandler);
}

void Stage::writeOrganisation() {
    world.writeMesh({
        {"CC1-ethics", 1.0, 3, "Code of conduct signed by all staff in January."},
        {"CC2-communication", 1.0, 2, "Security page and intake address published."},
        {"CC3-risk", 0.5, 4, "Risk register exists. GAP: no review since the new product line"},
        {"CC4-monitoring", 0, 3,
         "Log retention is set. GAP: no monthly control review is recorded"},
        {"CC5-policies", 1.0, 3, "Policy set approved by the owner."},
        {"CC6-access", 0, 5,
         "Single sign-on for all services. GAP: quarterly access review missing"},
        {"CC6-device-security", 0, 4, "Laptops are company owned. GAP: posture is not verified"},
        {"CC7-incidents", 0.5, 4, "On-call rota exists. GAP: incident response plan is not tested"},
        {"CC7-vulnerabilities", 1.0, 3, "Weekly dependency scan."},
        {"CC8-change", 1.0, 4, "Every change is reviewed before release."},
        {"CC9-vendor-risk", 0, 3, "Vendor list exists. GAP: no vendor risk assessment"},
        {"A1-backup", 1.0, 3, "Nightly backups, restore tested in March."},
        {"C1-confidentiality", 0, 2, "Customer data is classified. GAP: no retention schedule"},
    });
    world.writeRoles(Json::array({
        {{"role", "Owner"}, {"readonly", false}},
        {{"role", "Engineer"},
         {"readonly", false},
         {"controls",
          {{{"criterion", "CC6-device-security"},
            {"task", "Keep this laptop encrypted, locked and patched"},
            {"close", "os"}},
           {{"criterion", "CC7-incidents"},
            {"task", "Write the incident response plan"},
            {"close", "generate"}},
           {{"criterion", "CC6-access"},
            {"task", "Confirm the quarterly access review"},
            {"close", "attest"}},
           {{"criterion", "CC8-change"},
            {"task", "Confirm that changes are reviewed before release"},
            {"close", "attest"}}}}},
        {{"role", "People lead"},
         {"readonly", false},
         {"criteria", {"CC1-ethics", "CC2-communication"}}},
        {{"role", "Auditor"},
         {"readonly", true},
         {"criteria", {"CC3-risk", "CC4-monitoring", "CC6-access"}}},
    }));
}

void Stage::open(int width, int height) {
    world.start();
    view_ = std::make_unique<EngineView>(world.engine());
    main_ = std::make_unique<MainWindow>(*view_);
    if (main_->window() == nullptr) throw std::runtime_error("the window does not load");
    window().resize(width, height);
    window().requestActivate();
    if (!QTest::qWaitForWindowActive(&window())) throw std::runtime_error("no active window");
    settle();
}

void Stage::verify(const std::string& role) {
    engine().verifyKYC(role);
    settle();
}

void Stage::settle() {
    for (int i = 0; i < 4; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        world.eventLoop.drain();
        QQuickTest::qWaitForPolish(&window());
    }
}

void Stage::rest() {
    QTest::qWait(900);
    settle();
}

QList<QQuickItem*> Stage::items(QQuickItem* root) {
    QList<QQuickItem*> found;
    collect(root == nullptr ? window().contentItem() : root, found);
    return found;
}

QQuickItem* Stage::named(const char* objectName) {
    for (QQuickItem* item : items()) {
        if (item->objectName() == QLatin1String(objectName)) return item;
    }
    return nullptr;
}

QQuickItem* Stage::label(const QString& text) {
    for (QQuickItem* item : items()) {
        if (item->inherits("QQuickText") && labelOf(item) == text) return item;
    }
    return nullptr;
}

QQuickItem* Stage::control(const QString& label) {
    for (QQuickItem* item : items()) {
        if (item->inherits("QQuickAbstractButton") && labelOf(item) == label) return item;
        if (item->inherits("QQuickTextField") && labelOf(item) == label) return item;
    }
    return nullptr;
}

QStringList Stage::texts(QQuickItem* root) {
    QStringList found;
    for (QQuickItem* item : items(root)) {
        const bool words = item->inherits("QQuickText") || item->inherits("QQuickTextEdit") ||
                           item->inherits("QQuickTextInput") ||
                           item->inherits("QQuickAbstractButton");
        const QString label = words ? labelOf(item) : QString();
        if (!label.isEmpty()) found.append(label);
    }
    return found;
}

void Stage::click(QQuickItem* item) {
    if (item == nullptr) throw std::runtime_error("there is no such control to click");
    item->forceActiveFocus();
    settle();
    const QPoint middle =
        item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
    if (!QRect(QPoint(), window().size()).contains(middle)) {
        throw std::runtime_error("the control to click is out of view");
    }
    QTest::mouseClick(&window(), Qt::LeftButton, Qt::NoModifier, middle);
    settle();
}

void Stage::press(int key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(&window(), static_cast<Qt::Key>(key), modifiers);
    settle();
}

void Stage::type(const QString& text) {
    for (const QChar character : text)
        QTest::keyClick(&window(), character.toLatin1());
    settle();
}

void Stage::save(const QString& name) {
    const auto folder = pictureFolder();
    if (!folder) return;
    QDir().mkpath(*folder);
    const QImage picture = window().grabWindow();
    if (!picture.save(*folder + "/" + name + ".png")) {
        throw std::runtime_error("a picture cannot be written");
    }
}

} // namespace kelvo::test
