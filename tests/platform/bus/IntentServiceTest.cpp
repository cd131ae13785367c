#include <gmock/gmock.h>

#include <QSet>
#include <QTest>
#include <QXmlStreamReader>
#include <utility>
#include <vector>

#include "Desk.h"

namespace kelvo::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const QString approvalDialog =
    QStringLiteral("Confirm with Touch ID to approve and save this to your record.");
const QString runningDialog =
    QStringLiteral("Running. I’ll pause and ask you to approve if anything needs review.");
const QString invalid = QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs: ");

class IntentServiceTest : public Desk {};

TEST_F(IntentServiceTest, AnswersWithTheDialogOnceTheIntentHasRun) {
    EXPECT_EQ(intent("Adopt", {"CC6"}),
              "Setting up Logical & Physical Access (SSO, MFA, MDM). Say “Run Kelvo SOC2”, then "
              "“Approve in Kelvo SOC2” to save it.");
    EXPECT_EQ(vm_.currentTemplate->value(), "CC6");
    EXPECT_EQ(intent("Run"), runningDialog);
    EXPECT_TRUE(*vm_.running);
    EXPECT_EQ(intent("Approve"), approvalDialog) << "nothing is staged";
    EXPECT_EQ(raised_, 3) << "each of the three opens the application";
    EXPECT_THAT(world_.authentication.reasons, IsEmpty());
}

