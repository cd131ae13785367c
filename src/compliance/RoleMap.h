#pragma once

#include "base/Json.h"

#include <tl/expected.hpp>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// Which role has which controls, in file order.
struct RoleMap {
    struct Control {
        std::string criterion; ///< the criterion of the mesh that the control closes
        std::string task;      ///< what the person is asked to do
        std::string close;     ///< "os", "generate", or anything else for attestation

        bool operator==(const Control&) const = default;
    };

    struct Role {
        std::string role;
        bool readonly = false;                              ///< may look but not change anything
        std::optional<std::vector<Control>> controls{};     ///< when given explicitly
        std::optional<std::vector<std::string>> criteria{}; ///< used when `controls` is absent
        std::vector<std::string> people{}; ///< full names of the accounts it is meant for

        const std::string& name() const { return role; }
        bool operator==(const Role&) const = default;
    };

    std::vector<Role> roles;

    /// Reads {"roles":[…]}. A missing required key or a wrong type fails the whole file; the error
    /// says which member, in words for a person. `people` is no such key: what is no array of texts
    /// there, or empty, means nobody in particular.
    static tl::expected<RoleMap, std::string> load(const std::filesystem::path& file);
    static tl::expected<RoleMap, std::string> fromJson(const Json& document);

    std::vector<std::string> roleNames() const;

    /// The names of the roles that are meant for this person: those that name nobody in particular,
    /// and those that name them.
    std::vector<std::string> rolesFor(std::string_view person) const;

    /// The first role of this name, or none.
    const Role* role(std::string_view name) const;

    /// The role's own controls, or one attestation for each of its criteria; empty for no such
    /// role.
    std::vector<Control> controlsFor(std::string_view name) const;
};

} // namespace kelvo
