#include "base/Sha256.h"

#include <openssl/evp.h>

#include <cstdlib>
#include <cstring>

namespace kelvo {
namespace {

/// Looking the algorithm up costs as much as hashing a short text, so it is done once.
const EVP_MD* algorithm() {
    static EVP_MD* const fetched = EVP_MD_fetch(nullptr, "SHA256", nullptr);
    return fetched;
}

/// libcrypto fails here only when its default provider is missing or memory is exhausted. A seal
/// with a wrong hash would be worse than no program at all.
void insist(int outcome) {
    if (outcome != 1) std::abort();
}

using HexText = std::array<char, 2 * std::tuple_size_v<Sha256Digest>>;

/// Both digits of every byte, so that writing a hash costs one look-up a byte.
constexpr auto hexPairs = [] {
    constexpr std::string_view digits = "0123456789abcdef";
    std::array<std::array<char, 2>, 256> pairs{};
    for (std::size_t byte = 0; byte < pairs.size(); ++byte)
        pairs[byte] = {digits[byte >> 4], digits[byte & 15]};
    return pairs;
}();

/// The value of each digit, 16 for what is none.
constexpr auto digitValues = [] {
    constexpr std::string_view digits = "0123456789abcdef";
    std::array<unsigned char, 256> values{};
    values.fill(16);
    for (std::size_t value = 0; value < digits.size(); ++value)
        values[static_cast<unsigned char>(digits[value])] = static_cast<unsigned char>(value);
    return values;
}();

HexText hexText(const Sha256Digest& digest) {
    HexText text{};
    for (std::size_t i = 0; i < digest.size(); ++i)
        std::memcpy(text.data() + 2 * i, hexPairs[digest[i]].data(), 2);
    return text;
}

} // namespace

Sha256Digest sha256(std::string_view bytes) {
    Sha256Digest digest{};
    insist(EVP_Digest(bytes.data(), bytes.size(), digest.data(), nullptr, algorithm(), nullptr));
    return digest;
}

std::string hex(const Sha256Digest& digest) {
    const HexText text = hexText(digest);
    return {text.data(), text.size()};
}

bool isHexOf(const Sha256Digest& digest, std::string_view text) {
    const HexText expected = hexText(digest);
    return text == std::string_view(expected.data(), expected.size());
}

std::string abbreviated(std::string_view hash) {
    return std::string(hash.substr(0, 12));
}

std::optional<Sha256Digest> digestOfHex(std::string_view text) {
    Sha256Digest digest;
    if (text.size() != 2 * digest.size()) return std::nullopt;
    unsigned faults = 0;
    for (std::size_t i = 0; i < digest.size(); ++i) {
        const unsigned high = digitValues[static_cast<unsigned char>(text[2 * i])];
        const unsigned low = digitValues[static_cast<unsigned char>(text[2 * i + 1])];
        faults |= high | low;
        digest[i] = static_cast<unsigned char>((high << 4U | low) & 0xFFU);
    }
    return faults > 15 ? std::nullopt : std::optional(digest);
}

std::string sha256Hex(std::string_view bytes) {
    return hex(sha256(bytes));
}

struct Sha256Stream::Context {
    Context() : handle(EVP_MD_CTX_new()) { insist(handle != nullptr ? 1 : 0); }
    ~Context() {
        EVP_MD_CTX_free(handle);
        EVP_MD_CTX_free(scratch_);
    }
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;

    void start() { insist(EVP_DigestInit_ex2(handle, algorithm(), nullptr)); }

    /// What a look at the digest so far finishes, made when first wanted.
    EVP_MD_CTX* scratch() const {
        if (scratch_ == nullptr) scratch_ = EVP_MD_CTX_new();
        insist(scratch_ != nullptr ? 1 : 0);
        return scratch_;
    }

    EVP_MD_CTX* handle;

private:
    mutable EVP_MD_CTX* scratch_ = nullptr;
};

Sha256Stream::Sha256Stream() : context_(std::make_unique<Context>()) {
    context_->start();
}

Sha256Stream::~Sha256Stream() = default;
Sha256Stream::Sha256Stream(Sha256Stream&&) noexcept = default;
Sha256Stream& Sha256Stream::operator=(Sha256Stream&&) noexcept = default;

void Sha256Stream::add(std::string_view bytes) {
    insist(EVP_DigestUpdate(context_->handle, bytes.data(), bytes.size()));
}

Sha256Digest Sha256Stream::soFar() const {
    const Context& context = *context_;
    insist(EVP_MD_CTX_copy_ex(context.scratch(), context.handle));
    Sha256Digest digest{};
    insist(EVP_DigestFinal_ex(context.scratch(), digest.data(), nullptr));
    return digest;
}

Sha256Digest Sha256Stream::finish() {
    Sha256Digest digest{};
    insist(EVP_DigestFinal_ex(context_->handle, digest.data(), nullptr));
    context_->start();
    return digest;
}

} // namespace kelvo
