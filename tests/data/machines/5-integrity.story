== Secure Boot and one guard of the running system are needed
fresh
file /sys/firmware/efi/efivars/SecureBoot-8be4df61-93ca-11d2-aa0d-00e098032b8c is \x06\x00\x00\x00\x01
file /sys/module/apparmor/parameters/enabled is Y\n
? integrity = secure
fresh
file /sys/firmware/efi/efivars/SecureBoot-8be4df61-93ca-11d2-aa0d-00e098032b8c is \x06\x00\x00\x00\x01
file /sys/fs/selinux/enforce is 1
? integrity = secure
fresh
file /sys/firmware/efi/efivars/SecureBoot-8be4df61-93ca-11d2-aa0d-00e098032b8c is \x06\x00\x00\x00\x01
file /sys/fs/selinux/enforce is 0
? integrity = insecure
fresh
file /sys/firmware/efi/efivars/SecureBoot-8be4df61-93ca-11d2-aa0d-00e098032b8c is \x06\x00\x00\x00\x01
file /sys/kernel/security/lockdown is none [integrity] x\n
file /sys/module/apparmor/parameters/enabled is N\n
? integrity = secure
fresh
file /sys/firmware/efi/efivars/SecureBoot-8be4df61-93ca-11d2-aa0d-00e098032b8c is \x06\x00\x00\x00\x01
file /sys/kernel/security/lockdown is [none] integrity x\n
? integrity = insecure
fresh
file /sys/firmware/efi/efivars/SecureBoot-8be4df61-93ca-11d2-aa0d-00e098032b8c is \x06\x00\x00\x00\x01
folder /sys/kernel/security/lockdown
? integrity = unknown
fresh
file /sys/firmware/efi/efivars/SecureBoot-8be4df61-93ca-11d2-aa0d-00e098032b8c is \x06\x00\x00\x00\x00
file /sys/module/apparmor/parameters/enabled is Y\n
? integrity = insecure
fresh
file /sys/firmware/efi/efivars/SecureBoot-8be4df61-93ca-11d2-aa0d-00e098032b8c is \x06\x00\x00\x00\x01
file /sys/firmware/efi/efivars/MokSBStateRT-605dab50-e046-4300-abb6-3dd810dd8b23 is \x06\x00\x00\x00\x01
file /sys/module/apparmor/parameters/enabled is Y\n
? integrity = insecure
fresh
file /sys/module/apparmor/parameters/enabled is Y\n
folder /sys/firmware
? integrity = insecure
fresh
file /sys/module/apparmor/parameters/enabled is Y\n
folder /sys/firmware/efi
? integrity = unknown
fresh
file /sys/firmware/efi/efivars/SecureBoot-8be4df61-93ca-11d2-aa0d-00e098032b8c is \x06
file /sys/module/apparmor/parameters/enabled is Y\n
? integrity = unknown
