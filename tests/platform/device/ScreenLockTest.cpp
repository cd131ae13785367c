#include "Recorded.h"

namespace kelvo::device {
namespace {

using test::RecordedMachine;
using test::Tree;
using Outputs = std::map<std::string, std::string>;

const Outputs gnomeDefaults = {
    {"gsettings get org.gnome.desktop.screensaver lock-enabled", "true\n"},
    {"gsettings get org.gnome.desktop.screensaver lock-delay", "uint32 0\n"},
    {"gsettings get org.gnome.desktop.session idle-delay", "uint32 300\n"},
    {"gsettings get org.gnome.desktop.lockdown disable-lock-screen", "false\n"},
};

Finding on(const std::string& desktop, const Outputs& outputs, const Tree& tree = {}) {
    RecordedMachine recorded(tree, outputs);
    recorded.session.desktop = desktop;
    return screenLock(recorded.machine());
}

TEST(ScreenLock, GnomeMustLockByItselfSoonAndMustBeAllowedTo) {
    EXPECT_EQ(on("GNOME", gnomeDefaults), Finding::secure);
    EXPECT_EQ(on("ubuntu:GNOME", gnomeDefaults), Finding::secure);
    const struct {
        const char* key;
        const char* value;
        Finding finding;
    } table[] = {
        {"org.gnome.desktop.screensaver lock-enabled", "false", Finding::insecure},
        {"org.gnome.desktop.screensaver lock-delay", "uint32 300", Finding::secure},
        {"org.gnome.desktop.screensaver lock-delay", "uint32 3600", Finding::insecure},
        {"org.gnome.desktop.session idle-delay", "uint32 0", Finding::insecure},
        {"org.gnome.desktop.lockdown disable-lock-screen", "true", Finding::insecure},
        {"org.gnome.desktop.session idle-delay", "", Finding::unknown},
    };
    for (const auto& row : table) {
        Outputs outputs = gnomeDefaults;
        outputs[std::string("gsettings get ") + row.key] = row.value;
        EXPECT_EQ(on("GNOME", outputs), row.finding) << row.key << " " << row.value;
    }
}

TEST(ScreenLock, TheSessionsDesktopDecidesAndNotWhatIsInstalled) {
    for (const char* desktop : {"", "sway", "Hyprland", "Budgie:GNOME", "XFCE", "LXQt"})
        EXPECT_EQ(on(desktop, gnomeDefaults), Finding::unknown) << desktop;
    EXPECT_EQ(on("KDE", gnomeDefaults,
                 {{"/home/ada/.config/kscreenlockerrc", "[Daemon]\nAutolock=false\n"}}),
              Finding::insecure);
}

TEST(ScreenLock, KdeTakesItsDefaultsAndThePersonsFileOverTheSystems) {
    const struct {
        const char* system;
        const char* own;
        Finding finding;
    } table[] = {
        {"", "", Finding::secure},
        {"", "[Daemon]\nAutolock=true\nTimeout=10\nLockGrace=60\n", Finding::secure},
        {"", "[Daemon]\nAutolock=false\n", Finding::insecure},
        {"", "[Daemon]\nTimeout=0\n", Finding::insecure},
        {"", "[Daemon]\nLockGrace=3600\n", Finding::insecure},
        {"", "[Daemon]\nLockGrace=-1\n", Finding::insecure},
        {"", "[Daemon]\nRequirePassword=false\n", Finding::insecure},
        {"", "[Daemon]\nLockOnResume=false\n", Finding::insecure},
        {"", "[Daemon]\nTimeout=soon\n", Finding::unknown},
        {"", "[Greeter]\nAutolock=false\n", Finding::secure},
        {"[Daemon]\nAutolock=false\n", "", Finding::insecure},
        {"[Daemon]\nAutolock=false\n", "[Daemon]\nAutolock=true\n", Finding::secure},
        {"[Daemon]\nAutolock[$i]=true\n", "[Daemon]\nAutolock=false\n", Finding::secure},
        {"[Daemon][$i]\nAutolock=true\n", "[Daemon]\nTimeout=0\n", Finding::secure},
    };
    for (const auto& row : table) {
        EXPECT_EQ(on("KDE", {},
                     {{"/etc/xdg/kscreenlockerrc", row.system},
                      {"/home/ada/.config/kscreenlockerrc", row.own}}),
                  row.finding)
            << row.system << row.own;
    }
    EXPECT_EQ(on("KDE", {}), Finding::secure) << "no file at all";
    EXPECT_EQ(on("KDE", {}, {{"/home/ada/.config/kscreenlockerrc/", ""}}), Finding::unknown);
}

TEST(ScreenLock, OtherDesktopsAnswerForThemselves) {
    const Outputs cinnamon = {
        {"gsettings get org.cinnamon.desktop.screensaver lock-enabled", "true"},
        {"gsettings get org.cinnamon.desktop.session idle-delay", "uint32 900"}};
    EXPECT_EQ(on("X-Cinnamon", cinnamon), Finding::secure);
    EXPECT_EQ(on("X-Cinnamon", {}), Finding::unknown);
    const Outputs mate = {{"gsettings get org.mate.screensaver lock-enabled", "true"},
                          {"gsettings get org.mate.screensaver idle-activation-enabled", "false"},
                          {"gsettings get org.mate.session idle-delay", "5"}};
    EXPECT_EQ(on("MATE", mate), Finding::insecure);
    EXPECT_EQ(on("XFCE", {{"xfconf-query -c xfce4-screensaver -p /lock/enabled", "true"}}),
              Finding::secure);
    EXPECT_EQ(on("XFCE", {{"xfconf-query -c xfce4-screensaver -p /lock/enabled", "false"}}),
              Finding::insecure);
}

} // namespace
} // namespace kelvo::device
