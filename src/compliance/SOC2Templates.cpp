#include "compliance/SOC2Templates.h"

#include <algorithm>
#include <array>

namespace kelvo {
namespace {

constexpr const char* owner = "owner";
constexpr const char* sharedJunction = "owner_j0";

/// The owner's effort drives, through a transformer whose ratio is the number of controls, one
/// 1-junction that carries the gap, the process and the accumulated control.
ExtractedGraph familyGraph(const std::string& id, double controls, double gap) {
    const std::string transformer = "TF_" + id;
    const std::string junction = "1_" + id;
    const std::string resistor = "R_" + id + "gap";
    const std::string inertance = "I_" + id + "proc";
    const std::string capacitor = "C_" + id;
    return {
        .nodes = {{owner, "Se", std::nullopt},
                  {transformer, "TF", controls},
                  {junction, "j1", std::nullopt},
                  {resistor, "R", gap},
                  {inertance, "I", 1.0},
                  {capacitor, "C", controls}},
        .bonds = {{owner, transformer},
                  {transformer, junction},
                  {junction, resistor},
                  {junction, inertance},
                  {junction, capacitor}},
    };
}

struct Row {
    const char* id;
    const char* title;
    int controls;
    double gap; ///< resistance of the gap element
    const char* criterionText;
    const char* policy;
    std::vector<std::string> evidence;
};

std::vector<SOC2Template> build() {
    const auto rows = std::to_array<Row>({
        {"CC1",
         "Control Environment (governance, org, HR, ethics)",
         5,
         0.6,
         "Demonstrates commitment to integrity, ethics, board oversight, org structure, "
         "competence, "
         "and accountability (COSO 1-5).",
         "Code of conduct, defined org structure & authority, role responsibilities, and "
         "performance "
         "accountability.",
         {"signed code of conduct", "org chart", "job descriptions / roles",
          "management oversight records"}},
        {"CC2",
         "Communication & Information",
         3,
         0.4,
         "Obtains/uses quality information and communicates internal and external responsibilities "
         "for control (COSO 13-15).",
         "Security responsibilities communicated internally; channel for external parties; "
         "policies "
         "published & acknowledged.",
         {"published security policies", "onboarding policy acknowledgments",
          "external trust/contact channel"}},
        {"CC3",
         "Risk Assessment",
         4,
         0.6,
         "Specifies objectives and identifies, analyzes, and manages risks including fraud and "
         "change (COSO 6-9).",
         "Documented risk-assessment methodology; annual risk assessment; fraud and change-risk "
         "consideration.",
         {"risk register", "annual risk assessment record", "change-risk reviews"}},
        {"CC4",
         "Monitoring Activities",
         3,
         0.5,
         "Performs ongoing and separate evaluations and communicates control deficiencies (COSO "
         "16-17).",
         "Continuous monitoring, periodic internal control evaluation, and tracked remediation of "
         "deficiencies.",
         {"monitoring dashboards/alerts", "internal evaluation results",
          "remediation tracking log"}},
        {"CC5",
         "Control Activities",
         4,
         0.5,
         "Selects and develops control activities and technology general controls and deploys them "
         "via policies and procedures (COSO 10-12).",
         "Control activities mapped to risks; documented operating procedures; technology general "
         "controls.",
         {"control matrix (risk→control)", "documented procedures"}},
        {"CC6",
         "Logical & Physical Access (SSO, MFA, MDM)",
         8,
         0.8,
         "Restricts logical and physical access: provisioning, authentication, encryption, and "
         "timely removal.",
         "Least-privilege access provisioning, MFA enforced, encryption in transit/at rest, "
         "quarterly access reviews, access removal on termination.",
         {"access control policy", "MFA configuration", "quarterly access review",
          "offboarding checklist", "encryption configuration"}},
        {"CC7",
         "System Operations (logging, incident response)",
         5,
         0.7,
         "Detects and monitors anomalies/vulnerabilities and responds to and recovers from "
         "security "
         "incidents.",
         "Security logging & monitoring, vulnerability management, and a tested incident response "
         "plan.",
         {"monitoring/alerting config", "vulnerability scan results",
          "incident response plan + test record"}},
        {"CC8",
         "Change Management (SDLC)",
         4,
         0.5,
         "Authorizes, designs, develops, tests, approves, and implements changes through a "
         "controlled SDLC.",
         "Change management/SDLC: peer code review, testing, change approval, separation of "
         "duties.",
         {"change tickets", "pull-request/review records", "test evidence",
          "deployment approvals"}},
        {"CC9",
         "Risk Mitigation (vendors, BCP)",
         3,
         0.4,
         "Identifies and develops risk-mitigation activities for disruptions and manages "
         "vendor/business-partner risk.",
         "Business continuity/disaster recovery plan and a vendor risk-management program.",
         {"BCP/DR plan + test", "vendor inventory", "vendor risk assessments"}},
    });
    static_assert(std::tuple_size_v<decltype(rows)> == SOC2Templates::count);
    std::vector<SOC2Template> templates;
    templates.reserve(rows.size());
    for (const Row& row : rows) {
        templates.push_back({row.id, row.title, row.controls,
                             familyGraph(row.id, row.controls, row.gap), row.criterionText,
                             row.policy, row.evidence});
    }
    return templates;
}

} // namespace

const std::vector<SOC2Template>& SOC2Templates::all() {
    static const std::vector<SOC2Template> templates = build();
    return templates;
}

ExtractedGraph SOC2Templates::compose(std::span<const std::string> families) {
    ExtractedGraph whole{
        .nodes = {{owner, "Se", std::nullopt}, {sharedJunction, "j0", std::nullopt}},
        .bonds = {{owner, sharedJunction}}};
    for (std::size_t k = 0; k < families.size(); ++k) {
        const auto found = std::find_if(all().begin(), all().end(), [&](const SOC2Template& each) {
            return each.id == families[k];
        });
        if (found == all().end()) continue;
        const std::string prefix = "f" + std::to_string(k + 1) + "_";
        const auto placed = [&prefix](const std::string& id) {
            return id == owner ? sharedJunction : prefix + id;
        };
        for (const ExtractedGraph::N& node : found->graph.nodes) {
            if (node.id != owner) whole.nodes.push_back({placed(node.id), node.kind, node.param});
        }
        for (const ExtractedGraph::B& bond : found->graph.bonds) {
            whole.bonds.push_back({placed(bond.from), placed(bond.to)});
        }
    }
    return whole;
}

} // namespace kelvo
