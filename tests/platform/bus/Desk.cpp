#include "Desk.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QTest>

namespace kelvo::test {
namespace {

constexpr int patience = 60'000;

} // namespace

void PrintTo(const Ended& ended, std::ostream* out) {
    *out << "exit code " << ended.code << ", output \"" << ended.output.toStdString()
         << "\", errors \"" << ended.errors.toStdString() << '"';
}

Program::Program(const QString& path, const QStringList& arguments, const QString& bus) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DBUS_SESSION_BUS_ADDRESS", bus);
    process_.setProcessEnvironment(environment);
    process_.start(path, arguments);
    process_.waitForStarted();
}

Ended Program::end() {
    if (!QTest::qWaitFor([this] { return !running(); }, patience)) process_.kill();
    process_.waitForFinished();
    return {process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1,
            QString::fromUtf8(process_.readAllStandardOutput()),
            QString::fromUtf8(process_.readAllStandardError())};
}

QDBusMessage methodCall(const QString& path, const QString& interface, const QString& method,
                        const QVariantList& arguments) {
    QDBusMessage call = QDBusMessage::createMethodCall(application, path, interface, method);
    call.setArguments(arguments);
    return call;
}

QString answered(const QDBusPendingCall& call) {
    const QDBusPendingCallWatcher watcher(call);
    if (!QTest::qWaitFor([&watcher] { return watcher.isFinished(); }, patience)) return "no answer";
    const QDBusMessage reply = watcher.reply();
    if (reply.type() == QDBusMessage::ErrorMessage)
        return reply.errorName() + ": " + reply.errorMessage();
    return reply.arguments().value(0).toStringList().value(0);
}

void Desk::SetUp() {
    ASSERT_TRUE(service_.isRegistered());
    ASSERT_TRUE((*own_).registerService(application));
    QObject::connect(&service_, &IntentService::appWanted, [this] { ++raised_; });
    service_.serve(vm_, world_.model);
    world_.transcript();
}

void Desk::whilePromptIsOpen(bool answer, std::function<void()> during) {
    world_.authentication.answer = answer;
    world_.authentication.whileAsking = [this, during = std::move(during)] {
        const auto work = during; // the next line ends this function object
        world_.authentication.whileAsking = nullptr;
        work();
    };
}

} // namespace kelvo::test
