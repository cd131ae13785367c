#include "ledger/UnwrittenRecords.h"

#include <utility>

namespace kelvo {

void UnwrittenRecords::add(SealedRecord record, std::string title, std::string since,
                           const FileError& failure) {
    entries_.push_back(
        {std::move(record), std::move(title), std::move(since), reasonInWords(failure)});
}

std::vector<SealedRecord> UnwrittenRecords::retry() {
    std::vector<SealedRecord> written;
    std::vector<Entry> left;
    for (Entry& entry : entries_) {
        const auto again = writeFileAtomically(directory_ / entry.record.file, entry.record.bytes);
        if (again) {
            written.push_back(std::move(entry.record));
        } else {
            entry.reason = reasonInWords(again.error());
            left.push_back(std::move(entry));
        }
    }
    entries_ = std::move(left);
    return written;
}

tl::expected<void, FileError>
UnwrittenRecords::saveCopies(const std::filesystem::path& folder) const {
    for (const Entry& entry : entries_) {
        if (auto saved = writeFileAtomically(folder / entry.record.file, entry.record.bytes);
            !saved)
            return saved;
    }
    return {};
}

} // namespace kelvo
