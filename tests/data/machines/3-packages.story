== Apt is judged by its settings and its sources
fresh
file /etc/apt/sources.list is deb http://deb.example/debian bookworm main\n
tool apt-config dump says APT "";\nAPT::Architecture "amd64";\nAcquire::AllowInsecureRepositories "0";\n
? packages = secure
fresh
file /etc/apt/sources.list is deb [arch=amd64 trusted=yes] http://x/ ./\n
tool apt-config dump says APT "";\nAPT::Architecture "amd64";\nAcquire::AllowInsecureRepositories "0";\n
? packages = insecure
fresh
file /etc/apt/sources.list is deb [ allow-insecure=yes ] http://x/ ./\n
tool apt-config dump says APT "";\nAPT::Architecture "amd64";\nAcquire::AllowInsecureRepositories "0";\n
? packages = insecure
fresh
file /etc/apt/sources.list is # deb [trusted=yes] http://x/ ./\n
tool apt-config dump says APT "";\nAPT::Architecture "amd64";\nAcquire::AllowInsecureRepositories "0";\n
? packages = secure
fresh
file /etc/apt/sources.list is deb [trusted=no] http://x/ ./\n
tool apt-config dump says APT "";\nAPT::Architecture "amd64";\nAcquire::AllowInsecureRepositories "0";\n
? packages = secure
fresh
file /etc/apt/sources.list.d/x.list is deb [trusted=yes] file:///x ./\n
tool apt-config dump says APT "";\nAPT::Architecture "amd64";\nAcquire::AllowInsecureRepositories "0";\n
? packages = insecure
fresh
file /etc/apt/sources.list.d/x.list.save is deb [trusted=yes] x ./\n
tool apt-config dump says APT "";\nAPT::Architecture "amd64";\nAcquire::AllowInsecureRepositories "0";\n
? packages = secure
fresh
file /etc/apt/sources.list.d/debian.sources is Types: deb\nURIs: http://x\nSigned-By: /k\n
tool apt-config dump says APT "";\nAPT::Architecture "amd64";\nAcquire::AllowInsecureRepositories "0";\n
? packages = secure
fresh
file /etc/apt/sources.list.d/debian.sources is Types: deb\nTrusted: yes\n\nTypes: deb\n
tool apt-config dump says APT "";\nAPT::Architecture "amd64";\nAcquire::AllowInsecureRepositories "0";\n
? packages = insecure
fresh
file /etc/apt/sources.list.d/debian.sources is Types: deb\n\nTypes: deb\nTrusted: yes\n
tool apt-config dump says APT "";\nAPT::Architecture "amd64";\nAcquire::AllowInsecureRepositories "0";\n
? packages = insecure
fresh
file /etc/apt/sources.list.d/debian.sources is Types: deb\nTrusted: yes\nEnabled: no\n\nTypes: deb\n
tool apt-config dump says APT "";\nAPT::Architecture "amd64";\nAcquire::AllowInsecureRepositories "0";\n
? packages = secure
fresh
folder /etc/apt/sources.list.d/x.list
tool apt-config dump says APT "";\nAPT::Architecture "amd64";\nAcquire::AllowInsecureRepositories "0";\n
? packages = unknown
fresh
file /etc/apt/sources.list
? packages = unknown
fresh
file /etc/apt/sources.list
tool apt-config dump says APT "";\nAPT::Architecture "amd64";\nAPT::Get::AllowUnauthenticated "true";\n
? packages = insecure
fresh
file /etc/apt/sources.list
tool apt-config dump says APT "";\nAPT::Architecture "amd64";\nAcquire::AllowInsecureRepositories "true";\n
? packages = insecure

== Dnf must check in general and in each repository in use
fresh
file /etc/dnf/dnf.conf is [main]\ngpgcheck=1\n
file /etc/yum.repos.d/x.repo is [fedora]\ngpgcheck=1\n
? packages = secure
fresh
file /etc/dnf/dnf.conf is [main]\ngpgcheck = True\n
file /etc/yum.repos.d/x.repo is [fedora]\n
? packages = secure
fresh
file /etc/dnf/dnf.conf is [main]\ngpgcheck=0\n
file /etc/yum.repos.d/x.repo is [fedora]\ngpgcheck=1\n
? packages = insecure
fresh
file /etc/dnf/dnf.conf is [main]\nbest=True\n
file /etc/yum.repos.d/x.repo is [fedora]\ngpgcheck=1\n
? packages = unknown
fresh
file /etc/dnf/dnf.conf is [main]\ngpgcheck=1\n
file /etc/yum.repos.d/x.repo is [a]\ngpgcheck=1\n[b]\nenabled=1\ngpgcheck=0\n
? packages = insecure
fresh
file /etc/dnf/dnf.conf is [main]\ngpgcheck=1\n
file /etc/yum.repos.d/x.repo is [b]\nenabled=0\ngpgcheck=0\n
? packages = secure

== Pacman must require trusted signatures of packages
fresh
file /etc/pacman.conf is [options]\nSigLevel = Required DatabaseOptional\n[core]\nInclude = x\n
? packages = secure
fresh
file /etc/pacman.conf is [options]\nSigLevel = PackageRequired\n
? packages = secure
fresh
file /etc/pacman.conf is [options]\nSigLevel = DatabaseRequired\n
? packages = insecure
fresh
file /etc/pacman.conf is [options]\nArchitecture = auto\n
? packages = insecure
fresh
file /etc/pacman.conf is [options]\nSigLevel = Required TrustAll\n
? packages = insecure
fresh
file /etc/pacman.conf is [options]\nSigLevel = Required\n[own]\nSigLevel = Optional TrustAll\n
? packages = insecure
fresh
file /etc/pacman.conf is [options]\nSigLevel = Never\n[own]\nSigLevel = Required\n
? packages = insecure

== Every manager that is there counts and none is unknown
? packages = unknown
file /etc/apt/sources.list
file /etc/pacman.conf is [options]\n
tool apt-config dump says APT "";\nAPT::Architecture "amd64";\nAcquire::AllowInsecureRepositories "0";\n
? packages = insecure
