#include "setup/CsvRecords.h"

#include "base/Text.h"

#include <algorithm>
#include <utility>

namespace kelvo {
namespace {

class Reader {
public:
    Reader(std::string_view text, char separator) : text_(text), separator_(separator) {}

    tl::expected<std::vector<CsvRecord>, ListFaults> read() && {
        while (at_ < text_.size())
            readRecord();
        if (!faults_.empty()) return tl::unexpected(std::move(faults_));
        return std::move(records_);
    }

private:
    void readRecord() {
        CsvRecord record{line_, {}};
        do {
            record.fields.push_back(readField());
        } while (taken(separator_));
        (void)lineEndTaken();
        const bool blank =
            std::all_of(record.fields.begin(), record.fields.end(),
                        [](const std::string& field) { return trimmed(field).empty(); });
        if (!blank) records_.push_back(std::move(record));
    }

    std::string readField() {
        if (at_ >= text_.size() || text_[at_] != '"') return std::string(plainField());
        std::string field = quotedField();
        const std::size_t line = line_;
        if (!plainField().empty())
            faults_.push_back({line, "there is text behind a closing quote"});
        return field;
    }

    std::string_view plainField() {
        const std::size_t start = at_;
        while (at_ < text_.size() && text_[at_] != separator_ && !atLineEnd())
            ++at_;
        return text_.substr(start, at_ - start);
    }

    std::string quotedField() {
        const std::size_t begun = line_;
        std::string field;
        ++at_;
        while (at_ < text_.size()) {
            if (lineEndTaken()) {
                field += '\n';
            } else if (text_[at_] != '"') {
                field += text_[at_++];
            } else {
                ++at_;
                if (!taken('"')) return field;
                field += '"';
            }
        }
        faults_.push_back({begun, "a quote is opened and never closed"});
        return field;
    }

    bool taken(char wanted) {
        if (at_ >= text_.size() || text_[at_] != wanted) return false;
        ++at_;
        return true;
    }

    bool atLineEnd() const { return text_[at_] == '\n' || text_[at_] == '\r'; }

    bool lineEndTaken() {
        if (at_ >= text_.size() || !atLineEnd()) return false;
        const bool first = text_[at_++] == '\r';
        if (first) (void)taken('\n');
        ++line_;
        return true;
    }

    std::string_view text_;
    char separator_;
    std::size_t at_ = 0;
    std::size_t line_ = 1;
    std::vector<CsvRecord> records_;
    ListFaults faults_;
};

} // namespace

tl::expected<std::vector<CsvRecord>, ListFaults> csvRecords(std::string_view text, char separator) {
    return Reader(text, separator).read();
}

} // namespace kelvo
