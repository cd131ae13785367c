#include "responder/ControlTopics.h"

#include <array>

namespace kelvo {
namespace {

constexpr std::array topics = {
    ControlTopic{"conduct and ethics", "CC1",
                 "ethics ethic conduct integrity values culture environment",
                 "code of conduct, code of ethics, conflict of interest, misconduct, disciplinary, "
                 "bribe, whistleblower, whistleblowing, retaliation, anti bribery, speak up, "
                 "harassment, ethical behaviour, ethical behavior, gifts",
                 "conduct, ethics, integrity, honesty, respect, values, dismissal"},
    ControlTopic{
        "governance", "CC1",
        "governance board org organization organisation structure oversight management environment",
        "board of directors, advisory board, org chart, organisation chart, organization chart, "
        "organisational structure, organizational structure, reporting line, management oversight, "
        "board minutes, audit committee, management review, code of conduct",
        "board, director, reports to, authority, accountability, oversight"},
    ControlTopic{
        "people and roles", "CC1", "people hr hiring staff personnel competence roles talent",
        "job description, role description, background check, performance review, performance "
        "appraisal, competence, screening, reference check, employment contract, training plan",
        "hiring, interview, recruitment, candidate, onboarding, skills, employee"},
    ControlTopic{
        "communication of responsibilities", "CC2",
        "communication communications comms information awareness training acknowledgment",
        "policy acknowledgment, policy acknowledgement, acknowledged policy, acknowledge policy, "
        "policies acknowledged, read and acknowledge, security awareness, awareness training, "
        "trust page, trust center, trust centre, status page, security contact, published "
        "policies, published security policies, system description, external parties, security "
        "page, acceptable use policy, information security policy",
        "acknowledgment, acknowledge, communicate, communication, published, inform, wiki, "
        "internal channel, onboarding, terms of service, all staff, website, contact"},
    ControlTopic{"risk assessment", "CC3", "risk risks riskassessment assessment fraud threat",
                 "risk register, risk assessment, risk treatment, residual risk, risk appetite, "
                 "risk tolerance, inherent risk, likelihood, heat map, risk methodology, risk "
                 "owner, risk analysis, threat assessment, fraud risk, risk score, accepted risk",
                 "risk, threat, impact, probability, treatment, mitigate, transfer, fraud, "
                 "objective, exposure, accept"},
    ControlTopic{
        "evaluation of controls", "CC4",
        "monitoring evaluation internal audit remediation monitor deficiency",
        "internal audit, internal control evaluation, control evaluation, control testing, tested "
        "controls, controls tested, control deficiency, deficiencies, remediation, remediation "
        "log, corrective action, audit finding, findings, self assessment, separate evaluation, "
        "operating effectiveness, operated effectively, retest, ongoing evaluation, finding",
        "evaluation, evaluate, exception, remediate, effective, sample, sampling, deficiency, "
        "management review, tracker, due"},
    ControlTopic{
        "control activities and procedures", "CC5",
        "policy policies procedure procedures control controls activities sop",
        "control matrix, control activity, control activities, control objective, standard "
        "operating procedure, operating procedure, documented procedure, separation of duties, "
        "segregation of duties, technology general controls, general controls, control frequency, "
        "preventive, detective, risk and control, sop, policy exception",
        "procedure, control, reconcile, reconciliation, frequency, steps"},
    ControlTopic{
        "logical access", "CC6",
        "access identity iam sso mfa authentication auth accounts logical provisioning account",
        "access control, access review, access policy, access request, access rights, least "
        "privilege, multi factor authentication, multi factor, mfa, two factor, second factor, "
        "2fa, single sign on, sso, identity provider, okta, privileged access, role based, rbac, "
        "deprovision, provisioning, accounts disabled, account disabled, shared accounts, former "
        "employee, terminated user, password policy, passkey, webauthn, totp, security key, "
        "offboarding, leaver, joiner, access revoked, iam, user access, sign on, super admin, "
        "service account",
        "access, account, password, privilege, user, role, authenticate, permission, lockout, "
        "revoke, grant, administrator, session, ssh key, api token, directory, login, vpn"},
    ControlTopic{
        "devices", "CC6",
        "device devices endpoint endpoints mdm laptop laptops workstation posture",
        "mobile device management, device management, mdm, full disk encryption, disk encryption, "
        "disk encrypted, FileVault, BitLocker, screen lock, screen locks, host firewall, endpoint "
        "protection, antivirus, anti malware, device compliance, managed device, unmanaged device, "
        "remote wipe, wiped remotely, remotely wiped, laptop, workstation, MacBook, byod, lost "
        "device, enrolled device, gatekeeper, system integrity protection",
        "device, firewall, enroll, wipe, phone, operating system update, operating system, "
        "computer, hardware, disk, screen"},
    ControlTopic{
        "encryption", "CC6", "encryption crypto cryptography tls keys key data kms secrets",
        "encryption at rest, encrypted at rest, data at rest, encryption in transit, data in "
        "transit, tls, cipher suite, cipher, aes, key management, key rotation, keys are rotated, "
        "rotate keys, kms, master key, private key, certificate authority, hsts, forward secrecy, "
        "mutual tls, server side encryption, cryptography, cryptographic, ecdsa, hardware security "
        "module, volumes encrypted, encrypted database, public key",
        "encrypt, encryption, key, certificate, decrypt, https, ssl, rotation, transit, secret"},
    ControlTopic{"physical access", "CC6", "physical facility office premises badge",
                 "physical access, badge, visitor log, visitor, data center access, door lock, "
                 "cctv, surveillance camera, key card, premises, facility, reception",
                 "office, building, door, camera, entrance"},
    ControlTopic{"logging and monitoring", "CC7",
                 "logs logging log monitoring siem detection alerts alerting vulnerability vuln "
                 "operations",
                 "audit log, audit event, audit trail, siem, log retention, security "
                 "monitoring, alert rule, intrusion detection, anomaly, anomalies, "
                 "security alert, cloudtrail, log aggregation, threshold",
                 "log, alert, monitor, event, detect, retention, dashboard, page, metric, sink, "
                 "triage, notify, error rate"},
    ControlTopic{"vulnerability management", "CC7",
                 "vulnerability vuln patch patching scan scanning pentest logs operations",
                 "vulnerability scan, vulnerability management, vulnerabilities, vulnerability, "
                 "cve, penetration test, pentest, patch management, critical vulnerability, scan "
                 "results, cvss, dependency scan, security patch",
                 "scan, patch, host scanned, critical, severity high"},
    ControlTopic{
        "incident response", "CC7", "incident incidents ir response breach",
        "incident response, incident response plan, security incident, incident commander, "
        "incident lead, incident report, post mortem, postmortem, tabletop exercise, tabletop, "
        "breach, data breach, breach notification, containment, eradication, contain, severity 1, "
        "lessons learned, root cause, supervisory authority, blameless",
        "incident, severity, escalate, escalation, on call, timeline, lessons, exercise, "
        "investigate, notification, impact, follow up"},
    ControlTopic{"change management", "CC8",
                 "change changes sdlc development release deploy deployment code",
                 "change management, change ticket, change request, change approval, pull request, "
                 "merge request, code review, peer review, code reviewed, branch protection, "
                 "protected branch, deployment approval, release manager, sdlc, software "
                 "development life cycle, emergency change, hotfix, rollback, rolled back, unit "
                 "test, test evidence, automated tests, deployed to production, checks passed, "
                 "tests passed, secure development, continuous integration",
                 "change, deploy, deployment, release, branch, merge, staging, developer, "
                 "pipeline, ticket, code, software, test, commit, reviewer, build"},
    ControlTopic{"continuity and recovery", "CC9",
                 "continuity bcp dr disaster recovery backup backups resilience bcdr availability",
                 "business continuity, continuity plan, disaster recovery, recovery time "
                 "objective, recovery point objective, recovery time, recovery point, rto, rpo, "
                 "failover, restore test, backup, backed up, second region, call tree, alternate "
                 "site, business impact analysis, disaster, restore, secondary region",
                 "continuity, recovery, outage, resilience, restored, region, disruption, work "
                 "from home, snapshot"},
    ControlTopic{
        "vendors", "CC9",
        "vendor vendors supplier suppliers third party thirdparty partner subprocessor",
        "vendor risk, vendor inventory, vendor management, vendor assessment, vendor review, "
        "vendor, supplier, third party, third parties, subprocessor, sub processor, data "
        "processing agreement, due diligence, security questionnaire, questionnaire, soc report, "
        "type 2 report, attestation report, complementary user entity controls, critical vendor, "
        "supplier assessment, business partner, service provider, outsourcing",
        "contract, dpa, criticality, hosting, certificates, iso, agreement, rating, procurement, "
        "service, partner"},
};

} // namespace

std::span<const ControlTopic> controlTopics() {
    return topics;
}

} // namespace kelvo
