#include "base/Uuid.h"

#include <openssl/rand.h>

#include <array>
#include <cstdlib>

namespace kelvo {
namespace {

constexpr bool isHyphenPlace(std::size_t at) {
    return at == 8 || at == 13 || at == 18 || at == 23;
}

} // namespace

std::string randomUuid() {
    std::array<unsigned char, 16> bytes{};
    // Without a source of randomness no identity would be unique.
    if (RAND_bytes(bytes.data(), static_cast<int>(bytes.size())) != 1) std::abort();
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    text.reserve(36);
    for (const unsigned char byte : bytes) {
        if (isHyphenPlace(text.size())) text += '-';
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

bool isUuid(std::string_view text) {
    if (text.size() != 36) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool digit =
            (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
        if (isHyphenPlace(i) ? c != '-' : !digit) return false;
    }
    return true;
}

} // namespace kelvo
