#pragma once

#include <tl/expected.hpp>

#include <QByteArray>
#include <QNetworkReply>
#include <QObject>
#include <QTimer>
#include <QUrl>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace kelvo {

class LoopbackAccess;

/// The limits of one request and its reply.
struct ExchangeBounds {
    std::chrono::milliseconds firstByte; ///< from sending until the reply begins
    std::chrono::milliseconds total;     ///< from sending until the reply is whole
    qint64 replyBytes;                   ///< a longer reply is not read
};

struct HttpReply {
    int status = 0;
    std::string body;
};

struct HttpFailure {
    enum class Kind {
        unreachable, ///< nobody listens there, or the address is not of this machine
        timedOut,
        tooLarge,
        redirected, ///< the server sends elsewhere; nobody follows
        broken      ///< the connection or the reply ended early, or is no HTTP
    };
    Kind kind;
    std::string description;
};

/// One HTTP request and its whole reply, within bounds. Any status but a redirect is a reply.
/// Deleting it aborts the request; the outcome is then never told.
class Exchange : public QObject {
    Q_OBJECT

public:
    using Outcome = std::function<void(tl::expected<HttpReply, HttpFailure>)>;

    /// Sends GET, or POST of JSON where there is a `body`. `outcome` is called once, later;
    /// inside it, delete the exchange with deleteLater() only.
    /// The exchange is a child of `access`, and must be gone or have ended before `access` goes.
    Exchange(LoopbackAccess& access, const QUrl& url, const std::optional<std::string>& body,
             ExchangeBounds bounds, Outcome outcome);
    ~Exchange() override;

private:
    void begun();
    void read();
    void finished();
    void fail(HttpFailure::Kind kind, const char* description);
    void settle();

    struct Later {
        void operator()(QNetworkReply* reply) const;
    };

    ExchangeBounds bounds_;
    Outcome outcome_;
    std::string body_;
    QTimer firstByte_;
    QTimer total_;
    std::unique_ptr<QNetworkReply, Later> reply_;
};

} // namespace kelvo
