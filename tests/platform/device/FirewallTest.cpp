#include "Recorded.h"

namespace kelvo::device {
namespace {

using test::RecordedMachine;
using test::Tree;
using Outputs = std::map<std::string, std::string>;

Outputs firewalldAnswers(const std::string& state, const std::string& zone) {
    return {
        {"busctl --system call org.freedesktop.DBus /org/freedesktop/DBus org.freedesktop.DBus "
         "NameHasOwner s org.fedoraproject.FirewallD1",
         "b true\n"},
        {"busctl --system get-property org.fedoraproject.FirewallD1 /org/fedoraproject/FirewallD1 "
         "org.fedoraproject.FirewallD1 state",
         state},
        {"busctl --system --auto-start=no call org.fedoraproject.FirewallD1 "
         "/org/fedoraproject/FirewallD1 org.fedoraproject.FirewallD1 getDefaultZone",
         zone},
    };
}

Tree ufwTree(const std::string& enabled, const std::string& policy) {
    return {{"/etc/ufw/ufw.conf", "# comment ENABLED=no\nENABLED=" + enabled + "\nLOGLEVEL=low\n"},
            {"/etc/default/ufw", "IPV6=yes\nDEFAULT_INPUT_POLICY=\"" + policy +
                                     "\"\nDEFAULT_OUTPUT_POLICY=\"ACCEPT\"\n"}};
}

const Outputs ufwActive = {{"systemctl is-active ufw.service", "active\n"}};
const Outputs nftablesActive = {{"systemctl is-active nftables.service", "active\n"}};

TEST(Firewall, FirewalldIsJudgedByItsStateAndDefaultZone) {
    const struct {
        const char* state;
        const char* zone;
        FirewallState expected;
    } table[] = {
        {"s \"RUNNING\"\n", "s \"public\"\n", FirewallState::on},
        {"s \"RUNNING\"\n", "s \"FedoraWorkstation\"\n", FirewallState::on},
        {"s \"RUNNING\"\n", "s \"drop\"\n", FirewallState::stealth},
        {"s \"RUNNING\"\n", "s \"block\"\n", FirewallState::stealth},
        {"s \"RUNNING\"\n", "s \"trusted\"\n", FirewallState::off},
        {"s \"FAILED\"\n", "s \"public\"\n", FirewallState::off},
        {"s \"RUNNING\"\n", "", FirewallState::unknown},
        {"", "s \"public\"\n", FirewallState::unknown},
    };
    for (const auto& row : table) {
        RecordedMachine recorded({}, firewalldAnswers(row.state, row.zone));
        EXPECT_EQ(firewall(recorded.machine()), row.expected) << row.state << row.zone;
    }
}

TEST(Firewall, UfwNeedsItsSwitchItsPolicyAndItsUnit) {
    const struct {
        const char* enabled;
        const char* policy;
        Outputs outputs;
        FirewallState expected;
    } table[] = {
        {"yes", "DROP", ufwActive, FirewallState::on},
        {"yes", "REJECT", ufwActive, FirewallState::on},
        {"yes", "ACCEPT", ufwActive, FirewallState::off},
        {"no", "DROP", ufwActive, FirewallState::off},
        {"yes",
         "DROP",
         {{"systemctl is-active ufw.service", "inactive\n"}},
         FirewallState::unknown},
        {"yes", "DROP", {}, FirewallState::unknown},
    };
    for (const auto& row : table) {
        RecordedMachine recorded(ufwTree(row.enabled, row.policy), row.outputs);
        EXPECT_EQ(firewall(recorded.machine()), row.expected) << row.enabled << row.policy;
    }
}

TEST(Firewall, PlainNftablesIsJudgedByAReadableConfiguration) {
    const struct {
        const char* configuration;
        FirewallState expected;
    } table[] = {
        {"#!/usr/sbin/nft -f\nflush ruleset\ntable inet filter {\n\tchain input {\n\t\ttype filter "
         "hook input priority filter; policy drop;\n\t}\n}\n",
         FirewallState::on},
        {"table inet filter {\n chain input {\n  type filter hook input priority 0; policy "
         "accept;\n"
         "  ct state established accept\n  tcp dport 22 accept\n  counter reject\n }\n}\n",
         FirewallState::on},
        {"table inet filter {\n chain input {\n  type filter hook input priority filter;\n }\n"
         " chain forward {\n  type filter hook forward priority filter; policy drop;\n }\n}\n",
         FirewallState::off},
        {"table inet filter { chain input { type filter hook input priority 0; # policy drop\n"
         " tcp dport 23 drop\n } }\n",
         FirewallState::off},
        {"include \"/etc/nftables.d/*.nft\"\n", FirewallState::unknown},
    };
    for (const auto& row : table) {
        RecordedMachine recorded({{"/etc/nftables.conf", row.configuration}}, nftablesActive);
        EXPECT_EQ(firewall(recorded.machine()), row.expected) << row.configuration;
        EXPECT_EQ(
            firewall(RecordedMachine(Tree{{"/etc/nftables.conf", row.configuration}}).machine()),
            FirewallState::unknown)
            << "the unit is not active";
    }
    EXPECT_EQ(firewall(RecordedMachine({}, nftablesActive).machine()), FirewallState::unknown);
}

TEST(Firewall, ASwitchedOffFrontEndLeavesTheFieldToPlainRules) {
    Tree tree = ufwTree("no", "DROP");
    tree["/etc/nftables.conf"] =
        "table inet f { chain i { type filter hook input priority 0; policy drop; } }\n";
    EXPECT_EQ(firewall(RecordedMachine(tree, nftablesActive).machine()), FirewallState::on);
    EXPECT_EQ(firewall(RecordedMachine(tree).machine()), FirewallState::off);
}

TEST(Firewall, AMachineThatShowsNoneIsUnknown) {
    EXPECT_EQ(firewall(RecordedMachine().machine()), FirewallState::unknown);
}

} // namespace
} // namespace kelvo::device
