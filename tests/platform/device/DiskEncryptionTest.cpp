#include "Recorded.h"

namespace kelvo::device {
namespace {

using test::RecordedMachine;
using test::Tree;

constexpr const char* noSwap = "Filename\t\t\t\tType\t\tSize\t\tUsed\t\tPriority\n";

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
    tree["/proc/self/mountinfo"] = mountLine("254:1", "/", "ext4", "/dev/mapper/vg-root") +
                                   mountLine("8:1", "/boot", "ext4", "/dev/sda1");
    tree["/proc/swaps"] = std::string(noSwap) + "/dev/dm-2 partition 999420 0 -2\n";
    tree["/dev/dm-2"] = "";
    return tree;
}

TEST(DiskEncryption, LuksUnderEveryVolumeIsEncryptedAndAPlainBootDoesNotMatter) {
    EXPECT_EQ(diskEncryption(RecordedMachine(luksUnderLvm()).machine()), Finding::secure);
}

TEST(DiskEncryption, OnlyMappingsThatEncryptCount) {
    const struct {
        const char* uuid;
        Finding finding;
    } table[] = {
        {"CRYPT-LUKS1-00-x", Finding::secure},
        {"CRYPT-PLAIN-x", Finding::secure},
        {"CRYPT-BITLK-00-x", Finding::secure},
        {"CRYPT-VERITY-00-x", Finding::insecure},
        {"CRYPT-INTEGRITY-00-x", Finding::insecure},
        {"LVM-CRYPT-LUKS2-", Finding::insecure},
        {"", Finding::insecure},
    };
    for (const auto& row : table)
        EXPECT_EQ(diskEncryption(RecordedMachine(luksUnderLvm(row.uuid)).machine()), row.finding)
            << row.uuid;
}

TEST(DiskEncryption, APlainPartitionIsNotEncryptedThoughACryptMappingExists) {
    Tree tree = luksUnderLvm(); // now only a memory stick that is plugged in
    addDevice(tree, "nvme0n1p2", "259:2", {});
    tree["/proc/self/mountinfo"] = mountLine("259:2", "/", "ext4", "/dev/nvme0n1p2") +
                                   mountLine("254:1", "/media/stick", "ext4", "/dev/dm-1");
    tree["/proc/swaps"] = noSwap;
    tree["/etc/crypttab"] = "sda3_crypt UUID=1 none luks\n";
    EXPECT_EQ(diskEncryption(RecordedMachine(tree).machine()), Finding::insecure);
}

TEST(DiskEncryption, HomeAndSwapMustBeEncryptedToo) {
    const struct {
        const char* what;
        std::string mount;
        std::string swap;
        Finding finding;
    } table[] = {
        {"plain home", mountLine("8:3", "/home", "ext4", "/dev/sda3"), "", Finding::insecure},
        {"encrypted home", mountLine("254:2", "/home", "ext4", "/dev/dm-2"), "", Finding::secure},
        {"home of another", mountLine("8:3", "/home/adam", "ext4", "/dev/sda3"), "",
         Finding::secure},
        {"home in memory", mountLine("0:40", "/home", "tmpfs", "tmpfs"), "", Finding::unknown},
        {"home on a server", mountLine("0:41", "/home", "nfs4", "server:/home"), "",
         Finding::unknown},
        {"a later mount hides the first",
         mountLine("8:3", "/home", "ext4", "/dev/sda3") +
             mountLine("254:2", "/home", "ext4", "/dev/dm-2"),
         "", Finding::secure},
        {"plain swap", "", "/dev/sda3 partition 1 0 -2\n", Finding::insecure},
        {"swap in memory", "", "/dev/zram0 partition 1 0 100\n", Finding::secure},
        {"swap file on the root", "", "/swap\\040file file 1 0 -2\n", Finding::secure},
        {"swap file on a plain disk", mountLine("8:3", "/mnt", "ext4", "/dev/sda3"),
         "/mnt/swapfile file 1 0 -2\n", Finding::insecure},
        {"swap on what is not there", "", "/dev/gone partition 1 0 -2\n", Finding::unknown},
    };
    for (const auto& row : table) {
        Tree tree = luksUnderLvm();
        addDevice(tree, "zram0", "252:0", {});
        tree["/dev/sda3"] = "";
        tree["/dev/zram0"] = "";
        tree["/home/ada/"] = "";
        tree["/proc/self/mountinfo"] += row.mount;
        tree["/proc/swaps"] += row.swap;
        EXPECT_EQ(diskEncryption(RecordedMachine(tree).machine()), row.finding) << row.what;
    }
}

TEST(DiskEncryption, EveryPartOfAnArrayMustBeEncrypted) {
    for (const bool both : {true, false}) {
        Tree tree = luksUnderLvm();
        addDevice(tree, "sdb1", "8:17", {});
        addDevice(tree, "dm-5", "254:5", {"sdb1"}, both ? "CRYPT-LUKS2-1-b" : "");
        addDevice(tree, "md0", "9:0", {"dm-0", "dm-5"});
        tree["/proc/self/mountinfo"] = mountLine("9:0", "/", "xfs", "/dev/md0");
        EXPECT_EQ(diskEncryption(RecordedMachine(tree).machine()),
                  both ? Finding::secure : Finding::insecure);
    }
}

TEST(DiskEncryption, BtrfsIsFollowedToAllItsDevices) {
    const struct {
        const char* second;
        Finding finding;
    } table[] = {{"dm-2", Finding::secure}, {"sda3", Finding::insecure}};
    for (const auto& row : table) {
        Tree tree = luksUnderLvm();
        tree["/proc/self/mountinfo"] = mountLine("0:25", "/", "btrfs", "/dev/mapper/vg-root") +
                                       mountLine("0:26", "/home", "btrfs", "/dev/mapper/vg-root");
        tree["/sys/fs/btrfs/features/x"] = "";
        tree["/sys/fs/btrfs/5d3c/devices/dm-1"] = "-> ../../../../devices/virtual/block/dm-1";
        tree[std::string("/sys/fs/btrfs/5d3c/devices/") + row.second] =
            std::string("-> ../../../../devices/virtual/block/") + row.second;
        EXPECT_EQ(diskEncryption(RecordedMachine(tree).machine()), row.finding) << row.second;
    }
}

TEST(DiskEncryption, WhatCannotBeSeenIsUnknownAndNeverOff) {
    const struct {
        const char* type;
        const char* source;
    } table[] = {{"zfs", "rpool/ROOT/debian"},
                 {"overlay", "overlay"},
                 {"bcachefs", "/dev/sda3"},
                 {"btrfs", "/dev/mapper/gone"},
                 {"virtiofs", "root"}};
    for (const auto& row : table) {
        Tree tree = luksUnderLvm();
        tree["/proc/self/mountinfo"] = mountLine("0:26", "/", row.type, row.source);
        EXPECT_EQ(diskEncryption(RecordedMachine(tree).machine()), Finding::unknown) << row.type;
    }
    EXPECT_EQ(diskEncryption(RecordedMachine().machine()), Finding::unknown) << "no /proc";
    Tree noSys = luksUnderLvm();
    noSys["/proc/self/mountinfo"] = mountLine("7:9", "/", "ext4", "/dev/loop9");
    EXPECT_EQ(diskEncryption(RecordedMachine(noSys).machine()), Finding::unknown);
}

TEST(DiskEncryption, AStackThatTurnsInCirclesIsUnknown) {
    Tree tree;
    addDevice(tree, "dm-0", "254:0", {"dm-1"});
    addDevice(tree, "dm-1", "254:1", {"dm-0"});
    tree["/proc/self/mountinfo"] = mountLine("254:0", "/", "ext4", "/dev/dm-0");
    tree["/proc/swaps"] = noSwap;
    EXPECT_EQ(diskEncryption(RecordedMachine(tree).machine()), Finding::unknown);
}

TEST(DiskEncryption, AHomeFolderBehindALinkIsFollowed) {
    Tree tree = luksUnderLvm();
    tree["/home"] = "-> var/home";
    tree["/var/home/ada/"] = "";
    tree["/proc/self/mountinfo"] += mountLine("8:3", "/var", "ext4", "/dev/sda3");
    EXPECT_EQ(diskEncryption(RecordedMachine(tree).machine()), Finding::insecure);
}

} // namespace
} // namespace kelvo::device
