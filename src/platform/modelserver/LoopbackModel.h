#pragma once

#include "platform/modelserver/ChatProtocol.h"
#include "platform/modelserver/Discovery.h"
#include "platform/modelserver/LoopbackAccess.h"
#include "ports/LanguageModel.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kelvo {

/// The language model on this machine: a model server on a loopback port where one runs, otherwise
/// the responder that is built in. Nothing is ever sent to another machine.
///
/// A server is looked for when the first call needs one and kept until it fails; a call that finds
/// none looks again. What a server that was found gets wrong is a failure of the call: the built-in
/// responder stands in for a missing server, not for a bad answer.
///
/// Lives on the engine's thread and needs its event loop. When it is destroyed, requests in flight
/// are aborted and their `done` is never called.
class LoopbackModel : public QObject, public LanguageModel {
    Q_OBJECT

public:
    struct Settings {
        std::vector<std::uint16_t> ports = {11434, 8080, 1234, 8000}; ///< in order of preference
        std::chrono::milliseconds discovery{300};
        std::chrono::milliseconds firstByte = std::chrono::minutes(5); ///< a cold model takes long
        std::chrono::milliseconds total = std::chrono::minutes(10);    ///< with all retries
        qint64 replyBytes = qint64{1} << 20;
        std::chrono::milliseconds loadingPoll{500}; ///< between two looks at a loading server
    };
    using BuiltIn = std::function<tl::expected<std::string, ModelFailure>(const ModelRequest&)>;

    explicit LoopbackModel(BuiltIn builtIn);
    LoopbackModel(BuiltIn builtIn, Settings settings);
    ~LoopbackModel() override;

    int osMajorVersion() const override { return 26; }
    std::optional<std::string> unavailableReason() override { return std::nullopt; }
    void respond(const ModelRequest& request, Done done) override;

    /// Aborts every request in flight; each fails, later, as cancelled.
    void cancel() override;

    /// Looks for a server now, so that `modelLine` is right before the first call.
    void refresh();

    /// Who answers, for the window: "built-in", or the server and its model.
    std::string modelLine() const;

Q_SIGNALS:
    void modelLineChanged();

private Q_SLOTS:
    void tellCancelled();

private:
    class Call;
    using Found = std::function<void(std::optional<ModelServer>)>;

    void findServer(Found found);
    void setServer(std::optional<ModelServer> server);
    std::unique_ptr<Call> take(Call* call);

    BuiltIn builtIn_;
    Settings settings_;
    LoopbackAccess access_;
    std::optional<ModelServer> server_;
    ChatForm form_; ///< what the present server is known to take
    std::unique_ptr<Discovery> discovery_;
    std::vector<Found> waiting_; ///< for the discovery that is under way
    std::vector<std::unique_ptr<Call>> calls_;
    std::vector<Done> cancelled_; ///< still to be told
};

} // namespace kelvo
