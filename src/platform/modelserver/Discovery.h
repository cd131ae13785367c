#pragma once

#include "platform/modelserver/ChatProtocol.h"
#include "platform/modelserver/Exchange.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace kelvo {

/// Looks for model servers on ports of 127.0.0.1, all at the same time, and takes the first port in
/// the given order that has a model, otherwise the first whose server is still loading one.
class Discovery : public QObject {
    Q_OBJECT

public:
    using Done = std::function<void(std::optional<ModelServer>)>;

    /// `done` is called once, later, at the latest after `bound`; none when nothing was found.
    Discovery(LoopbackAccess& access, const std::vector<std::uint16_t>& ports,
              std::chrono::milliseconds bound, Done done);
    ~Discovery() override;

private:
    struct Probe {
        std::uint16_t port = 0;
        int open = 0; ///< requests without an outcome
        bool native = false;
        bool loading = false;
        std::string tags{};
        std::string loaded{};
        std::optional<ModelServer> openAi{};
        std::optional<std::string> studio{};
    };

    using Read = void (Discovery::*)(Probe& probe, const HttpReply& reply);
    void ask(std::size_t probe, const char* path, Read read);
    void readVersion(Probe& probe, const HttpReply& reply);
    void readTags(Probe& probe, const HttpReply& reply);
    void readLoaded(Probe& probe, const HttpReply& reply);
    void readModels(Probe& probe, const HttpReply& reply);
    void readStudio(Probe& probe, const HttpReply& reply);
    void decide(bool timeIsUp);
    void abandon();
    static std::optional<ModelServer> found(const Probe& probe);

    LoopbackAccess& access_;
    std::chrono::milliseconds bound_;
    Done done_;
    std::vector<Probe> probes_;
    std::vector<QPointer<Exchange>> exchanges_;
    QTimer deadline_;
};

} // namespace kelvo
