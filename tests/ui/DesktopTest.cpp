// What the window takes from the desktop: its preference for dark surfaces and its file chooser.

#include "support/PrivateBus.h"
#include "support/TemporaryDirectory.h"
#include "ui/Appearance.h"
#include "ui/DialogFilePanel.h"

#include <gtest/gtest.h>

#include <QDBusMessage>
#include <QDir>
#include <QGuiApplication>
#include <QPalette>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <fstream>

#include "SettingsPortal.h"
#include "Stage.h"

namespace kelvo::test {
namespace {

constexpr int patience = 10'000; // ms, far beyond what anything here takes

class AppearanceOverTheBus : public testing::Test {
protected:
    void publish(unsigned scheme) {
        portal.scheme = scheme;
        (*server).registerObject("/org/freedesktop/portal/desktop", &portal,
                                 QDBusConnection::ExportAllSlots);
        ASSERT_TRUE((*server).registerService("org.freedesktop.portal.Desktop"));
    }

    void announce(const QString& group, unsigned scheme) {
        QDBusMessage signal = QDBusMessage::createSignal(
            "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings", "SettingChanged");
        signal << group << "color-scheme" << QVariant::fromValue(QDBusVariant(scheme));
        ASSERT_TRUE((*server).send(signal));
    }

    PrivateBus bus;
    BusConnection server{bus.address(), "settings-server"};
    BusConnection client{bus.address(), "settings-client"};
    SettingsPortal portal;
};

TEST_F(AppearanceOverTheBus, FollowsThePreferenceAndItsChanges) {
    publish(1);
    Appearance appearance(*client);
    EXPECT_TRUE(QTest::qWaitFor([&] { return appearance.dark(); }, patience));
    announce("org.freedesktop.appearance", 2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !appearance.dark(); }, patience));
    announce("org.example.other", 1);
    announce("org.freedesktop.appearance", 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return appearance.dark(); }, patience));
}

TEST_F(AppearanceOverTheBus, WithoutAPreferenceOrAPortalThePaletteDecides) {
    const QPalette before = QGuiApplication::palette();
    for (const bool answers : {false, true}) {
        if (answers) publish(0);
        Appearance appearance(*client);
        const QSignalSpy changed(&appearance, &Appearance::changed);
        for (const Qt::GlobalColor window : {Qt::black, Qt::white}) {
            const auto heard = changed.size();
            QGuiApplication::setPalette(QPalette(Qt::gray, window));
            EXPECT_TRUE(QTest::qWaitFor([&] { return changed.size() > heard; }, patience));
            EXPECT_EQ(appearance.dark(), window == Qt::black);
        }
        QGuiApplication::setPalette(before);
    }
}

class FileChooser : public testing::Test {
protected:
    void SetUp() override {
        std::ofstream(folder.path() / "review.txt") << "reviewed";
        std::ofstream(folder.path() / "holiday.png") << "not offered";
        QDir::setCurrent(QString::fromStdString(folder.path().string()));
        stage.open(860, 560);
    }
    void TearDown() override { QDir::setCurrent(before); }

    /// Asks for a file while `person` acts on the open chooser, once it shows its files.
    std::optional<std::filesystem::path> choose(const std::function<void()>& person) {
        QTimer::singleShot(0, [&] {
            opened = QTest::qWaitFor([&] { return stage.shows("review.txt"); }, patience);
            holiday = stage.shows("holiday.png");
            person();
        });
        return DialogFilePanel().choose({"Attach", "Choose a document", {ContentType::plainText}});
    }

    TemporaryDirectory folder;
    QString before = QDir::currentPath();
    Stage stage;
    bool opened = false;
    bool holiday = true;
};

TEST_F(FileChooser, OffersTheKindsThatAreAskedForAndReturnsTheChosenFile) {
    const auto chosen = choose([&] {
        stage.act("click review.txt");
        EXPECT_TRUE(QTest::qWaitFor([&] { return stage.find("Attach")->isEnabled(); }, patience));
        stage.act("click Attach");
        // Where nothing could be chosen, the chooser is still open.
        stage.press("Esc");
    });
    EXPECT_TRUE(opened);
    EXPECT_FALSE(holiday);
    ASSERT_TRUE(chosen.has_value());
    EXPECT_EQ(chosen->filename(), "review.txt");
}

TEST_F(FileChooser, ClosedWithoutAChoiceItReturnsNone) {
    EXPECT_EQ(choose([&] { stage.press("Esc"); }), std::nullopt);
    EXPECT_TRUE(opened);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !stage.shows("review.txt"); }, patience));
    stage.press("Space");
    EXPECT_TRUE(*stage.engine().running) << "the keys are the window's again";
}

} // namespace
} // namespace kelvo::test
