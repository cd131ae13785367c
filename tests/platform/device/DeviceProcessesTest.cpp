#include "platform/device/DeviceProcesses.h"

#include "compliance/OSSnapshot.h"

#include <gmock/gmock.h>
#include <sys/wait.h>

#include <cerrno>

#include "Recorded.h"

namespace kelvo::device {
namespace {

using ::testing::AnyOf;
using ::testing::ElementsAre;

std::vector<std::string> values(RecordedMachine& recorded) {
    DeviceProcesses processes(recorded.session, recorded.commands);
    std::vector<std::string> result;
    for (const OSFact& fact : OSSnapshot::read(processes))
        result.push_back(fact.value);
    return result;
}

/// A well kept laptop: Secure Boot, everything on LUKS, ufw, GNOME, apt.
RecordedMachine wellKept() {
    return RecordedMachine(
        {{"/sys/dev/block/254:0/dm/uuid", "CRYPT-LUKS2-00-root\n"},
         {"/proc/self/mountinfo", "1 0 254:0 / / rw - ext4 /dev/dm-0 rw\n"},
         {"/proc/swaps", "Filename Type Size Used Priority\n"},
         {"/etc/ufw/ufw.conf", "ENABLED=yes\n"},
         {"/etc/default/ufw", "DEFAULT_INPUT_POLICY=\"DROP\"\n"},
         {"/sys/firmware/efi/efivars/SecureBoot-8be4df61-93ca-11d2-aa0d-00e098032b8c",
          std::string("\x06\0\0\0\x01", 5)},
         {"/sys/module/apparmor/parameters/enabled", "Y\n"},
         {"/etc/apt/sources.list", ""}},
        {{"systemctl is-active ufw.service", "active\n"},
         {"gsettings get org.gnome.desktop.screensaver lock-enabled", "true\n"},
         {"gsettings get org.gnome.desktop.screensaver lock-delay", "uint32 0\n"},
         {"gsettings get org.gnome.desktop.session idle-delay", "uint32 300\n"},
         {"gsettings get org.gnome.desktop.lockdown disable-lock-screen", "false\n"},
         {"apt-config dump", "APT \"\";\n"}},
        "GNOME");
}

TEST(DeviceProcesses, EachFactIsReadAndWhatTheMachineDoesNotShowIsUnknown) {
    RecordedMachine good = wellKept();
    EXPECT_THAT(values(good), ElementsAre("on", "on", "yes", "enabled", "enabled"));
    RecordedMachine neglected({{"/sys/dev/block/8:1/dev", "8:1\n"},
                               {"/proc/self/mountinfo", "1 0 8:1 / / rw - ext4 /dev/sda1 rw\n"},
                               {"/proc/swaps", "Filename Type Size Used Priority\n"},
                               {"/etc/ufw/ufw.conf", "ENABLED=no\n"},
                               {"/home/ada/.config/kscreenlockerrc", "[Daemon]\nAutolock=false\n"},
                               {"/etc/pacman.conf", "[options]\nSigLevel = Never\n"}},
                              {}, "KDE");
    EXPECT_THAT(values(neglected), ElementsAre("off", "off", "no", "disabled", "disabled"));
    RecordedMachine silent(
        Tree{{"/sys/firmware/efi/", ""}, {"/sys/kernel/security/lockdown/", ""}});
    EXPECT_THAT(values(silent), ::testing::Each("unknown"));
}

TEST(DeviceProcesses, OnlyTheFiveCommandLinesAreAnswered) {
    RecordedMachine recorded = wellKept();
    DeviceProcesses processes(recorded.session, recorded.commands);
    EXPECT_EQ(processes.run("/usr/bin/fdesetup", {"status"}), "FileVault is On.\n");
    EXPECT_EQ(processes.run("/usr/bin/fdesetup", {"disable"}), std::nullopt);
    EXPECT_EQ(processes.run("/usr/bin/fdesetup", {}), std::nullopt);
    EXPECT_EQ(processes.run("/bin/sh", {"-c", "true"}), std::nullopt);
}

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
    RecordedMachine recorded = wellKept();
    HangingCommands hanging;
    DeviceProcesses processes(recorded.session, hanging, std::chrono::milliseconds(50));
    EXPECT_EQ(
        processes.run("/usr/bin/defaults", {"read", "com.apple.screensaver", "askForPassword"}),
        std::nullopt);
    ASSERT_EQ(hanging.deadlines.size(), 4U);
    EXPECT_THAT(hanging.deadlines, ::testing::Each(hanging.deadlines.front()));
}

TEST(DeviceProcesses, ThisMachineAnswersFiveFactsAndKeepsNoChild) {
    DeviceProcesses processes;
    const auto facts = OSSnapshot::read(processes);
    ASSERT_EQ(facts.size(), 5U);
    EXPECT_THAT(facts[0].value, AnyOf("on", "off", "unknown"));
    EXPECT_THAT(facts[1].value, AnyOf("on", "on (stealth)", "off", "unknown"));
    EXPECT_THAT(facts[2].value, AnyOf("yes", "no", "unknown"));
    EXPECT_THAT(facts[3].value, AnyOf("enabled", "disabled", "unknown"));
    EXPECT_THAT(facts[4].value, AnyOf("enabled", "disabled", "unknown"));
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

} // namespace
} // namespace kelvo::device
