// The fast reader of record files decides as the general reader does.

#include "compliance/ClosureReplay.h"
#include "support/SlowRecordReader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    // Where nesting ends the two differ by a level.
    if (std::count_if(text.begin(), text.end(), [](char c) { return c == '[' || c == '{'; }) > 250)
        return 0;
    static kelvo::ClosureReader reader;
    if (reader.closedCriterion(text) != kelvo::support::closedBySlowReading(text)) std::abort();
    return 0;
}
