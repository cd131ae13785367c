#include "ledger/TotemChain.h"

#include "base/JsonReader.h"
#include "base/Sha256.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace kelvo {
namespace {

/// Assembles preimages in one buffer that is used again from block to block.
class Preimage {
public:
    std::string_view of(std::int64_t index, std::string_view prev, std::string_view payloadRoot) {
        std::array<char, 24> decimal{};
        const auto end = std::to_chars(decimal.data(), decimal.data() + decimal.size(), index).ptr;
        const std::string_view parts[] = {
            {decimal.data(), end}, TotemChain::sep, prev, TotemChain::sep, payloadRoot};
        std::size_t length = 0;
        for (const std::string_view part : parts)
            length += part.size();
        if (text_.size() < length) text_.resize(length);
        char* at = text_.data();
        for (const std::string_view part : parts)
            at = std::copy(part.begin(), part.end(), at);
        return {text_.data(), length};
    }

private:
    std::string text_;
};

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
    totem.blockHash = sha(Preimage().of(totem.index, totem.prev, totem.payloadRoot));
    blocks_.push_back(totem);
    return totem;
}

bool TotemChain::verify(const Blocks& blocks) {
    const std::string* expected = &genesis();
    Preimage preimage;
    Sha256Stream hash;
    std::int64_t index = 0;
    for (const Totem& block : blocks) {
        if (block.index != index || block.prev != *expected) return false;
        hash.add(preimage.of(index, block.prev, block.payloadRoot));
        if (!isHexOf(hash.finish(), block.blockHash)) return false;
        expected = &block.blockHash;
        ++index;
    }
    return true;
}

} // namespace kelvo
