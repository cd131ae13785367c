#include "ledger/TotemChain.h"

#include "base/JsonReader.h"
#include "base/Sha256.h"

#include <array>
#include <charconv>
#include <utility>

namespace kelvo {
namespace {

/// Into `out`, whose capacity is used again from block to block.
void writePreimage(std::string& out, std::int64_t index, std::string_view prev,
                   std::string_view payloadRoot) {
    std::array<char, 24> decimal{};
    const auto end = std::to_chars(decimal.data(), decimal.data() + decimal.size(), index).ptr;
    out.assign(decimal.data(), end);
    out += TotemChain::sep;
    out += prev;
    out += TotemChain::sep;
    out += payloadRoot;
}

} // namespace

Json toJson(const Totem& totem) {
    return {{"index", totem.index},
            {"prev", totem.prev},
            {"payloadRoot", totem.payloadRoot},
            {"blockHash", totem.blockHash},
            {"title", totem.title},
            {"firedBy", totem.firedBy},
            {"asOf", totem.asOf}};
}

tl::expected<Totem, std::string> totemFromJson(const Json& value) {
    JsonReader reader(value);
    Totem totem;
    totem.index = reader.integer("index");
    totem.prev = reader.string("prev");
    totem.payloadRoot = reader.string("payloadRoot");
    totem.blockHash = reader.string("blockHash");
    totem.title = reader.string("title");
    totem.firedBy = reader.string("firedBy");
    totem.asOf = reader.string("asOf");
    if (reader.error()) return tl::unexpected(*reader.error());
    return totem;
}

const std::string& TotemChain::genesis() {
    static const std::string text(64, '0');
    return text;
}

std::string TotemChain::sha(std::string_view text) {
    return sha256Hex(text);
}

std::string TotemChain::tip() const {
    return blocks_.empty() ? genesis() : blocks_.back().blockHash;
}

Totem TotemChain::append(std::string_view payload, std::string title, std::string firedBy,
                         std::string asOf) {
    Totem totem{.index = static_cast<std::int64_t>(blocks_.size()),
                .prev = tip(),
                .payloadRoot = sha256Hex(payload),
                .blockHash = {},
                .title = std::move(title),
                .firedBy = std::move(firedBy),
                .asOf = std::move(asOf)};
    std::string preimage;
    writePreimage(preimage, totem.index, totem.prev, totem.payloadRoot);
    totem.blockHash = sha(preimage);
    blocks_.push_back(totem);
    return totem;
}

bool TotemChain::verify(const Blocks& blocks) {
    const std::string* expected = &genesis();
    std::string preimage;
    std::int64_t index = 0;
    for (const Totem& block : blocks) {
        if (block.index != index || block.prev != *expected) return false;
        writePreimage(preimage, index, block.prev, block.payloadRoot);
        if (!isHexOf(sha256(preimage), block.blockHash)) return false;
        expected = &block.blockHash;
        ++index;
    }
    return true;
}

} // namespace kelvo
