#include "intents/IntentDesk.h"

#include <utility>

namespace kelvo {

IntentDesk::IntentDesk() : state_(std::make_shared<State>()) {
}

void IntentDesk::open(const IntentContext& context) {
    context_.emplace(context);
    // An approval runs an event loop of its own, in which more may arrive.
    while (!waiting_.empty()) {
        Entry entry = std::move(waiting_.front());
        waiting_.pop_front();
        start(std::move(entry));
    }
}

bool IntentDesk::submit(const Intent& intent, IntentDone done) {
    const bool question = std::holds_alternative<AskKelvoAgentIntent>(intent);
    if (state_->intents == mostIntents) return false;
    if (question && state_->questions == mostQuestions) return false;
    ++state_->intents;
    if (question) ++state_->questions;

    Entry entry{intent,
                [state = std::weak_ptr(state_), question, done = std::move(done)](auto dialog) {
                    if (const auto desk = state.lock()) {
                        --desk->intents;
                        if (question) --desk->questions;
                    }
                    done(std::move(dialog));
                }};
    if (context_ && waiting_.empty()) {
        start(std::move(entry));
    } else {
        waiting_.push_back(std::move(entry));
    }
    return true;
}

void IntentDesk::start(Entry entry) {
    if (!std::holds_alternative<SealKelvoIntent>(entry.intent)) {
        return perform(entry.intent, *context_, std::move(entry.done));
    }
    state_->approvals.push_back(std::move(entry.done));
    if (state_->approvals.size() == 1) startApproval();
}

void IntentDesk::startApproval() {
    perform(SealKelvoIntent{}, *context_, [state = std::weak_ptr(state_)](const auto& dialog) {
        const auto desk = state.lock();
        if (!desk) return;
        const std::vector<IntentDone> joined = std::exchange(desk->approvals, {});
        for (const IntentDone& done : joined)
            done(dialog);
    });
}

} // namespace kelvo
