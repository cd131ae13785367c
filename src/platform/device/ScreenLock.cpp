#include "base/Text.h"
#include "platform/device/Probes.h"

#include <algorithm>
#include <charconv>
#include <map>

namespace kelvo::device {
namespace {

/// A password that is asked for later than this after the screen went dark does not protect it.
constexpr long longestGraceSeconds = 300;

std::optional<long> numberOf(std::string_view text) {
    long number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

/// One value of a settings schema, defaults and locked-down values included: `true`, `uint32 300`.
std::optional<std::string> setting(const Machine& machine, const char* schema, const char* key) {
    const auto output = machine.ask("/usr/bin/gsettings", {"get", schema, key});
    if (!output) return std::nullopt;
    const auto words = wordsOf(*output);
    return std::string(words.back());
}

Finding holds(const std::optional<std::string>& value, std::string_view wanted) {
    if (!value) return Finding::unknown;
    return *value == wanted ? Finding::secure : Finding::insecure;
}

Finding within(const std::optional<std::string>& value, long least, long most) {
    const auto number = value ? numberOf(*value) : std::nullopt;
    if (!number) return Finding::unknown;
    return *number >= least && *number <= most ? Finding::secure : Finding::insecure;
}

constexpr long anyLength = 1'000'000'000;

Finding gnome(const Machine& machine) {
    constexpr const char* saver = "org.gnome.desktop.screensaver";
    return allOf({
        holds(setting(machine, saver, "lock-enabled"), "true"),
        within(setting(machine, saver, "lock-delay"), 0, longestGraceSeconds),
        within(setting(machine, "org.gnome.desktop.session", "idle-delay"), 1, anyLength),
        holds(setting(machine, "org.gnome.desktop.lockdown", "disable-lock-screen"), "false"),
    });
}

Finding cinnamon(const Machine& machine) {
    return allOf({
        holds(setting(machine, "org.cinnamon.desktop.screensaver", "lock-enabled"), "true"),
        within(setting(machine, "org.cinnamon.desktop.session", "idle-delay"), 1, anyLength),
    });
}

Finding mate(const Machine& machine) {
    return allOf({
        holds(setting(machine, "org.mate.screensaver", "lock-enabled"), "true"),
        holds(setting(machine, "org.mate.screensaver", "idle-activation-enabled"), "true"),
        within(setting(machine, "org.mate.session", "idle-delay"), 1, anyLength),
    });
}

Finding xfce(const Machine& machine) {
    const auto property = [&](const char* name) {
        return machine.ask("/usr/bin/xfconf-query", {"-c", "xfce4-screensaver", "-p", name});
    };
    // A property that was never set is not printed; another locker may then be in use.
    return allOf({holds(property("/lock/enabled"), "true"),
                  property("/saver/enabled") == "false" ? Finding::insecure : Finding::secure});
}

/// One group of KDE's cascading settings: the person's file over the system's, except where the
/// system marks a key, or the whole group, immutable with "[$i]".
class CascadingGroup {
public:
    explicit CascadingGroup(std::string_view name) : heading_("[" + std::string(name) + "]") {}

    void add(std::string_view file) {
        std::map<std::string, Entry> ofFile;
        bool inside = false;
        bool groupFixed = false;
        for (std::string_view line : linesOf(file)) {
            line = trimmed(line);
            if (line.starts_with('[')) {
                inside = line == heading_ || line == heading_ + "[$i]";
                if (inside) groupFixed = groupFixed || line != heading_;
                continue;
            }
            const std::size_t equals = line.find('=');
            if (!inside || line.starts_with('#') || equals == std::string_view::npos) continue;
            std::string_view key = trimmed(line.substr(0, equals));
            const std::size_t marks = key.find("[$");
            const bool keyFixed = marks != std::string_view::npos &&
                                  key.substr(marks).find('i') != std::string_view::npos;
            key = trimmed(key.substr(0, marks));
            ofFile[std::string(key)] = {std::string(trimmed(line.substr(equals + 1))),
                                        keyFixed || groupFixed};
        }
        if (fixed_) return;
        for (auto& [key, entry] : ofFile) {
            Entry& kept = entries_[key];
            if (!kept.fixed) kept = std::move(entry);
        }
        fixed_ = groupFixed;
    }

    std::string value(const std::string& key, const char* byDefault) const {
        const auto found = entries_.find(key);
        return found == entries_.end() ? byDefault : found->second.value;
    }

private:
    struct Entry {
        std::string value;
        bool fixed = false;
    };
    std::string heading_;
    std::map<std::string, Entry> entries_;
    bool fixed_ = false;
};

Finding isOn(const std::string& value) {
    const std::string word = lowerCased(value);
    return word == "true" || word == "1" || word == "on" || word == "yes" ? Finding::secure
                                                                          : Finding::insecure;
}

Finding kde(const Machine& machine) {
    CascadingGroup daemon("Daemon");
    for (const std::string& folder : {std::string("/etc/xdg"), machine.session().config}) {
        const std::string path = folder + "/kscreenlockerrc";
        if (!machine.exists(path)) continue;
        const auto text = machine.read(path);
        if (!text) return Finding::unknown;
        daemon.add(*text);
    }
    return allOf({
        isOn(daemon.value("Autolock", "true")),
        isOn(daemon.value("LockOnResume", "true")),
        isOn(daemon.value("RequirePassword", "true")),
        within(daemon.value("Timeout", "5"), 1, anyLength),
        within(daemon.value("LockGrace", "5"), 0, longestGraceSeconds),
    });
}

} // namespace

Finding screenLock(const Machine& machine) {
    // The desktop decides, not what is installed: schemas of one are often there on another.
    std::string_view names = machine.session().desktop;
    while (!names.empty()) {
        const std::size_t end = std::min(names.find(':'), names.size());
        const std::string name = lowerCased(names.substr(0, end));
        names.remove_prefix(std::min(end + 1, names.size()));
        if (name == "gnome") return gnome(machine);
        if (name == "kde") return kde(machine);
        if (name == "x-cinnamon" || name == "cinnamon") return cinnamon(machine);
        if (name == "mate") return mate(machine);
        if (name == "xfce") return xfce(machine);
        if (name == "budgie") return Finding::unknown; // names GNOME too, but locks otherwise
    }
    return Finding::unknown;
}

} // namespace kelvo::device
