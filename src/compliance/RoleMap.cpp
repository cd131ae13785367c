#include "compliance/RoleMap.h"

#include "base/Files.h"
#include "base/JsonReader.h"

#include <algorithm>
#include <utility>

namespace kelvo {
namespace {

/// A task of the map goes into the record of its closing, which must stay readable at the next
/// start.
constexpr std::size_t largestRoleMapFile = std::size_t{1} << 20;

RoleMap::Role readRole(JsonReader& reader) {
    RoleMap::Role role{.role = reader.string("role"), .readonly = reader.boolean("readonly")};
    std::vector<RoleMap::Control> controls;
    const bool given = reader.optionalArray("controls", [&controls](JsonReader& control) {
        controls.push_back({.criterion = control.string("criterion"),
                            .task = control.string("task"),
                            .close = control.string("close")});
    });
    if (given) role.controls = std::move(controls);
    role.criteria = reader.optionalStrings("criteria");
    return role;
}

std::vector<std::string> peopleOf(const Json& role) {
    const auto people = role.find("people");
    if (people == role.end() || !people->is_array()) return {};
    std::vector<std::string> names;
    for (const Json& each : *people) {
        if (!each.is_string()) return {};
        names.push_back(each.get<std::string>());
    }
    return names;
}

} // namespace

tl::expected<RoleMap, std::string> RoleMap::load(const std::filesystem::path& file) {
    const auto bytes = readFile(file, largestRoleMapFile);
    if (!bytes) return tl::unexpected(bytes.error().description);
    const std::string name = shownFileName(file) + ": ";
    const auto document = parseJson(*bytes);
    if (!document) return tl::unexpected(name + document.error());
    auto map = fromJson(*document);
    if (!map) return tl::unexpected(name + map.error());
    return map;
}

tl::expected<RoleMap, std::string> RoleMap::fromJson(const Json& document) {
    RoleMap map;
    JsonReader reader(document);
    reader.array("roles", [&map](JsonReader& role) { map.roles.push_back(readRole(role)); });
    if (reader.error()) return tl::unexpected(*reader.error());
    for (std::size_t i = 0; i < map.roles.size(); ++i)
        map.roles[i].people = peopleOf(document["roles"][i]);
    return map;
}

std::vector<std::string> RoleMap::roleNames() const {
    std::vector<std::string> names;
    names.reserve(roles.size());
    for (const Role& each : roles)
        names.push_back(each.role);
    return names;
}

std::vector<std::string> RoleMap::rolesFor(std::string_view person) const {
    std::vector<std::string> names;
    for (const Role& each : roles) {
        const auto& people = each.people;
        if (people.empty() || std::find(people.begin(), people.end(), person) != people.end())
            names.push_back(each.role);
    }
    return names;
}

const RoleMap::Role* RoleMap::role(std::string_view name) const {
    const auto found = std::find_if(roles.begin(), roles.end(),
                                    [name](const Role& each) { return each.role == name; });
    return found == roles.end() ? nullptr : &*found;
}

std::vector<RoleMap::Control> RoleMap::controlsFor(std::string_view name) const {
    const Role* found = role(name);
    if (found == nullptr) return {};
    if (found->controls) return *found->controls;
    std::vector<Control> controls;
    if (!found->criteria) return controls;
    for (const std::string& criterion : *found->criteria) {
        controls.push_back(
            {criterion, found->readonly ? "Verify control" : "Attest control", "attest"});
    }
    return controls;
}

} // namespace kelvo
