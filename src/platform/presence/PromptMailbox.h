#pragma once

#include "platform/presence/PamStack.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

class QObject;

namespace kelvo {

/// What happens at the person's side of a conversation, on the thread of the window.
class PromptListener {
public:
    virtual ~PromptListener() = default;
    virtual void told(const std::string& text, bool isError) = 0;
    virtual void asked(const std::string& prompt, bool echo) = 0;
    virtual void ended(bool proved) = 0;
};

/// Carries one conversation between the thread that runs PAM and the thread of the window. Both
/// hold it; either may go first. A cancel is final and kept here, because PAM does not report it.
class PromptMailbox : public PamConversation {
public:
    /// `listener` is told through the event loop of the thread of `context`, until `detach`.
    PromptMailbox(QObject& context, PromptListener& listener)
        : context_(&context), listener_(&listener) {}

    // For the thread that runs PAM
    void tell(const std::string& text, bool isError) override;
    std::optional<SecretText> ask(const std::string& prompt, bool echo) override;
    void end(bool proved);

    // For the thread of the window
    void answer(SecretText text);
    void cancel();
    bool cancelled();
    /// Cancels what goes on, and tells the listener nothing any more.
    void detach();

private:
    void post(std::function<void(PromptListener&)> message);

    std::mutex mutex_;
    std::condition_variable changed_;
    QObject* context_;
    PromptListener* listener_;
    std::optional<SecretText> answer_;
    bool cancelled_ = false;
};

} // namespace kelvo
