#include "Recorded.h"

namespace kelvo::device {
namespace {

using enum Finding;

constexpr const char* list = "/etc/apt/sources.list";
constexpr const char* sources = "/etc/apt/sources.list.d/debian.sources";

Outputs aptConfig(const std::string& line = "Acquire::AllowInsecureRepositories \"0\";") {
    return {{"apt-config dump", "APT \"\";\nAPT::Architecture \"amd64\";\n" + line + "\n"}};
}

TEST(PackageSignatures, AptIsJudgedByItsSettingsAndItsSources) {
    const std::tuple<const char*, const char*, Finding> table[] = {
        {list, "deb http://deb.example/debian bookworm main\n", secure},
        {list, "deb [arch=amd64 trusted=yes] http://x/ ./\n", insecure},
        {list, "deb [ allow-insecure=yes ] http://x/ ./\n", insecure},
        {list, "# deb [trusted=yes] http://x/ ./\n", secure},
        {list, "deb [trusted=no] http://x/ ./\n", secure},
        {"/etc/apt/sources.list.d/x.list", "deb [trusted=yes] file:///x ./\n", insecure},
        {"/etc/apt/sources.list.d/x.list.save", "deb [trusted=yes] x ./\n", secure},
        {sources, "Types: deb\nURIs: http://x\nSigned-By: /k\n", secure},
        {sources, "Types: deb\nTrusted: yes\n\nTypes: deb\n", insecure},
        {sources, "Types: deb\nTrusted: yes\nEnabled: no\n\nTypes: deb\n", secure},
        {"/etc/apt/sources.list.d/x.list/", "", unknown},
    };
    for (const auto& [path, text, finding] : table)
        EXPECT_EQ(found(packageSignatures, {{path, text}}, aptConfig()), finding) << text;
    EXPECT_EQ(found(packageSignatures, {{list, ""}}), unknown);
    for (const char* key : {"APT::Get::AllowUnauthenticated \"true\";",
                            "Acquire::AllowInsecureRepositories \"true\";"})
        EXPECT_EQ(found(packageSignatures, {{list, ""}}, aptConfig(key)), insecure) << key;
}

TEST(PackageSignatures, DnfMustCheckInGeneralAndInEachRepositoryInUse) {
    const std::string on = "[main]\ngpgcheck=1\n";
    const std::tuple<std::string, const char*, Finding> table[] = {
        {on, "[fedora]\ngpgcheck=1\n", secure},
        {"[main]\ngpgcheck = True\n", "[fedora]\n", secure},
        {"[main]\ngpgcheck=0\n", "[fedora]\ngpgcheck=1\n", insecure},
        {"[main]\nbest=True\n", "[fedora]\ngpgcheck=1\n", unknown},
        {on, "[a]\ngpgcheck=1\n[b]\nenabled=1\ngpgcheck=0\n", insecure},
        {on, "[b]\nenabled=0\ngpgcheck=0\n", secure},
    };
    for (const auto& [settings, repository, finding] : table)
        EXPECT_EQ(found(packageSignatures,
                        {{"/etc/dnf/dnf.conf", settings}, {"/etc/yum.repos.d/x.repo", repository}}),
                  finding)
            << settings << repository;
}

TEST(PackageSignatures, PacmanMustRequireTrustedSignaturesOfPackages) {
    const std::pair<const char*, Finding> table[] = {
        {"[options]\nSigLevel = Required DatabaseOptional\n[core]\nInclude = x\n", secure},
        {"[options]\nSigLevel = PackageRequired\n", secure},
        {"[options]\nArchitecture = auto\n", insecure},
        {"[options]\nSigLevel = Required TrustAll\n", insecure},
        {"[options]\nSigLevel = Required\n[own]\nSigLevel = Optional TrustAll\n", insecure},
        {"[options]\nSigLevel = Never\n[own]\nSigLevel = Required\n", insecure},
    };
    for (const auto& [settings, finding] : table)
        EXPECT_EQ(found(packageSignatures, {{"/etc/pacman.conf", settings}}), finding) << settings;
}

TEST(PackageSignatures, EveryManagerThatIsThereCountsAndNoneIsUnknown) {
    const Tree two = {{list, ""}, {"/etc/pacman.conf", "[options]\n"}};
    EXPECT_EQ(found(packageSignatures, {}), unknown);
    EXPECT_EQ(found(packageSignatures, two, aptConfig()), insecure);
}

} // namespace
} // namespace kelvo::device
