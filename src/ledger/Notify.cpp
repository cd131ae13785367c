#include "ledger/Notify.h"

#include "base/Uuid.h"

namespace kelvo {

void Notify::requestAuth() {
    if (notifications_.hasApplicationIdentity()) notifications_.requestAuthorization();
}

void Notify::fire(const std::string& title, const std::string& body) {
    const std::string line = "[notify] " + title + " — " + body;
    if (!notifications_.hasApplicationIdentity()) return notifications_.console(line);
    Notifications& notifications = notifications_;
    notifications_.post({randomUuid(), title, body},
                        [&notifications, line] { notifications.console(line); });
}

} // namespace kelvo
