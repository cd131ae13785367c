#include "platform/modelserver/LoopbackModel.h"

#include "intelligence/ReplyText.h"
#include "platform/modelserver/Exchange.h"
#include "platform/modelserver/SchemaFit.h"

#include <algorithm>
#include <utility>

namespace kelvo {

/// One request on its way: find a server, ask it, ask again in another form where it wants that.
class LoopbackModel::Call : public QObject {
public:
    Call(LoopbackModel& model, ModelRequest request, Done done)
        : QObject(&model), model_(model), request_(std::move(request)), done_(std::move(done)) {
        clock_.start();
    }
    ~Call() override { delete exchange_.data(); }

    void start() {
        if (model_.server_) return send();
        look();
    }
    Done takeDone() { return std::move(done_); }

private:
    std::chrono::milliseconds remaining() const {
        const std::chrono::milliseconds elapsed(clock_.elapsed());
        return std::max(model_.settings_.total - elapsed, std::chrono::milliseconds(1));
    }

    void look() {
        model_.findServer([self = QPointer<Call>(this)](const auto& server) {
            if (self) self->looked(server);
        });
    }

    void looked(const std::optional<ModelServer>& server) {
        if (!server) return finish(model_.builtIn_(request_));
        if (server->loading) return waitForLoading();
        send();
    }

    void waitForLoading() {
        model_.setServer(std::nullopt);
        if (std::chrono::milliseconds(clock_.elapsed()) >= model_.settings_.firstByte)
            return fail("the model is still loading");
        QTimer::singleShot(model_.settings_.loadingPoll, this, [this] { look(); });
    }

    void send() {
        server_ = *model_.server_;
        form_ = model_.form_;
        form_.thinkingOff = form_.thinkingOff && !thinkingDropped_;
        QUrl url;
        url.setScheme(QStringLiteral("http"));
        url.setHost(QStringLiteral("127.0.0.1"));
        url.setPort(server_.port);
        url.setPath(QString::fromLatin1(chatPath(server_).data()));
        const ExchangeBounds bounds{std::min(model_.settings_.firstByte, remaining()), remaining(),
                                    model_.settings_.replyBytes};
        exchange_ = new Exchange(model_.access_, url, chatBody(server_, request_, form_), bounds,
                                 [this](const tl::expected<HttpReply, HttpFailure>& reply) {
                                     exchange_->deleteLater();
                                     exchange_.clear();
                                     if (!reply) return failed(reply.error());
                                     answered(*reply);
                                 });
    }

    void failed(const HttpFailure& failure) {
        model_.setServer(std::nullopt);
        if (failure.kind == HttpFailure::Kind::unreachable) return lookAgain(failure.description);
        fail(failure.description);
    }

    /// The server that was known is gone; another may have come.
    void lookAgain(const std::string& why) {
        if (std::exchange(lookedAgain_, true)) return fail(why);
        look();
    }

    void answered(const HttpReply& reply) {
        using Kind = ChatAnswer::Kind;
        ChatAnswer answer = chatAnswer(server_, request_, form_, reply.status, reply.body);
        switch (answer.kind) {
        case Kind::loading:
            return waitForLoading();
        case Kind::structureRefused:
            if (model_.server_) model_.form_.structure = ChatForm::Structure::object;
            return resend(answer.text);
        case Kind::thinkingRefused:
            if (model_.server_) model_.form_.thinkingOff = false;
            thinkingDropped_ = true;
            return resend(answer.text);
        case Kind::modelGone:
            model_.setServer(std::nullopt);
            return lookAgain(answer.text);
        case Kind::failed:
            return fail(answer.text);
        case Kind::text:
            return judge(std::move(answer.text));
        }
    }

    void resend(const std::string& why) {
        // Another call may have lost the server meanwhile.
        if (!model_.server_) return lookAgain(why);
        send();
    }

    /// Some models answer past the question while their thinking is switched off: once more with it
    /// on. What then still does not fit, the reader of the record refuses, and names the field.
    void judge(std::string text) {
        const bool fits = request_.schema ? !schemaMisfit(jsonBody(text), *request_.schema)
                                          : !withoutThinking(text).empty();
        const bool switched =
            server_.api == ModelServer::Api::native && form_.thinkingOff && !thinkingDropped_;
        if (!fits && switched) {
            thinkingDropped_ = true;
            return resend("the model gave no usable answer");
        }
        finish(std::move(text));
    }

    void fail(const std::string& why) { finish(tl::unexpected(ModelFailure{why})); }

    void finish(tl::expected<std::string, ModelFailure> reply) {
        // The call is gone before the caller hears: it may ask again, or end everything.
        auto self = model_.take(this);
        const Done done = std::move(done_);
        self.release()->deleteLater();
        done(std::move(reply));
    }

    LoopbackModel& model_;
    ModelRequest request_;
    Done done_;
    QElapsedTimer clock_;
    ModelServer server_;
    ChatForm form_;
    bool thinkingDropped_ = false;
    bool lookedAgain_ = false;
    QPointer<Exchange> exchange_;
};

LoopbackModel::LoopbackModel(BuiltIn builtIn) : LoopbackModel(std::move(builtIn), Settings{}) {
}

LoopbackModel::LoopbackModel(BuiltIn builtIn, Settings settings)
    : builtIn_(std::move(builtIn)), settings_(std::move(settings)) {
}

LoopbackModel::~LoopbackModel() {
    calls_.clear();
    discovery_.reset();
}

void LoopbackModel::respond(const ModelRequest& request, Done done) {
    calls_.push_back(std::make_unique<Call>(*this, request, std::move(done)));
    QTimer::singleShot(0, calls_.back().get(), [call = calls_.back().get()] { call->start(); });
}

void LoopbackModel::cancel() {
    for (const std::unique_ptr<Call>& call : calls_)
        cancelled_.push_back(call->takeDone());
    calls_.clear();
    QMetaObject::invokeMethod(this, "tellCancelled", Qt::QueuedConnection);
}

void LoopbackModel::tellCancelled() {
    for (const Done& done : std::exchange(cancelled_, {}))
        done(tl::unexpected(ModelFailure{"cancelled"}));
}

void LoopbackModel::refresh() {
    findServer([](const auto&) {});
}

std::string LoopbackModel::modelLine() const {
    return server_ ? shownLine(*server_) : "built-in";
}

void LoopbackModel::findServer(Found found) {
    waiting_.push_back(std::move(found));
    if (discovery_) return;
    discovery_ = std::make_unique<Discovery>(
        access_, settings_.ports, settings_.discovery, [this](std::optional<ModelServer> server) {
            discovery_.release()->deleteLater();
            setServer(server && !server->loading ? server : std::nullopt);
            const QPointer<LoopbackModel> self(this);
            for (const Found& each : std::exchange(waiting_, {})) {
                if (self) each(server);
            }
        });
}

void LoopbackModel::setServer(std::optional<ModelServer> server) {
    const std::string before = modelLine();
    server_ = std::move(server);
    form_ = ChatForm{};
    if (modelLine() != before) emit modelLineChanged();
}

std::unique_ptr<LoopbackModel::Call> LoopbackModel::take(Call* call) {
    const auto found = std::find_if(calls_.begin(), calls_.end(),
                                    [&](const auto& each) { return each.get() == call; });
    std::unique_ptr<Call> taken = std::move(*found);
    calls_.erase(found);
    return taken;
}

} // namespace kelvo
