#pragma once

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "device/Probes.h"

namespace kelvo::device {

inline void PrintTo(Finding finding, std::ostream* out) {
    *out << (finding == Finding::secure     ? "secure"
             : finding == Finding::insecure ? "insecure"
                                            : "unknown");
}

inline void PrintTo(FirewallState state, std::ostream* out) {
    constexpr const char* names[] = {"unknown", "off", "on", "stealth"};
    *out << names[static_cast<int>(state)];
}

} // namespace kelvo::device

namespace kelvo::test {

/// Tools that answer by their whole command line; what is not listed gives no output.
class RecordedCommands : public device::Commands {
public:
    std::optional<std::string> run(const std::string& path,
                                   const std::vector<std::string>& arguments,
                                   device::Deadline) override {
        std::string line = path.substr(path.rfind('/') + 1);
        for (const std::string& argument : arguments)
            line += " " + argument;
        const auto found = outputs.find(line);
        if (found == outputs.end()) return std::nullopt;
        return found->second;
    }

    std::map<std::string, std::string> outputs;
};

/// Files by their path; a text that begins with "-> " makes a link, a path that ends in "/" a
/// folder.
using Tree = std::map<std::string, std::string>;

/// A machine as its layout was written down: a tree in a temporary directory, and tool outputs.
class RecordedMachine {
public:
    explicit RecordedMachine(const Tree& tree = {},
                             std::map<std::string, std::string> outputs = {}) {
        commands.outputs = std::move(outputs);
        session.root = root_.path();
        session.home = "/home/ada";
        session.config = "/home/ada/.config";
        for (const auto& [path, text] : tree)
            add(path, text);
    }

    void add(const std::string& path, const std::string& text) {
        namespace fs = std::filesystem;
        const fs::path at = root_.path() / fs::path(path).relative_path();
        if (path.ends_with('/')) {
            fs::create_directories(at);
            return;
        }
        fs::create_directories(at.parent_path());
        if (text.starts_with("-> ")) {
            fs::create_symlink(text.substr(3), at);
            return;
        }
        std::ofstream(at, std::ios::binary) << text;
    }

    device::Machine machine() {
        return {session, commands, std::chrono::steady_clock::now() + std::chrono::hours(1)};
    }

    device::Session session;
    RecordedCommands commands;

private:
    TemporaryDirectory root_;
};

} // namespace kelvo::test
