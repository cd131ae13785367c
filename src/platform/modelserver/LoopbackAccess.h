#pragma once

#include <QNetworkAccessManager>
#include <QUrl>

namespace kelvo {

/// True for http on a literal loopback address (127.0.0.0/8 or ::1). Names, "localhost" too, are
/// not taken: what they lead to is decided elsewhere.
bool isLoopback(const QUrl& url);

/// The only way from the model adapter to the network. A request to anything but a loopback address
/// fails with QNetworkReply::ProtocolUnknownError and opens no connection; no proxy is used,
/// whatever the application or the environment says; redirects are not followed; no cookie, cache
/// or credential is kept.
class LoopbackAccess : public QNetworkAccessManager {
    Q_OBJECT

public:
    explicit LoopbackAccess(QObject* parent = nullptr);

protected:
    QNetworkReply* createRequest(Operation operation, const QNetworkRequest& request,
                                 QIODevice* outgoing) override;
};

} // namespace kelvo
