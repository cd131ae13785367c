#include "setup/OrganisationFiles.h"

#include "base/Json.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <system_error>
#include <utility>
#include <vector>

namespace kelvo {
namespace {

namespace fs = std::filesystem;

/// As large as the role map's reader takes.
constexpr std::size_t largestRoleMap = std::size_t{1} << 20;

std::string evidenceText(const OrganisationRow& row) {
    if (row.gap.empty()) return row.evidence.empty() ? "GAP: nothing recorded yet" : row.evidence;
    return (row.evidence.empty() ? "GAP: " : row.evidence + " GAP: ") + row.gap;
}

Json graphJson(const OrganisationList& list, const std::string& organisation) {
    Json nodes = Json::array();
    for (const OrganisationRow& row : list.rows) {
        Json node{{"id", row.id},       {"g", row.level},
                  {"w", row.weight},    {"evidence", evidenceText(row)},
                  {"title", row.title}, {"frequency", fileWord(row.due)}};
        if (!row.tsc.empty()) node["tsc"] = row.tsc;
        nodes.push_back(std::move(node));
    }
    Json graph{{"nodes", std::move(nodes)}};
    if (!organisation.empty()) graph["organisation"] = organisation;
    return graph;
}

Json roleJson(const ListRole& role, const OrganisationList& list, const Answers& answers) {
    Json entry{{"role", role.name}, {"readonly", role.readonly}};
    Json controls = Json::array();
    Json criteria = Json::array();
    for (const OrganisationRow& row : list.rows) {
        if (role.readonly) criteria.push_back(row.id);
        if (row.role != role.name) continue;
        controls.push_back(
            {{"criterion", row.id}, {"task", row.task}, {"close", fileWord(row.close)}});
    }
    if (role.readonly) entry["criteria"] = std::move(criteria);
    if (!controls.empty()) entry["controls"] = std::move(controls);
    Json people = Json::array();
    if (const auto named = answers.people.find(role.name); named != answers.people.end()) {
        for (const std::string& each : named->second) {
            const std::string person = asOneLine(each);
            const bool known = std::find(people.begin(), people.end(), person) != people.end();
            if (!person.empty() && !known) people.push_back(person);
        }
    }
    if (!people.empty()) entry["people"] = std::move(people);
    return entry;
}

Json rolesJson(const OrganisationList& list, const Answers& answers) {
    Json roles = Json::array();
    for (const ListRole& role : rolesOf(list))
        roles.push_back(roleJson(role, list, answers));
    return {{"roles", std::move(roles)}};
}

/// Makes a folder and those above it, and knows how to take them away again.
class NewFolders {
public:
    std::error_code make(const fs::path& folder) {
        std::error_code fault;
        if (fs::is_directory(folder, fault)) return {};
        if (folder.has_relative_path() && folder.has_parent_path()) {
            if (const auto above = make(folder.parent_path())) return above;
        }
        if (fs::create_directory(folder, fault)) made_.push_back(folder);
        return fault;
    }

    void takeBack() {
        for (auto each = made_.rbegin(); each != made_.rend(); ++each)
            ::rmdir(each->c_str());
    }

private:
    std::vector<fs::path> made_;
};

/// A file that is whole on the disk and has no name of its own yet.
class Prepared {
public:
    explicit Prepared(fs::path path) : path_(std::move(path)), temporary_(temporaryBeside(path_)) {}
    Prepared(const Prepared&) = delete;
    Prepared& operator=(const Prepared&) = delete;
    ~Prepared() { ::unlink(temporary_.c_str()); }

    tl::expected<void, FileError> write(const std::string& bytes) const {
        const auto file = createFile(temporary_);
        if (!file) return tl::unexpected(systemError(path_, file.error().code));
        int code = writeAll(file->number(), bytes);
        if (code == 0) code = flushToDisk(file->number());
        if (code != 0) return tl::unexpected(systemError(path_, code));
        return {};
    }

    tl::expected<void, FileError> takeName() const {
        const int code = renameWithoutReplacing(temporary_, path_);
        if (code == EEXIST) {
            return tl::unexpected(FileError{shownFileName(path_) + " is there already", EEXIST});
        }
        if (code != 0) return tl::unexpected(systemError(path_, code));
        return {};
    }

    void giveUpName() const { ::unlink(path_.c_str()); }

private:
    fs::path path_;
    fs::path temporary_;
};

tl::expected<void, FileError> writeBoth(const fs::path& folder, const OrganisationFiles& files) {
    const Prepared roles(folder / OrganisationFiles::rolesName);
    const Prepared graph(folder / OrganisationFiles::graphName);
    auto done = roles.write(files.roles);
    if (done) done = graph.write(files.graph);
    // The graph comes last: an organisation is there once its graph is.
    if (done) done = roles.takeName();
    if (!done) return done;
    done = graph.takeName();
    if (!done) roles.giveUpName();
    flushFolderOf(folder / OrganisationFiles::graphName);
    return done;
}

} // namespace

tl::expected<OrganisationFiles, ListFaults> composed(const OrganisationList& list,
                                                     const Answers& answers) {
    const auto graph =
        writeJson(graphJson(list, asOneLine(answers.organisation)), JsonLayout::pretty);
    const auto roles = writeJson(rolesJson(list, answers), JsonLayout::pretty);
    if (!graph || !roles) return tl::unexpected(ListFaults{{0, "a name is not UTF-8"}});
    if (roles->size() >= largestRoleMap) {
        return tl::unexpected(
            ListFaults{{0, "the list is too long: its role map would be larger than 1 MiB"}});
    }
    return OrganisationFiles{*graph + "\n", *roles + "\n"};
}

tl::expected<void, FileError> writeOrganisation(const fs::path& folder,
                                                const OrganisationFiles& files) {
    NewFolders folders;
    tl::expected<void, FileError> done;
    if (const auto fault = folders.make(folder))
        done = tl::unexpected(systemError(folder, fault.value()));
    else
        done = writeBoth(folder, files);
    if (!done) folders.takeBack();
    return done;
}

} // namespace kelvo
