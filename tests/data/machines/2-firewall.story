== Firewalld is judged by its state and its default zone
fresh
tool busctl --system call org.freedesktop.DBus /org/freedesktop/DBus org.freedesktop.DBus NameHasOwner s org.fedoraproject.FirewallD1 says b true\n
tool busctl --system get-property org.fedoraproject.FirewallD1 /org/fedoraproject/FirewallD1 org.fedoraproject.FirewallD1 state says s "RUNNING"\n
tool busctl --system --auto-start=no call org.fedoraproject.FirewallD1 /org/fedoraproject/FirewallD1 org.fedoraproject.FirewallD1 getDefaultZone says s "public"\n
? firewall = on
fresh
tool busctl --system call org.freedesktop.DBus /org/freedesktop/DBus org.freedesktop.DBus NameHasOwner s org.fedoraproject.FirewallD1 says b true\n
tool busctl --system get-property org.fedoraproject.FirewallD1 /org/fedoraproject/FirewallD1 org.fedoraproject.FirewallD1 state says s "RUNNING"\n
tool busctl --system --auto-start=no call org.fedoraproject.FirewallD1 /org/fedoraproject/FirewallD1 org.fedoraproject.FirewallD1 getDefaultZone says s "drop"\n
? firewall = stealth
fresh
tool busctl --system call org.freedesktop.DBus /org/freedesktop/DBus org.freedesktop.DBus NameHasOwner s org.fedoraproject.FirewallD1 says b true\n
tool busctl --system get-property org.fedoraproject.FirewallD1 /org/fedoraproject/FirewallD1 org.fedoraproject.FirewallD1 state says s "RUNNING"\n
tool busctl --system --auto-start=no call org.fedoraproject.FirewallD1 /org/fedoraproject/FirewallD1 org.fedoraproject.FirewallD1 getDefaultZone says s "block"\n
? firewall = stealth
fresh
tool busctl --system call org.freedesktop.DBus /org/freedesktop/DBus org.freedesktop.DBus NameHasOwner s org.fedoraproject.FirewallD1 says b true\n
tool busctl --system get-property org.fedoraproject.FirewallD1 /org/fedoraproject/FirewallD1 org.fedoraproject.FirewallD1 state says s "RUNNING"\n
tool busctl --system --auto-start=no call org.fedoraproject.FirewallD1 /org/fedoraproject/FirewallD1 org.fedoraproject.FirewallD1 getDefaultZone says s "trusted"\n
? firewall = off
fresh
tool busctl --system call org.freedesktop.DBus /org/freedesktop/DBus org.freedesktop.DBus NameHasOwner s org.fedoraproject.FirewallD1 says b true\n
tool busctl --system get-property org.fedoraproject.FirewallD1 /org/fedoraproject/FirewallD1 org.fedoraproject.FirewallD1 state says s "FAILED"\n
tool busctl --system --auto-start=no call org.fedoraproject.FirewallD1 /org/fedoraproject/FirewallD1 org.fedoraproject.FirewallD1 getDefaultZone says s "public"\n
? firewall = off
fresh
tool busctl --system call org.freedesktop.DBus /org/freedesktop/DBus org.freedesktop.DBus NameHasOwner s org.fedoraproject.FirewallD1 says b true\n
tool busctl --system get-property org.fedoraproject.FirewallD1 /org/fedoraproject/FirewallD1 org.fedoraproject.FirewallD1 state says s "RUNNING"\n
tool busctl --system --auto-start=no call org.fedoraproject.FirewallD1 /org/fedoraproject/FirewallD1 org.fedoraproject.FirewallD1 getDefaultZone says 
? firewall = unknown
fresh
tool busctl --system call org.freedesktop.DBus /org/freedesktop/DBus org.freedesktop.DBus NameHasOwner s org.fedoraproject.FirewallD1 says b true\n
tool busctl --system get-property org.fedoraproject.FirewallD1 /org/fedoraproject/FirewallD1 org.fedoraproject.FirewallD1 state says 
tool busctl --system --auto-start=no call org.fedoraproject.FirewallD1 /org/fedoraproject/FirewallD1 org.fedoraproject.FirewallD1 getDefaultZone says s "public"\n
? firewall = unknown

