#include "platform/desktop/SystemAccount.h"

#include "base/Text.h"

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

namespace kelvo {
namespace {

struct Entry {
    std::string login;
    std::string gecos;
};

std::optional<Entry> ownEntry() {
    std::vector<char> buffer(4096);
    passwd entry{};
    passwd* found = nullptr;
    int code = 0;
    while ((code = ::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found)) ==
           ERANGE) {
        buffer.resize(2 * buffer.size());
    }
    if (code != 0 || found == nullptr) return std::nullopt;
    return Entry{entry.pw_name, entry.pw_gecos == nullptr ? "" : entry.pw_gecos};
}

} // namespace

std::string SystemAccount::fullName() const {
    const auto entry = ownEntry();
    return entry ? nameInGecos(entry->gecos) : std::string();
}

std::optional<std::string> SystemAccount::loginName() {
    const auto entry = ownEntry();
    if (!entry || entry->login.empty()) return std::nullopt;
    return entry->login;
}

std::string SystemAccount::nameInGecos(std::string_view gecos) {
    return std::string(trimmed(toValidUtf8(gecos.substr(0, gecos.find(',')))));
}

} // namespace kelvo
