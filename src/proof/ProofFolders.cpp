#include "proof/ProofFolders.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace kelvo {
namespace fs = std::filesystem;
namespace {

tl::expected<void, FileError> makeFolder(const fs::path& folder, const ProofRights& rights) {
    if (::mkdir(folder.c_str(), rights.folder) != 0) {
        if (errno == EEXIST) return {};
        const int code = errno;
        return tl::unexpected(
            FileError{shownFileName(folder) + ": " + std::generic_category().message(code), code});
    }
    // Neither the umask nor a folder that hands its group on decides who may look at the proof. A
    // file system that knows no such rights still holds the folder.
    if (rights.group) (void)!::chown(folder.c_str(), static_cast<uid_t>(-1), *rights.group);
    (void)::chmod(folder.c_str(), rights.folder);
    return {};
}

} // namespace

fs::path ProofFolders::proof() const {
    return (outputs.has_filename() ? outputs : outputs.parent_path()).parent_path() / "proof";
}

fs::path ProofFolders::vault() const {
    return proof() / "vault";
}

fs::path ProofFolders::checkpoints() const {
    return proof() / "checkpoints";
}

fs::path ProofFolders::log(std::string_view logId) const {
    return proof() / ("seals-" + std::string(logId.substr(0, 8)) + ".ndjson");
}

ProofRights proofRights(const ProofFolders& folders) {
    ProofRights rights;
    struct stat status {};
    if (::stat(folders.outputs.c_str(), &status) == 0 && (status.st_mode & S_IWGRP) != 0) {
        rights = {.folder = 0770, .file = 0660, .kept = 0440, .group = status.st_gid};
    }
    return rights;
}

tl::expected<void, FileError> makeProofFolders(const ProofFolders& folders) {
    const ProofRights rights = proofRights(folders);
    for (const fs::path& folder : {folders.proof(), folders.vault(), folders.checkpoints()}) {
        if (const auto made = makeFolder(folder, rights); !made) return made;
    }
    return {};
}

} // namespace kelvo
