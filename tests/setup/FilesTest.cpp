#include "compliance/RoleMap.h"
#include "compliance/SOC2Mesh.h"
#include "setup/CsvList.h"
#include "setup/OrganisationFiles.h"
#include "setup/StarterLists.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

namespace kelvo {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> namesIn(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST(OrganisationFiles, BothStarterListsAreReadWithReadinessZeroAndATaskForEachCriterion) {
    for (const Starter which : {Starter::brief, Starter::detailed}) {
        const test::TemporaryDirectory place;
        const fs::path folder = place.path() / "bondgraph" / "outputs";
        const OrganisationList list = starterList(which);
        const auto files =
            composed(list, {.organisation = "Larkspur Instruments",
                            .people = {{"Engineer", {" Jonas\nWeber ", "", "Ada"}}}});
        ASSERT_TRUE(writeOrganisation(folder, *files));
        const auto mesh = SOC2Mesh::load(folder / "soc2-mesh-bondgraph.json");
        const auto roles = RoleMap::load(folder / "roles-bondgraph.json");
        ASSERT_TRUE(mesh && roles);
        EXPECT_EQ(mesh->nodes.size(), list.rows.size());
        EXPECT_EQ(mesh->readiness().value, 0);
        EXPECT_EQ(SOC2Mesh::gapText(*mesh->highestImpactGap()), "nothing recorded yet");
        std::size_t tasks = 0;
        for (const RoleMap::Role& role : roles->roles)
            tasks += role.controls ? role.controls->size() : 0;
        EXPECT_EQ(tasks, list.rows.size());
        EXPECT_EQ(roles->roles.front().role, "Owner");
        EXPECT_TRUE(roles->roles.back().readonly);
        EXPECT_EQ(roles->roles.back().criteria->size(), list.rows.size());
        EXPECT_NE(files->roles.find(R"("Jonas Weber",)"), std::string::npos);
        EXPECT_EQ(namesIn(folder).size(), 2U);
    }
}

TEST(OrganisationFiles, EvidenceAndGapStandInOneText) {
    const auto list = readCsvList("id,title,evidence,gap\na,T,there,missing\nb,T,there,\n"
                                  "c,T,,missing\nd,T,there. GAP: old,\n");
    const auto mesh = SOC2Mesh::fromJson(*parseJson(composed(*list, {})->graph));
    std::string texts;
    for (const SOC2Mesh::Node& node : mesh->nodes)
        texts += node.evidence + "|";
    EXPECT_EQ(texts, "there GAP: missing|there|GAP: missing|there. GAP: old|");
}

TEST(OrganisationFiles, AListTooLongForItsReaderIsRefused) {
    OrganisationList list;
    for (int i = 0; i < 20; ++i)
        list.rows.push_back({.id = "a" + std::to_string(i), .title = std::string(60000, 't')});
    EXPECT_EQ(composed(*settled(list), {}).error().front().reason,
              "the list is too long: its role map would be larger than 1 MiB");
}

TEST(OrganisationFiles, WhatIsThereIsNeverOverwrittenAndNothingIsLeftBehind) {
    const OrganisationFiles files{"graph\n", "roles\n"};
    for (const char* taken : {OrganisationFiles::graphName, OrganisationFiles::rolesName}) {
        const test::TemporaryDirectory place;
        std::ofstream(place.path() / taken) << "mine";
        const auto written = writeOrganisation(place.path(), files);
        ASSERT_FALSE(written);
        EXPECT_EQ(written.error().description, std::string(taken) + " is there already");
        EXPECT_EQ(namesIn(place.path()), std::vector<std::string>{taken});
        EXPECT_EQ(readFile(place.path() / taken).value(), "mine");
    }
    // A link that leads nowhere is there, too.
    const test::TemporaryDirectory place;
    fs::create_symlink("nowhere", place.path() / OrganisationFiles::graphName);
    EXPECT_FALSE(writeOrganisation(place.path(), files));
    EXPECT_EQ(namesIn(place.path()).size(), 1U);
    std::ofstream(place.path() / "file") << "";
    EXPECT_FALSE(writeOrganisation(place.path() / "file" / "new", files));
    EXPECT_FALSE(writeOrganisation("/proc/none/such", files));
    EXPECT_FALSE(writeOrganisation(place.path() / "new" / std::string(300, 'x'), files));
    EXPECT_EQ(namesIn(place.path()).size(), 2U);
}

} // namespace
} // namespace kelvo
