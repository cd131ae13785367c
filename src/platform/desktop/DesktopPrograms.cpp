#include "platform/desktop/DesktopPrograms.h"

#include <fcntl.h>

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QDBusUnixFileDescriptor>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <QVariantMap>
#include <memory>
#include <utility>

namespace kelvo {
namespace {

constexpr int portalAnswersWithinMs = 3000;
constexpr int agentAnswersWithinMs = 1000;
/// A key in hardware waits for a touch.
constexpr int signatureWithinMs = 60'000;

/// Opened for reading only: what is shown cannot be written through.
QVariant readable(const std::filesystem::path& path) {
    const int number = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    QDBusUnixFileDescriptor descriptor;
    if (number >= 0) descriptor.giveFileDescriptor(number);
    return QVariant::fromValue(descriptor);
}

bool startOpener(const QString& what) {
    return QProcess::startDetached(QStringLiteral("xdg-open"), {what});
}

QProcessEnvironment withoutQuestions() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("SSH_ASKPASS_REQUIRE"), QStringLiteral("never"));
    return environment;
}

} // namespace

DesktopPrograms::DesktopPrograms(QDBusConnection bus) : bus_(std::move(bus)) {
}

bool DesktopPrograms::askPortal(const QString& interface, const QString& method,
                                const QVariantList& arguments) {
    if (!bus_.isConnected()) return false;
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"),
        QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.") + interface, method);
    call.setArguments(arguments);
    const QDBusMessage reply = bus_.call(call, QDBus::Block, portalAnswersWithinMs);
    return reply.type() == QDBusMessage::ReplyMessage;
}

bool DesktopPrograms::open(const std::filesystem::path& path) {
    const bool taken = askPortal(QStringLiteral("OpenURI"), QStringLiteral("OpenFile"),
                                 {QString(), readable(path), QVariantMap{{"writable", false}}});
    return taken || startOpener(QFile::decodeName(path.c_str()));
}

bool DesktopPrograms::compose(const std::string& mailto) {
    const QString address = QString::fromStdString(mailto);
    return askPortal(QStringLiteral("OpenURI"), QStringLiteral("OpenURI"),
                     {QString(), address, QVariantMap()}) ||
           startOpener(address);
}

bool DesktopPrograms::print(const std::string& title, const std::filesystem::path& pdf) {
    return askPortal(QStringLiteral("Print"), QStringLiteral("Print"),
                     {QString(), QString::fromStdString(title), readable(pdf), QVariantMap()}) ||
           open(pdf);
}

std::vector<SigningKey> DesktopPrograms::signingKeys() {
    QProcess agent;
    agent.setProcessEnvironment(withoutQuestions());
    agent.start(QStringLiteral("/usr/bin/ssh-add"), {QStringLiteral("-L")}, QIODevice::ReadOnly);
    if (!agent.waitForFinished(agentAnswersWithinMs) || agent.exitCode() != 0) return {};
    std::vector<SigningKey> keys;
    for (const QByteArray& line : agent.readAllStandardOutput().split('\n')) {
        const QByteArrayList fields = line.split(' ');
        if (fields.size() < 2) continue;
        keys.push_back({line.toStdString(), fields.mid(2).join(' ').toStdString()});
    }
    return keys;
}

void DesktopPrograms::sign(const SigningKey& key, std::string_view nameSpace,
                           const std::string& text,
                           std::function<void(std::optional<std::string>)> done) {
    // The public key goes by a file; the text by standard input, since a signature file that is
    // there already would be kept silently.
    const auto folder = std::make_shared<QTemporaryDir>();
    QFile publicKey(folder->filePath(QStringLiteral("key.pub")));
    const bool written = publicKey.open(QIODevice::WriteOnly) &&
                         publicKey.write(QByteArray::fromStdString(key.line + "\n")) > 0;
    publicKey.close();
    auto* signer = new QProcess(&context_);
    auto* patience = new QTimer(signer);
    const auto finish = [signer, folder, done = std::move(done)](bool ended) {
        const bool signedIt =
            ended && signer->exitStatus() == QProcess::NormalExit && signer->exitCode() == 0;
        const std::string signature = signer->readAllStandardOutput().toStdString();
        signer->deleteLater();
        done(signedIt && !signature.empty() ? std::optional(signature) : std::nullopt);
    };
    QObject::connect(signer, &QProcess::finished, signer, [finish] { finish(true); });
    QObject::connect(signer, &QProcess::errorOccurred, signer,
                     [finish](QProcess::ProcessError why) {
                         // Any other error is followed by the end of the process.
                         if (why == QProcess::FailedToStart) finish(false);
                     });
    QObject::connect(patience, &QTimer::timeout, signer, &QProcess::kill);
    patience->setSingleShot(true);
    patience->start(signatureWithinMs);
    signer->setProcessEnvironment(withoutQuestions());
    if (!written) {
        QTimer::singleShot(0, signer, [finish] { finish(false); });
        return;
    }
    QObject::connect(signer, &QProcess::started, signer, [signer, text] {
        signer->write(QByteArray::fromStdString(text));
        signer->closeWriteChannel();
    });
    const QString space =
        QString::fromUtf8(nameSpace.data(), static_cast<qsizetype>(nameSpace.size()));
    QTimer::singleShot(0, signer, [signer, space, name = publicKey.fileName()] {
        signer->start(QStringLiteral("/usr/bin/ssh-keygen"),
                      {QStringLiteral("-Y"), QStringLiteral("sign"), QStringLiteral("-f"), name,
                       QStringLiteral("-n"), space});
    });
}

} // namespace kelvo
