#include "platform/bus/IntentObjects.h"

#include <gmock/gmock.h>

#include <QTest>

#include "Desk.h"

namespace kelvo::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const QString runnerInterface = QStringLiteral("org.kde.krunner1");
const QString searchInterface = QStringLiteral("org.gnome.Shell.SearchProvider2");

class LauncherTest : public Desk {
protected:
    /// The answer itself, where it is more than a text.
    QDBusMessage reply(const QDBusMessage& call) {
        const QDBusPendingCall pending = (*caller_).asyncCall(call);
        answered(pending);
        return pending.reply();
    }
    RunnerMatches match(const QString& typed) {
        return qdbus_cast<RunnerMatches>(
            reply(methodCall(IntentBus::runnerPath(application), runnerInterface, "Match", {typed}))
                .arguments()
                .value(0));
    }
    QString runner(const QString& id) {
        return answer(methodCall(IntentBus::runnerPath(application), runnerInterface, "Run",
                                 {id, QString()}));
    }
    QStringList search(const QStringList& terms) {
        return reply(methodCall(IntentBus::searchPath(application), searchInterface,
                                "GetInitialResultSet", {terms}))
            .arguments()
            .value(0)
            .toStringList();
    }
};

TEST_F(LauncherTest, OffersWhatIsTypedAndRunsItOnceChosen) {
    const RunnerMatches matches = match("Adopt CC6 in Kelvo SOC2");
    ASSERT_EQ(matches.size(), 1);
    EXPECT_EQ(matches[0].text, "Adopt CC6 in Kelvo SOC2");
    EXPECT_EQ(matches[0].type, 100);
    EXPECT_EQ(matches[0].properties.value("subtext").toString(), "Adopt a SOC2 control family");
    EXPECT_EQ(match("Ask Kelvo SOC2 why?").value(0).text, "Ask the agent: why?");
    EXPECT_EQ(match("kelvo").size(), 10);
    EXPECT_EQ(match("weather").size(), 0);
    EXPECT_THAT(world_.transcript(), IsEmpty()) << "an offer runs nothing";

    EXPECT_EQ(runner(matches[0].id), "");
    EXPECT_TRUE(QTest::qWaitFor([this] { return raised_ == 1; }, 20'000));
    EXPECT_THAT(*vm_.adopted, ElementsAre("CC6"));
    EXPECT_TRUE(runner("adopt:CC0").startsWith("org.freedesktop.DBus.Error.InvalidArgs"));
}

TEST_F(LauncherTest, AnswersTheSearchOfTheShell) {
    EXPECT_EQ(search({"run", "kelvo"}), QStringList{"run"});
    const auto metas = qdbus_cast<ResultMetas>(
        reply(methodCall(IntentBus::searchPath(application), searchInterface, "GetResultMetas",
                         {QStringList{"adopt:CC6", "nonsense"}}))
            .arguments()
            .value(0));
    ASSERT_EQ(metas.size(), 1);
    EXPECT_EQ(metas[0].value("name").toString(), "Set up controls: CC6");
    EXPECT_EQ(answer(methodCall(IntentBus::searchPath(application), searchInterface,
                                "ActivateResult", {"run", QStringList{"run"}, 0U})),
              "");
    EXPECT_TRUE(QTest::qWaitFor([this] { return *vm_.running; }, 20'000));
}

} // namespace
} // namespace kelvo::test
