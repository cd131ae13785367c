// A checkpoint that is read is written as the same checkpoint; one that is refused says why in a
// line that can be shown.

#include "proof/Checkpoint.h"

#include "base/Text.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kelvo;
    const auto checkpoint = parseCheckpoint({reinterpret_cast<const char*>(data), size});
    if (!checkpoint) {
        const std::string& why = checkpoint.error();
        if (why.size() > 1000 || !isValidUtf8(why) || why != withControlsShown(why)) std::abort();
        return 0;
    }
    if (parseCheckpoint(checkpointText(*checkpoint)) != checkpoint) std::abort();
    (void)checkpointMail(*checkpoint);
    return 0;
}
