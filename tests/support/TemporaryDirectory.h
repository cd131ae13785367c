#pragma once

#include <stdlib.h>

#include <filesystem>
#include <string>
#include <system_error>

namespace kelvo::test {

/// A fresh directory that is gone, with all that is in it, when this is.
class TemporaryDirectory {
public:
    TemporaryDirectory() {
        std::string name = (std::filesystem::temp_directory_path() / "kelvo-test-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) {
            throw std::filesystem::filesystem_error(
                "mkdtemp", std::error_code(errno, std::generic_category()));
        }
        path_ = name;
    }
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

} // namespace kelvo::test
