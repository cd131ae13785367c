#include "platform/device/Machine.h"

#include "base/Files.h"
#include "base/Text.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <system_error>

namespace kelvo::device {
namespace fs = std::filesystem;
namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

std::string homeOfAccount() {
    const passwd* entry = ::getpwuid(::getuid());
    return entry == nullptr || entry->pw_dir == nullptr ? "" : entry->pw_dir;
}

} // namespace

Finding allOf(std::initializer_list<Finding> findings) {
    Finding result = Finding::secure;
    for (const Finding each : findings) {
        if (each == Finding::insecure) return each;
        if (each == Finding::unknown) result = each;
    }
    return result;
}

Finding anyOf(std::initializer_list<Finding> findings) {
    Finding result = Finding::insecure;
    for (const Finding each : findings) {
        if (each == Finding::secure) return each;
        if (each == Finding::unknown) result = each;
    }
    return result;
}

OwnSession ownSession() {
    OwnSession own;
    own.session.home = homeOfAccount();
    own.session.config = variable("XDG_CONFIG_HOME");
    if (!own.session.config.starts_with('/')) own.session.config = own.session.home + "/.config";
    own.session.desktop = variable("XDG_CURRENT_DESKTOP");
    own.environment = {{"LC_ALL", "C"},
                       {"PATH", "/usr/sbin:/usr/bin:/sbin:/bin"},
                       {"HOME", own.session.home},
                       {"XDG_CONFIG_HOME", own.session.config}};
    for (const char* name : {"DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR", "XDG_DATA_DIRS",
                             "XDG_CURRENT_DESKTOP", "USER"}) {
        if (auto value = variable(name); !value.empty()) own.environment[name] = std::move(value);
    }
    return own;
}

fs::path Machine::at(const std::string& path) const {
    return session_.root / fs::path(path).relative_path();
}

bool Machine::exists(const std::string& path) const {
    std::error_code ignored;
    return fs::status(at(path), ignored).type() != fs::file_type::not_found;
}

std::optional<std::string> Machine::read(const std::string& path) const {
    auto bytes = readFile(at(path), maxFileBytes);
    if (!bytes) return std::nullopt;
    return std::move(*bytes);
}

std::optional<std::string> Machine::readTrimmed(const std::string& path) const {
    const auto bytes = read(path);
    if (!bytes) return std::nullopt;
    return std::string(trimmed(*bytes));
}

std::optional<std::vector<std::string>> Machine::list(const std::string& path) const {
    std::error_code failed;
    std::vector<std::string> names;
    for (fs::directory_iterator entry(at(path), failed), end; !failed && entry != end;
         entry.increment(failed))
        names.push_back(entry->path().filename().string());
    if (failed) return std::nullopt;
    std::sort(names.begin(), names.end());
    return names;
}

std::string Machine::resolved(const std::string& path) const {
    std::error_code failed;
    const fs::path root = fs::weakly_canonical(session_.root, failed);
    if (failed) return path;
    const fs::path target = fs::weakly_canonical(at(path), failed);
    if (failed) return path;
    return "/" + target.lexically_relative(root).string();
}

std::optional<std::string> Machine::ask(const std::string& path,
                                        const std::vector<std::string>& arguments) const {
    const auto output = commands_.run(path, arguments, deadline_);
    if (!output) return std::nullopt;
    const std::string_view text = trimmed(*output);
    if (text.empty()) return std::nullopt;
    return std::string(text);
}

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::vector<std::string_view> wordsOf(std::string_view line) {
    std::vector<std::string_view> words;
    while (true) {
        const std::size_t begin = line.find_first_not_of(" \t\r");
        if (begin == std::string_view::npos) return words;
        line.remove_prefix(begin);
        const std::size_t end = std::min(line.find_first_of(" \t\r"), line.size());
        words.push_back(line.substr(0, end));
        line.remove_prefix(end);
    }
}

} // namespace kelvo::device
