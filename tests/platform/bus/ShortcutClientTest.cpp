#include <gmock/gmock.h>

#include <QTest>

#include "Desk.h"

namespace kelvo::test {
namespace {

class ShortcutClientTest : public Desk {};

TEST_F(ShortcutClientTest, PrintsTheDialogOrWhyThereIsNoneAndEndsWithItsCode) {
    struct Case {
        QStringList arguments;
        int code;
        const char* output;
        const char* errors;
    };
    for (const Case& each :
         {Case{{"run"},
               0,
               "Running. I’ll pause and ask you to approve if anything needs review.\n",
               ""},
          Case{{"say", "run", "kelvo", "soc two"},
               0,
               "Running. I’ll pause and ask you to approve if anything needs review.\n",
               ""},
          Case{{"approve"},
               0,
               "Confirm with Touch ID to approve and save this to your record.\n",
               ""},
          Case{{"adopt", "cc6"},
               2,
               "",
               "kelvo-shortcut: “cc6” is no control family. The families are CC1 to CC9.\n"},
          Case{{"ask"}, 2, "", "kelvo-shortcut: The question is empty.\n"},
          Case{{"run", "now"}, 2, "", "kelvo-shortcut: “run” takes no parameter.\n"},
          Case{{"list", "all"}, 2, "", "kelvo-shortcut: “list” takes no parameter.\n"},
          Case{{"say"}, 2, "", "kelvo-shortcut: There is no phrase.\n"},
          Case{{"say", "run it"},
               4,
               "",
               "kelvo-shortcut: That is none of the phrases, so nothing was done.\n"},
          Case{{"say", "Ask Kelvo SOC2"}, 4, "", "kelvo-shortcut: What is the question?\n"}})
        EXPECT_EQ(shortcut(each.arguments), (Ended{each.code, each.output, each.errors}))
            << each.arguments.join(' ').toStdString();
    EXPECT_EQ(shortcut({}).code, 2);
    EXPECT_EQ(shortcut({"--help"}).code, 0);
    EXPECT_TRUE(
        shortcut({"list"}).output.contains("\nApprove and save\n  Approve in Kelvo SOC2\n"));
}

TEST_F(ShortcutClientTest, TellsWhyTheModelGaveNoAnswer) {
    Program ask(KELVO_SHORTCUT, {"ask", "Why", "so?"}, bus_.address());
    ASSERT_TRUE(QTest::qWaitFor([this] { return world_.model.open() == 1; }, 20'000));
    EXPECT_EQ(world_.model.requests[0].prompt, "Why so?");
    world_.model.fail("too long");
    EXPECT_EQ(ask.end(), (Ended{1, "", "kelvo-shortcut: too long\n"}));
}

TEST_F(ShortcutClientTest, TellsThatTooMuchIsUnderWay) {
    for (std::size_t i = 0; i < IntentDesk::mostQuestions; ++i)
        service_.runLater(AskKelvoAgentIntent{"q"});
    ASSERT_TRUE(QTest::qWaitFor([this] { return world_.model.open() == IntentDesk::mostQuestions; },
                                20'000));
    EXPECT_EQ(shortcut({"ask", "q"}).code, 5);
    EXPECT_EQ(shortcut({"run"}).code, 0);
}

TEST(ShortcutClient, EndsWithThreeWhereNobodyAnswers) {
    const PrivateBus bus;
    const Ended nobody = Program(KELVO_SHORTCUT, {"run"}, bus.address()).end();
    EXPECT_EQ(nobody.code, 3);
    EXPECT_TRUE(nobody.errors.startsWith("kelvo-shortcut: "));
    EXPECT_EQ(Program(KELVO_SHORTCUT, {"run"}, "unix:path=/nowhere").end(),
              (Ended{3, "", "kelvo-shortcut: There is no session bus.\n"}));
}

TEST(ShortcutClient, CompletesCommandsFamiliesAndPhrases) {
    struct Case {
        const char* words;
        const char* completions;
    };
    const PrivateBus bus;
    for (const Case& each :
         {Case{"a", "ask adopt approve"}, Case{"adopt cc", "CC1 CC2 CC3 CC4 CC5 CC6 CC7 CC8 CC9"},
          Case{"say app", "Approve\\ in\\ Kelvo\\ SOC2"}, Case{"run x", ""}}) {
        const QString script =
            QString("source '%1'; PATH=$(dirname '%2'):$PATH; COMP_WORDS=(kelvo-shortcut %3); "
                    "COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _kelvo_shortcut; "
                    "echo \"${COMPREPLY[*]}\"")
                .arg(KELVO_COMPLETION, KELVO_SHORTCUT, each.words);
        EXPECT_EQ(Program("/bin/bash", {"-c", script}, bus.address()).end().output.trimmed(),
                  each.completions)
            << each.words;
    }
}

} // namespace
} // namespace kelvo::test
