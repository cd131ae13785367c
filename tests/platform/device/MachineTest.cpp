// Machines as they were written down in tests/data/machines: files, folders and links, what tools
// print, and what each probe then finds.

#include "base/Text.h"
#include "compliance/OSSnapshot.h"
#include "platform/device/DeviceProcesses.h"
#include "platform/device/Probes.h"
#include "support/Story.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cerrno>
#include <fstream>
#include <sstream>

namespace kelvo::device {
namespace {

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

    std::map<std::string, std::string> outputs;
};

std::string shown(Finding finding) {
    return finding == Finding::secure     ? "secure"
           : finding == Finding::insecure ? "insecure"
                                          : "unknown";
}

std::string shown(FirewallState state) {
    constexpr const char* names[] = {"unknown", "off", "on", "stealth"};
    return names[static_cast<int>(state)];
}

/// "a is b" in two, and "a" alone.
std::pair<std::string, std::string> parted(const std::string& text, const std::string& by) {
    const auto at = text.find(by);
    if (at == std::string::npos) return {text, ""};
    return {text.substr(0, at), text.substr(at + by.size())};
}

class Machines : public test::Facts {
public:
    Machines() {
        fresh();
        words["fresh"] = [this](Rest) { fresh(); };
        // Another scene's machine, before something of it is changed.
        words["like"] = [this](Rest title) {
            fresh();
            for (const test::Scene& scene : test::scenesIn(KELVO_DATA "/machines")) {
                if (scene.title != title) continue;
                for (const std::string& line : scene.lines) {
                    if (!line.starts_with('?') && !line.starts_with('#')) act(line);
                }
            }
        };
        words["file"] = [this](Rest rest) {
            const auto [path, text] = parted(rest, " is ");
            std::ofstream(made(path), std::ios::binary) << text;
        };
        words["folder"] = [this](Rest path) { std::filesystem::create_directories(made(path)); };
        words["link"] = [this](Rest rest) {
            const auto [path, target] = parted(rest, " to ");
            std::filesystem::create_symlink(target, made(path));
        };
        words["gone"] = [this](Rest path) { std::filesystem::remove_all(made(path)); };
        words["tool"] = [this](Rest rest) {
            const auto [line, output] = parted(rest, " says ");
            commands_.outputs[line] = output;
        };
        words["desktop"] = [this](Rest name) { session_.desktop = name; };
        words["device"] = [this](Rest rest) { addDevice(rest); };
        // "number point type source", as a line of the mount table.
        words["mount"] = [this](Rest rest) {
            std::istringstream in(rest);
            std::string number, point, type, source;
            in >> number >> point >> type >> source;
            mounts_ += "29 1 " + number + " / " + point + " rw,relatime shared:1 - " + type + " " +
                       source + " rw\n";
            tables();
        };
        words["unmount"] = [this](Rest) { mounts_.clear(); };
        words["swap"] = [this](Rest line) {
            swaps_ += line + "\n";
            tables();
        };
        words["noswap"] = [this](Rest) {
            swaps_.clear();
            tables();
        };
        figures["disk"] = [this](Rest) { return shown(diskEncryption(machine())); };
        figures["firewall"] = [this](Rest) { return shown(firewall(machine())); };
        figures["lock"] = [this](Rest) { return shown(screenLock(machine())); };
        figures["integrity"] = [this](Rest) { return shown(systemIntegrity(machine())); };
        figures["packages"] = [this](Rest) { return shown(packageSignatures(machine())); };
        figures["facts"] = [this](Rest) {
            DeviceProcesses processes(session_, commands_);
            std::vector<std::string> values;
            for (const OSFact& fact : OSSnapshot::read(processes))
                values.push_back(fact.value);
            return joined(values, " ");
        };
        figures["run"] = [this](Rest line) {
            std::istringstream in(line);
            std::string path;
            in >> path;
            return DeviceProcesses(session_, commands_)
                .run(path, {std::istream_iterator<std::string>(in), {}})
                .value_or("none");
        };
    }

private:
    void fresh() {
        root_ = std::make_unique<test::TemporaryDirectory>();
        commands_.outputs.clear();
        mounts_.clear();
        swaps_.clear();
        session_ = {root_->path(), "/home/ada", "/home/ada/.config", ""};
    }

    std::filesystem::path made(const std::string& path) const {
        const auto whole = root_->path() / path.substr(1);
        std::filesystem::create_directories(whole.parent_path());
        return whole;
    }

    void tables() {
        words["file"]("/proc/self/mountinfo is " + mounts_);
        words["file"]("/proc/swaps is Filename\t\t\t\tType\t\tSize\t\tUsed\t\tPriority\n" + swaps_);
    }

    /// "name number [of part,part] [uuid text] [name text]": a block device as sysfs shows it.
    void addDevice(const std::string& rest) {
        std::istringstream in(rest);
        std::string name, number, key, value;
        in >> name >> number;
        const std::string folder = "/sys/devices/virtual/block/" + name;
        words["file"](folder + "/dev is " + number + "\n");
        for (const std::string& place : {"/sys/class/block/" + name, "/sys/dev/block/" + number})
            words["link"](place + " to ../../devices/virtual/block/" + name);
        while (in >> key >> value) {
            if (key == "uuid") words["file"](folder + "/dm/uuid is " + value + "\n");
            if (key == "name") words["file"](folder + "/dm/name is " + value + "\n");
            std::istringstream parts(key == "of" ? value : "");
            for (std::string part; std::getline(parts, part, ',');)
                words["link"](folder + "/slaves/" + part + " to ../../" + part);
        }
    }

    Machine machine() {
        return {session_, commands_, std::chrono::steady_clock::now() + std::chrono::hours(1)};
    }

    std::unique_ptr<test::TemporaryDirectory> root_;
    Session session_;
    RecordedCommands commands_;
    std::string mounts_;
    std::string swaps_;
};

const int told = test::tellScenes<Machines>("Machines", KELVO_DATA "/machines");

/// Tools of which each hangs until the deadline that it was given.
class HangingCommands : public Commands {
public:
    std::optional<std::string> run(const std::string&, const std::vector<std::string>&,
                                   Deadline deadline) override {
        deadlines.push_back(deadline);
        return tools_.run("/bin/sleep", {"1000"}, deadline);
    }
    std::vector<Deadline> deadlines;

private:
    ChildProcess tools_{Environment{}};
};

TEST(DeviceProcesses, AllToolsOfAProbeShareOneDeadlineAndHangingOnesLeaveItUnknown) {
    HangingCommands hanging;
    DeviceProcesses processes(Session{"/", "", "", "GNOME"}, hanging,
                              std::chrono::milliseconds(50));
    EXPECT_EQ(
        processes.run("/usr/bin/defaults", {"read", "com.apple.screensaver", "askForPassword"}),
        std::nullopt);
    ASSERT_EQ(hanging.deadlines.size(), 4U);
    EXPECT_THAT(hanging.deadlines, ::testing::Each(hanging.deadlines.front()));
}

TEST(DeviceProcesses, ThisMachineAnswersFiveFactsAndKeepsNoChild) {
    DeviceProcesses processes;
    EXPECT_EQ(OSSnapshot::read(processes).size(), 5U);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

} // namespace
} // namespace kelvo::device
