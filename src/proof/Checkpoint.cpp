#include "proof/Checkpoint.h"

#include "base/Sha256.h"
#include "base/Text.h"
#include "base/Time.h"
#include "proof/LineParser.h"
#include "proof/SealLine.h"

#include <algorithm>
#include <charconv>
#include <numeric>
#include <optional>

namespace kelvo {
namespace fs = std::filesystem;
namespace {

constexpr std::string_view firstLine = "Kelvo seal log checkpoint 1";
constexpr std::size_t largestCheckpoint = std::size_t{1} << 20;
/// Mail programs take addresses of about two thousand characters.
constexpr std::size_t longestMail = 1800;

/// As a mail program may have changed it, back again.
std::string_view cleaned(std::string_view line) {
    while (line.starts_with('>')) {
        line.remove_prefix(1);
        if (line.starts_with(' ')) line.remove_prefix(1);
    }
    const std::size_t last = line.find_last_not_of(" \t\r");
    return line.substr(0, last == line.npos ? 0 : last + 1);
}

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t feed = text.find('\n');
        lines.push_back(cleaned(text.substr(0, feed)));
        text.remove_prefix(feed == text.npos ? text.size() : feed + 1);
    }
    return lines;
}

std::optional<std::int64_t> wholePositive(std::string_view text) {
    std::int64_t value = 0;
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (fault != std::errc() || end != text.data() + text.size() || value < 1) return std::nullopt;
    return value;
}

/// The block whose first line is at `begin`; the error is the line that is not as it must be.
tl::expected<CheckpointBlock, std::size_t> blockAt(const std::vector<std::string_view>& lines,
                                                   std::size_t begin) {
    CheckpointBlock block;
    std::size_t at = begin;
    const auto member = [&](std::string_view name) -> std::optional<std::string_view> {
        ++at;
        if (at >= lines.size()) return std::nullopt;
        // An organisation without a name leaves nothing behind the colon.
        if (lines[at] == name.substr(0, name.size() - 1)) return "";
        if (!lines[at].starts_with(name)) return std::nullopt;
        return lines[at].substr(name.size());
    };
    const auto log = member("log: ");
    if (!log || !isLogId(*log)) return tl::unexpected(at);
    const auto count = member("lines: ");
    const auto whole = count ? wholePositive(*count) : std::nullopt;
    if (!whole) return tl::unexpected(at);
    const auto hash = member("sha256: ");
    if (!hash || !isHash(*hash)) return tl::unexpected(at);
    const auto of = member("of: ");
    if (!of) return tl::unexpected(at);
    const auto moment = member("at: ");
    if (!moment || !parseIso8601(*moment)) return tl::unexpected(at);
    return CheckpointBlock{std::string(*log), *whole, std::string(*hash), std::string(*of),
                           std::string(*moment)};
}

std::string quoted(std::string_view line) {
    const std::string valid = toValidUtf8(line);
    return "“" + withControlsShown(firstCharacters(valid, 80)) + "”";
}

std::string percentEncoded(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    constexpr std::string_view plain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
    std::string encoded;
    for (const char c : text) {
        if (plain.find(c) != plain.npos) {
            encoded += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        // A line ends by CR LF in a mail address (RFC 6068).
        encoded += c == '\n' ? "%0D" : "";
        encoded += '%';
        encoded += digits[byte >> 4];
        encoded += digits[byte & 15];
    }
    return encoded;
}

} // namespace

std::int64_t Checkpoint::lines() const {
    return std::accumulate(blocks.begin(), blocks.end(), std::int64_t{0},
                           [](std::int64_t sum, const auto& block) { return sum + block.lines; });
}

const std::string& Checkpoint::at() const {
    static const std::string none;
    return blocks.empty() ? none : blocks.front().at;
}

const CheckpointBlock* Checkpoint::blockOf(std::string_view log) const {
    const auto found = std::find_if(blocks.begin(), blocks.end(),
                                    [&](const auto& block) { return block.log == log; });
    return found == blocks.end() ? nullptr : &*found;
}

std::string checkpointText(const Checkpoint& checkpoint) {
    std::string text;
    for (const CheckpointBlock& block : checkpoint.blocks) {
        if (!text.empty()) text += '\n';
        text += std::string(firstLine) + "\nlog: " + block.log +
                "\nlines: " + std::to_string(block.lines) + "\nsha256: " + block.sha256 +
                "\nof: " + block.of + "\nat: " + block.at + "\n";
    }
    return text;
}

tl::expected<Checkpoint, std::string> parseCheckpoint(std::string_view text) {
    if (text.size() > largestCheckpoint) {
        return tl::unexpected(std::string("This is not a checkpoint: it is too long."));
    }
    const auto lines = linesOf(text);
    Checkpoint checkpoint;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i] != firstLine) continue;
        auto block = blockAt(lines, i);
        if (!block) {
            const std::string line =
                block.error() < lines.size() ? quoted(lines[block.error()]) : "its end";
            return tl::unexpected("This checkpoint cannot be read from " + line + " on.");
        }
        checkpoint.blocks.push_back(std::move(*block));
    }
    if (!checkpoint.blocks.empty()) return checkpoint;
    const auto first = std::find_if(lines.begin(), lines.end(),
                                    [](std::string_view line) { return !line.empty(); });
    return tl::unexpected("This is not a checkpoint: its first line is " +
                          quoted(first == lines.end() ? "" : *first) + ".");
}

std::string checkpointFileName(const Checkpoint& checkpoint) {
    std::string lines = std::to_string(checkpoint.lines());
    if (lines.size() < 6) lines.insert(0, 6 - lines.size(), '0');
    return lines + "-" + abbreviated(sha256Hex(checkpointText(checkpoint))) + ".txt";
}

std::vector<StoredCheckpoint> storedCheckpoints(const fs::path& folder) {
    std::vector<StoredCheckpoint> stored;
    std::error_code fault;
    for (fs::directory_iterator entry(folder, fault), end; !fault && entry != end;
         entry.increment(fault)) {
        const auto text = readFile(entry->path(), largestCheckpoint);
        if (!text) continue;
        auto checkpoint = parseCheckpoint(*text);
        std::string name = entry->path().filename().string();
        // Its name is the hash of its text: one that somebody has changed is none.
        if (!checkpoint || checkpointFileName(*checkpoint) != name ||
            checkpointText(*checkpoint) != *text) {
            continue;
        }
        stored.push_back({std::move(name), std::move(*checkpoint)});
    }
    std::sort(stored.begin(), stored.end(), [](const auto& a, const auto& b) {
        return std::tie(a.checkpoint.at(), a.fileName) < std::tie(b.checkpoint.at(), b.fileName);
    });
    return stored;
}

CheckpointMail checkpointMail(const Checkpoint& checkpoint) {
    const std::int64_t lines = checkpoint.lines();
    CheckpointMail mail;
    mail.subject =
        "Kelvo seal log checkpoint, " + std::to_string(lines) + (lines == 1 ? " line" : " lines");
    mail.body = checkpointText(checkpoint);
    const std::string begin = "mailto:?subject=" + percentEncoded(mail.subject);
    mail.url = begin + "&body=" + percentEncoded(mail.body);
    mail.attach = mail.url.size() > longestMail;
    if (mail.attach) {
        mail.url = begin;
        mail.body.clear();
    }
    return mail;
}

std::vector<std::string> groupsOfEight(std::string_view hash) {
    std::vector<std::string> groups;
    for (std::size_t at = 0; at < hash.size(); at += 8)
        groups.emplace_back(hash.substr(at, 8));
    return groups;
}

} // namespace kelvo
