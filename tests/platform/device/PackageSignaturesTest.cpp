#include "Recorded.h"

namespace kelvo::device {
namespace {

using test::RecordedMachine;
using test::Tree;
using Outputs = std::map<std::string, std::string>;

const Outputs aptDefaults = {{"apt-config dump", "APT \"\";\nAPT::Architecture \"amd64\";\n"
                                                 "Acquire::AllowInsecureRepositories \"0\";\n"}};
constexpr const char* list = "/etc/apt/sources.list";
constexpr const char* sources = "/etc/apt/sources.list.d/debian.sources";

TEST(PackageSignatures, AptIsJudgedByItsSettingsAndItsSources) {
    const struct {
        const char* path;
        const char* text;
        Finding finding;
    } table[] = {
        {list, "deb http://deb.example/debian bookworm main\n", Finding::secure},
        {list, "deb [arch=amd64 trusted=yes] http://x/ ./\n", Finding::insecure},
        {list, "deb [ allow-insecure=yes ] http://x/ ./\n", Finding::insecure},
        {list, "# deb [trusted=yes] http://x/ ./\n", Finding::secure},
        {list, "deb [trusted=no] http://x/ ./\n", Finding::secure},
        {"/etc/apt/sources.list.d/x.list", "deb [trusted=yes] file:///x ./\n", Finding::insecure},
        {"/etc/apt/sources.list.d/x.list.save", "deb [trusted=yes] x ./\n", Finding::secure},
        {sources, "Types: deb\nURIs: http://x\nSigned-By: /k\n", Finding::secure},
        {sources, "Types: deb\nTrusted: yes\n\nTypes: deb\n", Finding::insecure},
        {sources, "Types: deb\nTrusted: yes\nEnabled: no\n\nTypes: deb\n", Finding::secure},
        {"/etc/apt/sources.list.d/x.list/", "", Finding::unknown},
    };
    for (const auto& row : table)
        EXPECT_EQ(packageSignatures(RecordedMachine({{row.path, row.text}}, aptDefaults).machine()),
                  row.finding)
            << row.text;
    const Tree plain = {{list, ""}};
    EXPECT_EQ(packageSignatures(RecordedMachine(plain).machine()), Finding::unknown);
    for (const char* key : {"APT::Get::AllowUnauthenticated", "Acquire::AllowInsecureRepositories"})
        EXPECT_EQ(packageSignatures(
                      RecordedMachine(plain, {{"apt-config dump", std::string(key) + " \"true\";"}})
                          .machine()),
                  Finding::insecure);
}

TEST(PackageSignatures, DnfMustCheckInGeneralAndInEachRepositoryInUse) {
    const struct {
        const char* settings;
        const char* repository;
        Finding finding;
    } table[] = {
        {"[main]\ngpgcheck=1\n", "[fedora]\ngpgcheck=1\n", Finding::secure},
        {"[main]\ngpgcheck = True\n", "[fedora]\n", Finding::secure},
        {"[main]\ngpgcheck=0\n", "[fedora]\ngpgcheck=1\n", Finding::insecure},
        {"[main]\nbest=True\n", "[fedora]\ngpgcheck=1\n", Finding::unknown},
        {"[main]\ngpgcheck=1\n", "[a]\ngpgcheck=1\n[b]\nenabled=1\ngpgcheck=0\n",
         Finding::insecure},
        {"[main]\ngpgcheck=1\n", "[b]\nenabled=0\ngpgcheck=0\n", Finding::secure},
    };
    for (const auto& row : table)
        EXPECT_EQ(
            packageSignatures(RecordedMachine(Tree{{"/etc/dnf/dnf.conf", row.settings},
                                                   {"/etc/yum.repos.d/x.repo", row.repository}})
                                  .machine()),
            row.finding)
            << row.settings << row.repository;
}

TEST(PackageSignatures, PacmanMustRequireTrustedSignaturesOfPackages) {
    const struct {
        const char* settings;
        Finding finding;
    } table[] = {
        {"[options]\nSigLevel = Required DatabaseOptional\n[core]\nInclude = x\n", Finding::secure},
        {"[options]\nSigLevel = PackageRequired\n", Finding::secure},
        {"[options]\nArchitecture = auto\n", Finding::insecure},
        {"[options]\nSigLevel = Required TrustAll\n", Finding::insecure},
        {"[options]\nSigLevel = Never\n", Finding::insecure},
        {"[options]\nSigLevel = Required\n[own]\nSigLevel = Optional TrustAll\n",
         Finding::insecure},
        {"[options]\nSigLevel = Never\n[own]\nSigLevel = Required\n", Finding::insecure},
    };
    for (const auto& row : table)
        EXPECT_EQ(
            packageSignatures(RecordedMachine(Tree{{"/etc/pacman.conf", row.settings}}).machine()),
            row.finding)
            << row.settings;
}

TEST(PackageSignatures, EveryManagerThatIsThereCountsAndNoneIsUnknown) {
    EXPECT_EQ(packageSignatures(RecordedMachine().machine()), Finding::unknown);
    EXPECT_EQ(packageSignatures(
                  RecordedMachine({{list, ""}, {"/etc/pacman.conf", "[options]\n"}}, aptDefaults)
                      .machine()),
              Finding::insecure);
}

} // namespace
} // namespace kelvo::device
