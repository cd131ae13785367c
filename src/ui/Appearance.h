#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QString>
#include <optional>

namespace kelvo {

/// Whether the desktop prefers dark surfaces: the color scheme of the settings portal
/// (org.freedesktop.appearance), or, where no portal answers, the lightness of the palette that
/// the desktop gave the toolkit. Needs the application object.
class Appearance : public QObject {
    Q_OBJECT

public:
    explicit Appearance(QDBusConnection bus = QDBusConnection::sessionBus());

    bool dark() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void take(const QVariant& value);

    std::optional<bool> prefersDark_; ///< none where the portal has no preference or no answer
};

} // namespace kelvo
