#pragma once

#include "ports/PdfText.h"

namespace kelvo {

/// PDF text through Poppler: the pages' text in their order, a line break between two pages.
/// Typographic ligatures (U+FB00 to U+FB06) are spelled out, so that words read as words.
class PopplerPdfText : public PdfText {
public:
    PopplerPdfText();

    std::string text(std::string_view bytes) override;
};

} // namespace kelvo
