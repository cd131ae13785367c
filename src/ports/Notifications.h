#pragma once

#include <functional>
#include <string>

namespace kelvo {

struct Notification {
    std::string identifier; ///< unique a notification
    std::string title;
    std::string body;
};

/// The desktop's notification service.
class Notifications {
public:
    virtual ~Notifications() = default;

    /// True when this process is a registered application, for which a desktop shows notifications.
    virtual bool hasApplicationIdentity() const = 0;

    /// Asks once for leave to show alerts with sound; the answer is not reported.
    virtual void requestAuthorization() = 0;

    /// Shows `notification` now, with the default sound. Returns at once; where no service takes
    /// it, `undelivered` is called later on the engine's thread.
    virtual void post(const Notification& notification, std::function<void()> undelivered) = 0;

    /// Writes one line to the system's console log.
    virtual void console(const std::string& line) = 0;
};

} // namespace kelvo
