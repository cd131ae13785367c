#pragma once

#include <string>
#include <string_view>

namespace kelvo {

class PdfText {
public:
    virtual ~PdfText() = default;

    /// The document's whole plain text as UTF-8. Empty when the bytes are no PDF, cannot be opened
    /// without a password, or hold no text.
    virtual std::string text(std::string_view bytes) = 0;
};

} // namespace kelvo
