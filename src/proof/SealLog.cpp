#include "proof/SealLog.h"

#include "proof/LineParser.h"

#include <utility>
#include <variant>

namespace kelvo {

struct SealLogReader::State {
    LineParser parser;
};

namespace {

/// Cuts pieces into lines and follows the chain from line to line.
class Follower {
public:
    Follower(LineParser& parser, const std::function<void(const SealLineView&)>& each)
        : parser_(parser), each_(each) {}

    /// False when nothing more is to be read.
    bool take(std::string_view piece) {
        reading_.bytes += piece.size();
        while (!piece.empty()) {
            const std::size_t feed = piece.find('\n');
            const std::string_view part = piece.substr(0, feed == piece.npos ? feed : feed + 1);
            if (pending_.size() + part.size() > longestSealLine) {
                return fail(true, "the line is longer than any that is written");
            }
            if (feed == std::string_view::npos) {
                pending_ += part;
                return true;
            }
            piece.remove_prefix(part.size());
            // A line that lies whole in the piece is read where it is.
            const bool follows = pending_.empty() ? line(part) : line(pending_ += part);
            pending_.clear();
            if (!follows) return false;
        }
        return true;
    }

    SealLogReading finish() {
        reading_.end.head = hex(head_);
        return std::move(reading_);
    }

private:
    bool fail(bool unreadable, std::string what) {
        reading_.damage = LogDamage{reading_.end.lines + 1, unreadable, std::move(what)};
        return false;
    }

    bool line(std::string_view text) {
        auto parsed = parser_.parse(text.substr(0, text.size() - 1));
        if (!parsed) return fail(true, parsed.error());
        if (parsed->seq != reading_.end.lines) return fail(false, "\"seq\" is not its place");
        if (!isHexOf(head_, parsed->prev))
            return fail(false, "\"prev\" is not the hash of what is before");
        const bool first = reading_.end.lines == 0;
        if (std::holds_alternative<BeginLine>(parsed->fact) != first) {
            return fail(false, first ? "the log does not begin here" : "the log begins again here");
        }
        hash_.add(text);
        head_ = hash_.soFar();
        each_({.seq = parsed->seq,
               .ts = parsed->ts,
               .text = text,
               .head = head_,
               .fact = parsed->fact,
               .payload = parsed->payload});
        ++reading_.end.lines;
        reading_.goodBytes += text.size();
        return true;
    }

    LineParser& parser_;
    const std::function<void(const SealLineView&)>& each_;
    Sha256Stream hash_;
    Sha256Digest head_ = sha256("");
    std::string pending_;
    SealLogReading reading_;
};

} // namespace

SealLogReader::SealLogReader() : state_(std::make_unique<State>()) {
}
SealLogReader::~SealLogReader() = default;

tl::expected<SealLogReading, FileError>
SealLogReader::read(const std::filesystem::path& file,
                    const std::function<void(const SealLineView&)>& each) {
    Follower follower(state_->parser, each);
    const auto read = readFileInPieces(
        file, [&](std::string_view piece, std::size_t) { return follower.take(piece); });
    if (!read) return tl::unexpected(read.error());
    return follower.finish();
}

SealLogReading SealLogReader::readBytes(std::string_view bytes,
                                        const std::function<void(const SealLineView&)>& each) {
    Follower follower(state_->parser, each);
    follower.take(bytes);
    return follower.finish();
}

} // namespace kelvo
