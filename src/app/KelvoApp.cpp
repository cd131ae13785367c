// The composition root: the real platform behind every port, the one engine, the one window.

#include "app/SampleOrganisation.h"
#include "app/SingleInstance.h"
#include "engine/EngineVM.h"
#include "platform/bus/IntentService.h"
#include "platform/desktop/DesktopNotifications.h"
#include "platform/desktop/DesktopPrograms.h"
#include "platform/desktop/FolderWatch.h"
#include "platform/desktop/QtBackground.h"
#include "platform/desktop/QtEventLoop.h"
#include "platform/desktop/QtTicker.h"
#include "platform/desktop/SystemAccount.h"
#include "platform/desktop/SystemClock.h"
#include "platform/device/DeviceProcesses.h"
#include "platform/modelserver/LoopbackModel.h"
#include "platform/pdf/PopplerPdfText.h"
#include "platform/presence/PamAuthentication.h"
#include "responder/BuiltInResponder.h"
#include "ui/Appearance.h"
#include "ui/AuditView.h"
#include "ui/BeginView.h"
#include "ui/DialogFilePanel.h"
#include "ui/EngineView.h"
#include "ui/MainWindow.h"
#include "ui/ProofView.h"

#include <QtQml/qqmlextensionplugin.h>

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QIcon>
#include <QQuickWindow>
#include <QStringList>
#include <QTimer>
#include <chrono>
#include <cstdio>
#include <memory>
#include <optional>
#include <utility>

Q_IMPORT_QML_PLUGIN(KelvoPlugin)

namespace kelvo {
namespace {

const QString applicationId = QStringLiteral("org.kelvo.Soc2");

/// What the built-in responder may draw on: the mesh as it is, and the control families.
GroundTexts groundTexts() {
    const EngineVM& engine = EngineVM::shared();
    GroundTexts ground;
    if (*engine.mesh) {
        for (const SOC2Mesh::Node& node : (*engine.mesh)->nodes)
            ground.criteria.push_back({node.id, node.evidence});
    }
    for (const SOC2Template& family : engine.templates()) {
        ground.families.push_back(
            {family.id, family.title, family.criterionText, family.policy, family.evidence});
    }
    return ground;
}

/// The platform behind the engine's ports, for as long as the program runs.
struct Platform {
    SystemClock clock;
    QtTicker ticker;
    QtEventLoop eventLoop;
    SystemAccount account;
    DesktopNotifications notifications{QStringLiteral("Kelvo SOC2 Engine"), applicationId};
    DialogFilePanel filePanel;
    PopplerPdfText pdfText;
    device::DeviceProcesses processes;
    BuiltInResponder responder{groundTexts};
    DesktopPrograms programs;
    LoopbackModel model{[this](const ModelRequest& request) { return responder.respond(request); }};
    /// Last, so that it has ended before what its work uses.
    QtBackground background;
};

/// The window, once one is wanted, in the desktop's preference.
class Front {
public:
    Front(EngineView& view, ProofView& proof, BeginView& begin, AuditView& audit)
        : view_(view), proof_(proof), begin_(begin), audit_(audit) {
        QObject::connect(&appearance_, &Appearance::changed, &appearance_, [this] { follow(); });
    }

    /// Opens the window or brings it forward. Where it cannot be opened, says so and ends the
    /// program.
    bool show() {
        if (!window_) {
            window_.emplace(view_, proof_, begin_, audit_);
            follow();
        }
        window_->raise();
        if (window_->window() != nullptr) return true;
        std::fputs("The window cannot be opened; the lines above say why.\n", stderr);
        QGuiApplication::exit(1);
        return false;
    }

    QQuickWindow* window() const { return window_ ? window_->window() : nullptr; }

private:
    void follow() {
        if (window_) window_->setDark(appearance_.dark());
    }

