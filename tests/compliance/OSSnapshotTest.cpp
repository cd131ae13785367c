#include "compliance/OSSnapshot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <tuple>

namespace kelvo {
namespace {

/// Answers by the whole command line and notes what it was asked.
class ScriptedTools : public Processes {
public:
    std::optional<std::string> run(const std::string& path,
                                   const std::vector<std::string>& arguments) override {
        std::string line = path;
        for (const std::string& argument : arguments)
            line += " " + argument;
        asked.push_back(line);
        const auto found = outputs.find(line);
        return found == outputs.end() ? std::nullopt : found->second;
    }

    std::map<std::string, std::optional<std::string>> outputs;
    std::vector<std::string> asked;
};

constexpr const char* disk = "/usr/bin/fdesetup status";
constexpr const char* firewall =
    "/usr/bin/defaults read /Library/Preferences/com.apple.alf globalstate";
constexpr const char* lock = "/usr/bin/defaults read com.apple.screensaver askForPassword";
constexpr const char* integrity = "/usr/bin/csrutil status";
constexpr const char* apps = "/usr/sbin/spctl --status";

TEST(OSSnapshot, AsksFiveToolsInOrderAndAlwaysGivesFiveFacts) {
    ScriptedTools tools;
    const auto facts = OSSnapshot::read(tools);
    EXPECT_THAT(tools.asked, ::testing::ElementsAre(disk, firewall, lock, integrity, apps));
    const std::vector<OSFact> expected = {
        {"FileVault disk encryption", "unknown", false},
        {"Application firewall", "unknown", false},
        {"Password required after sleep/screensaver", "unknown", false},
        {"System Integrity Protection", "unknown", false},
        {"Gatekeeper (app verification)", "unknown", false},
    };
    EXPECT_EQ(facts, expected);
    EXPECT_EQ(std::count_if(facts.begin(), facts.end(), OSSnapshot::isRequired), 3);
    EXPECT_TRUE(OSSnapshot::isRequired(facts[2]));
    EXPECT_FALSE(OSSnapshot::isRequired(facts[3]));
}

TEST(OSSnapshot, EachOutputIsReadAsItsToolMeansIt) {
    const std::tuple<const char*, std::size_t, const char*, const char*, bool> table[] = {
        {disk, 0, "FileVault is On.\n", "on", true},
        {disk, 0, "FILEVAULT IS ON.", "on", true},
        {disk, 0, "FileVault is Off.", "off", false},
        {disk, 0, " \n", "unknown", false},
        {disk, 0, "\xFFon", "unknown", false},
        {firewall, 1, "0", "off", false},
        {firewall, 1, "1\n", "on", true},
        {firewall, 1, "2", "on (stealth)", true},
        {firewall, 1, "+2", "on (stealth)", true},
        {firewall, 1, "002", "on (stealth)", true},
        {firewall, 1, "3", "on", true},
        {firewall, 1, "-1", "off", false},
        {firewall, 1, "abc", "unknown", false},
        {firewall, 1, "1.0", "unknown", false},
        {firewall, 1, "+-1", "unknown", false},
        {firewall, 1, "+", "unknown", false},
        {firewall, 1, "1 1", "unknown", false},
        {firewall, 1, "", "unknown", false},
        {lock, 2, "1", "yes", true},
        {lock, 2, "0", "no", false},
        {lock, 2, "2", "no", false},
        {lock, 2, "true", "unknown", false},
        {integrity, 3, "System Integrity Protection status: ENABLED.", "enabled", true},
        {integrity, 3, "disabled", "disabled", false},
        {integrity, 3, "", "unknown", false},
        {apps, 4, "assessments enabled", "enabled", true},
        {apps, 4, "assessments disabled", "disabled", false},
    };
    for (const auto& [command, position, output, value, ok] : table) {
        ScriptedTools tools;
        tools.outputs[command] = output;
        const OSFact fact = OSSnapshot::read(tools)[position];
        EXPECT_EQ(fact.value, value) << command << ": " << output;
        EXPECT_EQ(fact.ok, ok) << command << ": " << output;
    }
}

} // namespace
} // namespace kelvo
