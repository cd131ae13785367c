#include "Recorded.h"

namespace kelvo::device {
namespace {

using enum Finding;

constexpr const char* noSwap = "Filename\t\t\t\tType\t\tSize\t\tUsed\t\tPriority\n";
constexpr const char* mountTable = "/proc/self/mountinfo";

/// One block device as sysfs shows it: its folder, the links to it by name and by number, and what
/// it is made of.
void addDevice(Tree& tree, const std::string& name, const std::string& number,
               const std::vector<std::string>& slaves, const std::string& uuid = "",
               const std::string& mapperName = "") {
    const std::string folder = "/sys/devices/virtual/block/" + name;
    tree[folder + "/dev"] = number + "\n";
    tree["/sys/class/block/" + name] = "-> ../../devices/virtual/block/" + name;
    tree["/sys/dev/block/" + number] = "-> ../../devices/virtual/block/" + name;
    for (const std::string& slave : slaves)
        tree[std::string(folder).append("/slaves/").append(slave)] = "-> ../../" + slave;
    if (!uuid.empty()) tree[folder + "/dm/uuid"] = uuid + "\n";
    if (!mapperName.empty()) tree[folder + "/dm/name"] = mapperName + "\n";
}

std::string mountLine(const std::string& number, const std::string& point, const std::string& type,
                      const std::string& source) {
    return "29 1 " + number + " / " + point + " rw,relatime shared:1 - " + type + " " + source +
           " rw\n";
}

/// LVM on one LUKS partition, as installers make it: root, home and swap are volumes on dm-0.
Tree luksUnderLvm(const std::string& uuidOfCrypt = "CRYPT-LUKS2-0123456789abcdef-sda3_crypt") {
    Tree tree;
    addDevice(tree, "sda3", "8:3", {});
    addDevice(tree, "dm-0", "254:0", {"sda3"}, uuidOfCrypt, "sda3_crypt");
    addDevice(tree, "dm-1", "254:1", {"dm-0"}, "LVM-aaaa", "vg-root");
    addDevice(tree, "dm-2", "254:2", {"dm-0"}, "LVM-bbbb", "vg-swap_1");
    tree[mountTable] = mountLine("254:1", "/", "ext4", "/dev/mapper/vg-root") +
                       mountLine("8:1", "/boot", "ext4", "/dev/sda1");
    tree["/proc/swaps"] = std::string(noSwap) + "/dev/dm-2 partition 999420 0 -2\n";
    tree["/dev/dm-2"] = "";
    return tree;
}

TEST(DiskEncryption, OnlyMappingsThatEncryptCountAndAPlainBootDoesNotMatter) {
    const std::pair<const char*, Finding> table[] = {
        {"CRYPT-LUKS1-00-x", secure},    {"CRYPT-LUKS2-00-x", secure},
        {"CRYPT-PLAIN-x", secure},       {"CRYPT-BITLK-00-x", secure},
        {"CRYPT-VERITY-00-x", insecure}, {"CRYPT-INTEGRITY-00-x", insecure},
        {"LVM-CRYPT-LUKS2-", insecure},  {"", insecure},
    };
    for (const auto& [uuid, finding] : table)
        EXPECT_EQ(found(diskEncryption, luksUnderLvm(uuid)), finding) << uuid;
}

TEST(DiskEncryption, APlainPartitionIsNotEncryptedThoughACryptMappingExists) {
    Tree tree = luksUnderLvm(); // now only a memory stick that is plugged in
    addDevice(tree, "nvme0n1p2", "259:2", {});
    tree[mountTable] = mountLine("259:2", "/", "ext4", "/dev/nvme0n1p2") +
                       mountLine("254:1", "/media/stick", "ext4", "/dev/dm-1");
    tree["/proc/swaps"] = noSwap;
    tree["/etc/crypttab"] = "sda3_crypt UUID=1 none luks\n";
    EXPECT_EQ(found(diskEncryption, tree), insecure);
}

TEST(DiskEncryption, HomeAndSwapMustBeEncryptedToo) {
    const std::string plainHome = mountLine("8:3", "/home", "ext4", "/dev/sda3");
    const std::string goodHome = mountLine("254:2", "/home", "ext4", "/dev/dm-2");
    const std::tuple<const char*, std::string, std::string, Finding> table[] = {
        {"plain home", plainHome, "", insecure},
        {"encrypted home", goodHome, "", secure},
        {"home of another", mountLine("8:3", "/home/adam", "ext4", "/dev/sda3"), "", secure},
        {"home on a server", mountLine("0:41", "/home", "nfs4", "server:/home"), "", unknown},
        {"a later mount hides the first", plainHome + goodHome, "", secure},
        {"plain swap", "", "/dev/sda3 partition 1 0 -2\n", insecure},
        {"swap in memory", "", "/dev/zram0 partition 1 0 100\n", secure},
        {"swap file on the root", "", "/swap\\040file file 1 0 -2\n", secure},
        {"swap file on a plain disk", mountLine("8:3", "/mnt", "ext4", "/dev/sda3"),
         "/mnt/swapfile file 1 0 -2\n", insecure},
        {"swap on what is not there", "", "/dev/gone partition 1 0 -2\n", unknown},
    };
    for (const auto& [what, mount, swap, finding] : table) {
        Tree tree = luksUnderLvm();
        addDevice(tree, "zram0", "252:0", {});
        tree.insert({{"/dev/sda3", ""}, {"/dev/zram0", ""}, {"/home/ada/", ""}});
        tree[mountTable] += mount;
        tree["/proc/swaps"] += swap;
        EXPECT_EQ(found(diskEncryption, tree), finding) << what;
    }
}

TEST(DiskEncryption, EveryPartOfAnArrayMustBeEncrypted) {
    for (const bool both : {true, false}) {
        Tree tree = luksUnderLvm();
        addDevice(tree, "sdb1", "8:17", {});
        addDevice(tree, "dm-5", "254:5", {"sdb1"}, both ? "CRYPT-LUKS2-1-b" : "");
        addDevice(tree, "md0", "9:0", {"dm-0", "dm-5"});
        tree[mountTable] = mountLine("9:0", "/", "xfs", "/dev/md0");
        EXPECT_EQ(found(diskEncryption, tree), both ? secure : insecure);
    }
}

TEST(DiskEncryption, BtrfsIsFollowedToAllItsDevices) {
    for (const std::string second : {"dm-2", "sda3"}) {
        Tree tree = luksUnderLvm();
        tree[mountTable] = mountLine("0:25", "/", "btrfs", "/dev/mapper/vg-root") +
                           mountLine("0:26", "/home", "btrfs", "/dev/mapper/vg-root");
        tree["/sys/fs/btrfs/features/x"] = "";
        for (const std::string& device : {std::string("dm-1"), second})
            tree["/sys/fs/btrfs/5d3c/devices/" + device] =
                "-> ../../../../devices/virtual/block/" + device;
        EXPECT_EQ(found(diskEncryption, tree), second == "dm-2" ? secure : insecure) << second;
    }
}

TEST(DiskEncryption, WhatCannotBeSeenIsUnknownAndNeverOff) {
    for (const auto& [number, type, source] :
         std::initializer_list<std::tuple<const char*, const char*, const char*>>{
             {"0:26", "zfs", "rpool/ROOT/debian"},
             {"0:26", "bcachefs", "/dev/sda3"},
             {"0:26", "btrfs", "/dev/mapper/gone"},
             {"7:9", "ext4", "/dev/loop9"}}) {
        Tree tree = luksUnderLvm();
        tree[mountTable] = mountLine(number, "/", type, source);
        EXPECT_EQ(found(diskEncryption, tree), unknown) << type;
    }
    EXPECT_EQ(found(diskEncryption, {}), unknown) << "no /proc";
}

TEST(DiskEncryption, AStackThatTurnsInCirclesIsUnknown) {
    Tree tree;
    addDevice(tree, "dm-0", "254:0", {"dm-1"});
    addDevice(tree, "dm-1", "254:1", {"dm-0"});
    tree[mountTable] = mountLine("254:0", "/", "ext4", "/dev/dm-0");
    tree["/proc/swaps"] = noSwap;
    EXPECT_EQ(found(diskEncryption, tree), unknown);
}

TEST(DiskEncryption, AHomeFolderBehindALinkIsFollowed) {
    Tree tree = luksUnderLvm();
    tree["/home"] = "-> var/home";
    tree["/var/home/ada/"] = "";
    tree[mountTable] += mountLine("8:3", "/var", "ext4", "/dev/sda3");
    EXPECT_EQ(found(diskEncryption, tree), insecure);
}

} // namespace
} // namespace kelvo::device
