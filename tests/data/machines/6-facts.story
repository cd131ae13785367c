== A well kept laptop shows five good facts
file /sys/dev/block/254:0/dm/uuid is CRYPT-LUKS2-00-root\n
mount 254:0 / ext4 /dev/dm-0
noswap
file /etc/ufw/ufw.conf is ENABLED=yes\n
file /etc/default/ufw is DEFAULT_INPUT_POLICY="DROP"\n
file /sys/firmware/efi/efivars/SecureBoot-8be4df61-93ca-11d2-aa0d-00e098032b8c is \x06\x00\x00\x00\x01
file /sys/module/apparmor/parameters/enabled is Y\n
file /etc/apt/sources.list
tool systemctl is-active ufw.service says active\n
desktop GNOME
tool gsettings get org.gnome.desktop.screensaver lock-enabled says true\n
tool gsettings get org.gnome.desktop.screensaver lock-delay says uint32 0\n
tool gsettings get org.gnome.desktop.session idle-delay says uint32 300\n
tool gsettings get org.gnome.desktop.lockdown disable-lock-screen says false\n
tool apt-config dump says APT "";\n
? facts = on on yes enabled enabled

== A neglected one shows five bad facts
file /sys/dev/block/8:1/dev is 8:1\n
mount 8:1 / ext4 /dev/sda1
noswap
file /etc/ufw/ufw.conf is ENABLED=no\n
file /home/ada/.config/kscreenlockerrc is [Daemon]\nAutolock=false\n
file /etc/pacman.conf is [options]\nSigLevel = Never\n
desktop KDE
? facts = off off no disabled disabled

== One that says nothing shows nothing
folder /sys/firmware/efi
folder /sys/kernel/security/lockdown
? facts = unknown unknown unknown unknown unknown

== Only five command lines are answered
like A well kept laptop shows five good facts
? run /usr/bin/fdesetup status = FileVault is On.\n
? run /usr/bin/fdesetup disable = none
? run /usr/bin/fdesetup = none
? run /bin/sh -c true = none
