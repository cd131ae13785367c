// Runs an intent of the application from a terminal, a script or a keyboard shortcut, and prints
// its dialog.

#include "clients/ExitCode.h"
#include "intents/IntentRequest.h"
#include "intents/KelvoShortcuts.h"
#include "platform/bus/IntentClient.h"

#include <QCoreApplication>
#include <QStringList>
#include <cstdio>

namespace kelvo {
namespace {

constexpr const char* usage = "usage: kelvo-shortcut list\n"
                              "       kelvo-shortcut ask TEXT...\n"
                              "       kelvo-shortcut adopt CC1|CC2|...|CC9\n"
                              "       kelvo-shortcut run\n"
                              "       kelvo-shortcut approve\n"
                              "       kelvo-shortcut say PHRASE...\n";

int refuse(const std::string& why) {
    std::fprintf(stderr, "kelvo-shortcut: %s\n", why.c_str());
    return exitUsage;
}

int list() {
    for (const AppShortcut& shortcut : KelvoShortcuts::appShortcuts()) {
        std::printf("%s\n", std::string(shortcut.shortTitle).c_str());
        for (const SpokenPhrase& phrase : KelvoShortcuts::spokenPhrases()) {
            if (typeOf(phrase.intent) == shortcut.intent)
                std::printf("  %s\n", phrase.text.c_str());
        }
    }
    return exitDone;
}

int report(const IntentClient::Dialog& dialog) {
    if (dialog) {
        std::printf("%s\n", dialog->toUtf8().constData());
        return exitDone;
    }
    std::fprintf(stderr, "kelvo-shortcut: %s\n", dialog.error().text.toUtf8().constData());
    return exitCodeOf(dialog.error().kind);
}

int run(const QStringList& arguments) {
    const QString command = arguments.value(1);
    const QString rest = arguments.mid(2).join(u' ');
    if (command == u"--help" || command == u"-h") {
        std::fputs(usage, stdout);
        return exitDone;
    }
    if (command.isEmpty()) {
        std::fputs(usage, stderr);
        return exitUsage;
    }
    if (command == u"list") return rest.isEmpty() ? list() : refuse("“list” takes no parameter.");
    if (command == u"say") {
        if (rest.isEmpty()) return refuse("There is no phrase.");
        return report(IntentClient().say(rest));
    }
    const auto intent = readIntent(command.toStdString(), rest.toStdString());
    return intent ? report(IntentClient().run(*intent)) : refuse(intent.error());
}

} // namespace
} // namespace kelvo

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    return kelvo::run(QCoreApplication::arguments());
}
