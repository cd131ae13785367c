#include "base/Text.h"
#include "platform/device/Probes.h"

#include <algorithm>

namespace kelvo::device {
namespace {

constexpr const char* busctl = "/usr/bin/busctl";
constexpr const char* systemctl = "/usr/bin/systemctl";

/// The value of a call whose reply is one string or one Boolean, in busctl's form: `s "public"`.
std::optional<std::string> busReply(const std::optional<std::string>& output) {
    if (!output) return std::nullopt;
    const auto words = wordsOf(*output);
    if (words.size() != 2) return std::nullopt;
    std::string_view value = words[1];
    if (words[0] == "s" && value.size() >= 2) value = value.substr(1, value.size() - 2);
    return std::string(value);
}

std::optional<FirewallState> firewalld(const Machine& machine) {
    // Asked of the bus itself: a call to the service would start it.
    const auto owned = busReply(machine.ask(
        busctl, {"--system", "call", "org.freedesktop.DBus", "/org/freedesktop/DBus",
                 "org.freedesktop.DBus", "NameHasOwner", "s", "org.fedoraproject.FirewallD1"}));
    if (owned != "true") return std::nullopt;
    const auto state = busReply(machine.ask(
        busctl, {"--system", "get-property", "org.fedoraproject.FirewallD1",
                 "/org/fedoraproject/FirewallD1", "org.fedoraproject.FirewallD1", "state"}));
    if (!state) return FirewallState::unknown;
    if (state != "RUNNING") return FirewallState::off;
    const auto zone = busReply(
        machine.ask(busctl, {"--system", "--auto-start=no", "call", "org.fedoraproject.FirewallD1",
                             "/org/fedoraproject/FirewallD1", "org.fedoraproject.FirewallD1",
                             "getDefaultZone"}));
    if (!zone) return FirewallState::unknown;
    if (zone == "trusted") return FirewallState::off;
    return zone == "drop" || zone == "block" ? FirewallState::stealth : FirewallState::on;
}

/// The last value of KEY=value lines of a shell fragment, without quotes.
std::string shellValue(std::string_view text, std::string_view key) {
    std::string value;
    for (std::string_view line : linesOf(text)) {
        line = trimmed(line);
        if (!line.starts_with(key) || line.substr(key.size(), 1) != "=") continue;
        line = trimmed(line.substr(key.size() + 1));
        if (line.size() >= 2 && (line.front() == '"' || line.front() == '\'') &&
            line.front() == line.back())
            line = line.substr(1, line.size() - 2);
        value = line;
    }
    return value;
}

std::optional<std::string> unitState(const Machine& machine, const char* unit) {
    return machine.ask(systemctl, {"is-active", unit});
}

std::optional<FirewallState> ufw(const Machine& machine) {
    const std::string settings = "/etc/ufw/ufw.conf";
    if (!machine.exists(settings)) return std::nullopt;
    const auto text = machine.read(settings);
    if (!text) return FirewallState::unknown;
    if (lowerCased(shellValue(*text, "ENABLED")) != "yes") return FirewallState::off;
    const auto defaults = machine.read("/etc/default/ufw");
    if (!defaults) return FirewallState::unknown;
    const std::string policy = shellValue(*defaults, "DEFAULT_INPUT_POLICY");
    if (policy != "DROP" && policy != "REJECT") return FirewallState::off;
    // The unit runs once at boot: that it is active does not alone prove rules, that it is not
    // leaves open whether they were loaded by hand.
    return unitState(machine, "ufw.service") == "active" ? FirewallState::on
                                                         : FirewallState::unknown;
}

/// Without comments, and with every mark that stands alone parted from the words around it.
std::string rulesText(std::string_view configuration) {
    std::string out;
    for (std::string_view line : linesOf(configuration)) {
        line = line.substr(0, line.find('#'));
        for (const char c : line) {
            const bool mark = c == '{' || c == '}' || c == ';';
            if (mark) out += ' ';
            out += c;
            if (mark) out += ' ';
        }
        out += " ; "; // a statement ends with its line, too
    }
    return out;
}

/// True when a chain on the input hook ends what it does not accept: by its policy, or by a
/// statement that holds for every packet.
bool dropsByDefault(const std::vector<std::string_view>& words) {
    bool inInputChain = false;
    bool startsStatement = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string_view next = i + 1 < words.size() ? words[i + 1] : std::string_view();
        if (words[i] == "chain") inInputChain = false;
        if (words[i] == "hook") inInputChain = next == "input";
        const bool policy = words[i] == "policy" && next == "drop";
        const bool forAll = startsStatement && (words[i] == "drop" || words[i] == "reject");
        if (inInputChain && (policy || forAll)) return true;
        startsStatement =
            words[i] == ";" || words[i] == "{" || (startsStatement && words[i] == "counter");
    }
    return false;
}

std::optional<FirewallState> nftables(const Machine& machine) {
    if (unitState(machine, "nftables.service") != "active") return std::nullopt;
    const auto configuration = machine.read("/etc/nftables.conf");
    if (!configuration) return FirewallState::unknown;
    const std::string text = rulesText(*configuration);
    const auto words = wordsOf(text);
    if (dropsByDefault(words)) return FirewallState::on;
    const bool complete = std::find(words.begin(), words.end(), "include") == words.end();
    return complete ? FirewallState::off : FirewallState::unknown;
}

} // namespace

FirewallState firewall(const Machine& machine) {
    if (const auto state = firewalld(machine)) return *state;
    const auto simple = ufw(machine);
    // A front end that is switched off leaves the field to plain rules.
    if (simple && *simple != FirewallState::off) return *simple;
    if (const auto plain = nftables(machine)) return *plain;
    return simple.value_or(FirewallState::unknown);
}

} // namespace kelvo::device
