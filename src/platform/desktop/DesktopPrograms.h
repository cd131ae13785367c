#pragma once

#include "ports/OtherPrograms.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>

namespace kelvo {

/// The person's programs as a Linux desktop offers them: its portal on the session bus
/// (org.freedesktop.portal.OpenURI and .Print) first, which says whether anybody is there, and
/// `xdg-open` where there is no portal; signatures by OpenSSH's `ssh-add` and `ssh-keygen`.
class DesktopPrograms : public OtherPrograms {
public:
    explicit DesktopPrograms(QDBusConnection bus = QDBusConnection::sessionBus());

    bool open(const std::filesystem::path& path) override;
    bool compose(const std::string& mailto) override;
    bool print(const std::string& title, const std::filesystem::path& pdf) override;
    std::vector<SigningKey> signingKeys() override;
    void sign(const SigningKey& key, std::string_view nameSpace, const std::string& text,
              std::function<void(std::optional<std::string>)> done) override;

private:
    bool askPortal(const QString& interface, const QString& method, const QVariantList& arguments);

    QDBusConnection bus_;
    QObject context_; ///< answers that arrive after this object are dropped
};

} // namespace kelvo
