#include "platform/presence/PromptMailbox.h"

#include <QObject>
#include <utility>

namespace kelvo {

void PromptMailbox::post(std::function<void(PromptListener&)> message) {
    if (context_ == nullptr) return;
    // What is still posted when the context goes is dropped with it; the listener lives as long.
    QMetaObject::invokeMethod(
        context_, [listener = listener_, message = std::move(message)] { message(*listener); },
        Qt::QueuedConnection);
}

void PromptMailbox::tell(const std::string& text, bool isError) {
    const std::lock_guard lock(mutex_);
    post([text, isError](PromptListener& listener) { listener.told(text, isError); });
}

std::optional<SecretText> PromptMailbox::ask(const std::string& prompt, bool echo) {
    std::unique_lock lock(mutex_);
    answer_.reset();
    if (!cancelled_) {
        post([prompt, echo](PromptListener& listener) { listener.asked(prompt, echo); });
    }
    changed_.wait(lock, [this] { return cancelled_ || answer_; });
    if (cancelled_) return std::nullopt;
    return std::exchange(answer_, std::nullopt);
}

void PromptMailbox::end(bool proved) {
    const std::lock_guard lock(mutex_);
    post([proved](PromptListener& listener) { listener.ended(proved); });
}

void PromptMailbox::answer(SecretText text) {
    const std::lock_guard lock(mutex_);
    answer_ = std::move(text);
    changed_.notify_all();
}

void PromptMailbox::cancel() {
    const std::lock_guard lock(mutex_);
    cancelled_ = true;
    answer_.reset();
    changed_.notify_all();
}

bool PromptMailbox::cancelled() {
    const std::lock_guard lock(mutex_);
    return cancelled_;
}

void PromptMailbox::detach() {
    const std::lock_guard lock(mutex_);
    context_ = nullptr;
    cancelled_ = true;
    answer_.reset();
    changed_.notify_all();
}

} // namespace kelvo
