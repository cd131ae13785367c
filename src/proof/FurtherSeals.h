#pragma once

#include "base/Json.h"
#include "base/Time.h"
#include "proof/SealLine.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kelvo {

/// What the audit looks at: one day (Type I) or the days from `from` to `to` (Type II).
struct AuditPeriod {
    bool type2 = true;
    Day from{};
    Day to{}; ///< the same day for Type I
    std::vector<std::string> categories{};
    std::string firm{};

    bool operator==(const AuditPeriod&) const = default;
};

/// Which days a piece of evidence speaks of, and where it came from. "" where that is unknown; the
/// two days are needed.
struct EvidenceItem {
    std::string root; ///< SHA-256 of the evidence
    std::string name;
    std::string coversFrom; ///< 2026-01-31
    std::string coversTo;
    std::string producedAt;
    std::string producedBy;
    std::string source;
    std::string parameters;
    std::string population;

    bool operator==(const EvidenceItem&) const = default;
};

struct EvidenceDates {
    std::vector<EvidenceItem> items;

    bool operator==(const EvidenceDates&) const = default;
};

struct Note {
    enum class Kind { exception, withdrawal, review };

    Kind kind = Kind::exception;
    std::string criterion;
    std::string about; ///< block hash of the record that it speaks of, or ""
    std::string from;  ///< day, or ""
    std::string to;
    std::string text;
    std::string response;

    bool operator==(const Note&) const = default;
};

/// A document of the report's own.
struct ReportDocument {
    enum class Kind { description, assertion, users, suppliers };

    Kind kind = Kind::description;
    std::string root; ///< SHA-256 of the file
    std::string name;

    bool operator==(const ReportDocument&) const = default;
};

/// How a log stood when a package was handed over.
struct HandedLog {
    std::string log; ///< id
    LogPosition at;

    bool operator==(const HandedLog&) const = default;
};

struct HandOver {
    std::string recipient;
    std::vector<HandedLog> logs; ///< the own one first, then by id

    bool operator==(const HandOver&) const = default;
};

/// What is sealed besides closings: it changes no readiness, and the start-up replay passes over
/// it.
using FurtherSeal = std::variant<AuditPeriod, EvidenceDates, Note, ReportDocument, HandOver>;

/// The payload's "sourceDb": "period", "evidence", "note", "document", "handover".
std::string_view sourceOf(const FurtherSeal& seal);

/// The members of the payload that are the seal's own, without owner, role, presence, time and tip.
Json furtherPayload(const FurtherSeal& seal);

/// What the person is asked to approve, as "Set the audit period 2026-01-01 to 2026-12-31 (SOC 2
/// Type II) — verify to seal".
std::string furtherSentence(const FurtherSeal& seal);

/// The totem's title, as "Audit period 2026-01-01 to 2026-12-31".
std::string furtherTitle(const FurtherSeal& seal);

/// Reads the payload of that "sourceDb" back. None where it is another's, or a member is missing or
/// of another type: such a seal says nothing.
std::optional<FurtherSeal> readFurtherSeal(std::string_view source, std::string_view payload);

/// "exception", "withdrawal", "review".
std::string_view nameOf(Note::Kind kind);
/// "description", "assertion", "users", "suppliers".
std::string_view nameOf(ReportDocument::Kind kind);
/// "description of the system", "management's assertion", …
std::string_view titleOf(ReportDocument::Kind kind);

} // namespace kelvo
