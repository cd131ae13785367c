#include "clients/Listener.h"

#include "intents/VoiceGrammar.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <utility>

namespace kelvo {
namespace {

const QString program = QStringLiteral("pocketsphinx_continuous");
const QString acousticModel = QStringLiteral("/en-us");
const QString dictionary = QStringLiteral("/cmudict-en-us.dict");
const QString languageModel = QStringLiteral("/en-us.lm.bin");
const QString grammarFile = QStringLiteral("/phrases.gram");
const QString wordsFile = QStringLiteral("/phrases.dict");

/// Found by trial on spoken phrases and on sentences that are none: with more insertion penalty the
/// grammar bends other sentences into phrases, with less the single sounds win over real phrases.
/// The beams are wide; so small a grammar costs nothing.
const QStringList tuning{"-wip", "1e-2", "-beam", "1e-100", "-wbeam", "1e-80", "-pbeam", "1e-100"};

bool write(const QString& path, const std::string& text) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) &&
           file.write(text.data(), qint64(text.size())) == qint64(text.size());
}

} // namespace

Listener::Listener(QString model, QStringList files)
    : model_(std::move(model)), files_(std::move(files)), microphone_(files_.isEmpty()) {
}

Listener::~Listener() {
    rest();
}

QStringList Listener::missing() const {
    QStringList sentences;
    if (QStandardPaths::findExecutable(program).isEmpty()) {
        sentences << QStringLiteral("The speech recogniser %1 is not installed (Debian package "
                                    "pocketsphinx).")
                         .arg(program);
    }
    for (const QString& part : {acousticModel, dictionary, languageModel}) {
        if (QFileInfo::exists(model_ + part)) continue;
        sentences << QStringLiteral("The speech model %1 is not there (Debian package "
                                    "pocketsphinx-en-us).")
                         .arg(model_ + part);
    }
    for (const QString& file : files_) {
        if (!QFileInfo(file).isReadable())
            sentences << QStringLiteral("The sound file %1 cannot be read.").arg(file);
    }
    return sentences;
}

std::optional<QString> Listener::listen(Mode mode) {
    if (recogniser_ && mode != mode_) rest();
    while (true) {
        if (!recogniser_ && !startNext(mode)) return std::nullopt;
        if (auto line = readLine()) return line;
        rest();
        if (microphone_) {
            failure_ = QStringLiteral("The recogniser has ended. Is there a microphone, and may "
                                      "this program use it?");
            return std::nullopt;
        }
    }
}

void Listener::rest() {
    if (!recogniser_) return;
    recogniser_->kill();
    recogniser_->waitForFinished();
    recogniser_.reset();
}

bool Listener::prepareGrammar() {
    if (hasGrammar_) return true;
    QFile known(model_ + dictionary);
    if (!known.open(QIODevice::ReadOnly)) {
        failure_ = QStringLiteral("%1 cannot be read.").arg(known.fileName());
        return false;
    }
    const QByteArray text = known.readAll();
    const auto words = VoiceGrammar::pronunciations({text.constData(), std::size_t(text.size())});
    if (!words) {
        failure_ = QStringLiteral("%1 does not know the word “%2”.")
                       .arg(known.fileName(), QString::fromStdString(words.error()));
        return false;
    }
    hasGrammar_ = folder_.isValid() && write(folder_.path() + wordsFile, *words) &&
                  write(folder_.path() + grammarFile, VoiceGrammar::grammar());
    if (!hasGrammar_) failure_ = QStringLiteral("The grammar cannot be written to a file.");
    return hasGrammar_;
}

bool Listener::startNext(Mode mode) {
    if (!microphone_ && files_.isEmpty()) return false;
    if (mode == Mode::phrases && !prepareGrammar()) return false;
    QStringList arguments{"-hmm", model_ + acousticModel, "-logfn", "/dev/null"};
    if (microphone_) {
        arguments << "-inmic"
                  << "yes";
    } else {
        arguments << "-infile" << files_.takeFirst();
    }
    if (mode == Mode::phrases) {
        arguments << "-dict" << folder_.path() + wordsFile << "-jsgf"
                  << folder_.path() + grammarFile << tuning;
    } else {
        arguments << "-dict" << model_ + dictionary << "-lm" << model_ + languageModel;
    }
    mode_ = mode;
    recogniser_ = std::make_unique<QProcess>();
    recogniser_->setProcessChannelMode(QProcess::SeparateChannels);
    recogniser_->setStandardErrorFile(QProcess::nullDevice());
    recogniser_->start(program, arguments, QIODevice::ReadOnly);
    if (recogniser_->waitForStarted()) return true;
    failure_ = QStringLiteral("%1 does not start.").arg(program);
    recogniser_.reset();
    return false;
}

std::optional<QString> Listener::readLine() {
    while (!recogniser_->canReadLine()) {
        if (recogniser_->state() == QProcess::NotRunning) return std::nullopt;
        recogniser_->waitForReadyRead(-1);
    }
    return QString::fromUtf8(recogniser_->readLine()).trimmed();
}

} // namespace kelvo
