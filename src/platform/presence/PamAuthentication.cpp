#include "platform/presence/PamAuthentication.h"

#include "platform/desktop/SystemAccount.h"
#include "platform/presence/PresencePrompt.h"
#include "platform/presence/PromptMailbox.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QLibraryInfo>
#include <QQmlEngine>
#include <cstdlib>
#include <utility>

// Outside any namespace, as the macro requires; a static library's resources register only so.
static void registerPresenceResources() {
    Q_INIT_RESOURCE(presence);
}

namespace kelvo {
namespace {

const char* const serviceName = "kelvo-soc2";

/// Where modules look for the services that they ask, when these variables are set.
constexpr const char* misleading[] = {
    "DBUS_SYSTEM_BUS_ADDRESS",
    "DBUS_STARTER_ADDRESS",
    "DBUS_STARTER_BUS_TYPE",
    "KRB5_CONFIG",
    "KRB5_KDC_PROFILE",
    "KRB5CCNAME",
    "LDAPCONF",
    "LDAPRC",
    "HOSTALIASES",
    "LOCALDOMAIN",
    "RES_OPTIONS",
};

std::unique_ptr<const PamStack> systemStack(const std::string& user) {
    return std::make_unique<PamStack>(serviceName, user);
}

} // namespace

/// One prompt from its opening to its answer.
class PamAuthentication::Evaluation : public PromptListener {
public:
    Evaluation(const std::string& reason, const std::string& user)
        : prompt_(
              reason, user, [this](SecretText text) { mailbox_->answer(std::move(text)); },
              [this] { dismiss(); }),
          mailbox_(std::make_shared<PromptMailbox>(prompt_, *this)) {}
    ~Evaluation() override { mailbox_->detach(); }

    std::shared_ptr<PromptMailbox> mailbox() const { return mailbox_; }

    bool show(QQmlEngine& engine) { return prompt_.show(engine); }

    /// True only for a proof that arrived while nobody had cancelled. Also returns, with false,
    /// when the program is told to quit.
    bool wait() {
        loop_.exec();
        return proved_ && !mailbox_->cancelled();
    }
    /// The stack gave its answer and the answer was no.
    bool failed() const { return refused_; }

private:
    void told(const std::string& text, bool isError) override { prompt_.tell(text, isError); }
    void asked(const std::string& question, bool echo) override { prompt_.ask(question, echo); }
    void ended(bool proved) override {
        proved_ = proved;
        refused_ = !proved && !mailbox_->cancelled();
        if (refused_ && prompt_.hasErrors()) {
            prompt_.refuse();
        } else {
            loop_.quit();
        }
    }
    void dismiss() {
        mailbox_->cancel();
        loop_.quit();
    }

    QEventLoop loop_;
    PresencePrompt prompt_;
    std::shared_ptr<PromptMailbox> mailbox_;
    bool proved_ = false;
    bool refused_ = false;
};

PamAuthentication::PamAuthentication()
    : PamAuthentication(SystemAccount::loginName().value_or(""),
                        systemStack(SystemAccount::loginName().value_or("")),
                        std::make_unique<EnrolledFingers>()) {
}

PamAuthentication::PamAuthentication(std::string user, std::unique_ptr<const PamStack> stack,
                                     std::unique_ptr<const EnrolledFingers> fingers)
    : user_(std::move(user)), stack_(std::move(stack)), fingers_(std::move(fingers)) {
    registerPresenceResources();
    for (const char* name : misleading)
        ::unsetenv(name);
}

PamAuthentication::~PamAuthentication() {
    if (worker_.joinable()) worker_.join();
}

std::optional<std::string> PamAuthentication::unavailableReason() {
    if (user_.empty()) return "the system does not know the account that this program runs as";
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) {
        return "no window can be shown";
    }
    if (const auto seconds = guard_.wait(AttemptGuard::Clock::now())) {
        return "too many failed attempts; try again in " + std::to_string(seconds->count()) + " s";
    }
    return stack_->unavailableReason();
}

bool PamAuthentication::evaluate(const std::string& reason) {
    if (asking_ || unavailableReason()) return false;
    asking_ = true;
    if (!engine_) {
        engine_ = std::make_unique<QQmlEngine>();
        // The toolkit's own modules only: the environment may name other folders.
        engine_->setImportPathList({QLibraryInfo::path(QLibraryInfo::QmlImportsPath)});
    }
    const auto opened = AttemptGuard::Clock::now();
    bool proved = false;
    {
        Evaluation evaluation(reason, user_);
        if (evaluation.show(*engine_)) {
            // A stack whose prompt was cancelled may still be busy, with a reader for instance.
            worker_ = std::thread([before = std::move(worker_), stack = stack_,
                                   mailbox = evaluation.mailbox()]() mutable {
                if (before.joinable()) before.join();
                if (!mailbox->cancelled()) mailbox->end(stack->prove(*mailbox));
            });
            proved = evaluation.wait();
            if (proved) guard_.proved();
            if (evaluation.failed()) guard_.failed(opened, AttemptGuard::Clock::now());
        }
    }
    asking_ = false;
    return proved;
}

Biometry PamAuthentication::biometry() {
    return fingers_->any(user_) ? Biometry::fingerprint : Biometry::none;
}

} // namespace kelvo
