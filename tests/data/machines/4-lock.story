== A GNOME desktop that locks
desktop ubuntu:GNOME
tool gsettings get org.gnome.desktop.screensaver lock-enabled says true\n
tool gsettings get org.gnome.desktop.screensaver lock-delay says uint32 0\n
tool gsettings get org.gnome.desktop.session idle-delay says uint32 300\n
tool gsettings get org.gnome.desktop.lockdown disable-lock-screen says false\n
? lock = secure

== GNOME must lock by itself, soon, and must be allowed to
like A GNOME desktop that locks
tool gsettings get org.gnome.desktop.screensaver lock-enabled says false
? lock = insecure
like A GNOME desktop that locks
tool gsettings get org.gnome.desktop.screensaver lock-delay says uint32 300
? lock = secure
like A GNOME desktop that locks
tool gsettings get org.gnome.desktop.screensaver lock-delay says uint32 301
? lock = insecure
like A GNOME desktop that locks
tool gsettings get org.gnome.desktop.session idle-delay says uint32 0
? lock = insecure
like A GNOME desktop that locks
tool gsettings get org.gnome.desktop.lockdown disable-lock-screen says true
? lock = insecure
like A GNOME desktop that locks
tool gsettings get org.gnome.desktop.session idle-delay says 
? lock = unknown

== The session's desktop decides, not what is installed
like A GNOME desktop that locks
desktop
? lock = unknown
like A GNOME desktop that locks
desktop sway
? lock = unknown
like A GNOME desktop that locks
desktop Budgie:GNOME
? lock = unknown
like A GNOME desktop that locks
desktop XFCE
? lock = unknown
like A GNOME desktop that locks
desktop X-Cinnamon
? lock = unknown
like A GNOME desktop that locks
desktop KDE
file /home/ada/.config/kscreenlockerrc is [Daemon]\nAutolock=false\n
? lock = insecure

== KDE takes its defaults and the person's file over the system's, except for what is fixed
fresh
desktop KDE
file /etc/xdg/kscreenlockerrc
file /home/ada/.config/kscreenlockerrc
? lock = secure
fresh
desktop KDE
file /etc/xdg/kscreenlockerrc
file /home/ada/.config/kscreenlockerrc is [Daemon]\nAutolock=true\nTimeout=10\nLockGrace=60\n
? lock = secure
fresh
desktop KDE
file /etc/xdg/kscreenlockerrc
file /home/ada/.config/kscreenlockerrc is [Daemon]\nAutolock=false\n
? lock = insecure
fresh
desktop KDE
file /etc/xdg/kscreenlockerrc
file /home/ada/.config/kscreenlockerrc is [Daemon]\nTimeout=0\n
? lock = insecure
fresh
desktop KDE
file /etc/xdg/kscreenlockerrc
file /home/ada/.config/kscreenlockerrc is [Daemon]\nLockGrace=3600\n
? lock = insecure
fresh
desktop KDE
file /etc/xdg/kscreenlockerrc
file /home/ada/.config/kscreenlockerrc is [Daemon]\nLockGrace=-1\n
? lock = insecure
fresh
desktop KDE
file /etc/xdg/kscreenlockerrc
file /home/ada/.config/kscreenlockerrc is [Daemon]\nRequirePassword=false\n
? lock = insecure
fresh
desktop KDE
file /etc/xdg/kscreenlockerrc
file /home/ada/.config/kscreenlockerrc is [Daemon]\nLockOnResume=false\n
? lock = insecure
fresh
desktop KDE
file /etc/xdg/kscreenlockerrc
file /home/ada/.config/kscreenlockerrc is [Daemon]\nTimeout=soon\n
? lock = unknown
fresh
desktop KDE
file /etc/xdg/kscreenlockerrc
file /home/ada/.config/kscreenlockerrc is [Greeter]\nAutolock=false\n
? lock = secure
fresh
desktop KDE
file /etc/xdg/kscreenlockerrc is [Daemon]\nAutolock=false\n
file /home/ada/.config/kscreenlockerrc
? lock = insecure
fresh
desktop KDE
file /etc/xdg/kscreenlockerrc is [Daemon]\nAutolock=false\n
file /home/ada/.config/kscreenlockerrc is [Daemon]\nAutolock=true\n
? lock = secure
fresh
desktop KDE
file /etc/xdg/kscreenlockerrc is [Daemon]\nAutolock[$i]=true\n
file /home/ada/.config/kscreenlockerrc is [Daemon]\nAutolock=false\n
? lock = secure
fresh
desktop KDE
file /etc/xdg/kscreenlockerrc is [Daemon][$i]\nAutolock=true\n
file /home/ada/.config/kscreenlockerrc is [Daemon]\nTimeout=0\n
? lock = secure
fresh
desktop KDE
? lock = secure
folder /home/ada/.config/kscreenlockerrc
? lock = unknown

== Other desktops answer for themselves
desktop X-Cinnamon
tool gsettings get org.cinnamon.desktop.screensaver lock-enabled says true
tool gsettings get org.cinnamon.desktop.session idle-delay says uint32 900
? lock = secure
fresh
desktop MATE
tool gsettings get org.mate.screensaver lock-enabled says true
tool gsettings get org.mate.screensaver idle-activation-enabled says false
tool gsettings get org.mate.session idle-delay says 5
? lock = insecure
fresh
desktop XFCE
tool xfconf-query -c xfce4-screensaver -p /lock/enabled says true
? lock = secure
fresh
desktop XFCE
tool xfconf-query -c xfce4-screensaver -p /lock/enabled says false
? lock = insecure
