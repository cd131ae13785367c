#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>
#include <optional>

class QProcess;

namespace kelvo {

/// Hears one utterance after the other by the program pocketsphinx_continuous, which needs no
/// network. What is said comes from the microphone, or from sound files (WAV, one channel, 16 bits,
/// 16 kHz) in their order.
class Listener {
public:
    enum class Mode {
        phrases,  ///< only the phrases of the intents are known
        dictation ///< any English sentence, much less surely
    };

    /// `model` is the folder of a model as the package pocketsphinx-en-us installs it. With no
    /// files the microphone is used.
    explicit Listener(QString model, QStringList files = {});
    ~Listener();
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    /// What keeps it from hearing, each a sentence that names the package to install; empty when
    /// nothing does.
    QStringList missing() const;

    /// Waits for the next utterance and gives the recogniser's hypothesis, which may be empty. None
    /// when the files are heard to the end, or the recogniser has ended by itself: `failure()` then
    /// says why.
    std::optional<QString> listen(Mode mode);
    QString failure() const { return failure_; }

    /// Stops listening until `listen` is called again, so that what is spoken aloud meanwhile is
    /// not heard.
    void rest();

private:
    bool prepareGrammar();
    bool startNext(Mode mode);
    std::optional<QString> readLine();

    QString model_;
    QStringList files_;
    bool microphone_;
    bool hasGrammar_ = false;
    QString failure_;
    QTemporaryDir folder_;
    Mode mode_ = Mode::phrases;
    std::unique_ptr<QProcess> recogniser_;
};

} // namespace kelvo
