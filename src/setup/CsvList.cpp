#include "setup/CsvList.h"

#include "base/Text.h"
#include "setup/CsvRecords.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace kelvo {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

constexpr std::array<std::string_view, 11> columnNames{"id",       "title", "weight", "level",
                                                       "evidence", "gap",   "tsc",    "frequency",
                                                       "role",     "close", "task"};

/// The line that the first byte stands in which is not UTF-8.
std::size_t lineOfBadByte(std::string_view text) {
    std::size_t line = 1;
    while (true) {
        const auto end = text.find('\n');
        if (!isValidUtf8(text.substr(0, end))) return line;
        if (end == std::string_view::npos) return 0;
        text.remove_prefix(end + 1);
        ++line;
    }
}

/// Whichever of both separates the names in the first line; a title may hold the other one.
char separatorOf(std::string_view text) {
    const std::string_view first = text.substr(0, text.find_first_of("\r\n"));
    const auto semicolons = std::count(first.begin(), first.end(), ';');
    return semicolons > std::count(first.begin(), first.end(), ',') ? ';' : ',';
}

std::vector<std::string> words(std::string_view text) {
    std::vector<std::string> found;
    constexpr std::string_view blanks = " \t\n";
    while (true) {
        const auto start = text.find_first_not_of(blanks);
        if (start == std::string_view::npos) return found;
        text.remove_prefix(start);
        const auto length = std::min(text.find_first_of(blanks), text.size());
        found.emplace_back(text.substr(0, length));
        text.remove_prefix(length);
    }
}

std::string quoted(std::string_view text) {
    return "“" + asOneLine(text) + "”";
}

class Reader {
public:
    explicit Reader(char separator) : separator_(separator) {}

    tl::expected<OrganisationList, ListFaults> read(const std::vector<CsvRecord>& records) && {
        if (records.empty()) return tl::unexpected(ListFaults{{0, "the file is empty"}});
        readHeader(records.front());
        // Without its columns no line can be understood.
        if (!faults_.empty()) return tl::unexpected(std::move(faults_));
        for (std::size_t i = 1; i < records.size(); ++i)
            readRow(records[i]);
        return settled(std::move(list_), std::move(faults_));
    }

private:
    void say(std::size_t line, std::string reason) { faults_.push_back({line, std::move(reason)}); }

    void readHeader(const CsvRecord& header) {
        for (std::size_t i = 0; i < header.fields.size(); ++i) {
            const std::string name = lowerCased(trimmed(header.fields[i]));
            if (name.empty()) continue;
            if (std::find(columnNames.begin(), columnNames.end(), name) == columnNames.end())
                say(header.line, "there is no column " + quoted(header.fields[i]));
            else if (!columns_.try_emplace(name, i).second)
                say(header.line, "the column " + quoted(name) + " is named twice");
        }
        width_ = header.fields.size();
        for (const char* needed : {"id", "title"}) {
            if (!columns_.contains(needed))
                say(header.line, std::string("the column “") + needed + "” is missing");
        }
    }

    /// The trimmed cell, empty where the record has none.
    std::string_view cell(const CsvRecord& record, std::string_view column) const {
        const auto found = columns_.find(column);
        if (found == columns_.end() || found->second >= record.fields.size()) return {};
        return trimmed(record.fields[found->second]);
    }

    void readRow(const CsvRecord& record) {
        checkWidth(record);
        OrganisationRow row{.id = std::string(cell(record, "id")),
                            .title = asOneLine(cell(record, "title")),
                            .evidence = std::string(cell(record, "evidence")),
                            .gap = std::string(cell(record, "gap")),
                            .tsc = words(cell(record, "tsc")),
                            .role = asOneLine(cell(record, "role")),
                            .task = asOneLine(cell(record, "task")),
                            .line = record.line};
        readWeight(record, row);
        readLevel(record, row);
        readWord(record, "frequency", recurrence, row.due);
        readWord(record, "close", closeBy, row.close);
        list_.rows.push_back(std::move(row));
    }

    void checkWidth(const CsvRecord& record) {
        for (std::size_t i = 0; i < record.fields.size(); ++i) {
            if (trimmed(record.fields[i]).empty()) continue;
            const bool named = std::any_of(columns_.begin(), columns_.end(),
                                           [i](const auto& column) { return column.second == i; });
            if (named) continue;
            return say(record.line, i < width_ ? "there is text in a column without a name"
                                               : "there are more fields than columns");
        }
    }

    void readWeight(const CsvRecord& record, OrganisationRow& row) {
        const std::string_view text = cell(record, "weight");
        if (text.empty()) return;
        const auto [end, fault] =
            std::from_chars(text.data(), text.data() + text.size(), row.weight);
        if (fault == std::errc() && end == text.data() + text.size()) return;
        row.weight = 0;
        say(record.line, "the weight " + quoted(text) + " is not a whole number within 0 and 1000");
    }

    void readLevel(const CsvRecord& record, OrganisationRow& row) {
        std::string text(cell(record, "level"));
        if (text.empty()) return;
        const std::string shown = text;
        // Where semicolons separate, a spreadsheet writes the decimal point as a comma.
        if (separator_ == ';') std::replace(text.begin(), text.end(), ',', '.');
        const auto [end, fault] =
            std::from_chars(text.data(), text.data() + text.size(), row.level);
        const bool whole = fault == std::errc() && end == text.data() + text.size();
        if (whole && row.level >= 0 && row.level <= 1) return;
        row.level = 0;
        say(record.line, "the level " + quoted(shown) + " is not a number within 0 and 1");
    }

    template <class Value, class Lookup>
    void readWord(const CsvRecord& record, const char* column, Lookup lookup, Value& value) {
        const std::string_view text = cell(record, column);
        if (text.empty()) return;
        if (const auto known = lookup(text))
            value = *known;
        else
            say(record.line, std::string("there is no ") + column + " " + quoted(text));
    }

    char separator_;
    std::map<std::string, std::size_t, std::less<>> columns_;
    std::size_t width_ = 0;
    OrganisationList list_;
    ListFaults faults_;
};

} // namespace

tl::expected<OrganisationList, ListFaults> readCsvList(std::string_view bytes) {
    if (bytes.starts_with(byteOrderMark)) bytes.remove_prefix(byteOrderMark.size());
    if (const std::size_t line = lineOfBadByte(bytes)) {
        return tl::unexpected(
            ListFaults{{line, "the text is not UTF-8; save the spreadsheet as CSV UTF-8"}});
    }
    const char separator = separatorOf(bytes);
    const auto records = csvRecords(bytes, separator);
    if (!records) return tl::unexpected(records.error());
    return Reader(separator).read(*records);
}

} // namespace kelvo
