#include "compliance/OSSnapshot.h"

#include "base/Text.h"

#include <charconv>
#include <optional>

namespace kelvo::OSSnapshot {
namespace {

// Fixed texts: the names of the facts, the tools' paths and what in their output counts, see
// docs/decisions.md.
constexpr const char* diskEncryption = "FileVault disk encryption";
constexpr const char* firewall = "Application firewall";
constexpr const char* screenLock = "Password required after sleep/screensaver";
constexpr const char* integrity = "System Integrity Protection";
constexpr const char* verification = "Gatekeeper (app verification)";

/// The command's trimmed output; none where it yields no text.
std::optional<std::string> run(Processes& processes, const std::string& path,
                               const std::vector<std::string>& arguments) {
    const auto output = processes.run(path, arguments);
    if (!output || !isValidUtf8(*output)) return std::nullopt;
    const std::string_view text = trimmed(*output);
    if (text.empty()) return std::nullopt;
    return std::string(text);
}

std::optional<long long> integer(const std::optional<std::string>& output) {
    if (!output) return std::nullopt;
    std::string_view digits = *output;
    if (digits.starts_with('+')) {
        digits.remove_prefix(1);
        if (digits.starts_with('-')) return std::nullopt;
    }
    long long number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    return number;
}

OSFact unknown(const char* key) {
    return {key, "unknown", false};
}

OSFact containing(const char* key, const std::optional<std::string>& output,
                  const std::string& sign, const char* present, const char* absent) {
    if (!output) return unknown(key);
    const bool found = lowerCased(*output).find(sign) != std::string::npos;
    return {key, found ? present : absent, found};
}

OSFact firewallFact(const std::optional<std::string>& output) {
    const auto state = integer(output);
    if (!state) return unknown(firewall);
    if (*state < 1) return {firewall, "off", false};
    return {firewall, *state == 2 ? "on (stealth)" : "on", true};
}

OSFact screenLockFact(const std::optional<std::string>& output) {
    const auto state = integer(output);
    if (!state) return unknown(screenLock);
    return {screenLock, *state == 1 ? "yes" : "no", *state == 1};
}

} // namespace

std::vector<OSFact> read(Processes& processes) {
    // Fixed texts, as above.
    return {
        containing(diskEncryption, run(processes, "/usr/bin/fdesetup", {"status"}), "on", "on",
                   "off"),
        firewallFact(run(processes, "/usr/bin/defaults",
                         {"read", "/Library/Preferences/com.apple.alf", "globalstate"})),
        screenLockFact(run(processes, "/usr/bin/defaults",
                           {"read", "com.apple.screensaver", "askForPassword"})),
        containing(integrity, run(processes, "/usr/bin/csrutil", {"status"}), "enabled", "enabled",
                   "disabled"),
        containing(verification, run(processes, "/usr/sbin/spctl", {"--status"}), "enabled",
                   "enabled", "disabled"),
    };
}

bool isRequired(const OSFact& fact) {
    return fact.key == diskEncryption || fact.key == firewall || fact.key == screenLock;
}

} // namespace kelvo::OSSnapshot
