#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>
#include <functional>
#include <optional>

namespace kelvo {

/// One running instance a user: the first to take the name on the session bus. It answers
/// org.freedesktop.Application, by which launchers and later starts bring its window forward.
class SingleInstance : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// `name` is the bus name, in reverse-DNS form; the object path follows from it.
    explicit SingleInstance(QString name, QDBusConnection bus = QDBusConnection::sessionBus());

    /// True when this is the first, also where there is no bus to ask.
    bool isFirst() const { return first_; }
    /// Asks the first instance to show its window.
    void activateFirst();

    /// Starts an action of the desktop entry, or says why it does not.
    using Actions = std::function<std::optional<QString>(const QString&, const QVariantList&)>;
    void setActions(Actions actions);

public Q_SLOTS:
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& uris, const QVariantMap& platformData);
    void ActivateAction(const QString& action, const QVariantList& parameters,
                        const QVariantMap& platformData);

Q_SIGNALS:
    /// Somebody asks for the window.
    void activated();

private:
    QString name_;
    QDBusConnection bus_;
    bool first_ = true;
    Actions actions_;
};

} // namespace kelvo
