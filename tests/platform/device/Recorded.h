#pragma once

#include "platform/device/Probes.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace kelvo::device {

/// Files by their path; a text that begins with "-> " makes a link, a path that ends in "/" a
/// folder.
using Tree = std::map<std::string, std::string>;

/// What tools print, by the whole command line without the tool's folder.
using Outputs = std::map<std::string, std::string>;

/// Tools that answer by their command line; what is not listed gives no output.
class RecordedCommands : public Commands {
public:
    std::optional<std::string> run(const std::string& path,
                                   const std::vector<std::string>& arguments, Deadline) override {
        std::string line = path.substr(path.rfind('/') + 1);
        for (const std::string& argument : arguments)
            line += " " + argument;
        const auto found = outputs.find(line);
        if (found == outputs.end()) return std::nullopt;
        return found->second;
    }

    Outputs outputs;
};

/// A machine as its layout was written down: a tree in a temporary directory, and tool outputs.
class RecordedMachine {
public:
    explicit RecordedMachine(const Tree& tree = {}, Outputs outputs = {},
                             const std::string& desktop = "") {
        commands.outputs = std::move(outputs);
        session.root = root_.path();
        session.home = "/home/ada";
        session.config = "/home/ada/.config";
        session.desktop = desktop;
        for (const auto& [path, text] : tree)
            add(root_.path() / path.substr(1), text);
    }

    Machine machine() {
        return {session, commands, std::chrono::steady_clock::now() + std::chrono::hours(1)};
    }

    Session session;
    RecordedCommands commands;

private:
    static void add(const std::filesystem::path& at, const std::string& text) {
        std::filesystem::create_directories(at.parent_path());
        if (text.starts_with("-> ")) {
            std::filesystem::create_symlink(text.substr(3), at);
        } else if (at.has_filename()) {
            std::ofstream(at, std::ios::binary) << text;
        }
    }

    test::TemporaryDirectory root_;
};

/// What `probe` finds on a machine of that layout.
template <class Found>
Found found(Found (*probe)(const Machine&), const Tree& tree, const Outputs& outputs = {},
            const std::string& desktop = "") {
    return probe(RecordedMachine(tree, outputs, desktop).machine());
}

} // namespace kelvo::device
