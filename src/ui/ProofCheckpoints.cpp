// The checkpoints of the Proof page: made, shown, handed on, signed and checked.

#include "base/Files.h"
#include "base/Text.h"
#include "proof/ProofWords.h"
#include "ui/CheckpointSheet.h"
#include "ui/ProofView.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QTimer>

namespace kelvo {
namespace {

QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

/// An answer as a sentence of its own.
QString sentence(const std::string& words) {
    const QString shown = text(words);
    return shown.endsWith(u'.') ? shown : shown + u'.';
}

} // namespace

int ProofView::checkpointCount() const {
    return static_cast<int>(comparison().checkpoints.size());
}

QString ProofView::checkpointReminder() const {
    return mayDecide() ? text(kelvo::checkpointReminder(comparison())) : QString();
}

QStringList ProofView::checkpoints() const {
    QStringList rows;
    const auto& all = comparison().checkpoints;
    for (auto each = all.rbegin(); each != all.rend(); ++each) {
        rows.append(QStringLiteral("%1, %2 lines")
                        .arg(dayOf(each->checkpoint.at(), comparison().now))
                        .arg(each->checkpoint.lines()));
    }
    return rows;
}

void ProofView::makeCheckpoint() {
    QTimer::singleShot(0, this, [this] { engine_.makeCheckpoint(); });
}

void ProofView::showCheckpoint(int row) {
    const auto& all = comparison().checkpoints;
    if (row < 0 || static_cast<std::size_t>(row) >= all.size()) return;
    const StoredCheckpoint& stored = all[all.size() - 1 - static_cast<std::size_t>(row)];
    showText(stored.checkpoint, stored.fileName);
    Q_EMIT checkpointMade();
}

void ProofView::showText(const Checkpoint& checkpoint, const std::string& fileName) {
    checkpoint_ = checkpoint;
    checkpointFile_ = fileName;
    handed_.clear();
    keys_ = programs_.signingKeys();
    std::vector<CheckpointRow> rows;
    for (const CheckpointBlock& block : checkpoint.blocks) {
        const ComparedLog* log = comparison().log(block.log);
        rows.push_back({text(block.sha256.substr(0, 8) + " " + block.sha256.substr(8, 8)),
                        QStringLiteral("%1, %2 lines, the first 16 digits")
                            .arg(text(logName(log == nullptr ? "" : log->computer, block.log)))
                            .arg(block.lines)});
    }
    checkpointLogs_.show(std::move(rows));
    Q_EMIT checkpointChanged();
}

QString ProofView::checkpointText() const {
    return checkpoint_.blocks.empty() ? QString() : text(kelvo::checkpointText(checkpoint_));
}

QStringList ProofView::signingKeys() const {
    QStringList names;
    for (const SigningKey& key : keys_)
        names.append(text(withControlsShown(key.comment)));
    return names;
}

void ProofView::tell(const QString& words) {
    handed_ = words;
    Q_EMIT checkpointChanged();
}

void ProofView::printCheckpoint() {
    const QString file = shown_.filePath("checkpoint.pdf");
    if (!writeCheckpointPdf(checkpointText(), file)) {
        return tell("The page could not be made.");
    }
    const bool taken = programs_.print(
        "Seal log checkpoint", std::filesystem::path(QFile::encodeName(file).toStdString()));
    tell(taken ? "The page was given to the print dialog." : "No program here prints or shows it.");
}

void ProofView::sendCheckpoint() {
    const CheckpointMail mail = checkpointMail(checkpoint_);
    if (!programs_.compose(mail.url))
        return tell("No mail program answered. Copy the text instead.");
    tell(mail.attach ? "A message was opened. Save the checkpoint and attach the file."
                     : "A message was opened in your mail program. Nothing was sent yet.");
}

void ProofView::copyCheckpoint() {
    QGuiApplication::clipboard()->setText(checkpointText());
    tell("Copied.");
}

void ProofView::saveCheckpoint(const QUrl& url) {
    const std::filesystem::path file(QFile::encodeName(url.toLocalFile()).toStdString());
    const bool pdf = url.toLocalFile().endsWith(".pdf", Qt::CaseInsensitive);
    if (pdf) {
        const bool written = writeCheckpointPdf(checkpointText(), url.toLocalFile());
        return tell(written ? "Saved." : "The file could not be written.");
    }
    const auto written = writeFileAtomically(file, checkpointText().toStdString());
    tell(written ? QStringLiteral("Saved.") : "Not saved: " + text(written.error().description));
}

void ProofView::signCheckpoint(int key) {
    if (key < 0 || static_cast<std::size_t>(key) >= keys_.size()) return;
    tell("Your key signs. A key in hardware waits for a touch.");
    programs_.sign(keys_[static_cast<std::size_t>(key)], "checkpoint@kelvo-soc2",
                   checkpointText().toStdString(), [this](std::optional<std::string> signature) {
                       if (!signature) return tell("The key gave no signature.");
                       const auto written = engine_.storeSignature(checkpointFile_, *signature);
                       tell(written ? QStringLiteral("Signed: %1.sig lies beside the checkpoint.")
                                          .arg(text(checkpointFile_))
                                    : "Not stored: " + text(written.error().description));
                   });
}

void ProofView::checkCheckpoint(const QString& pasted) {
    const auto checkpoint = parseCheckpoint(pasted.toStdString());
    answers_.clear();
    answersHold_ = false;
    if (!checkpoint) {
        answers_.append(text(withControlsShown(checkpoint.error())));
    } else {
        const CheckpointCheck check = kelvo::checkCheckpoint(*checkpoint, comparison());
        answersHold_ = check.holds();
        for (const CheckpointAnswer& answer : check.answers)
            answers_.append(sentence(answer.sentence));
        for (const std::string& words : check.notes)
            answers_.append(sentence(words));
    }
    Q_EMIT answersChanged();
}

void ProofView::checkCheckpointFile(const QUrl& url) {
    const std::filesystem::path file(QFile::encodeName(url.toLocalFile()).toStdString());
    constexpr std::size_t largest = std::size_t{1} << 20;
    const auto bytes = readFile(file, largest);
    if (bytes) return checkCheckpoint(text(toValidUtf8(*bytes)));
    answers_ = {"The file cannot be read: " + text(bytes.error().description)};
    answersHold_ = false;
    Q_EMIT answersChanged();
}

} // namespace kelvo
