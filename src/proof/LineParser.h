#pragma once

#include "proof/SealLine.h"

#include <tl/expected.hpp>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace kelvo {

/// True for 64 lowercase hexadecimal digits, which alone name a file of the vault.
bool isHash(std::string_view text);

/// What a seal's payload says of itself. Views are valid until the parser's next call.
struct PayloadFacts {
    bool isObject = false;
    std::string_view sourceDb; ///< "collapse" where it is no text or absent
    bool identity = false;     ///< it has "kyc"
    std::string_view criterion;
    bool closes = false; ///< as the start-up replay has it
    std::string_view evidenceRoot;
    std::string_view evidenceName;
    std::string_view evidenceSummary;
    std::string_view note;       ///< of a note: its kind
    std::string_view about;      ///< of a note: the block that it speaks of
    std::string_view graphAfter; ///< of a changed organisation: the graph's SHA-256
    std::string_view asOf;       ///< of a record file
    std::string_view firedBy;    ///< of a record file
    std::string_view owner;
    std::string_view attestedAt;
    bool attested = false;  ///< somebody's word
    bool device = false;    ///< a reading of the device
    bool generated = false; ///< an approved policy
};

/// Reads lines and payloads one after the other, with memory that is used again. Nothing that is
/// read is ever larger than what is handed in.
class LineParser {
public:
    struct Line {
        std::int64_t seq = 0;
        std::string_view prev;
        std::string_view ts;
        SealFact fact; ///< a decision's payload is left out
        std::string_view payload;
    };

    LineParser();
    ~LineParser();
    LineParser(const LineParser&) = delete;
    LineParser& operator=(const LineParser&) = delete;

    /// One line without its line feed: an object of exactly the members of its kind, each of its
    /// type, every hash 64 lowercase digits. Views are valid until the next call.
    tl::expected<Line, std::string> parse(std::string_view text);

    /// The same parser's memory serves these, so that a line's views end here.
    PayloadFacts payloadFacts(std::string_view json);

    /// The member "organisation" of a readiness graph; "" where there is none.
    std::string organisationOf(std::string_view graph);

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace kelvo
