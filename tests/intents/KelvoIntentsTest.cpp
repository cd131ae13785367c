#include "intents/KelvoIntents.h"

#include "support/World.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvo {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

/// What came of an intent, in one line.
class Outcome {
public:
    IntentDone done() {
        return [this](const tl::expected<std::string, IntentFailure>& got) {
            text += got ? *got : "FAILED " + got.error().description;
        };
    }
    std::string text;
};

const std::string question = "a mass on a spring";

TEST(AskKelvoAgentIntent, SaysTheAnswerThatCameWithoutAGraph) {
    test::World world;
    EngineVM& vm = world.start();
    world.transcript();
    Outcome outcome;
    AskKelvoAgentIntent{"What is missing?"}.perform({vm, world.model}, outcome.done());
    EXPECT_THAT(world.transcript(), IsEmpty()) << "nothing happens before the model answers";
    world.model.answer(R"({"answer":"Two reviews.","nodes":[],"bonds":[]})");
    EXPECT_EQ(world.model.requests[0].prompt, "What is missing?");
    EXPECT_EQ(outcome.text, "Two reviews.");
    EXPECT_THAT(world.transcript(), ElementsAre("reply Two reviews."));
}

TEST(AskKelvoAgentIntent, InstallsTheGraphAndStillAnswersInTheModelsWords) {
    test::World world;
    EngineVM& vm = world.start();
    world.transcript();
    Outcome outcome;
    AskKelvoAgentIntent{question}.perform({vm, world.model}, outcome.done());
    world.model.answer(R"({"answer":"Built.","nodes":[{"id":"F","kind":"Se"},)"
                       R"({"id":"j","kind":"j1"},{"id":"m","kind":"I","param":2}],)"
                       R"("bonds":[{"from":"F","to":"j"},{"from":"j","to":"m"}]})");
    EXPECT_EQ(outcome.text, "Built.");
    EXPECT_EQ(vm.seID(), "F");
    const auto lines = world.transcript();
    EXPECT_THAT(lines, Contains(HasSubstr("Siri → \"" + question + "\"")));
    EXPECT_EQ(lines.back(), "reply Set up a model for that. Tap Run to see how it behaves.");
}

struct NoAnswer {
    const char* name;
    int version;
    const char* unavailable; ///< the platform's reason, if any
    const char* failure;     ///< the model's, if it is asked
    const char* outcome;
};

TEST(AskKelvoAgentIntent, ChangesNothingWithoutAnAnswer) {
    for (const NoAnswer& each :
         {NoAnswer{"old layer", 25, nullptr, nullptr, "Apple Intelligence needs macOS 26."},
          NoAnswer{"unavailable", 26, "off", nullptr,
                   "FAILED Apple Intelligence unavailable: off. Enable it in System Settings ▸ "
                   "Apple Intelligence & Siri."},
          NoAnswer{"failing", 26, nullptr, "too long", "FAILED too long"}}) {
        test::World world;
        EngineVM& vm = world.start();
        world.transcript();
        world.model.version = each.version;
        if (each.unavailable != nullptr) world.model.unavailable = each.unavailable;
        Outcome outcome;
        AskKelvoAgentIntent{question}.perform({vm, world.model}, outcome.done());
        if (each.failure != nullptr) world.model.fail(each.failure);
        EXPECT_EQ(outcome.text, each.outcome) << each.name;
        EXPECT_EQ(world.model.requests.size(), each.failure == nullptr ? 0U : 1U) << each.name;
        EXPECT_THAT(world.transcript(), IsEmpty()) << each.name;
    }
}

TEST(AskKelvoAgentIntent, IsForgottenWithAnEngineThatIsGone) {
    test::World world;
    Outcome outcome;
    AskKelvoAgentIntent{question}.perform({world.start(), world.model}, outcome.done());
    world.stop();
    world.model.answer(R"({"answer":"late","nodes":[],"bonds":[]})");
    EXPECT_EQ(outcome.text, "");
}

