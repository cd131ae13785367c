#include "Recorded.h"

namespace kelvo::device {
namespace {

using enum Finding;

constexpr const char* ownFile = "/home/ada/.config/kscreenlockerrc";

Finding on(const std::string& desktop, const Outputs& outputs, const Tree& tree = {}) {
    return found(screenLock, tree, outputs, desktop);
}

const Outputs gnomeDefaults = {
    {"gsettings get org.gnome.desktop.screensaver lock-enabled", "true\n"},
    {"gsettings get org.gnome.desktop.screensaver lock-delay", "uint32 0\n"},
    {"gsettings get org.gnome.desktop.session idle-delay", "uint32 300\n"},
    {"gsettings get org.gnome.desktop.lockdown disable-lock-screen", "false\n"},
};

TEST(ScreenLock, GnomeMustLockByItselfSoonAndMustBeAllowedTo) {
    EXPECT_EQ(on("ubuntu:GNOME", gnomeDefaults), secure);
    const std::tuple<const char*, const char*, Finding> table[] = {
        {"screensaver lock-enabled", "false", insecure},
        {"screensaver lock-delay", "uint32 300", secure},
        {"screensaver lock-delay", "uint32 301", insecure},
        {"session idle-delay", "uint32 0", insecure},
        {"lockdown disable-lock-screen", "true", insecure},
        {"session idle-delay", "", unknown},
    };
    for (const auto& [key, value, finding] : table) {
        Outputs outputs = gnomeDefaults;
        outputs[std::string("gsettings get org.gnome.desktop.") + key] = value;
        EXPECT_EQ(on("GNOME", outputs), finding) << key << " " << value;
    }
}

TEST(ScreenLock, TheSessionsDesktopDecidesAndNotWhatIsInstalled) {
    for (const char* desktop : {"", "sway", "Budgie:GNOME", "XFCE", "X-Cinnamon"})
        EXPECT_EQ(on(desktop, gnomeDefaults), unknown) << desktop;
    EXPECT_EQ(on("KDE", gnomeDefaults, {{ownFile, "[Daemon]\nAutolock=false\n"}}), insecure);
}

TEST(ScreenLock, KdeTakesItsDefaultsAndThePersonsFileOverTheSystems) {
    const std::tuple<const char*, const char*, Finding> table[] = {
        {"", "", secure},
        {"", "[Daemon]\nAutolock=true\nTimeout=10\nLockGrace=60\n", secure},
        {"", "[Daemon]\nAutolock=false\n", insecure},
        {"", "[Daemon]\nTimeout=0\n", insecure},
        {"", "[Daemon]\nLockGrace=3600\n", insecure},
        {"", "[Daemon]\nLockGrace=-1\n", insecure},
        {"", "[Daemon]\nRequirePassword=false\n", insecure},
        {"", "[Daemon]\nLockOnResume=false\n", insecure},
        {"", "[Daemon]\nTimeout=soon\n", unknown},
        {"", "[Greeter]\nAutolock=false\n", secure},
        {"[Daemon]\nAutolock=false\n", "", insecure},
        {"[Daemon]\nAutolock=false\n", "[Daemon]\nAutolock=true\n", secure},
        {"[Daemon]\nAutolock[$i]=true\n", "[Daemon]\nAutolock=false\n", secure},
        {"[Daemon][$i]\nAutolock=true\n", "[Daemon]\nTimeout=0\n", secure},
    };
    for (const auto& [system, own, finding] : table)
        EXPECT_EQ(on("KDE", {}, {{"/etc/xdg/kscreenlockerrc", system}, {ownFile, own}}), finding)
            << system << own;
    EXPECT_EQ(on("KDE", {}), secure) << "no file at all";
    EXPECT_EQ(on("KDE", {}, {{std::string(ownFile) + "/", ""}}), unknown);
}

TEST(ScreenLock, OtherDesktopsAnswerForThemselves) {
    const Outputs cinnamon = {
        {"gsettings get org.cinnamon.desktop.screensaver lock-enabled", "true"},
        {"gsettings get org.cinnamon.desktop.session idle-delay", "uint32 900"}};
    EXPECT_EQ(on("X-Cinnamon", cinnamon), secure);
    const Outputs mate = {{"gsettings get org.mate.screensaver lock-enabled", "true"},
                          {"gsettings get org.mate.screensaver idle-activation-enabled", "false"},
                          {"gsettings get org.mate.session idle-delay", "5"}};
    EXPECT_EQ(on("MATE", mate), insecure);
    const std::string xfce = "xfconf-query -c xfce4-screensaver -p /lock/enabled";
    EXPECT_EQ(on("XFCE", {{xfce, "true"}}), secure);
    EXPECT_EQ(on("XFCE", {{xfce, "false"}}), insecure);
}

} // namespace
} // namespace kelvo::device
