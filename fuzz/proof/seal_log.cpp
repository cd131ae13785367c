// Whatever stands in a log: the good lines come first, each follows the one before, and reading
// only them gives the same again.

#include "base/Sha256.h"
#include "proof/SealLog.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kelvo;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    SealLogReader reader;
    std::string good;
    std::int64_t lines = 0;
    const auto reading = reader.readBytes(bytes, [&](const SealLineView& line) {
        if (line.seq != lines++ || !line.text.ends_with('\n')) std::abort();
        good += line.text;
    });
    if (reading.end.lines != lines || reading.goodBytes != good.size()) std::abort();
    if (!bytes.starts_with(good) || reading.end.head != sha256Hex(good)) std::abort();
    const auto again = reader.readBytes(good, [](const SealLineView&) {});
    if (again.damage || again.end != reading.end) std::abort();
    return 0;
}