    EngineView& view_;
    ProofView& proof_;
    BeginView& begin_;
    AuditView& audit_;
    Appearance appearance_;
    std::optional<MainWindow> window_;
};

/// What goes on beside the person's work: the proof is read once the window shows, compared when a
/// folder changes, and what could not be written is written again every few seconds.
class Upkeep {
public:
    Upkeep(EngineVM& engine, BeginView& begin, QQuickWindow* window)
        : watch_(folders(engine), [&engine, &begin] {
              begin.look();
              engine.compareProof();
          }) {
        retry_.callOnTimeout([&engine] { engine.keepAgain(); });
        retry_.start(std::chrono::seconds(5));
        const auto compare = [&engine] { engine.beginProof(); };
        if (window == nullptr) {
            QTimer::singleShot(0, compare);
        } else {
            QObject::connect(
                window, &QQuickWindow::frameSwapped, &retry_, compare,
                static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
        }
    }

private:
    static QStringList folders(const EngineVM& engine) {
        const auto& outputs = engine.outputsDir();
        return {QFile::decodeName(outputs.c_str()),
                QFile::decodeName((outputs.parent_path() / "proof").c_str())};
    }

    QTimer retry_;
    FolderWatch watch_;
};

int run(int argc, char** argv) {
    // Before any other thread: it clears variables that could mislead a PAM module.
    std::optional<PamAuthentication> authentication(std::in_place);
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("kelvo-soc2"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Kelvo SOC2 Engine"));
    QGuiApplication::setDesktopFileName(applicationId);
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/kelvo/org.kelvo.Soc2.svg")));
    MainWindow::prepare();

    // Its objects come before the name, by which callers find them.
    IntentService intents(applicationId);
    // A look at the sample goes on beside the person's own window, in a folder of its own.
    const std::optional<QString> sample = sampleFolder(QGuiApplication::arguments());
    SingleInstance instance(sample ? applicationId + QStringLiteral(".Sample") +
                                         QString::number(QCoreApplication::applicationPid())
                                   : applicationId);
    if (!instance.isFirst()) {
        instance.activateFirst();
        return 0;
    }
    instance.setActions([&intents](const QString& action, const QVariantList& parameters) {
        return intents.activate(action, parameters);
    });

    Platform platform;
    EngineVM::provideShared([&] {
        const Ports ports{platform.clock,     platform.ticker,    platform.eventLoop,
                          platform.account,   *authentication,    platform.notifications,
                          platform.filePanel, platform.pdfText,   platform.processes,
                          platform.model,     platform.background};
        const auto home = QFile::encodeName(sample.value_or(QDir::homePath())).toStdString();
        return std::make_unique<EngineVM>(ports, Directories::below(home));
    });
    Notify(platform.notifications).requestAuth();
    EngineView view(EngineVM::shared());
    const auto showModel = [&] {
        view.setModelLine(QString::fromStdString(platform.model.modelLine()));
    };
    QObject::connect(&platform.model, &LoopbackModel::modelLineChanged, &view, showModel);
    showModel();
    platform.model.refresh();

    ProofView proof(EngineVM::shared(), platform.programs);
    BeginView begin(EngineVM::shared(), {.filePanel = platform.filePanel,
                                         .programs = platform.programs,
                                         .account = platform.account.fullName(),
                                         .openSample = openSampleOrganisation});
    AuditView audit(EngineVM::shared(), platform.programs);
    Front front(view, proof, begin, audit);
    // The bus starts the program for a question, too, or to match what is typed: no window then.
    const bool byTheBus = QGuiApplication::arguments().contains(QStringLiteral("--service"));
    if (!byTheBus && !front.show()) return 1;
    const auto show = [&front] { front.show(); };
    QObject::connect(&instance, &SingleInstance::activated, &application, show);
    QObject::connect(&intents, &IntentService::appWanted, &application, show);
    intents.serve(EngineVM::shared(), platform.model);
    const Upkeep upkeep(EngineVM::shared(), begin, front.window());
    const int code = QGuiApplication::exec();
    EngineVM::shared().keepAgain();
    // Its prompt's engine must not outlive the application object.
    authentication.reset();
    return code;
}

} // namespace
} // namespace kelvo

int main(int argc, char** argv) {
    return kelvo::run(argc, argv);
}
