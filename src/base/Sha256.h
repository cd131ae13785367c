#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace kelvo {

/// A SHA-256 digest (FIPS 180-4), 32 bytes.
using Sha256Digest = std::array<unsigned char, 32>;

Sha256Digest sha256(std::string_view bytes);

/// Two lowercase hexadecimal digits a byte, no separator: 64 characters.
std::string hex(const Sha256Digest& digest);

/// `hex(digest) == text`, without making the text.
bool isHexOf(const Sha256Digest& digest, std::string_view text);

/// The digest that `hex` writes so; none for any other text.
std::optional<Sha256Digest> digestOfHex(std::string_view text);

/// For tables whose keys are digests, which are spread evenly as they are.
struct Sha256DigestHash {
    std::size_t operator()(const Sha256Digest& digest) const noexcept {
        std::size_t first = 0;
        std::memcpy(&first, digest.data(), sizeof first);
        return first;
    }
};

/// `hex(sha256(bytes))`.
std::string sha256Hex(std::string_view bytes);

/// The first twelve characters of a hash, by which lines and file names tell hashes apart.
std::string abbreviated(std::string_view hash);

/// Hashes what arrives in pieces, so that a file of any size needs one buffer.
class Sha256Stream {
public:
    Sha256Stream();
    ~Sha256Stream();
    Sha256Stream(Sha256Stream&&) noexcept;
    Sha256Stream& operator=(Sha256Stream&&) noexcept;

    void add(std::string_view bytes);

    /// The digest of all that was added so far; more may follow.
    Sha256Digest soFar() const;

    /// The digest of all that was added; the stream then starts afresh.
    Sha256Digest finish();

private:
    struct Context;
    std::unique_ptr<Context> context_;
};

} // namespace kelvo
