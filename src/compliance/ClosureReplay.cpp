#include "compliance/ClosureReplay.h"

#include "base/Descriptor.h"
#include "base/Json.h"

#include <dirent.h>
#include <fcntl.h>
#include <simdjson.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <vector>

namespace kelvo {
namespace {

constexpr std::string_view recordSuffix = ".totem.json";

/// The members that decide, as the last of repeated keys leaves them. None for what is absent or of
/// another type.
struct Decisive {
    std::optional<std::string_view> sourceDb;
    std::optional<double> gateAfter;
    std::optional<std::string_view> evidenceRoot;
    std::optional<std::string_view> criterion;

    std::optional<std::string_view> closed() const {
        const bool evidenced = evidenceRoot && !evidenceRoot->empty();
        const bool closes = sourceDb == "control" && gateAfter == 1.0 && evidenced;
        return closes ? criterion : std::nullopt;
    }
};

std::optional<std::string_view> stringIn(const simdjson::dom::element& value) {
    std::string_view text;
    if (value.get_string().get(text) != simdjson::SUCCESS) return std::nullopt;
    return text;
}

std::optional<double> numberIn(const simdjson::dom::element& value) {
    double number = 0;
    if (value.get_double().get(number) != simdjson::SUCCESS) return std::nullopt;
    return number;
}

Decisive decisiveMembers(const simdjson::dom::object& record) {
    Decisive members;
    for (const auto& [key, value] : record) {
        if (key == "sourceDb") members.sourceDb = stringIn(value);
        if (key == "gate_after") members.gateAfter = numberIn(value);
        if (key == "evidence_root") members.evidenceRoot = stringIn(value);
        if (key == "criterion") members.criterion = stringIn(value);
    }
    return members;
}

std::optional<std::string> stringMember(const Json& record, const char* key) {
    const auto found = record.find(key);
    if (found == record.end() || !found->is_string()) return std::nullopt;
    return found->get<std::string>();
}

/// As the fast reader, over the library that holds every number of the grammar.
std::optional<std::string> closedByPlainReading(std::string_view text) {
    const auto record = parseJson(text);
    if (!record || !record->is_object()) return std::nullopt;
    if (stringMember(*record, "sourceDb") != "control") return std::nullopt;
    const auto gate = record->find("gate_after");
    if (gate == record->end() || !gate->is_number() || gate->get<double>() != 1.0)
        return std::nullopt;
    if (stringMember(*record, "evidence_root").value_or("").empty()) return std::nullopt;
    return stringMember(*record, "criterion");
}

/// Reads the regular file `name` of the folder into the reader's room. None for anything else, and
/// for a file that is empty, too large or cannot be read.
std::optional<std::size_t> readRecord(int folder, const char* name, ClosureReader& reader) {
    // A FIFO opens at once this way, and the check then concerns the very file that was opened.
    const Descriptor file(::openat(folder, name, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (file.number() < 0) return std::nullopt;
    struct stat status {};
    if (::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    if (status.st_size <= 0 || static_cast<std::size_t>(status.st_size) > largestRecordFile)
        return std::nullopt;
    // A file that grows meanwhile is read to the size that it had: it is no sealed record, those
    // are renamed into place whole.
    const auto size = static_cast<std::size_t>(status.st_size);
    char* const into = reader.room(size);
    std::size_t length = 0;
    while (length < size) {
        const ssize_t got = ::read(file.number(), into + length, size - length);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return std::nullopt;
        if (got == 0) break;
        length += static_cast<std::size_t>(got);
    }
    return length;
}

bool mayBeRecord(const dirent& entry) {
    const bool readable =
        entry.d_type == DT_REG || entry.d_type == DT_LNK || entry.d_type == DT_UNKNOWN;
    return readable && std::string_view(entry.d_name).ends_with(recordSuffix);
}

} // namespace

struct ClosureReader::State {
    simdjson::dom::parser parser;
    std::vector<char> bytes;
    std::size_t capacity = 0;
    std::string slowResult;

    /// Grows the parser by doubling, so that records of many sizes do not each cost an allocation.
    bool prepare(std::size_t size) {
        if (size <= capacity) return true;
        std::size_t wanted = std::max<std::size_t>(capacity, 4096);
        while (wanted < size)
            wanted *= 2;
        if (parser.allocate(wanted, jsonDepthLimit + 1) != simdjson::SUCCESS) return false;
        capacity = wanted;
        return true;
    }
};

ClosureReader::ClosureReader() : state_(std::make_unique<State>()) {
}
ClosureReader::~ClosureReader() = default;

char* ClosureReader::room(std::size_t size) {
    const std::size_t padded = size + simdjson::SIMDJSON_PADDING;
    if (state_->bytes.size() < padded) state_->bytes.resize(2 * padded);
    return state_->bytes.data();
}

std::optional<std::string_view> ClosureReader::closedCriterion(std::size_t size) {
    State& state = *state_;
    if (!state.prepare(size)) return std::nullopt;
    simdjson::dom::element document;
    const auto fault = state.parser.parse(state.bytes.data(), size, false).get(document);
    // An integer of more than 64 bits is no fault of the grammar, only of this parser.
    if (fault == simdjson::NUMBER_ERROR) {
        auto closed = closedByPlainReading({state.bytes.data(), size});
        if (!closed) return std::nullopt;
        state.slowResult = std::move(*closed);
        return state.slowResult;
    }
    simdjson::dom::object record;
    if (fault != simdjson::SUCCESS || document.get_object().get(record) != simdjson::SUCCESS)
        return std::nullopt;
    return decisiveMembers(record).closed();
}

std::optional<std::string_view> ClosureReader::closedCriterion(std::string_view text) {
    if (!text.empty()) std::memcpy(room(text.size()), text.data(), text.size());
    return closedCriterion(text.size());
}

CriterionIds sealedClosures(const std::filesystem::path& directory,
                            const CriterionIds& criterionIds) {
    CriterionIds closed;
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(::opendir(directory.c_str()), ::closedir);
    if (!folder) return closed;
    const int folderNumber = ::dirfd(folder.get());
    ClosureReader reader;
    while (closed.size() < criterionIds.size()) {
        const dirent* entry = ::readdir(folder.get());
        if (entry == nullptr) break;
        if (!mayBeRecord(*entry)) continue;
        const auto size = readRecord(folderNumber, entry->d_name, reader);
        if (!size) continue;
        const auto criterion = reader.closedCriterion(*size);
        if (criterion && criterionIds.contains(*criterion)) closed.emplace(*criterion);
    }
    return closed;
}

} // namespace kelvo
