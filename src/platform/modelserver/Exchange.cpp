#include "platform/modelserver/Exchange.h"

#include "platform/modelserver/LoopbackAccess.h"

#include <QNetworkRequest>
#include <utility>

namespace kelvo {

void Exchange::Later::operator()(QNetworkReply* reply) const {
    // It may be on the stack: an exchange can end inside one of its reply's signals.
    reply->disconnect();
    // One that has failed by itself ends by itself; aborting it would make it fail twice.
    if (!reply->isFinished() && reply->error() == QNetworkReply::NoError) reply->abort();
    reply->deleteLater();
}

Exchange::Exchange(LoopbackAccess& access, const QUrl& url, const std::optional<std::string>& body,
                   ExchangeBounds bounds, Outcome outcome)
    : QObject(&access), bounds_(bounds), outcome_(std::move(outcome)) {
    QNetworkRequest request(url);
    if (body) {
        request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArray("application/json"));
        reply_.reset(access.post(request, QByteArray::fromStdString(*body)));
    } else {
        reply_.reset(access.get(request));
    }
    reply_->setReadBufferSize(qint64{64} * 1024);
    connect(reply_.get(), &QNetworkReply::metaDataChanged, this, &Exchange::begun);
    connect(reply_.get(), &QNetworkReply::readyRead, this, &Exchange::read);
    connect(reply_.get(), &QNetworkReply::finished, this, &Exchange::finished);
    for (QTimer* timer : {&firstByte_, &total_}) {
        timer->setSingleShot(true);
        connect(timer, &QTimer::timeout, this,
                [this] { fail(HttpFailure::Kind::timedOut, "the server did not answer in time"); });
    }
    firstByte_.start(bounds_.firstByte);
    total_.start(bounds_.total);
}

Exchange::~Exchange() = default;

void Exchange::begun() {
    firstByte_.stop();
    const qint64 announced = reply_->header(QNetworkRequest::ContentLengthHeader).toLongLong();
    if (announced > bounds_.replyBytes)
        fail(HttpFailure::Kind::tooLarge, "the server's reply is too long");
}

void Exchange::read() {
    firstByte_.stop();
    const QByteArray bytes = reply_->readAll();
    if (static_cast<qint64>(body_.size()) + bytes.size() > bounds_.replyBytes)
        return fail(HttpFailure::Kind::tooLarge, "the server's reply is too long");
    body_.append(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

void Exchange::finished() {
    read();
    if (!outcome_) return;
    const int status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QNetworkReply::NetworkError error = reply_->error();
    if (error == QNetworkReply::ConnectionRefusedError ||
        error == QNetworkReply::ProtocolUnknownError)
        return fail(HttpFailure::Kind::unreachable, "no server answers there");
    if (status >= 300 && status < 400)
        return fail(HttpFailure::Kind::redirected, "the server sends the request elsewhere");
    // Statuses from 400 on arrive as errors of Qt's; below, an error means the reply is not whole.
    if (status < 200 || (status < 400 && error != QNetworkReply::NoError))
        return fail(HttpFailure::Kind::broken, "the connection to the server broke");
    settle();
    std::exchange(outcome_, {})(HttpReply{status, std::move(body_)});
}

void Exchange::fail(HttpFailure::Kind kind, const char* description) {
    if (!outcome_) return;
    settle();
    std::exchange(outcome_, {})(tl::unexpected(HttpFailure{kind, description}));
}

void Exchange::settle() {
    firstByte_.stop();
    total_.stop();
    reply_.reset();
}

} // namespace kelvo
