#include "intents/IntentRequest.h"
#include "intents/KelvoShortcuts.h"

#include <gmock/gmock.h>

#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include "Desk.h"
#include "Speech.h"

namespace kelvo::test {
namespace {

using ::testing::IsEmpty;

/// A synthesised voice speaks into files, kelvo-voice hears them, the real service runs the intent.
class SpokenPhrasesTest : public Desk, public testing::WithParamInterface<Voice> {
protected:
    void SetUp() override {
        Desk::SetUp();
        for (const char* program : {"espeak-ng", "pocketsphinx_continuous"}) {
            if (QStandardPaths::findExecutable(program).isEmpty())
                GTEST_SKIP() << "NOT TESTED: " << program << " is not installed";
        }
    }
    QStringList spoken(const QStringList& sentences) {
        QStringList arguments{"--mute"};
        for (const QString& sentence : sentences) {
            const QString path = folder_.filePath(QString::number(++files_) + ".wav");
            EXPECT_EQ(speakToFile(sentence, GetParam(), path), "");
            arguments << "--file" << path;
        }
        return arguments;
    }
    Ended hear(const QStringList& sentences) {
        return Program(KELVO_VOICE, spoken(sentences), bus_.address()).end();
    }

    QTemporaryDir folder_;
    int files_ = 0;
};

TEST_P(SpokenPhrasesTest, AreHeardRunAndAnswered) {
    int right = 0;
    int wrong = 0;
    int all = 0;
    for (const SpokenPhrase& phrase : KelvoShortcuts::spokenPhrases()) {
        ++all;
        const Ended ended = hear({QString::fromStdString(phrase.text)});
        const QString expected = "heard: " + QString::fromStdString(intentId(phrase.intent)) + "\n";
        const bool asks = std::holds_alternative<AskKelvoAgentIntent>(phrase.intent);
        const bool answered =
            ended.output.contains(asks ? "\nasks: What is the question?\n" : "\ndialog: ");
        if (ended.output.startsWith(expected) && answered) {
            ++right;
        } else {
            std::printf("%s: %s", phrase.text.c_str(), qPrintable(ended.output + ended.errors));
            if (ended.output.contains("heard: ") && !ended.output.startsWith(expected)) ++wrong;
        }
    }
    std::printf("%s at %d words a minute: %d of %d phrases right, %d wrong\n", GetParam().name,
                GetParam().wordsPerMinute, right, all, wrong);
    EXPECT_GE(10 * right, 9 * all);
    EXPECT_EQ(wrong, 0);
    EXPECT_THAT(world_.authentication.reasons, IsEmpty());
}

TEST_P(SpokenPhrasesTest, NothingRunsForWhatIsNone) {
    vm_.pause(); // an approval would ask the person
    world_.transcript();
    const Ended ended = hear({"Approve",
                              "Approve it now",
                              "Approve the invoice",
                              "Approve in Calgary",
                              "Do not approve in Kelvo SOC two",
                              "Never approve in Kelvo SOC two",
                              "I approve of Kelvo",
                              "Approve Kelvo SOC two",
                              "Approve in Kelvo SOC three",
                              "Remove in Kelvo SOC two",
                              "Run",
                              "Run the washing machine",
                              "Do not run Kelvo SOC two",
                              "Ask me later",
                              "Ask Kevin about the socks",
                              "Adopt a dog",
                              "Adopt a cat in Cologne",
                              "Set up a meeting for six in the evening",
                              "Adopt C C ten in Kelvo SOC two",
                              "Set up the printer in the office",
                              "Hello, how are you today?",
                              "What is the weather like in London?",
                              "The quick brown fox jumps over the lazy dog",
                              "Please send the report to Kelvin by two",
                              "Confirm with Touch ID to approve and save this to your record."});
    EXPECT_EQ(ended.code, 0) << ended.errors.toStdString();
    EXPECT_EQ(ended.output.count("heard: "), 0) << ended.output.toStdString();
    EXPECT_GE(ended.output.count("ignored: "), 20) << ended.output.toStdString();
    EXPECT_THAT(world_.transcript(), IsEmpty());
}

TEST_P(SpokenPhrasesTest, TheQuestionIsTheNextUtterance) {
    Program voice(KELVO_VOICE, spoken({"Ask Kelvo SOC2", "What is missing today?"}),
                  bus_.address());
    ASSERT_TRUE(QTest::qWaitFor([this] { return world_.model.open() == 1; }, 60'000));
    EXPECT_FALSE(world_.model.requests[0].prompt.empty());
    world_.model.answer(R"({"answer":"Two reviews.","nodes":[],"bonds":[]})");
    EXPECT_TRUE(voice.end().output.endsWith("dialog: Two reviews.\n"));
}

INSTANTIATE_TEST_SUITE_P(Voices, SpokenPhrasesTest,
                         testing::Values(Voice{"en-us", 150}, Voice{"en-us", 175},
                                         Voice{"en-us+m3", 150}),
                         [](const auto& chosen) {
                             return "Number" + std::to_string(chosen.index);
                         });

} // namespace
} // namespace kelvo::test
