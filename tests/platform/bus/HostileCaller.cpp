// Calls the application in every wrong way that a library lets one, many at a time, and prints how
// many of the calls were refused. Its choices come from a fixed seed.

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <cstdio>
#include <random>
#include <vector>

namespace {

struct Target {
    const char* path;
    const char* interface;
    const char* method;
    const char* signature; ///< of the arguments that it takes; "-" for a method that is not there
};

const std::vector<Target> targets{
    {"/org/kelvo/Soc2/Intents", "org.kelvo.Soc2.Intents", "Ask", "s"},
    {"/org/kelvo/Soc2/Intents", "org.kelvo.Soc2.Intents", "Adopt", "s"},
    {"/org/kelvo/Soc2/Intents", "org.kelvo.Soc2.Intents", "Say", "s"},
    {"/org/kelvo/Soc2/Intents", "org.kelvo.Soc2.Intents", "Run", ""},
    {"/org/kelvo/Soc2/Intents", "org.kelvo.Soc2.Intents", "Approve", ""},
    {"/org/kelvo/Soc2/Intents", "org.kelvo.Soc2.Intents", "approve", "-"},
    {"/org/kelvo/Soc2/Intents", "org.kelvo.Soc2.Intents", "deleteLater", "-"},
    {"/org/kelvo/Soc2/Intents", "org.freedesktop.DBus.Properties", "Set", "-"},
    {"/org/kelvo/Soc2/Intents", "org.kde.krunner1", "Run", "-"},
    {"/org/kelvo/Soc2/Runner", "org.kde.krunner1", "Run", "ss"},
    {"/org/kelvo/Soc2/Search", "org.gnome.Shell.SearchProvider2", "ActivateResult", "sasu"},
    {"/org/kelvo/Soc2/Engine", "org.kelvo.Soc2.Intents", "Approve", "-"},
    {"/", "org.kelvo.Soc2.Intents", "Approve", "-"},
};

/// Values of which none is a question, a family, a phrase or the id of an offer.
QVariant value(std::mt19937& random) {
    const std::vector<QVariant> values{
        QString(),
        QString(" \n\t"),
        QString(1 << 20, u' '),
        QString(1 << 18, QChar(0x20ac)),
        6,
        -1.5,
        true,
        QByteArray("CC6"),
        QByteArray(1 << 16, '\xff'),
        QStringList{"CC6", "CC7"},
        QVariantMap{{"family", "CC6"}},
        QVariant::fromValue(QDBusVariant("CC6")),
        QVariant::fromValue(QDBusObjectPath("/CC6")),
        QVariantList{1, "two", 3.0},
    };
    return values[random() % values.size()];
}

QVariantList arguments(const Target& target, std::mt19937& random) {
    // The right types with texts that mean nothing, now and then.
    if (std::string(target.signature) == "ss" && random() % 3 == 0)
        return {QString("adopt:CC10"), QString()};
    if (std::string(target.signature) == "sasu" && random() % 3 == 0)
        return {QString("approve:"), QStringList{"x"}, 6U};
    while (true) {
        QVariantList chosen;
        for (auto left = random() % 4; left > 0; --left)
            chosen << value(random);
        // None is what the two methods without parameters take.
        if (!chosen.isEmpty() || *target.signature != '\0') return chosen;
    }
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const int count = QCoreApplication::arguments().value(1).toInt();
    std::mt19937 random(20); // NOLINT(cert-msc51-cpp): the same storm each time
    QDBusConnection bus = QDBusConnection::sessionBus();
    std::vector<QDBusPendingCall> calls;
    for (int i = 0; i < count; ++i) {
        const Target& target = targets[random() % targets.size()];
        QDBusMessage call = QDBusMessage::createMethodCall("org.kelvo.Soc2", target.path,
                                                           target.interface, target.method);
        call.setArguments(arguments(target, random));
        calls.push_back(bus.asyncCall(call, 60'000));
    }
    int refused = 0;
    for (QDBusPendingCall& call : calls) {
        call.waitForFinished();
        if (call.isError() && call.error().type() != QDBusError::NoReply) {
            ++refused;
        } else {
            std::fprintf(stderr, "answered: %s\n", qPrintable(call.error().message()));
        }
    }
    std::printf("%d calls, %d refused\n", count, refused);
    return 0;
}
