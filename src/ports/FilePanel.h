#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace kelvo {

enum class ContentType { pdf, plainText, text, json, csv };

struct FilePanelRequest {
    std::string prompt;                 ///< the button that accepts the choice
    std::string message;                ///< what the person is asked for
    std::vector<ContentType> allowed{}; ///< in order of preference; empty allows every file
};

/// A modal chooser of one existing file.
class FilePanel {
public:
    virtual ~FilePanel() = default;

    /// The chosen file, or none when the person cancels. The event loop keeps running meanwhile.
    virtual std::optional<std::filesystem::path> choose(const FilePanelRequest& request) = 0;
};

} // namespace kelvo
