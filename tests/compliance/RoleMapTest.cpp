#include "compliance/RoleMap.h"

#include "base/Files.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvo {
namespace {

using ::testing::HasSubstr;
using Controls = std::vector<RoleMap::Control>;

tl::expected<RoleMap, std::string> loaded(std::string_view text) {
    const test::TemporaryDirectory folder;
    const auto file = folder.path() / "roles.json";
    EXPECT_TRUE(writeFileAtomically(file, text));
    return RoleMap::load(file);
}

TEST(RoleMap, ControlsComeFromTheListOrElseFromTheCriteria) {
    const auto map = loaded(R"({"roles":[
        {"role":"Owner","readonly":false},
        {"role":"Engineer","readonly":false,
         "controls":[{"criterion":"CC6","task":"Encrypt","close":"os"}],"criteria":["CC1"]},
        {"role":"People","readonly":false,"criteria":["CC1","CC2"],"controls":null},
        {"role":"Auditor","readonly":true,"criteria":["A","B"],"extra":1},
        {"role":"Nobody","readonly":false,"controls":[],"criteria":["CC1"]},
        {"role":"Owner","readonly":true,"criteria":["later"]}]})");
    ASSERT_TRUE(map) << map.error();
    EXPECT_EQ(map->roleNames(), (std::vector<std::string>{"Owner", "Engineer", "People", "Auditor",
                                                          "Nobody", "Owner"}));
    const std::pair<const char*, Controls> table[] = {
        {"Owner", {}},
        {"Engineer", {{"CC6", "Encrypt", "os"}}},
        {"People", {{"CC1", "Attest control", "attest"}, {"CC2", "Attest control", "attest"}}},
        {"Auditor", {{"A", "Verify control", "attest"}, {"B", "Verify control", "attest"}}},
        {"Nobody", {}},
        {"auditor", {}},
        {"", {}},
    };
    for (const auto& [role, controls] : table)
        EXPECT_EQ(map->controlsFor(role), controls) << role;
    EXPECT_EQ(map->role("Owner"), &map->roles[0]) << "of repeated names the first counts";
    EXPECT_EQ(map->role("Engineer")->name(), "Engineer");
    EXPECT_EQ(map->role("engineer"), nullptr);
}

TEST(RoleMap, AFileWithAFaultIsRefusedWholeAndTheMemberNamed) {
    const std::pair<const char*, const char*> table[] = {
        {"{}", "roles.json: roles: missing"},
        {R"({"roles":null})", "roles.json: roles: expected an array"},
        {R"({"roles":[{"readonly":true}]})", "roles.json: roles[0].role: missing"},
        {R"({"roles":[{"role":"A"}]})", "roles[0].readonly: missing"},
        {R"({"roles":[{"role":"A","readonly":0}]})", "roles[0].readonly: expected true or false"},
        {R"({"roles":[{"role":"A","readonly":true,"controls":{}}]})",
         "roles[0].controls: expected an array"},
        {R"({"roles":[{"role":"A","readonly":true,"controls":[{"criterion":"x","task":"y"}]}]})",
         "roles[0].controls[0].close: missing"},
        {R"({"roles":[{"role":"A","readonly":true,"criteria":["a",1]}]})",
         "roles[0].criteria: expected only strings"},
        {"[", "roles.json: "},
    };
    for (const auto& [text, fault] : table) {
        const auto map = loaded(text);
        ASSERT_FALSE(map) << text;
        EXPECT_THAT(map.error(), HasSubstr(fault)) << text;
    }
    const test::TemporaryDirectory folder;
    const auto file = folder.path() / "roles.json";
    ASSERT_TRUE(writeFileAtomically(file, "{"));
    std::filesystem::resize_file(file, 100'000'000);
    EXPECT_THAT(RoleMap::load(file).error(), HasSubstr("roles.json: larger"));
}

} // namespace
} // namespace kelvo
