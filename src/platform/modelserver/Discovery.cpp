#include "platform/modelserver/Discovery.h"

#include "platform/modelserver/LoopbackAccess.h"

#include <utility>

namespace kelvo {
namespace {

constexpr qint64 longestList = 1 << 20;

} // namespace

Discovery::Discovery(LoopbackAccess& access, const std::vector<std::uint16_t>& ports,
                     std::chrono::milliseconds bound, Done done)
    : QObject(&access), access_(access), bound_(bound), done_(std::move(done)) {
    for (const std::uint16_t port : ports)
        probes_.push_back({.port = port});
    for (std::size_t i = 0; i < probes_.size(); ++i) {
        ask(i, "/api/version", &Discovery::readVersion);
        ask(i, "/v1/models", &Discovery::readModels);
        ask(i, "/api/v0/models", &Discovery::readStudio);
    }
    deadline_.setSingleShot(true);
    connect(&deadline_, &QTimer::timeout, this, [this] { decide(true); });
    deadline_.start(probes_.empty() ? std::chrono::milliseconds(0) : bound_);
}

Discovery::~Discovery() {
    abandon();
}

void Discovery::abandon() {
    for (const QPointer<Exchange>& exchange : exchanges_)
        delete exchange.data();
    exchanges_.clear();
}

void Discovery::ask(std::size_t probe, const char* path, Read read) {
    QUrl url;
    url.setScheme(QStringLiteral("http"));
    url.setHost(QStringLiteral("127.0.0.1"));
    url.setPort(probes_[probe].port);
    url.setPath(QString::fromLatin1(path));
    ++probes_[probe].open;
    const auto slot = exchanges_.size();
    exchanges_.emplace_back();
    exchanges_[slot] =
        new Exchange(access_, url, std::nullopt, {bound_, bound_, longestList},
                     [this, probe, read, slot](const tl::expected<HttpReply, HttpFailure>& reply) {
                         exchanges_[slot]->deleteLater();
                         exchanges_[slot].clear();
                         --probes_[probe].open;
                         if (reply) (this->*read)(probes_[probe], *reply);
                         decide(false);
                     });
}

void Discovery::readVersion(Probe& probe, const HttpReply& reply) {
    if (reply.status != 200 || !isNativeVersion(reply.body)) return;
    probe.native = true;
    const auto index = static_cast<std::size_t>(&probe - probes_.data());
    ask(index, "/api/tags", &Discovery::readTags);
    ask(index, "/api/ps", &Discovery::readLoaded);
}

void Discovery::readTags(Probe& probe, const HttpReply& reply) {
    if (reply.status == 200) probe.tags = reply.body;
}

void Discovery::readLoaded(Probe& probe, const HttpReply& reply) {
    if (reply.status == 200) probe.loaded = reply.body;
}

void Discovery::readModels(Probe& probe, const HttpReply& reply) {
    if (reply.status == 200) probe.openAi = openAiServer(reply.body);
    if (isLoading(reply.status, reply.body)) probe.loading = true;
}

void Discovery::readStudio(Probe& probe, const HttpReply& reply) {
    if (reply.status == 200) probe.studio = studioModel(reply.body);
}

std::optional<ModelServer> Discovery::found(const Probe& probe) {
    if (probe.native) {
        // Only its own list tells which models run on this machine.
        const auto model = nativeModel(probe.tags, probe.loaded);
        if (!model) return std::nullopt;
        return ModelServer{probe.port, ModelServer::Api::native, "Ollama", *model, false};
    }
    ModelServer server = probe.openAi.value_or(ModelServer{});
    server.port = probe.port;
    if (probe.studio) {
        server.name = "LM Studio";
        server.model = *probe.studio;
    }
    server.loading = server.model.empty() && probe.loading;
    if (server.model.empty() && !server.loading) return std::nullopt;
    return server;
}

void Discovery::decide(bool timeIsUp) {
    if (!done_) return;
    std::optional<ModelServer> chosen;
    for (const Probe& probe : probes_) {
        if (probe.open > 0 && !timeIsUp) return;
        const auto server = found(probe);
        if (!server) continue;
        if (!chosen || chosen->loading) {
            if (!chosen || !server->loading) chosen = server;
        }
        if (!chosen->loading) break;
    }
    deadline_.stop();
    abandon();
    std::exchange(done_, {})(std::move(chosen));
}

} // namespace kelvo
