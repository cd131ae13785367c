#include "platform/modelserver/LoopbackAccess.h"

#include <QHostAddress>
#include <QNetworkCookieJar>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QNetworkRequest>

namespace kelvo {
namespace {

/// A reply that failed before anything was sent.
class RefusedReply : public QNetworkReply {
public:
    RefusedReply(QNetworkAccessManager::Operation operation, const QNetworkRequest& request,
                 QObject* parent)
        : QNetworkReply(parent) {
        setRequest(request);
        setUrl(request.url());
        setOperation(operation);
        setError(ProtocolUnknownError, QStringLiteral("not an address of this machine"));
        open(QIODevice::ReadOnly);
        setFinished(true);
        QMetaObject::invokeMethod(this, "finished", Qt::QueuedConnection);
    }

    void abort() override {}

protected:
    qint64 readData(char*, qint64) override { return -1; }
};

} // namespace

bool isLoopback(const QUrl& url) {
    if (url.scheme() != QLatin1String("http") || !url.userInfo().isEmpty()) return false;
    QHostAddress address;
    return address.setAddress(url.host()) && address.isLoopback();
}

LoopbackAccess::LoopbackAccess(QObject* parent) : QNetworkAccessManager(parent) {
    setProxy(QNetworkProxy::NoProxy);
    setRedirectPolicy(QNetworkRequest::ManualRedirectPolicy);
    setAutoDeleteReplies(false);
}

QNetworkReply* LoopbackAccess::createRequest(Operation operation, const QNetworkRequest& request,
                                             QIODevice* outgoing) {
    if (!isLoopback(request.url())) return new RefusedReply(operation, request, this);
    QNetworkRequest plain(request);
    plain.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                       QNetworkRequest::ManualRedirectPolicy);
    plain.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    plain.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    plain.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    plain.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    // A compressed reply could unfold far beyond the bound on its size.
    plain.setRawHeader("Accept-Encoding", "identity");
    plain.setRawHeader("Accept-Language", "en");
    plain.setRawHeader("User-Agent", "kelvo");
    return QNetworkAccessManager::createRequest(operation, plain, outgoing);
}

} // namespace kelvo
