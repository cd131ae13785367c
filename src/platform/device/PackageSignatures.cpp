#include "base/Text.h"
#include "platform/device/Probes.h"

#include <array>
#include <map>

namespace kelvo::device {
namespace {

bool isTrue(std::string_view value) {
    const std::string word = lowerCased(value);
    return word == "1" || word == "true" || word == "yes" || word == "on" || word == "with" ||
           word == "enable";
}

struct Section {
    std::string name;
    std::map<std::string, std::string> values; ///< keys in lower case, of repeated ones the last
};

/// The sections of "[name]", "key = value" files.
std::vector<Section> sectionsOf(std::string_view text) {
    std::vector<Section> sections(1);
    for (std::string_view line : linesOf(text)) {
        line = trimmed(line);
        if (line.empty() || line.starts_with('#') || line.starts_with(';')) continue;
        if (line.starts_with('[')) {
            sections.push_back({std::string(line.substr(1, line.find(']') - 1)), {}});
            continue;
        }
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos) continue;
        sections.back().values[lowerCased(trimmed(line.substr(0, equals)))] =
            trimmed(line.substr(equals + 1));
    }
    return sections;
}

std::optional<std::string> valueOf(const Section& section, const char* key) {
    const auto found = section.values.find(key);
    if (found == section.values.end()) return std::nullopt;
    return found->second;
}

/// Calls `judge` with the text of every file of a folder that ends in `ending`, and combines.
template <class Judge>
Finding ofEachFile(const Machine& machine, const std::string& folder, std::string_view ending,
                   Judge judge) {
    if (!machine.exists(folder)) return Finding::secure;
    const auto names = machine.list(folder);
    if (!names) return Finding::unknown;
    Finding result = Finding::secure;
    for (const std::string& name : *names) {
        if (!name.ends_with(ending)) continue;
        const auto text = machine.read(std::string(folder).append("/").append(name));
        result = allOf({result, text ? judge(*text) : Finding::unknown});
    }
    return result;
}

Finding dnf(const Machine& machine) {
    const auto settings = machine.read("/etc/dnf/dnf.conf");
    if (!settings) return Finding::unknown;
    // What counts without the key differs between the versions of the tool.
    Finding main = Finding::unknown;
    for (const Section& section : sectionsOf(*settings)) {
        const auto check = valueOf(section, "gpgcheck");
        if (section.name == "main" && check)
            main = isTrue(*check) ? Finding::secure : Finding::insecure;
    }
    const Finding repositories =
        ofEachFile(machine, "/etc/yum.repos.d", ".repo", [](std::string_view text) {
            for (const Section& section : sectionsOf(text)) {
                const bool inUse = isTrue(valueOf(section, "enabled").value_or("1"));
                if (inUse && !isTrue(valueOf(section, "gpgcheck").value_or("1")))
                    return Finding::insecure;
            }
            return Finding::secure;
        });
    return allOf({main, repositories});
}

/// apt-config(8) prints one setting a line: `Acquire::AllowInsecureRepositories "0";`.
Finding aptSettings(const Machine& machine) {
    constexpr std::array loosening = {
        "apt::get::allowunauthenticated",
        "acquire::allowinsecurerepositories",
        "acquire::allowdowngradetoinsecurerepositories",
    };
    const auto dump = machine.ask("/usr/bin/apt-config", {"dump"});
    if (!dump) return Finding::unknown;
    for (const std::string_view line : linesOf(*dump)) {
        const auto words = wordsOf(line);
        if (words.size() != 2 || words[1].size() < 3) continue;
        const std::string key = lowerCased(words[0]);
        for (const char* each : loosening) {
            if (key == each && isTrue(words[1].substr(1, words[1].size() - 3)))
                return Finding::insecure;
        }
    }
    return Finding::secure;
}

/// sources.list(5): `deb [trusted=yes arch=amd64] uri suite components`.
Finding aptListFile(std::string_view text) {
    for (const std::string_view line : linesOf(text)) {
        const auto words = wordsOf(line.substr(0, line.find('#')));
        if (words.empty() || (words[0] != "deb" && words[0] != "deb-src")) continue;
        const std::size_t open = line.find('[');
        if (open == std::string_view::npos || open > line.find("://")) continue;
        const std::string options = lowerCased(line.substr(open + 1, line.find(']') - open - 1));
        for (const std::string_view option : wordsOf(options)) {
            if (option == "trusted=yes" || option == "allow-insecure=yes") return Finding::insecure;
        }
    }
    return Finding::secure;
}

/// The same in paragraphs of "Field: value".
Finding aptSourcesFile(std::string_view text) {
    bool enabled = true;
    bool loose = false;
    const auto lines = linesOf(text);
    for (std::size_t i = 0; i <= lines.size(); ++i) {
        const std::string_view line = i < lines.size() ? trimmed(lines[i]) : std::string_view();
        if (line.empty()) {
            if (enabled && loose) return Finding::insecure;
            enabled = true;
            loose = false;
            continue;
        }
        const std::size_t colon = line.find(':');
        if (line.starts_with('#') || colon == std::string_view::npos) continue;
        const std::string field = lowerCased(trimmed(line.substr(0, colon)));
        const std::string value = lowerCased(trimmed(line.substr(colon + 1)));
        if (field == "enabled" && value == "no") enabled = false;
        if ((field == "trusted" || field == "allow-insecure") && value == "yes") loose = true;
    }
    return Finding::secure;
}

Finding apt(const Machine& machine) {
    Finding main = Finding::secure;
    if (machine.exists("/etc/apt/sources.list")) {
        const auto text = machine.read("/etc/apt/sources.list");
        main = text ? aptListFile(*text) : Finding::unknown;
    }
    return allOf({aptSettings(machine), main,
                  ofEachFile(machine, "/etc/apt/sources.list.d", ".list", aptListFile),
                  ofEachFile(machine, "/etc/apt/sources.list.d", ".sources", aptSourcesFile)});
}

/// What pacman.conf(5) builds up from left to right, over the tool's own default: packages are
/// checked only where a signature is there, and only trusted keys count.
struct SignatureLevel {
    bool required = false;
    bool trustedOnly = true;

