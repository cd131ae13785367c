#pragma once

#include <QDBusVariant>
#include <QObject>

namespace kelvo::test {

/// The desktop's settings, as its portal answers for them.
class SettingsPortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    unsigned scheme = 0; ///< 0 no preference, 1 dark, 2 light

public Q_SLOTS:
    /// The value in a variant of its own, as the portal's first version has it.
    QDBusVariant Read(const QString& /*group*/, const QString& /*key*/) const {
        return QDBusVariant(QVariant::fromValue(QDBusVariant(scheme)));
    }
};

} // namespace kelvo::test
