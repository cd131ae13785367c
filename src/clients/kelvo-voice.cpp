// Listens for the phrases, runs what they ask for and speaks the dialogs, all on this computer.

#include "clients/ExitCode.h"
#include "clients/Listener.h"
#include "clients/Speaker.h"
#include "intents/IntentRequest.h"
#include "intents/VoiceGrammar.h"
#include "platform/bus/IntentClient.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <cstdio>

namespace kelvo {
namespace {

void print(const char* what, const QString& text) {
    std::printf("%s: %s\n", what, text.toUtf8().constData());
    std::fflush(stdout);
}

void complain(const QString& sentence) {
    std::fprintf(stderr, "kelvo-voice: %s\n", sentence.toUtf8().constData());
}

/// One person, one conversation: hear, run, answer.
class Conversation {
public:
    Conversation(Listener& listener, bool aloud) : listener_(listener), aloud_(aloud) {}

    /// Goes on until there is nothing more to hear. Returns the program's exit code.
    int run() {
        while (const auto hypothesis = listener_.listen(Listener::Mode::phrases)) {
            const auto intent = VoiceGrammar::heard(hypothesis->toStdString());
            if (!intent) {
                print("ignored", QStringLiteral("that was none of the phrases"));
                continue;
            }
            print("heard", QString::fromStdString(intentId(*intent)));
            answer(*intent);
        }
        if (listener_.failure().isEmpty()) return code_;
        complain(listener_.failure());
        return exitFailed;
    }

private:
    void say(const char* what, const QString& text) {
        print(what, text);
        if (!aloud_) return;
        // A dialog quotes phrases; it must not be heard as one.
        listener_.rest();
        if (!Speaker::speak(text)) complain(QStringLiteral("The dialog could not be spoken."));
    }

    void answer(const Intent& intent) {
        if (!std::holds_alternative<AskKelvoAgentIntent>(intent))
            return report(client_.run(intent));
        say("asks", QStringLiteral("What is the question?"));
        const auto question = listener_.listen(Listener::Mode::dictation);
        const auto ask = readIntent("ask", question.value_or(QString()).toStdString());
        if (!ask) return say("refused", QStringLiteral("I heard no question."));
        print("question", *question);
        report(client_.run(*ask));
    }

    void report(const IntentClient::Dialog& dialog) {
        if (dialog) return say("dialog", *dialog);
        code_ = exitCodeOf(dialog.error().kind);
        say("failed", dialog.error().text);
    }

    Listener& listener_;
    IntentClient client_;
    bool aloud_;
    int code_ = exitDone;
};

int run(const QCoreApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Listens for the phrases of Kelvo SOC2 and speaks its answers."));
    parser.addHelpOption();
    const QCommandLineOption check("check", "Only say what is missing, if anything.");
    const QCommandLineOption mute("mute", "Print the answers, do not speak them.");
    const QCommandLineOption file(
        "file",
        "Hear this sound file (WAV, one channel, 16 bits, 16 kHz) instead "
        "of the microphone; may be repeated.",
        "path");
    const QCommandLineOption model("model", "The folder of the speech model.", "folder",
                                   "/usr/share/pocketsphinx/model/en-us");
    parser.addOptions({check, mute, file, model});
    parser.process(application);
    if (!parser.positionalArguments().isEmpty()) {
        complain(QStringLiteral("There are no arguments but options; see --help."));
        return exitUsage;
    }

    Listener listener(parser.value(model), parser.values(file));
    const bool aloud = !parser.isSet(mute);
    const QStringList missing = listener.missing() + (aloud ? Speaker::missing() : QStringList());
    for (const QString& sentence : missing)
        complain(sentence);
    if (!missing.isEmpty()) return exitFailed;
    if (parser.isSet(check)) {
        print("ready", QStringLiteral("nothing is missing"));
        return exitDone;
    }
    if (parser.values(file).isEmpty()) print("listening", QStringLiteral("say a phrase"));
    return Conversation(listener, aloud).run();
}

} // namespace
} // namespace kelvo

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kelvo-voice"));
    return kelvo::run(application);
}
