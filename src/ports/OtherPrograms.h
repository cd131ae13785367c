#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// A public key that the person's SSH agent can sign with.
struct SigningKey {
    std::string line;    ///< as the agent lists it: type, key, comment
    std::string comment; ///< what tells it from others for a person
};

/// The person's own programs, to which the window hands a file, a message or a page. Each call
/// answers at once whether somebody took it; what the person then does is theirs.
class OtherPrograms {
public:
    virtual ~OtherPrograms() = default;

    /// Shows a file or a folder in the application that the desktop has for it.
    virtual bool open(const std::filesystem::path& path) = 0;

    /// Opens a new message. `to` is a complete "mailto:" address (RFC 6068); nothing is sent.
    virtual bool compose(const std::string& mailto) = 0;

    /// Opens the desktop's print dialog on a PDF file, or where it has none the file itself.
    virtual bool print(const std::string& title, const std::filesystem::path& pdf) = 0;

    /// The keys that the SSH agent offers; empty where there is no agent or no key. Does not wait
    /// longer than a second.
    virtual std::vector<SigningKey> signingKeys() = 0;

    /// Has the agent sign `text` in `nameSpace` (`ssh-keygen -Y sign`), without a passphrase of
    /// ours. `done` gets the armoured signature, or none where the agent gave none within a minute;
    /// it comes on the caller's thread and never from inside this call.
    virtual void sign(const SigningKey& key, std::string_view nameSpace, const std::string& text,
                      std::function<void(std::optional<std::string>)> done) = 0;
};

} // namespace kelvo