TEST_F(IntentServiceTest, AnswersAQuestionWhenTheModelHasAndOpensNothing) {
    const QDBusPendingCall call = (*caller_).asyncCall(
        methodCall("/org/kelvo/Soc2/Intents", IntentBus::interface, "Ask", {"Why?"}));
    ASSERT_TRUE(QTest::qWaitFor([this] { return world_.model.open() == 1; }, 20'000));
    EXPECT_EQ(intent("Phrases"), "Ask Kelvo SOC2") << "others are answered meanwhile";
    EXPECT_FALSE(call.isFinished());
    world_.model.answer(R"({"answer":"So.","nodes":[],"bonds":[]})");
    EXPECT_EQ(answered(call), "So.");
    EXPECT_EQ(raised_, 0);
}

TEST_F(IntentServiceTest, RefusesAWrongParameterWithAReason) {
    struct Case {
        const char* method;
        QVariantList arguments;
        QString answer;
    };
    const QString unknown = "org.freedesktop.DBus.Error.UnknownMethod";
    for (const Case& each :
         {Case{"Adopt",
               {"CC10"},
               invalid + "“CC10” is no control family. The families are CC1 to CC9."},
          Case{"Ask", {" "}, invalid + "The question is empty."},
          Case{"Ask", {QString(9000, u'x')}, invalid + "The question is longer than 8192 bytes."},
          Case{"Say",
               {"approve in Kelvo"},
               "org.kelvo.Soc2.Error.NotUnderstood: That is none of the phrases, so nothing was "
               "done."},
          Case{"Say",
               {"Ask Kelvo SOC2"},
               "org.kelvo.Soc2.Error.QuestionNeeded: What is the question?"},
          Case{"Adopt", {6}, unknown}, Case{"Run", {"now"}, unknown}, Case{"Ask", {}, unknown},
          Case{"Approve", {true}, unknown}, Case{"Seal", {}, unknown}})
        EXPECT_TRUE(intent(each.method, each.arguments).startsWith(each.answer))
            << each.method << ": " << intent(each.method, each.arguments).toStdString();
    EXPECT_THAT(world_.transcript(), IsEmpty());
    EXPECT_EQ(raised_, 0);
}

TEST_F(IntentServiceTest, AnOpenPromptHoldsIntentsBackAndNoCaller) {
    vm_.pause();
    world_.transcript();
    std::vector<QDBusPendingCall> waiting;
    whilePromptIsOpen(false, [&] {
        const int raisedBefore = raised_;
        for (const auto& [method, arguments] :
             {std::pair{"Adopt", QVariantList{"CC6"}}, std::pair{"Approve", QVariantList{}}})
            waiting.push_back((*caller_).asyncCall(
                methodCall("/org/kelvo/Soc2/Intents", IntentBus::interface, method, arguments)));
        // One connection's calls come in their order; these are answered.
        EXPECT_EQ(intent("Phrases"), "Ask Kelvo SOC2");
        EXPECT_TRUE(intent("Adopt", {"CC0"}).startsWith(invalid));
        EXPECT_THAT(*vm_.adopted, IsEmpty());
        EXPECT_EQ(raised_, raisedBefore) << "the window must not cover the prompt";
        for (const QDBusPendingCall& each : waiting)
            EXPECT_FALSE(each.isFinished());
    });
    EXPECT_EQ(intent("Approve"), approvalDialog);
    EXPECT_TRUE(answered(waiting[0]).startsWith("Setting up"));
    EXPECT_EQ(answered(waiting[1]), approvalDialog);
    EXPECT_THAT(*vm_.adopted, ElementsAre("CC6"));
    EXPECT_EQ(world_.authentication.reasons.size(), 1U) << "the second approval joined the first";
    EXPECT_TRUE(vm_.totems->empty()) << "the person has denied it";
}

TEST_F(IntentServiceTest, ApprovesOnlyWithThePersonsAnswer) {
    vm_.pause();
    bool asked = false;
    whilePromptIsOpen(true, [&] { asked = vm_.totems->empty(); });
    EXPECT_EQ(intent("Approve"), approvalDialog);
    EXPECT_TRUE(asked);
    EXPECT_EQ(vm_.totems->size(), 1U);
}

/// Every method as "interface.name(in) -> out", from what introspection says.
QSet<QString> methods(const QString& introspection) {
    QSet<QString> found;
    QXmlStreamReader xml(introspection);
    QString interface;
    QString line;
    QString out;
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        const QXmlStreamAttributes is = xml.attributes();
        if (token == QXmlStreamReader::StartElement) {
            if (xml.name() == u"interface") interface = is.value("name").toString();
            if (xml.name() == u"method")
                line = interface + "." + is.value("name").toString() + "(", out.clear();
            if (xml.name() == u"arg" && is.value("direction") == u"in") line += is.value("type");
            if (xml.name() == u"arg" && is.value("direction") == u"out") out += is.value("type");
        } else if (token == QXmlStreamReader::EndElement && xml.name() == u"method" &&
                   !interface.startsWith("org.freedesktop.DBus")) {
            found << line + ") -> " + out;
        }
    }
    return found;
}

TEST_F(IntentServiceTest, CanBeIntrospected) {
    struct Case {
        const char* object;
        QSet<QString> methods;
    };
    const QString runner = "org.kde.krunner1.";
    const QString search = "org.gnome.Shell.SearchProvider2.";
    const QString own = "org.kelvo.Soc2.Intents.";
    for (const Case& each :
         {Case{"/Intents",
               {own + "Ask(s) -> s", own + "Adopt(s) -> s", own + "Run() -> s",
                own + "Approve() -> s", own + "Say(s) -> s", own + "Phrases() -> as"}},
          Case{"/Runner",
               {runner + "Actions() -> a(sss)", runner + "Match(s) -> a(sssida{sv})",
                runner + "Run(ss) -> "}},
          Case{"/Search",
               {search + "GetInitialResultSet(as) -> as",
                search + "GetSubsearchResultSet(asas) -> as",
                search + "GetResultMetas(as) -> aa{sv}", search + "ActivateResult(sasu) -> ",
                search + "LaunchSearch(asu) -> "}}})
        EXPECT_EQ(methods(answer(methodCall(applicationPath + each.object,
                                            "org.freedesktop.DBus.Introspectable", "Introspect"))),
                  each.methods)
            << each.object;
}

TEST_F(IntentServiceTest, AThousandHostileCallsChangeNothing) {
    const QStringList arguments{"1000"};
    const auto storm = [&] {
        const Ended ended = Program(KELVO_HOSTILE_CALLER, arguments, bus_.address()).end();
        EXPECT_EQ(ended.code, 0) << ended.errors.toStdString();
        EXPECT_EQ(ended.output, "1000 calls, 1000 refused\n");
    };
    storm();
    EXPECT_THAT(world_.transcript(), IsEmpty());
    EXPECT_THAT(world_.model.requests, IsEmpty());
    EXPECT_THAT(world_.authentication.reasons, IsEmpty());
    EXPECT_EQ(raised_, 0);

    vm_.pause();
    whilePromptIsOpen(false, storm);
    EXPECT_EQ(intent("Approve"), approvalDialog);
    EXPECT_EQ(world_.authentication.reasons.size(), 1U);
    EXPECT_TRUE(vm_.totems->empty());
    EXPECT_EQ(intent("Run"), runningDialog);
}

TEST_F(IntentServiceTest, AFloodOfGoodCallsIsBoundedAndAsksThePersonOnce) {
    vm_.pause();
    std::vector<QDBusPendingCall> calls;
    whilePromptIsOpen(false, [&] {
        for (int i = 0; i < 500; ++i)
            calls.push_back((*caller_).asyncCall(methodCall(
                "/org/kelvo/Soc2/Intents", IntentBus::interface, i % 2 == 0 ? "Approve" : "Run")));
        EXPECT_EQ(intent("Phrases"), "Ask Kelvo SOC2") << "after all of them";
    });
    intent("Approve");
    std::size_t done = 0;
    std::size_t busy = 0;
    for (const QDBusPendingCall& call : calls) {
        const QString text = answered(call);
        if (text == approvalDialog || text == runningDialog) ++done;
        if (text.startsWith("org.freedesktop.DBus.Error.LimitsExceeded: Too many")) ++busy;
    }
    EXPECT_EQ(done, IntentDesk::mostIntents - 1);
    EXPECT_EQ(busy, 500 - done);
    EXPECT_EQ(world_.authentication.reasons.size(), 1U);
}

} // namespace
} // namespace kelvo::test
