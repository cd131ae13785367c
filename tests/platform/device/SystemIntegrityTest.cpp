#include "Recorded.h"

namespace kelvo::device {
namespace {

using enum Finding;

const std::string efi = "/sys/firmware/efi/";
const std::string secureBoot = efi + "efivars/SecureBoot-8be4df61-93ca-11d2-aa0d-00e098032b8c";
const std::string mok = efi + "efivars/MokSBStateRT-605dab50-e046-4300-abb6-3dd810dd8b23";
const std::string appArmor = "/sys/module/apparmor/parameters/enabled";
const std::string selinux = "/sys/fs/selinux/enforce";
const std::string lockdown = "/sys/kernel/security/lockdown";

const std::string yes("\x06\0\0\0\x01", 5);
const std::string no("\x06\0\0\0\0", 5);

TEST(SystemIntegrity, SecureBootAndOneGuardOfTheRunningSystemAreNeeded) {
    const std::tuple<const char*, Tree, Finding> table[] = {
        {"AppArmor", {{secureBoot, yes}, {appArmor, "Y\n"}}, secure},
        {"SELinux enforcing", {{secureBoot, yes}, {selinux, "1"}}, secure},
        {"SELinux permissive", {{secureBoot, yes}, {selinux, "0"}}, insecure},
        {"lockdown",
         {{secureBoot, yes}, {lockdown, "none [integrity] x\n"}, {appArmor, "N\n"}},
         secure},
        {"no lockdown", {{secureBoot, yes}, {lockdown, "[none] integrity x\n"}}, insecure},
        {"lockdown that cannot be read", {{secureBoot, yes}, {lockdown + "/", ""}}, unknown},
        {"Secure Boot off", {{secureBoot, no}, {appArmor, "Y\n"}}, insecure},
        {"not checked", {{secureBoot, yes}, {mok, yes}, {appArmor, "Y\n"}}, insecure},
        {"not started by UEFI", {{"/sys/firmware/", ""}, {appArmor, "Y\n"}}, insecure},
        {"variables not mounted", {{efi, ""}, {appArmor, "Y\n"}}, unknown},
        {"a variable cut short", {{secureBoot, "\x06"}, {appArmor, "Y\n"}}, unknown},
    };
    for (const auto& [what, tree, finding] : table)
        EXPECT_EQ(found(systemIntegrity, tree), finding) << what;
}

} // namespace
} // namespace kelvo::device
