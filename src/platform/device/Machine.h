#pragma once

#include "platform/device/ChildProcess.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo::device {

/// What a probe found out about one setting.
enum class Finding { unknown, insecure, secure };

/// All of them must hold: one that does not decides, then one that is not known.
Finding allOf(std::initializer_list<Finding> findings);

/// One of them is enough: one that holds decides, then one that is not known.
Finding anyOf(std::initializer_list<Finding> findings);

/// Whose session and which machine is looked at. `root` stands for "/": tests set it to a tree of
/// their own.
struct Session {
    std::filesystem::path root = "/";
    std::string home;    ///< absolute, as seen from the root; empty where there is none
    std::string config;  ///< absolute; $XDG_CONFIG_HOME or <home>/.config
    std::string desktop; ///< $XDG_CURRENT_DESKTOP, such as "ubuntu:GNOME"
};

/// The session of this process, and the environment that its tools get: language C, fixed paths,
/// and of the person's own environment only what leads to their settings. Where the system's bus is
/// comes from the system, never from a variable.
struct OwnSession {
    Session session;
    Environment environment;
};
OwnSession ownSession();

/// The read-only view of the machine that one probe gets, with the time by which it must be done.
class Machine {
public:
    /// Settings and kernel tables are small; nothing larger is read, in bytes.
    static constexpr std::size_t maxFileBytes = std::size_t{1} << 20;

    Machine(const Session& session, Commands& commands, Deadline deadline)
        : session_(session), commands_(commands), deadline_(deadline) {}

    const Session& session() const { return session_; }

    /// False only where it is certain that nothing is there: what may not be looked at may exist.
    bool exists(const std::string& path) const;

    /// The whole file, or none where it cannot be read.
    std::optional<std::string> read(const std::string& path) const;

    /// As `read`, without white space at both ends.
    std::optional<std::string> readTrimmed(const std::string& path) const;

    /// The names in a folder, sorted; none where it cannot be listed.
    std::optional<std::vector<std::string>> list(const std::string& path) const;

    /// `path` with its links followed, as seen from the root.
    std::string resolved(const std::string& path) const;

    /// A tool's output without white space at both ends; none for no output.
    std::optional<std::string> ask(const std::string& path,
                                   const std::vector<std::string>& arguments) const;

private:
    std::filesystem::path at(const std::string& path) const;

    const Session& session_;
    Commands& commands_;
    Deadline deadline_;
};

/// The lines of a text, without their line feeds.
std::vector<std::string_view> linesOf(std::string_view text);

/// The words of a line, parted by spaces and tabs.
std::vector<std::string_view> wordsOf(std::string_view line);

} // namespace kelvo::device
