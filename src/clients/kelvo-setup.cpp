// Makes the two files by which an organisation begins from a list, in a terminal.

#include "base/Text.h"
#include "setup/Answers.h"
#include "setup/ListFile.h"
#include "setup/OrganisationFiles.h"
#include "setup/StarterLists.h"

#include <tl/expected.hpp>

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kelvo {
namespace {

enum Ending { done = 0, refused = 1, misused = 2 };

constexpr const char* usage =
    "usage: kelvo-setup [--organisation NAME] LIST.csv FOLDER\n"
    "       kelvo-setup [--organisation NAME] CATALOG.json FOLDER\n"
    "       kelvo-setup [--organisation NAME] --starter short|long FOLDER\n"
    "       kelvo-setup --help | --version\n"
    "Writes soc2-mesh-bondgraph.json and roles-bondgraph.json into FOLDER, both or neither, and\n"
    "only where there are none. The window reads them from ~/bondgraphs/bondgraph/outputs.\n";

/// What was asked for on the command line.
struct Request {
    std::string organisation;
    std::optional<Starter> starter;
    std::vector<std::string> places; ///< the list, unless it is a starter, and the folder
};

int misuse(const std::string& why) {
    std::fprintf(stderr, "kelvo-setup: %s\n%s", why.c_str(), usage);
    return misused;
}

int refuse(const ListFaults& faults, std::string_view name) {
    for (const ListFault& fault : faults)
        std::fprintf(stderr, "%s\n", sentence(fault, name).c_str());
    std::fputs("Nothing was written.\n", stderr);
    return refused;
}

std::optional<Starter> starterCalled(const std::string& name) {
    if (name == "short") return Starter::brief;
    if (name == "long") return Starter::detailed;
    return std::nullopt;
}

tl::expected<Request, std::string> read(const std::vector<std::string>& arguments) {
    Request request;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (!argument.starts_with("--")) {
            request.places.push_back(argument);
            continue;
        }
        if (argument != "--organisation" && argument != "--starter")
            return tl::unexpected("there is no option " + argument);
        if (++i == arguments.size()) return tl::unexpected(argument + " needs a value");
        if (argument == "--organisation") {
            request.organisation = asOneLine(arguments[i]);
            continue;
        }
        request.starter = starterCalled(arguments[i]);
        if (!request.starter) return tl::unexpected(std::string("the starter is short or long"));
    }
    if (request.places.size() != (request.starter ? 1U : 2U))
        return tl::unexpected(std::string("it takes one list and one folder"));
    return request;
}

int setUp(const Request& request) {
    OrganisationList list;
    std::string name = "the starter list";
    if (request.starter) {
        list = starterList(*request.starter);
    } else {
        const std::filesystem::path file = request.places.front();
        name = shownFileName(file);
        const bool catalog = equalIgnoringCase(file.extension().native(), ".json");
        auto found = readListFile(file, catalog ? ListKind::catalog : ListKind::csv);
        if (!found) return refuse(found.error(), name);
        list = std::move(*found);
    }
    const auto files = composed(list, Answers{.organisation = request.organisation});
    if (!files) return refuse(files.error(), name);
    const std::filesystem::path folder = request.places.back();
    if (const auto written = writeOrganisation(folder, *files); !written) {
        std::fprintf(stderr, "%s. Nothing was written.\n", written.error().description.c_str());
        return refused;
    }
    const std::size_t criteria = list.rows.size();
    std::printf("%zu %s, %zu roles: %s and %s were written.\n", criteria,
                criteria == 1 ? "criterion" : "criteria", rolesOf(list).size(),
                OrganisationFiles::graphName, OrganisationFiles::rolesName);
    return done;
}

int run(const std::vector<std::string>& arguments) {
    if (arguments.size() == 1 && (arguments.front() == "--help" || arguments.front() == "-h")) {
        std::fputs(usage, stdout);
        return done;
    }
    if (arguments.size() == 1 && arguments.front() == "--version") {
        std::puts("kelvo-setup " KELVO_VERSION);
        return done;
    }
    const auto request = read(arguments);
    return request ? setUp(*request) : misuse(request.error());
}

} // namespace
} // namespace kelvo

int main(int argc, char** argv) {
    return kelvo::run({argv + 1, argv + argc});
}
