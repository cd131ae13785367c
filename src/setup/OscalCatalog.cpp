#include "setup/OscalCatalog.h"

#include "base/JsonReader.h"

#include <string>
#include <utility>

namespace kelvo {
namespace {

/// What a control's properties say that a row takes.
struct Properties {
    std::string label; ///< the first one
    bool withdrawn = false;
};

Properties propertiesOf(JsonReader& control) {
    Properties found;
    control.optionalArray("props", [&found](JsonReader& property) {
        const std::string name = property.string("name");
        const std::string value = property.string("value");
        if (name == "label" && found.label.empty()) found.label = value;
        if (name == "status" && value == "withdrawn") found.withdrawn = true;
    });
    return found;
}

/// The depth of both is bounded by that of JSON documents.
void readControls(JsonReader& holder, OrganisationList& list) {
    holder.optionalArray("controls", [&list](JsonReader& control) {
        OrganisationRow row{.id = control.string("id"),
                            .title = asOneLine(control.string("title"))};
        const Properties properties = propertiesOf(control);
        if (isCriterionId(properties.label)) row.tsc.push_back(properties.label);
        if (!properties.withdrawn) list.rows.push_back(std::move(row));
        readControls(control, list);
    });
}

void readGroups(JsonReader& holder, OrganisationList& list) {
    readControls(holder, list);
    holder.optionalArray("groups", [&list](JsonReader& group) { readGroups(group, list); });
}

tl::unexpected<ListFaults> refusal(std::string reason) {
    return tl::unexpected(ListFaults{{0, std::move(reason)}});
}

} // namespace

tl::expected<OrganisationList, ListFaults> readOscalCatalog(std::string_view bytes) {
    const auto document = parseJson(bytes);
    if (!document) return refusal(document.error());
    const auto catalog = document->find("catalog");
    if (!document->is_object() || catalog == document->end())
        return refusal("there is no member “catalog”, so it is no OSCAL catalog");
    OrganisationList list;
    JsonReader reader(*catalog);
    readGroups(reader, list);
    if (reader.error()) return refusal("catalog: " + *reader.error());
    return settled(std::move(list));
}

} // namespace kelvo
