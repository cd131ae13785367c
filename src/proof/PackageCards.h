#pragma once

#include <array>
#include <string_view>

namespace kelvo {

/// A file that goes into every package as it is.
struct PackageCard {
    std::string_view name;
    std::string_view text;
};

/// How to check a package: the recipe as a script, and the card that says it for typing.
extern const std::array<PackageCard, 2> packageCards;

} // namespace kelvo
