#pragma once

#include <unistd.h>

#include <utility>

namespace kelvo {

/// An open file of the system, closed with this. A negative number is none.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    ~Descriptor() { reset(); }
    Descriptor(Descriptor&& other) noexcept : number_(other.release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        if (this != &other) {
            reset();
            number_ = other.release();
        }
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool valid() const { return number_ >= 0; }
    int number() const { return number_; }
    int release() { return std::exchange(number_, -1); }
    void reset() {
        if (number_ >= 0) ::close(release());
    }

private:
    int number_;
};

} // namespace kelvo
