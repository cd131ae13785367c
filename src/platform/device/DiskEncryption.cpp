#include "platform/device/Probes.h"

#include <algorithm>
#include <array>

namespace kelvo::device {
namespace {

/// Stacks of real machines have four or five layers.
constexpr int deepestStack = 10;

/// The kinds of dm-crypt mapping that encrypt. The prefix "CRYPT-" alone is not enough: integrity
/// and verity mappings carry it too.
constexpr std::array encryptingKinds = {"CRYPT-LUKS1-",   "CRYPT-LUKS2-",  "CRYPT-PLAIN-",
                                        "CRYPT-LOOPAES-", "CRYPT-TCRYPT-", "CRYPT-BITLK-",
                                        "CRYPT-FVAULT2-"};

struct Mount {
    std::string device; ///< "major:minor"
    std::string point;
    std::string type;
    std::string source;
};

/// The kernel writes white space and backslashes in paths as three octal digits.
std::string unescaped(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool octal =
            text[i] == '\\' && i + 3 < text.size() &&
            text.substr(i + 1, 3).find_first_not_of("01234567") == std::string_view::npos;
        if (octal) {
            out += static_cast<char>((text[i + 1] - '0') * 64 + (text[i + 2] - '0') * 8 +
                                     (text[i + 3] - '0'));
            i += 3;
        } else {
            out += text[i];
        }
    }
    return out;
}

/// The table of proc_pid_mountinfo(5): id, parent, major:minor, root, mount point, options, any
/// number of optional fields, "-", type, source, options.
std::vector<Mount> mountsOf(const Machine& machine) {
    std::vector<Mount> mounts;
    const std::string table = machine.read("/proc/self/mountinfo").value_or("");
    for (const std::string_view line : linesOf(table)) {
        const auto fields = wordsOf(line);
        const auto dash = std::find(fields.begin(), fields.end(), "-");
        if (dash - fields.begin() < 6 || fields.end() - dash < 3) continue;
        mounts.push_back({std::string(fields[2]), unescaped(fields[4]), std::string(dash[1]),
                          unescaped(dash[2])});
    }
    return mounts;
}

/// The mount that `path` lies on: the longest mount point above it, of several the last one made.
const Mount* mountOf(const std::vector<Mount>& mounts, const std::string& path) {
    const Mount* best = nullptr;
    for (const Mount& mount : mounts) {
        const bool above =
            mount.point == "/" || path == mount.point || path.starts_with(mount.point + "/");
        if (above && (best == nullptr || mount.point.size() >= best->point.size())) best = &mount;
    }
    return best;
}

/// The folder of a block device, "sda2" or "dm-0", by whatever name a table gives it.
std::optional<std::string> deviceNamed(const Machine& machine, const std::string& path) {
    if (!path.starts_with("/dev/")) return std::nullopt;
    constexpr std::string_view mapper = "/dev/mapper/";
    if (!path.starts_with(mapper)) {
        const std::string resolved = machine.resolved(path);
        const std::string name = resolved.substr(resolved.rfind('/') + 1);
        if (machine.exists("/sys/class/block/" + name)) return name;
        return std::nullopt;
    }
    const std::string wanted = path.substr(mapper.size());
    for (const std::string& name :
         machine.list("/sys/class/block").value_or(std::vector<std::string>{})) {
        if (machine.readTrimmed("/sys/class/block/" + name + "/dm/name") == wanted) return name;
    }
    return std::nullopt;
}

Finding encryptedBelow(const Machine& machine, const std::string& folder, int depth) {
    if (depth > deepestStack || !machine.exists(folder)) return Finding::unknown;
    const std::string kind = machine.readTrimmed(folder + "/dm/uuid").value_or("");
    for (const char* each : encryptingKinds) {
        if (kind.starts_with(each)) return Finding::secure;
    }
    const auto below = machine.list(folder + "/slaves").value_or(std::vector<std::string>{});
    if (below.empty()) return Finding::insecure;
    Finding result = Finding::secure;
    for (const std::string& name : below)
        result = allOf({result, encryptedBelow(machine, "/sys/class/block/" + name, depth + 1)});
    return result;
}

Finding encryptedDevice(const Machine& machine, const std::string& name) {
    return encryptedBelow(machine, "/sys/class/block/" + name, 0);
}

/// btrfs may spread over several devices, of which the mount table names one.
Finding encryptedBtrfs(const Machine& machine, const std::string& name) {
    for (const std::string& volume :
         machine.list("/sys/fs/btrfs").value_or(std::vector<std::string>{})) {
        const auto devices = machine.list("/sys/fs/btrfs/" + volume + "/devices");
        if (!devices || std::find(devices->begin(), devices->end(), name) == devices->end())
            continue;
        Finding result = Finding::secure;
        for (const std::string& each : *devices)
            result = allOf({result, encryptedDevice(machine, each)});
        return result;
    }
    return encryptedDevice(machine, name);
}

Finding encryptedMount(const Machine& machine, const Mount* mount) {
    if (mount == nullptr || mount->type == "bcachefs") return Finding::unknown;
    if (!mount->device.starts_with("0:"))
        return encryptedBelow(machine, "/sys/dev/block/" + mount->device, 0);
    // Without a block device of its own: btrfs names one of its devices; ZFS, overlays, network
    // and stacked file systems do not say here what they lie on.
    const auto name = deviceNamed(machine, mount->source);
    if (mount->type != "btrfs" || !name) return Finding::unknown;
    return encryptedBtrfs(machine, *name);
}

/// One line of /proc/swaps behind its heading: path, "partition" or "file", sizes.
Finding encryptedSwap(const Machine& machine, const std::vector<Mount>& mounts,
                      const std::string& path, std::string_view kind) {
    if (kind == "file") return encryptedMount(machine, mountOf(mounts, machine.resolved(path)));
    const auto name = deviceNamed(machine, path);
    if (!name) return Finding::unknown;
    if (name->starts_with("zram")) return Finding::secure; // compressed memory, never on a disk
    return encryptedDevice(machine, *name);
}

} // namespace

Finding diskEncryption(const Machine& machine) {
    const auto mounts = mountsOf(machine);
    const std::string& home = machine.session().home;
    Finding result =
        allOf({encryptedMount(machine, mountOf(mounts, "/")),
               home.empty() ? Finding::unknown
                            : encryptedMount(machine, mountOf(mounts, machine.resolved(home)))});
    const auto swaps = machine.read("/proc/swaps");
    if (!swaps) return allOf({result, Finding::unknown});
    const auto lines = linesOf(*swaps);
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const auto fields = wordsOf(lines[i]);
        if (fields.size() < 2) continue;
        result = allOf({result, encryptedSwap(machine, mounts, unescaped(fields[0]), fields[1])});
    }
    return result;
}

} // namespace kelvo::device
