#pragma once

#include "setup/OrganisationList.h"

#include <tl/expected.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// One record of a CSV file: the line that it begins in, from 1, and its fields.
struct CsvRecord {
    std::size_t line = 0;
    std::vector<std::string> fields;
};

/// Takes CSV text apart (RFC 4180 and what spreadsheets make of it): records end with LF, CR LF or
/// CR, a quoted field may hold separators, line ends (which read LF) and doubled quotes, a quote
/// inside a field that does not begin with one is a character. Records of nothing but blank fields
/// are left out. Faults: a quote that is never closed, text behind a closing quote.
tl::expected<std::vector<CsvRecord>, ListFaults> csvRecords(std::string_view text, char separator);

} // namespace kelvo
