== LUKS under LVM
# As installers make it: root, home and swap are volumes on one encrypted partition.
device sda3 8:3
device dm-0 254:0 of sda3 uuid CRYPT-LUKS2-0123456789abcdef-sda3_crypt name sda3_crypt
device dm-1 254:1 of dm-0 uuid LVM-aaaa name vg-root
device dm-2 254:2 of dm-0 uuid LVM-bbbb name vg-swap_1
mount 254:1 / ext4 /dev/mapper/vg-root
mount 8:1 /boot ext4 /dev/sda1
swap /dev/dm-2 partition 999420 0 -2
file /dev/dm-2
file /dev/sda3
folder /home/ada
? disk = secure

== Only mappings that encrypt count
like LUKS under LVM
file /sys/devices/virtual/block/dm-0/dm/uuid is CRYPT-LUKS1-00-x
? disk = secure
like LUKS under LVM
file /sys/devices/virtual/block/dm-0/dm/uuid is CRYPT-PLAIN-x
? disk = secure
like LUKS under LVM
file /sys/devices/virtual/block/dm-0/dm/uuid is CRYPT-BITLK-00-x
? disk = secure
like LUKS under LVM
file /sys/devices/virtual/block/dm-0/dm/uuid is CRYPT-VERITY-00-x
? disk = insecure
like LUKS under LVM
file /sys/devices/virtual/block/dm-0/dm/uuid is CRYPT-INTEGRITY-00-x
? disk = insecure
like LUKS under LVM
file /sys/devices/virtual/block/dm-0/dm/uuid is LVM-CRYPT-LUKS2-
? disk = insecure
like LUKS under LVM
file /sys/devices/virtual/block/dm-0/dm/uuid is x
? disk = insecure

== A plain partition is not encrypted though a crypt mapping exists
like LUKS under LVM
device nvme0n1p2 259:2
unmount
mount 259:2 / ext4 /dev/nvme0n1p2
mount 254:1 /media/stick ext4 /dev/dm-1
noswap
file /etc/crypttab is sda3_crypt UUID=1 none luks
? disk = insecure

== Home and swap must be encrypted too
like LUKS under LVM
mount 8:3 /home ext4 /dev/sda3
? disk = insecure
like LUKS under LVM
mount 254:2 /home ext4 /dev/dm-2
? disk = secure
like LUKS under LVM
mount 8:3 /home/adam ext4 /dev/sda3
? disk = secure
like LUKS under LVM
mount 0:41 /home nfs4 server:/home
? disk = unknown
like LUKS under LVM
mount 8:3 /home ext4 /dev/sda3
mount 254:2 /home ext4 /dev/dm-2
? disk = secure
like LUKS under LVM
mount 254:2 /home ext4 /dev/dm-2
mount 8:3 /home ext4 /dev/sda3
? disk = insecure
like LUKS under LVM
swap /dev/sda3 partition 1 0 -2
? disk = insecure
like LUKS under LVM
noswap
swap /dev/sda3 partition 1 0 -2
swap /dev/dm-2 partition 1 0 -2
? disk = insecure
like LUKS under LVM
noswap
swap /dev/gone partition 1 0 -2
swap /dev/sda3 partition 1 0 -2
? disk = insecure
like LUKS under LVM
device zram0 252:0
file /dev/zram0
swap /dev/zram0 partition 1 0 100
? disk = secure
like LUKS under LVM
swap /swap\\040file file 1 0 -2
? disk = secure
like LUKS under LVM
mount 8:3 /mnt ext4 /dev/sda3
swap /mnt/swapfile file 1 0 -2
? disk = insecure
like LUKS under LVM
swap /dev/gone partition 1 0 -2
? disk = unknown

== Every part of an array must be encrypted
like LUKS under LVM
device sdb1 8:17
device dm-5 254:5 of sdb1 uuid CRYPT-LUKS2-1-b
device md0 9:0 of dm-0,dm-5
unmount
mount 9:0 / xfs /dev/md0
? disk = secure
like LUKS under LVM
device sdb1 8:17
device dm-5 254:5 of sdb1 uuid none
device md0 9:0 of dm-0,dm-5
unmount
mount 9:0 / xfs /dev/md0
? disk = insecure
like LUKS under LVM
device sdb1 8:17
device dm-5 254:5 of sdb1 uuid CRYPT-LUKS2-1-b
device md0 9:0 of dm-5,dm-0
unmount
mount 9:0 / xfs /dev/md0
? disk = secure
like LUKS under LVM
device sdb1 8:17
device dm-5 254:5 of sdb1 uuid none
device md0 9:0 of dm-5,dm-0
unmount
mount 9:0 / xfs /dev/md0
? disk = insecure

== An array's order of parts does not matter
like LUKS under LVM
device aaa1 8:17
device md0 9:0 of aaa1,dm-0
unmount
mount 9:0 / xfs /dev/md0
? disk = insecure

== Btrfs is followed to all its devices
like LUKS under LVM
unmount
mount 0:25 / btrfs /dev/mapper/vg-root
mount 0:26 /home btrfs /dev/mapper/vg-root
file /sys/fs/btrfs/features/x
link /sys/fs/btrfs/5d3c/devices/dm-1 to ../../../../devices/virtual/block/dm-1
link /sys/fs/btrfs/5d3c/devices/dm-2 to ../../../../devices/virtual/block/dm-2
? disk = secure
like LUKS under LVM
unmount
mount 0:25 / btrfs /dev/mapper/vg-root
mount 0:26 /home btrfs /dev/mapper/vg-root
file /sys/fs/btrfs/features/x
link /sys/fs/btrfs/5d3c/devices/dm-1 to ../../../../devices/virtual/block/dm-1
link /sys/fs/btrfs/5d3c/devices/sda3 to ../../../../devices/virtual/block/sda3
? disk = insecure

== What cannot be seen is unknown and never off
like LUKS under LVM
unmount
mount 0:26 / zfs rpool/ROOT/debian
? disk = unknown
like LUKS under LVM
unmount
mount 0:26 / bcachefs /dev/sda3
? disk = unknown
like LUKS under LVM
unmount
mount 0:26 / btrfs /dev/mapper/gone
? disk = unknown
like LUKS under LVM
unmount
mount 7:9 / ext4 /dev/loop9
? disk = unknown
fresh
? disk = unknown
like LUKS under LVM
gone /proc/swaps
? disk = unknown

== A stack that turns in circles is unknown
device dm-0 254:0 of dm-1
device dm-1 254:1 of dm-0
mount 254:0 / ext4 /dev/dm-0
noswap
? disk = unknown

== A home folder behind a link is followed
like LUKS under LVM
gone /home
link /home to var/home
folder /var/home/ada
mount 8:3 /var ext4 /dev/sda3
? disk = insecure
