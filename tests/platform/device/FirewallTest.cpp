#include "Recorded.h"

namespace kelvo::device {
namespace {

using enum FirewallState;

Outputs firewalldAnswers(const std::string& state, const std::string& zone) {
    const std::string name = "org.fedoraproject.FirewallD1";
    const std::string object = name + " /org/fedoraproject/FirewallD1 " + name;
    return {{"busctl --system call org.freedesktop.DBus /org/freedesktop/DBus "
             "org.freedesktop.DBus NameHasOwner s " +
                 name,
             "b true\n"},
            {"busctl --system get-property " + object + " state", state},
            {"busctl --system --auto-start=no call " + object + " getDefaultZone", zone}};
}

Tree ufwTree(const std::string& enabled, const std::string& policy) {
    return {{"/etc/ufw/ufw.conf", "# comment ENABLED=no\nENABLED=" + enabled + "\nLOGLEVEL=low\n"},
            {"/etc/default/ufw", "IPV6=yes\nDEFAULT_INPUT_POLICY=\"" + policy +
                                     "\"\nDEFAULT_OUTPUT_POLICY=\"ACCEPT\"\n"}};
}

Outputs unit(const std::string& name, const std::string& state = "active") {
    return {{"systemctl is-active " + name + ".service", state + "\n"}};
}

TEST(Firewall, FirewalldIsJudgedByItsStateAndDefaultZone) {
    const std::string running = "s \"RUNNING\"\n";
    const std::tuple<std::string, std::string, FirewallState> table[] = {
        {running, "s \"public\"\n", on},           {running, "s \"drop\"\n", stealth},
        {running, "s \"block\"\n", stealth},       {running, "s \"trusted\"\n", off},
        {"s \"FAILED\"\n", "s \"public\"\n", off}, {running, "", unknown},
        {"", "s \"public\"\n", unknown},
    };
    for (const auto& [state, zone, expected] : table)
        EXPECT_EQ(found(firewall, {}, firewalldAnswers(state, zone)), expected) << state << zone;
}

TEST(Firewall, UfwNeedsItsSwitchItsPolicyAndItsUnit) {
    const std::tuple<const char*, const char*, Outputs, FirewallState> table[] = {
        {"yes", "DROP", unit("ufw"), on},
        {"yes", "REJECT", unit("ufw"), on},
        {"yes", "ACCEPT", unit("ufw"), off},
        {"no", "DROP", unit("ufw"), off},
        {"yes", "DROP", unit("ufw", "inactive"), unknown},
        {"yes", "DROP", {}, unknown},
    };
    for (const auto& [enabled, policy, outputs, expected] : table)
        EXPECT_EQ(found(firewall, ufwTree(enabled, policy), outputs), expected)
            << enabled << policy;
}

TEST(Firewall, PlainNftablesIsJudgedByAReadableConfiguration) {
    const std::pair<const char*, FirewallState> table[] = {
        {"#!/usr/sbin/nft -f\nflush ruleset\ntable inet filter {\n\tchain input {\n\t\ttype filter "
         "hook input priority filter; policy drop;\n\t}\n}\n",
         on},
        {"table inet f {\n chain input {\n  type filter hook input priority 0; policy accept;\n"
         "  ct state established accept\n  tcp dport 22 accept\n  counter reject\n }\n}\n",
         on},
        {"table inet f {\n chain input {\n  type filter hook input priority filter;\n }\n"
         " chain forward {\n  type filter hook forward priority filter; policy drop;\n }\n}\n",
         off},
        {"table inet filter { chain input { type filter hook input priority 0; # policy drop\n"
         " tcp dport 23 drop\n } }\n",
         off},
        {"include \"/etc/nftables.d/*.nft\"\n", unknown},
    };
    for (const auto& [configuration, expected] : table) {
        const Tree tree = {{"/etc/nftables.conf", configuration}};
        EXPECT_EQ(found(firewall, tree, unit("nftables")), expected) << configuration;
        EXPECT_EQ(found(firewall, tree), unknown) << "the unit is not active";
    }
    EXPECT_EQ(found(firewall, {}, unit("nftables")), unknown);
}

TEST(Firewall, ASwitchedOffFrontEndLeavesTheFieldToPlainRules) {
    Tree tree = ufwTree("no", "DROP");
    tree["/etc/nftables.conf"] =
        "table inet f { chain i { type filter hook input priority 0; policy drop; } }\n";
    EXPECT_EQ(found(firewall, tree, unit("nftables")), on);
    EXPECT_EQ(found(firewall, tree), off);
    EXPECT_EQ(found(firewall, {}), unknown);
}

} // namespace
} // namespace kelvo::device
