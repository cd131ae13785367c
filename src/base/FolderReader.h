#pragma once

#include "base/Files.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace kelvo {

/// Reads many small files of one folder: names are looked up in the open folder alone, and one
/// buffer serves all. A folder that cannot be opened has no names, and reading in it fails.
class FolderReader {
public:
    explicit FolderReader(const std::filesystem::path& folder);

    /// Calls `each` with the name of every regular file and every link to one, in the file
    /// system's order.
    void eachName(const std::function<void(std::string_view name)>& each) const;

    /// The bytes of a regular file, valid until the next call. Fails as `readFile` does.
    tl::expected<std::string_view, FileError> read(const std::string& name, std::size_t maxBytes);

private:
    std::filesystem::path folder_;
    Descriptor opened_;
    std::string buffer_;
};

} // namespace kelvo
