#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct sb_stemmer;

namespace kelvo {

/// Cuts English text into the stems of its content words, in order. Words are runs of letters and
/// digits (any byte above 0x7F counts as a letter); "camelCase" and "snake_case" are several words;
/// function words and short numbers are left out. An empty stem marks the end of a sentence, a line
/// or a field, so that no phrase is read across one.
class Stems {
public:
    Stems();
    ~Stems();
    Stems(const Stems&) = delete;
    Stems& operator=(const Stems&) = delete;

    std::vector<std::string> operator()(std::string_view text) const;

    /// The stem of one lower-case word; empty for a function word.
    std::string stem(std::string_view word) const;

private:
    struct Free {
        void operator()(sb_stemmer* stemmer) const;
    };
    std::unique_ptr<sb_stemmer, Free> stemmer_;
};

} // namespace kelvo
