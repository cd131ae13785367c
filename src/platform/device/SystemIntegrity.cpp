#include "platform/device/Probes.h"

namespace kelvo::device {
namespace {

/// The vendor ids of UEFI's own variables (UEFI 2.10, section 3.3) and of shim's.
constexpr const char* secureBootVariable =
    "/sys/firmware/efi/efivars/SecureBoot-8be4df61-93ca-11d2-aa0d-00e098032b8c";
constexpr const char* validationOffVariable =
    "/sys/firmware/efi/efivars/MokSBStateRT-605dab50-e046-4300-abb6-3dd810dd8b23";

/// Four bytes of attributes stand before the value.
constexpr std::size_t valueAt = 4;

Finding secureBoot(const Machine& machine) {
    if (!machine.exists("/sys/firmware/efi")) return Finding::insecure; // not started by UEFI
    const auto variable = machine.read(secureBootVariable);
    if (!variable || variable->size() <= valueAt) return Finding::unknown;
    if ((*variable)[valueAt] != 1) return Finding::insecure;
    // The boot loader can be told by the owner not to check what it loads.
    const auto unchecked = machine.read(validationOffVariable);
    const bool off = unchecked && unchecked->size() > valueAt && (*unchecked)[valueAt] == 1;
    return off ? Finding::insecure : Finding::secure;
}

/// A file that is not there says that the kernel has no such thing; one that cannot be read says
/// nothing.
Finding switchedOn(const Machine& machine, const std::string& path, std::string_view on) {
    if (!machine.exists(path)) return Finding::insecure;
    const auto value = machine.readTrimmed(path);
    if (!value) return Finding::unknown;
    return *value == on ? Finding::secure : Finding::insecure;
}

/// The mode in force stands in brackets: "none [integrity] confidentiality".
Finding lockdown(const Machine& machine) {
    const std::string path = "/sys/kernel/security/lockdown";
    if (!machine.exists(path)) return Finding::insecure;
    const auto modes = machine.readTrimmed(path);
    if (!modes || modes->find('[') == std::string::npos) return Finding::unknown;
    return modes->find("[none]") == std::string::npos ? Finding::secure : Finding::insecure;
}

} // namespace

Finding systemIntegrity(const Machine& machine) {
    return allOf({secureBoot(machine),
                  anyOf({lockdown(machine), switchedOn(machine, "/sys/fs/selinux/enforce", "1"),
                         switchedOn(machine, "/sys/module/apparmor/parameters/enabled", "Y")})});
}

} // namespace kelvo::device