== Ufw needs its switch, its policy and its unit
fresh
file /etc/ufw/ufw.conf is # comment ENABLED=no\nENABLED=yes\nLOGLEVEL=low\n
file /etc/default/ufw is IPV6=yes\nDEFAULT_INPUT_POLICY="DROP"\nDEFAULT_OUTPUT_POLICY="ACCEPT"\n
tool systemctl is-active ufw.service says active
? firewall = on
fresh
file /etc/ufw/ufw.conf is # comment ENABLED=no\nENABLED=yes\nLOGLEVEL=low\n
file /etc/default/ufw is IPV6=yes\nDEFAULT_INPUT_POLICY="REJECT"\nDEFAULT_OUTPUT_POLICY="ACCEPT"\n
tool systemctl is-active ufw.service says active
? firewall = on
fresh
file /etc/ufw/ufw.conf is # comment ENABLED=no\nENABLED=yes\nLOGLEVEL=low\n
file /etc/default/ufw is IPV6=yes\nDEFAULT_INPUT_POLICY="ACCEPT"\nDEFAULT_OUTPUT_POLICY="ACCEPT"\n
tool systemctl is-active ufw.service says active
? firewall = off
fresh
file /etc/ufw/ufw.conf is # comment ENABLED=no\nENABLED=no\nLOGLEVEL=low\n
file /etc/default/ufw is IPV6=yes\nDEFAULT_INPUT_POLICY="DROP"\nDEFAULT_OUTPUT_POLICY="ACCEPT"\n
tool systemctl is-active ufw.service says active
? firewall = off
fresh
file /etc/ufw/ufw.conf is # comment ENABLED=no\nENABLED=yes\nLOGLEVEL=low\n
file /etc/default/ufw is IPV6=yes\nDEFAULT_INPUT_POLICY="DROP"\nDEFAULT_OUTPUT_POLICY="ACCEPT"\n
tool systemctl is-active ufw.service says inactive
? firewall = unknown
fresh
file /etc/ufw/ufw.conf is # comment ENABLED=no\nENABLED=yes\nLOGLEVEL=low\n
file /etc/default/ufw is IPV6=yes\nDEFAULT_INPUT_POLICY="DROP"\nDEFAULT_OUTPUT_POLICY="ACCEPT"\n
? firewall = unknown

== Plain nftables is judged by a configuration that can be read
fresh
file /etc/nftables.conf is #!/usr/sbin/nft -f\nflush ruleset\ntable inet filter {\n\tchain input {\n\t\ttype filter hook input priority filter; policy drop;\n\t}\n}\n
? firewall = unknown
tool systemctl is-active nftables.service says active
? firewall = on
fresh
file /etc/nftables.conf is table inet f {\n chain input {\n  type filter hook input priority 0; policy accept;\n  ct state established accept\n  tcp dport 22 accept\n  counter reject\n }\n}\n
? firewall = unknown
tool systemctl is-active nftables.service says active
? firewall = on
fresh
file /etc/nftables.conf is table inet f {\n chain input {\n  type filter hook input priority filter;\n }\n chain forward {\n  type filter hook forward priority filter; policy drop;\n }\n}\n
? firewall = unknown
tool systemctl is-active nftables.service says active
? firewall = off
fresh
file /etc/nftables.conf is table inet f {\n chain input {\n  type filter hook input priority 0; policy accept;\n }\n chain unused {\n  drop\n }\n}\n
? firewall = unknown
tool systemctl is-active nftables.service says active
? firewall = off
fresh
file /etc/nftables.conf is table inet filter { chain input { type filter hook input priority 0; # policy drop\n tcp dport 23 drop\n } }\n
? firewall = unknown
tool systemctl is-active nftables.service says active
? firewall = off
fresh
file /etc/nftables.conf is include "/etc/nftables.d/*.nft"\n
? firewall = unknown
tool systemctl is-active nftables.service says active
? firewall = unknown
fresh
tool systemctl is-active nftables.service says active
? firewall = unknown

== A front end that is switched off leaves the field to plain rules
? firewall = unknown
file /etc/ufw/ufw.conf is ENABLED=no\n
file /etc/default/ufw is DEFAULT_INPUT_POLICY="DROP"\n
file /etc/nftables.conf is table inet f { chain i { type filter hook input priority 0; policy drop; } }\n
? firewall = off
tool systemctl is-active nftables.service says active
? firewall = on
