#pragma once

#include "base/Json.h"

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

namespace kelvo {

/// One sealed decision. Its identity is `blockHash`, which binds `index`, `prev` and `payloadRoot`;
/// the other fields describe the seal and are not covered by the hash.
struct Totem {
    std::int64_t index = 0;  ///< position in the chain, 0 for the first
    std::string prev;        ///< block hash of the previous totem, or the genesis text
    std::string payloadRoot; ///< SHA-256 of the sealed bytes, 64 lowercase hex characters
    std::string blockHash;   ///< SHA-256 of the preimage, 64 lowercase hex characters
    std::string title;       ///< what was sealed, for a person
    std::string firedBy;     ///< presence record of who approved it
    std::string asOf;        ///< ISO 8601 time of the seal

    bool operator==(const Totem&) const = default;
};

/// The totem as a JSON object with the field names as keys. Reading one back fails with the name of
/// the member that is missing or of the wrong type.
Json toJson(const Totem& totem);
tl::expected<Totem, std::string> totemFromJson(const Json& value);

/// The append-only chain of one run, in memory. The preimage of a block hash is the decimal index,
/// "‖", the previous block hash, "‖", the payload root, as UTF-8.
class TotemChain {
public:
    /// Oldest first. Appending never moves an earlier block.
    using Blocks = std::deque<Totem>;

    /// Seals `payload`, any bytes, exactly as they are. Never fails.
    Totem append(std::string_view payload, std::string title, std::string firedBy,
                 std::string asOf);

    /// Rechecks every index, link and block hash. True for an empty chain.
    bool verify() const { return verify(blocks_); }

    /// As `verify()` for blocks that come from elsewhere.
    static bool verify(const Blocks& blocks);

    /// Block hash of the last block, or the genesis text.
    std::string tip() const;

    const Blocks& blocks() const { return blocks_; }

    /// "‖" (U+2016).
    static constexpr std::string_view sep = "\xE2\x80\x96";
    /// 64 zeros.
    static const std::string& genesis();

    /// SHA-256 of the text's bytes, 64 lowercase hex characters.
    static std::string sha(std::string_view text);

private:
    Blocks blocks_;
};

} // namespace kelvo
