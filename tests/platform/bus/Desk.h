#pragma once

#include "platform/bus/IntentService.h"
#include "support/PrivateBus.h"
#include "support/World.h"

#include <gtest/gtest.h>

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QProcess>
#include <QVariantList>
#include <ostream>

namespace kelvo::test {

/// What came of a program.
struct Ended {
    int code = -1;
    QString output;
    QString errors;
    bool operator==(const Ended&) const = default;
};
void PrintTo(const Ended& ended, std::ostream* out);

/// A program of ours in a process of its own, on a bus of the test's own.
class Program {
public:
    Program(const QString& path, const QStringList& arguments, const QString& bus);

    bool running() const { return process_.state() != QProcess::NotRunning; }
    /// Waits for its end while this process goes on answering calls.
    Ended end();

private:
    QProcess process_;
};

inline const QString application = QStringLiteral("org.kelvo.Soc2");
inline const QString applicationPath = QStringLiteral("/org/kelvo/Soc2");

/// A method call in three words: path, interface, method.
QDBusMessage methodCall(const QString& path, const QString& interface, const QString& method,
                        const QVariantList& arguments = {});
/// What it was answered with: the first text, or the error's name and text.
QString answered(const QDBusPendingCall& call);

/// The real service and the real engine on scripted ports, on a bus with callers.
class Desk : public testing::Test {
protected:
    void SetUp() override;

    /// Calls and waits for the answer.
    QString answer(const QDBusMessage& call) { return answered((*caller_).asyncCall(call)); }
    QString intent(const QString& method, const QVariantList& arguments = {}) {
        return answer(methodCall(IntentBus::intentsPath(application), IntentBus::interface, method,
                                 arguments));
    }
    Ended shortcut(const QStringList& arguments) {
        return Program(KELVO_SHORTCUT, arguments, bus_.address()).end();
    }
    /// Lets a prompt stay open until `during` has run; then the person answers `answer`.
    void whilePromptIsOpen(bool answer, std::function<void()> during);

    PrivateBus bus_;
    BusConnection own_{bus_.address(), "service"};
    BusConnection caller_{bus_.address(), "caller"};
    World world_;
    EngineVM& vm_ = world_.start();
    IntentService service_{application, *own_};
    int raised_ = 0; ///< how often the window was wanted
};

} // namespace kelvo::test