    void apply(std::string_view words) {
        for (std::string_view word : wordsOf(words)) {
            if (word.starts_with("Database")) continue;
            if (word.starts_with("Package")) word.remove_prefix(7);
            if (word == "Required") required = true;
            if (word == "Optional" || word == "Never") required = false;
            if (word == "TrustAll") trustedOnly = false;
            if (word == "TrustedOnly") trustedOnly = true;
        }
    }
    bool secure() const { return required && trustedOnly; }
};

Finding pacman(const Machine& machine) {
    const auto settings = machine.read("/etc/pacman.conf");
    if (!settings) return Finding::unknown;
    const auto sections = sectionsOf(*settings);
    SignatureLevel general;
    for (const Section& section : sections) {
        if (section.name == "options") general.apply(valueOf(section, "siglevel").value_or(""));
    }
    bool secure = general.secure();
    for (const Section& section : sections) {
        if (section.name.empty() || section.name == "options") continue;
        SignatureLevel level = general;
        level.apply(valueOf(section, "siglevel").value_or(""));
        secure = secure && level.secure();
    }
    return secure ? Finding::secure : Finding::insecure;
}

} // namespace

Finding packageSignatures(const Machine& machine) {
    const struct {
        const char* sign;
        Finding (*judge)(const Machine&);
    } managers[] = {{"/etc/dnf/dnf.conf", dnf}, {"/etc/apt", apt}, {"/etc/pacman.conf", pacman}};
    bool any = false;
    Finding result = Finding::secure;
    for (const auto& manager : managers) {
        if (!machine.exists(manager.sign)) continue;
        any = true;
        result = allOf({result, manager.judge(machine)});
    }
    return any ? result : Finding::unknown;
}

} // namespace kelvo::device