TEST(AdoptFamilyIntent, FindsTheTemplateOfEveryFamily) {
    test::World world;
    EngineVM& vm = world.start();
    for (const CCFamily family : allCCFamilies) {
        Outcome outcome;
        AdoptFamilyIntent{family}.perform({vm, world.model}, outcome.done());
        EXPECT_EQ(vm.currentTemplate->value(), rawValue(family));
        EXPECT_THAT(outcome.text, StartsWith("Setting up "));
    }
    Outcome outcome;
    AdoptFamilyIntent{CCFamily::cc6}.perform({vm, world.model}, outcome.done());
    EXPECT_EQ(outcome.text,
              "Setting up Logical & Physical Access (SSO, MFA, MDM). Say “Run Kelvo SOC2”, then "
              "“Approve in Kelvo SOC2” to save it.");
}

TEST(AdoptFamilyIntent, KnowsNoFamilyThatTheTableLacks) {
    test::World world;
    EngineVM& vm = world.start();
    world.transcript();
    Outcome outcome;
    AdoptFamilyIntent{CCFamily::cc6}.perform(
        {vm, world.model, std::span(SOC2Templates::all()).first(5)}, outcome.done());
    EXPECT_EQ(outcome.text, "I don't know family CC6.");
    EXPECT_THAT(world.transcript(), IsEmpty());
}

TEST(PlayKelvoIntent, RunsAndAnswersTheSameWhenItRunsAlready) {
    test::World world;
    EngineVM& vm = world.start();
    for (int i = 0; i < 2; ++i) {
        Outcome outcome;
        PlayKelvoIntent{}.perform({vm, world.model}, outcome.done());
        EXPECT_EQ(outcome.text,
                  "Running. I’ll pause and ask you to approve if anything needs review.");
    }
    EXPECT_EQ(world.ticker.starts, 1);
}

TEST(SealKelvoIntent, GivesOneDialogWhateverThePersonAnswersAndSealsOnlyWithThem) {
    struct Case {
        const char* name;
        bool staged, granted;
        std::size_t asked, sealed;
    };
    for (const Case& each :
         {Case{"nothing staged", false, true, 0, 0}, Case{"denied", true, false, 1, 0},
          Case{"granted", true, true, 1, 1}}) {
        test::World world;
        EngineVM& vm = world.start();
        if (each.staged) vm.pause();
        world.authentication.answer = each.granted;
        Outcome outcome;
        SealKelvoIntent{}.perform({vm, world.model}, outcome.done());
        EXPECT_EQ(outcome.text, "Confirm with Touch ID to approve and save this to your record.");
        EXPECT_EQ(world.authentication.reasons.size(), each.asked) << each.name;
        EXPECT_EQ(vm.totems->size(), each.sealed) << each.name;
    }
}

TEST(KelvoIntents, WaitWhileThePersonIsAskedAndSpeakOnlyOnceTheyHaveRun) {
    test::World world;
    EngineVM& vm = world.startAsOwner({{"A"}});
    world.filePanel.choice = world.write("e.txt", "e");
    Outcome ask;
    AskKelvoAgentIntent{"q"}.perform({vm, world.model}, ask.done());
    Outcome others;
    world.authentication.whileAsking = [&] {
        AdoptFamilyIntent{CCFamily::cc6}.perform({vm, world.model}, others.done());
        PlayKelvoIntent{}.perform({vm, world.model}, others.done());
        world.model.answer(R"({"answer":"late","nodes":[],"bonds":[]})");
        EXPECT_EQ(ask.text + others.text, "");
        EXPECT_THAT(*vm.adopted, IsEmpty());
        EXPECT_FALSE(*vm.running);
        EXPECT_EQ(*vm.reply, "");
    };
    vm.closeGap("A");
    EXPECT_THAT(others.text, StartsWith("Setting up"));
    EXPECT_THAT(others.text, HasSubstr("it.Running."));
    EXPECT_EQ(ask.text, "late");
    EXPECT_TRUE(*vm.running);
}

} // namespace
} // namespace kelvo
