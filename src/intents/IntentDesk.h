#pragma once

#include "intents/KelvoIntents.h"

#include <deque>
#include <memory>
#include <optional>
#include <vector>

namespace kelvo {

/// Where intents from outside are handed in. It keeps order among callers that may be many and
/// hasty: what comes before the engine is there waits; only so much is under way at a time; and a
/// person who is being asked to approve is not asked again because somebody else said so, too.
///
/// Used on the engine's thread only.
class IntentDesk {
public:
    /// Intents that are under way or waiting, all together, and the questions among them.
    static constexpr std::size_t mostIntents = 32;
    static constexpr std::size_t mostQuestions = 4;

    IntentDesk();

    /// From now on intents run; those that wait run at once, in order of arrival.
    void open(const IntentContext& context);

    /// Takes an intent. False when too much is under way already; `done` is then not kept.
    /// An approval that comes while another one is under way joins it and gets the same dialog.
    bool submit(const Intent& intent, IntentDone done);

private:
    struct Entry {
        Intent intent;
        IntentDone done;
    };
    /// What the ends of intents find, as long as the desk is there.
    struct State {
        std::size_t intents = 0;
        std::size_t questions = 0;
        std::vector<IntentDone> approvals; ///< not empty while an approval is under way
    };

    void start(Entry entry);
    void startApproval();

    std::optional<IntentContext> context_;
    std::deque<Entry> waiting_;
    std::shared_ptr<State> state_;
};

} // namespace kelvo
