#include "platform/device/DeviceProcesses.h"

#include "platform/device/Probes.h"

#include <utility>

namespace kelvo::device {
namespace {

using Answer = std::optional<std::string>;

Answer inWords(Finding finding, const char* secure, const char* insecure) {
    switch (finding) {
    case Finding::secure:
        return secure;
    case Finding::insecure:
        return insecure;
    case Finding::unknown:
        break;
    }
    return std::nullopt;
}

Answer firewallLevel(FirewallState state) {
    switch (state) {
    case FirewallState::off:
        return "0\n";
    case FirewallState::on:
        return "1\n";
    case FirewallState::stealth:
        return "2\n";
    case FirewallState::unknown:
        break;
    }
    return std::nullopt;
}

struct Tool {
    std::string path;
    std::vector<std::string> arguments;
    Answer (*answer)(const Machine&);
};

// Fixed texts: the four paths and their output, see docs/decisions.md.
const std::vector<Tool>& tools() {
    static const std::vector<Tool> table = {
        {"/usr/bin/fdesetup",
         {"status"},
         [](const Machine& machine) {
             return inWords(diskEncryption(machine), "FileVault is On.\n", "FileVault is Off.\n");
         }},
        {"/usr/bin/defaults",
         {"read", "/Library/Preferences/com.apple.alf", "globalstate"},
         [](const Machine& machine) { return firewallLevel(firewall(machine)); }},
        {"/usr/bin/defaults",
         {"read", "com.apple.screensaver", "askForPassword"},
         [](const Machine& machine) { return inWords(screenLock(machine), "1\n", "0\n"); }},
        {"/usr/bin/csrutil",
         {"status"},
         [](const Machine& machine) {
             return inWords(systemIntegrity(machine),
                            "System Integrity Protection status: enabled.\n",
                            "System Integrity Protection status: disabled.\n");
         }},
        {"/usr/sbin/spctl",
         {"--status"},
         [](const Machine& machine) {
             return inWords(packageSignatures(machine), "assessments enabled\n",
                            "assessments disabled\n");
         }},
    };
    return table;
}

} // namespace

DeviceProcesses::DeviceProcesses() : DeviceProcesses(ownSession()) {
}

DeviceProcesses::DeviceProcesses(OwnSession own)
    : session_(std::move(own.session)),
      ownCommands_(std::make_unique<ChildProcess>(own.environment)), commands_(*ownCommands_),
      limit_(timeLimit) {
}

DeviceProcesses::DeviceProcesses(Session session, Commands& commands,
                                 std::chrono::milliseconds limit)
    : session_(std::move(session)), commands_(commands), limit_(limit) {
}

std::optional<std::string> DeviceProcesses::run(const std::string& path,
                                                const std::vector<std::string>& arguments) {
    for (const Tool& tool : tools()) {
        if (tool.path != path || tool.arguments != arguments) continue;
        return tool.answer(Machine(session_, commands_, std::chrono::steady_clock::now() + limit_));
    }
    return std::nullopt;
}

} // namespace kelvo::device
