#pragma once

#include "engine/WorkQueue.h"

#include <type_traits>

namespace kelvo {

/// What others can have the owner of a work queue do, called like a method with the parameters
/// `Arguments`. A call runs the body at once; while the person is being asked something it keeps
/// the arguments and runs the body afterwards, in its turn. The body takes that turn first, so that
/// there is no other way into it.
///
/// `Owner` has a `WorkQueue queue_`, outlives its operations and names this class a friend.
template <class Owner, class... Arguments>
class OperationOf {
public:
    using Body = void (Owner::*)(const Turn& turn, Arguments... arguments);

    OperationOf(Owner& owner, Body body) : owner_(owner), body_(body) {}
    OperationOf(const OperationOf&) = delete;
    OperationOf& operator=(const OperationOf&) = delete;

    void operator()(Arguments... arguments) {
        const bool ran =
            owner_.queue_.runNow([&](const Turn& turn) { (owner_.*body_)(turn, arguments...); });
        if (ran) return;
        owner_.queue_.submit([&owner = owner_, body = body_,
                              ... kept = std::decay_t<Arguments>(arguments)](const Turn& turn) {
            (owner.*body)(turn, kept...);
        });
    }

private:
    Owner& owner_;
    Body body_;
};

} // namespace kelvo
