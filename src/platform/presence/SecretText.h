#pragma once

#include <string.h>

#include <string_view>
#include <utility>
#include <vector>

namespace kelvo {

/// A password on its way from the person to PAM. Its memory is overwritten when it goes; it cannot
/// be copied.
class SecretText {
public:
    SecretText() = default;
    explicit SecretText(std::string_view text) : bytes_(text.begin(), text.end()) {}
    ~SecretText() { wipe(); }
    SecretText(SecretText&& other) noexcept : bytes_(std::move(other.bytes_)) {
        other.bytes_.clear();
    }
    SecretText& operator=(SecretText&& other) noexcept {
        wipe();
        bytes_.swap(other.bytes_);
        return *this;
    }
    SecretText(const SecretText&) = delete;
    SecretText& operator=(const SecretText&) = delete;

    std::string_view view() const { return {bytes_.data(), bytes_.size()}; }

private:
    void wipe() {
        if (!bytes_.empty()) ::explicit_bzero(bytes_.data(), bytes_.size());
        bytes_.clear();
    }

    std::vector<char> bytes_;
};

} // namespace kelvo
