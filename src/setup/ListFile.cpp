#include "setup/ListFile.h"

#include "base/Files.h"
#include "setup/CsvList.h"
#include "setup/OscalCatalog.h"

#include <cstddef>
#include <string>
#include <utility>

namespace kelvo {
namespace {

constexpr std::size_t largestCsv = std::size_t{4} << 20;
/// The largest catalogs that are published have ten.
constexpr std::size_t largestCatalog = std::size_t{64} << 20;

} // namespace

tl::expected<OrganisationList, ListFaults> readListFile(const std::filesystem::path& file,
                                                        ListKind kind) {
    const auto bytes = readFile(file, kind == ListKind::csv ? largestCsv : largestCatalog);
    if (!bytes) {
        // The name stands before the reason where the fault is told.
        std::string reason = bytes.error().description;
        const std::string name = shownFileName(file) + ": ";
        if (reason.starts_with(name)) reason.erase(0, name.size());
        return tl::unexpected(ListFaults{{0, std::move(reason)}});
    }
    return kind == ListKind::csv ? readCsvList(*bytes) : readOscalCatalog(*bytes);
}

} // namespace kelvo
