#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace kelvo {

using CriterionIds = std::set<std::string, std::less<>>;

/// The largest sealed record file that the start-up replay reads, in bytes.
inline constexpr std::size_t largestRecordFile = std::size_t{4} << 20;

/// The criteria that the sealed record files of `directory` close, of those in `criterionIds`.
///
/// A record file is a regular file directly inside, whose name ends in ".totem.json". It closes its
/// "criterion" when its "sourceDb" is "control", its "gate_after" is the number 1 and its
/// "evidence_root" is a string that is not empty. Whatever else bears such a name (a folder, a
/// FIFO, a dangling link, a file that is malformed, of a wrong type, nested far deeper than
/// `jsonDepthLimit` or larger than `largestRecordFile`) is passed over in silence, and so is a
/// directory that cannot be listed. Reading stops once every criterion is closed. Linear in the
/// number of files; memory is bounded by one record.
CriterionIds sealedClosures(const std::filesystem::path& directory,
                            const CriterionIds& criterionIds);

/// Decides record texts one by one, with memory that is used again.
class ClosureReader {
public:
    ClosureReader();
    ~ClosureReader();
    ClosureReader(const ClosureReader&) = delete;
    ClosureReader& operator=(const ClosureReader&) = delete;

    /// Room for at least `size` bytes of one record's text, with what the parser needs behind them.
    char* room(std::size_t size);

    /// The criterion that the first `size` bytes in the room close, or none. Valid until the next
    /// call. The room's bytes may be changed.
    std::optional<std::string_view> closedCriterion(std::size_t size);

    /// The same of any text.
    std::optional<std::string_view> closedCriterion(std::string_view text);

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace kelvo
