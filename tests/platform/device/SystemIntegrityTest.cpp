#include "Recorded.h"

namespace kelvo::device {
namespace {

using test::RecordedMachine;
using test::Tree;

constexpr const char* secureBootFile =
    "/sys/firmware/efi/efivars/SecureBoot-8be4df61-93ca-11d2-aa0d-00e098032b8c";
constexpr const char* mokFile =
    "/sys/firmware/efi/efivars/MokSBStateRT-605dab50-e046-4300-abb6-3dd810dd8b23";

std::string variable(char value) {
    return std::string("\x06\0\0\0", 4) + value;
}

TEST(SystemIntegrity, SecureBootAndOneGuardOfTheRunningSystemAreNeeded) {
    const struct {
        const char* what;
        Tree tree;
        Finding finding;
    } table[] = {
        {"AppArmor",
         {{secureBootFile, variable(1)}, {"/sys/module/apparmor/parameters/enabled", "Y\n"}},
         Finding::secure},
        {"SELinux enforcing",
         {{secureBootFile, variable(1)}, {"/sys/fs/selinux/enforce", "1"}},
         Finding::secure},
        {"SELinux permissive",
         {{secureBootFile, variable(1)}, {"/sys/fs/selinux/enforce", "0"}},
         Finding::insecure},
        {"lockdown",
         {{secureBootFile, variable(1)},
          {"/sys/kernel/security/lockdown", "none [integrity] confidentiality\n"},
          {"/sys/module/apparmor/parameters/enabled", "N\n"}},
         Finding::secure},
        {"no lockdown",
         {{secureBootFile, variable(1)},
          {"/sys/kernel/security/lockdown", "[none] integrity confidentiality\n"}},
         Finding::insecure},
        {"lockdown that cannot be read",
         {{secureBootFile, variable(1)}, {"/sys/kernel/security/lockdown/", ""}},
         Finding::unknown},
        {"Secure Boot off",
         {{secureBootFile, variable(0)}, {"/sys/module/apparmor/parameters/enabled", "Y\n"}},
         Finding::insecure},
        {"validation off in the boot loader",
         {{secureBootFile, variable(1)},
          {mokFile, variable(1)},
          {"/sys/module/apparmor/parameters/enabled", "Y\n"}},
         Finding::insecure},
        {"not started by UEFI",
         {{"/sys/firmware/", ""}, {"/sys/module/apparmor/parameters/enabled", "Y\n"}},
         Finding::insecure},
        {"variables not mounted",
         {{"/sys/firmware/efi/", ""}, {"/sys/module/apparmor/parameters/enabled", "Y\n"}},
         Finding::unknown},
        {"a variable cut short",
         {{secureBootFile, "\x06"}, {"/sys/module/apparmor/parameters/enabled", "Y\n"}},
         Finding::unknown},
    };
    for (const auto& row : table)
        EXPECT_EQ(systemIntegrity(RecordedMachine(row.tree).machine()), row.finding) << row.what;
}

} // namespace
} // namespace kelvo::device
