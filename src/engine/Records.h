#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace kelvo {

/// One provenance record: what happened, and which rule, kernel step or gate produced it.
struct Citation {
    std::string id; ///< a random UUID, the identity of the row in lists
    std::string claim;
    std::string source;
    std::string asOf; ///< ISO 8601, see iso8601()

    bool operator==(const Citation&) const = default;
};

/// The state that a pause staged for sealing.
struct PendingMeasurement {
    std::string title;            ///< "collapse@t=" and the integrator's time
    std::vector<double> snapshot; ///< the state vector at the pause
    std::string payload; ///< the JSON document that will be sealed; empty where it has no JSON form

    bool operator==(const PendingMeasurement&) const = default;
};

/// What a card's button, the assistant or an intent can have the engine do.
struct Act {
    enum class Kind { closeGap, generate, play, pause, throttle, bond, kyc, snapshot };

    Kind kind = Kind::play;
    std::string criterion{}; ///< of closeGap and generate: the criterion's id

    bool operator==(const Act&) const = default;
};

/// A next-best-action card. One without an action is information only.
struct NBA {
    std::string title = "—";
    std::string detail{};
    std::optional<Act> action{};

    bool operator==(const NBA&) const = default;
};

/// A document's mapping to criteria that awaits the person's confirmation.
struct EvidenceProposal {
    std::string name;                  ///< the document's file name
    std::string root;                  ///< SHA-256 of its bytes, 64 lowercase hex characters
    std::string summary;               ///< one sentence
    std::vector<std::string> criteria; ///< proposed criterion ids, each one of the mesh's

    bool operator==(const EvidenceProposal&) const = default;
};

/// A drafted policy that awaits the person's approval.
struct GeneratedDoc {
    std::string criterion;
    std::string text;

    bool operator==(const GeneratedDoc&) const = default;
};

/// One line of the chat history.
struct ChatMsg {
    std::string id;   ///< a UUID in its 36-character upper-case form
    std::string role; ///< "you" for the person, "pellum" for the assistant
    std::string text;
    std::string ts; ///< ISO 8601, see iso8601()

    bool operator==(const ChatMsg&) const = default;
};

/// A look at a kept file after it was sealed.
struct EvidenceLook {
    std::string at;    ///< ISO 8601
    bool same = false; ///< it is the file that was sealed

    bool operator==(const EvidenceLook&) const = default;
};

/// Work that takes long enough for the person to want to see it move.
struct Progress {
    std::string title;
    double share = 0; ///< 0 to 1

    bool operator==(const Progress&) const = default;
};

/// A question that the model has been given and has not answered yet.
struct ModelWork {
    std::uint64_t id = 0; ///< unique within a run of the engine
    std::string title;

    bool operator==(const ModelWork&) const = default;
};

/// A hand-over under way, or how the last one ended.
struct PackageState {
    enum class Stage {
        reading, ///< the logs, before the person is asked
        refused, ///< `reasons`; the person may have it anyway, unless no period is set
        writing, ///< see `EngineVM::packageShare`
        written, ///< `folder`, `number`
        failed,  ///< `reasons`; nothing is left behind, the hand-over stays sealed
    };

    Stage stage = Stage::reading;
    std::string recipient{};
    std::filesystem::path destination{};
    std::vector<std::string> reasons{}; ///< sentences
    std::filesystem::path folder{};     ///< of the package
    std::string number{};               ///< the package number, 64 digits

    bool operator==(const PackageState&) const = default;
};

} // namespace kelvo
