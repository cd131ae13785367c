// Drives the real window on the real engine, without a display, through the story of a first day:
// identity, a gap closed with evidence, a run until the risk pause, its approval, a drafted policy.
// Presence and the file chooser are simulated; the draft is the built-in responder's own. For tests
// and demonstrations only; the shipped program has no such doubles.
//
//   kelvo-demo-window-simulated-presence <examples folder> <result folder>

#include "ui/Stage.h"

#include <QtQml/qqmlextensionplugin.h>

#include <QGuiApplication>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "responder/BuiltInResponder.h"

Q_IMPORT_QML_PLUGIN(KelvoPlugin)

namespace {

using kelvo::EngineVM;
using kelvo::test::Stage;
namespace fs = std::filesystem;

class Story {
public:
    Story(fs::path examples, fs::path results)
        : examples_(std::move(examples)), results_(std::move(results)),
          responder_([this] { return ground(); }) {}

    void play() {
        fs::copy(examples_ / "outputs", stage_.world.outputs(),
                 fs::copy_options::recursive | fs::copy_options::overwrite_existing);
        stage_.open(1440, 900);
        page("1-start", "The window opens on a copy of the sample organisation");

        stage_.click("Verify identity as Owner");
        expect(stage_.engine().principal->has_value(), "the identity was not verified");
        page("2-identity", "The owner's identity is verified (presence simulated)");

        stage_.world.filePanel.choice =
            stage_.world.write("device-inventory.csv", "laptop,encrypted,firewall,screen lock\n"
                                                       "larkspur-01,yes,yes,5 min\n");
        const double before = *stage_.engine().readiness;
        stage_.click("Close with evidence");
        expect(*stage_.engine().readiness > before, "readiness did not rise");
        page("3-gap-closed", "The gap of the highest impact is closed with evidence");

        stage_.click("Play");
        stage_.world.ticker.fire(1000);
        stage_.settle();
        expect(stage_.engine().pending->has_value(), "the run did not pause itself");
        page("4-risk-pause", "The run pauses itself at the risk limit");

        stage_.click("Bond — approve & seal");
        expect(!stage_.engine().pending->has_value(), "the state was not sealed");
        page("5-sealed", "The state is approved and sealed (presence simulated)");

        const std::string criterion = (*stage_.engine().mesh)->gaps().front().id;
        stage_.engine().generatePolicy(criterion);
        answer();
        stage_.named("draft")->forceActiveFocus();
        page("6-draft", "A policy is drafted for " + criterion + " by the built-in responder");

        stage_.click("Approve & seal (Touch ID)");
        expect(!stage_.engine().generatedDoc->has_value(), "the policy was not sealed");
        page("7-policy", "The policy is approved and sealed (presence simulated)");
        fs::copy(stage_.world.outputs(), results_ / "outputs",
                 fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    }

private:
    static void expect(bool holds, const char* otherwise) {
        if (!holds) throw std::runtime_error(otherwise);
    }

    void page(const std::string& name, const std::string& what) {
        stage_.rest();
        stage_.save(QString::fromStdString(name));
        std::printf("%s\n    %s\n", what.c_str(), stage_.engine().status->c_str());
    }

    void answer() {
        stage_.settle();
        expect(stage_.world.model.open() == 1, "nothing was asked of the model");
        stage_.world.model.answer(responder_.respond(stage_.world.model.requests.back()));
        stage_.settle();
        expect(stage_.engine().generatedDoc->has_value(), "nothing was drafted");
    }

    kelvo::GroundTexts ground() {
        const EngineVM& engine = stage_.engine();
        kelvo::GroundTexts texts;
        for (const auto& node : (*engine.mesh)->nodes)
            texts.criteria.push_back({node.id, node.evidence});
        for (const auto& family : engine.templates()) {
            texts.families.push_back(
                {family.id, family.title, family.criterionText, family.policy, family.evidence});
        }
        return texts;
    }

    fs::path examples_;
    fs::path results_;
    Stage stage_;
    kelvo::BuiltInResponder responder_;
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s <examples folder> <result folder>\n", argv[0]);
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("KELVO_SCREENSHOTS", argv[2]);
    const QGuiApplication application(argc, argv);
    kelvo::MainWindow::prepare();
    bool warned = false;
    Stage::onWarning = [&warned](const std::string&) { warned = true; };
    std::printf("DEMONSTRATION: presence is simulated. Nobody was asked anything.\n\n");
    try {
        fs::create_directories(argv[2]);
        Story(argv[1], argv[2]).play();
    } catch (const std::exception& fault) {
        std::printf("DEMONSTRATION FAILED: %s\n", fault.what());
        return 1;
    }
    if (warned)
        std::printf("DEMONSTRATION FAILED: the window warned, see above\n");
    else
        std::printf("\nScreenshots and record files are in %s\n", argv[2]);
    return warned ? 1 : 0;
}
