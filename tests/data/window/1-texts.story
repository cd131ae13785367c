== The window and the left pane
organisation
open
? title = Kelvo SOC2 Engine, at least 860x560
? window leftScroller = State (totem-time) | t | 0.000 | risk (∫R·f²) | 0.0000 | totems on chain | 0 | equations | STATE VARS: I·p, C·q\nPOWER: source = stored + dissipated (Tellegen)\nevaluator: causal, deterministic — kernel owns numbers\n | status | loaded 5 nodes, 2 states | Chain | Nothing is sealed yet. What you approve appears here.
? window runButton = [play.fill] Play
? window rightScroller = [apple.intelligence] Ask Pellum | Ask in plain English when you're stuck. Pellum reads your live readiness on this Mac and can suggest one next step — you always confirm. | No questions yet. | Ask for instance what to do next, or why readiness is where it is. | Ask Pellum… | Ask Pellum… | [paperplane.fill] Get started | Pick your role, then confirm it's you. You'll only see the security tasks that are yours. | Your role | ▾ | Owner | [person.badge.shield.checkmark] Verify identity as Owner | Here: your password or fingerprint, by this computer's own login. | Your Next Best Action | Verify your identity | Confirm who you are with Touch ID. This is the first record on your compliance log — everything else builds on it. | [person.badge.shield.checkmark] Verify identity | Evidence | Upload a document. Apple Intelligence reads it on your Mac and suggests which criteria it satisfies. | [doc.badge.plus] Add evidence (upload doc) | SOC 2 readiness | 51.2% | 6/13 criteria met · solved Σ(g·w)/Σw | [checkmark.seal.fill] CC1-ethics | [checkmark.seal.fill] CC2-communication | [circle] CC3-risk | no review since the new product line | Generate policy | [circle] CC4-monitoring | no monthly control review is recorded | Generate policy | [checkmark.seal.fill] CC5-policies | [circle] CC6-access | quarterly access review missing | Generate policy | [circle] CC6-device-security | posture is not verified | Generate policy | [circle] CC7-incidents | incident response plan is not tested | Generate policy | [checkmark.seal.fill] CC7-vulnerabilities | [checkmark.seal.fill] CC8-change | [circle] CC9-vendor-risk | no vendor risk assessment | Generate policy | [checkmark.seal.fill] A1-backup | [circle] C1-confidentiality | no retention schedule | Generate policy | OS snapshot (read-only) | We read your Mac's security settings without changing anything. | [checkmark.circle.fill] FileVault disk encryption | on | [checkmark.circle.fill] Application firewall | on | [checkmark.circle.fill] Password required after sleep/screensaver | yes | [checkmark.circle.fill] System Integrity Protection | enabled | [checkmark.circle.fill] Gatekeeper (app verification) | enabled | [arrow.clockwise] Refresh | Provenance | Loaded role map: 4 roles (Owner, Engineer, People lead, Auditor) | kernel RoleMap.load · role → SOC 2 controls | 2026-01-31T09:15:02Z | Replayed 0 sealed gap-closes → readiness 51.2% | kernel SOC2Mesh.applying · reconstructed from sovereign totems | 2026-01-31T09:15:02Z | Loaded SOC 2 readiness graph: 13 criteria, readiness 51.2% | kernel SOC2Mesh.solve · Σ(g·w)/Σw | 2026-01-31T09:15:02Z | graph loaded | kernel SCAP (Karnopp causality) | 2026-01-31T09:15:02Z
? markup = Ask Pellum… | ▾
play
fire 12
? window leftScroller = State (totem-time) | t | 0.120 | risk (∫R·f²) | 0.0033 | totems on chain | 0 | equations | STATE VARS: I·p, C·q\nPOWER: source = stored + dissipated (Tellegen)\nevaluator: causal, deterministic — kernel owns numbers\n | status | PLAY — unitary evolution (PENDING, reversible) | Chain | Nothing is sealed yet. What you approve appears here.
? window runButton = [pause.fill] Pause

== The chain shows the newest seal first
open
owner
pause
bond
? window leftScroller = State (totem-time) | t | 0.000 | risk (∫R·f²) | 0.0000 | totems on chain | 2 | equations | STATE VARS: I·p, C·q\nPOWER: source = stored + dissipated (Tellegen)\nevaluator: causal, deterministic — kernel owns numbers\n | status | FINAL — totem 2d2924107207 idx 1. verify=true. → outputs (bouncer will seal) | Chain | [link] [1] 2d29241072… collapse@t=0.000 | [link] [0] 8ba477c74e… Identity verified: Ada Byron (Owner)

== Without roles the verification names a user
open
? window kycSection = Get started | Pick your role, then confirm it's you. You'll only see the security tasks that are yours. | Your role | ▾ | No roles are defined | [person.badge.shield.checkmark] Verify identity as user | Here: your password or fingerprint, by this computer's own login.
? sections = assistant kyc nextAction evidence begin os provenance

== An insecure device
machine silent
open
? window osSection = OS snapshot (read-only) | We read your Mac's security settings without changing anything. | [exclamationmark.circle] FileVault disk encryption | unknown | [exclamationmark.circle] Application firewall | unknown | [exclamationmark.circle] Password required after sleep/screensaver | unknown | [exclamationmark.circle] System Integrity Protection | unknown | [exclamationmark.circle] Gatekeeper (app verification) | unknown | [arrow.clockwise] Refresh

== The owner's readiness
organisation
open
owner
? sections = assistant identity nextAction evidence readiness os provenance
? window identitySection = [person.crop.circle.badge.checkmark] You are: Ada Byron · Owner | Not you? | Here: your password or fingerprint, by this computer's own login.
? window readinessSection = SOC 2 readiness | 51.2% | 6/13 criteria met · solved Σ(g·w)/Σw | [checkmark.seal.fill] CC1-ethics | [checkmark.seal.fill] CC2-communication | [circle] CC3-risk | no review since the new product line | Generate policy | [circle] CC4-monitoring | no monthly control review is recorded | Generate policy | [checkmark.seal.fill] CC5-policies | [circle] CC6-access | quarterly access review missing | Generate policy | [circle] CC6-device-security | posture is not verified | Generate policy | [circle] CC7-incidents | incident response plan is not tested | Generate policy | [checkmark.seal.fill] CC7-vulnerabilities | [checkmark.seal.fill] CC8-change | [circle] CC9-vendor-risk | no vendor risk assessment | Generate policy | [checkmark.seal.fill] A1-backup | [circle] C1-confidentiality | no retention schedule | Generate policy
? window nextActionSection = Your Next Best Action | Close CC6-access (verify) | quarterly access review missing — verify with Touch ID to mark this criterion met and record it on your compliance log. | [paperclip] Close with evidence

== The owner without a mesh sees no readiness
open
owner
? sections = assistant identity nextAction evidence begin os provenance

== The card's button for each simulation action
open
owner
? window nextActionSection = Your Next Best Action | Approve & seal steady state | System reached steady state. BOND (Touch ID) to checkpoint it on the chain. | [touchid] Approve & Save
play
fire 20
? window nextActionSection = Your Next Best Action | Monitor | Within safe limits. No approval needed — watching.
fire 100
? sections = assistant pending identity nextAction evidence begin os provenance
? window pendingSection = [exclamationmark.triangle.fill] Pending measurement | A state is staged. Approve to record it on the chain. | [touchid] Bond — approve & seal
bond
? window nextActionSection = Your Next Best Action | Reduce risk? | Agent proposes lowering drive to cool the dissipation rate. Approve the throttle, or BOND to seal now. | [arrow.down.right.circle] Reduce exposure
? sections = assistant identity nextAction evidence begin os provenance

== A contributor's tasks, and the next person's
organisation
open
verify Engineer
? sections = assistant identity nextAction responsibilities os provenance
? window responsibilitiesSection = Your responsibilities | 25% | 1/4 of your tasks complete | [circle] Keep this laptop encrypted, locked and patched | [checkmark.shield] Check this device | [circle] Write the incident response plan | [doc.badge.gearshape] Generate | [circle] Confirm the quarterly access review | [touchid] Acknowledge (Touch ID) | [checkmark.seal.fill] Confirm that changes are reviewed before release | Done
? window nextActionSection = Your Next Best Action | Keep this laptop encrypted, locked and patched | Your responsibility for CC6-device-security. Check this device (Touch ID) to mark it done. Your completion: 25.0%.
verify People lead
? window identitySection = [person.crop.circle.badge.checkmark] You are: Ada Byron · People lead | Not you? | Here: your password or fingerprint, by this computer's own login.
? window responsibilitiesSection = Your responsibilities | 100% | 2/2 of your tasks complete | [checkmark.seal.fill] Attest control | Done | [checkmark.seal.fill] Attest control | Done

== The auditor's view
organisation
open
verify Auditor
? sections = assistant identity nextAction auditor os provenance
? window auditorSection = Verify (read-only) | You have read-only access. Review the readiness and each criterion's state. | 51.2% | 6/13 criteria met · solved Σ(g·w)/Σw | [checkmark.seal.fill] CC1-ethics | met | [checkmark.seal.fill] CC2-communication | met | [exclamationmark.circle] CC3-risk | no review since the new product line | [exclamationmark.circle] CC4-monitoring | no monthly control review is recorded | [checkmark.seal.fill] CC5-policies | met | [exclamationmark.circle] CC6-access | quarterly access review missing | [exclamationmark.circle] CC6-device-security | posture is not verified | [exclamationmark.circle] CC7-incidents | incident response plan is not tested | [checkmark.seal.fill] CC7-vulnerabilities | met | [checkmark.seal.fill] CC8-change | met | [exclamationmark.circle] CC9-vendor-risk | no vendor risk assessment | [checkmark.seal.fill] A1-backup | met | [exclamationmark.circle] C1-confidentiality | no retention schedule | [checkmark.arrow.trianglehead.counterclockwise] Re-solve verified
? markup = Ask Pellum…
verify Somebody else
? sections = assistant identity nextAction evidence readiness os provenance

== An owner with tasks still works on the gaps
organisation
roles [{"role":"Owner","readonly":false,"controls":[{"criterion":"CC3-risk","task":"Sign","close":"attest"}]}]
open
owner
? sections = assistant identity nextAction evidence readiness os provenance

== A staged document
organisation
open
write register.txt is Vendors
choose register.txt
addEvidence
answer {"criteria":["CC9-vendor-risk"],"summary":"A <b>vendor</b> register."}
? window evidenceSection = Evidence | Upload a document. Apple Intelligence reads it on your Mac and suggests which criteria it satisfies. | [doc.badge.plus] Add evidence (upload doc) | [doc.text] register.txt | A <b>vendor</b> register. | Suggested criteria — toggle to confirm: | CC9-vendor-risk | [touchid] Approve & seal evidence
? markup = Ask Pellum… | ▾
addEvidence
fail gone
? window evidenceSection = Evidence | Upload a document. Apple Intelligence reads it on your Mac and suggests which criteria it satisfies. | [doc.badge.plus] Add evidence (upload doc) | [doc.text] register.txt | On-device mapping unavailable — choose criteria manually. | No criteria suggested — choose from open gaps manually: | CC6-access | CC6-device-security | CC4-monitoring | CC9-vendor-risk | CC3-risk | CC7-incidents | C1-confidentiality | [touchid] Approve & seal evidence

== A draft
organisation
open
owner
generate CC6-access
? sections = assistant identity nextAction evidence readiness os provenance
answer Access policy\n<b>Purpose</b>
? sections = assistant identity nextAction draft evidence readiness os provenance
? window draftSection = Review generated policy | Apple Intelligence wrote this policy on your Mac from CC6-access's own facts. Read it, then approve to record it. | [doc.text] Policy draft for CC6-access | Access policy\n<b>Purpose</b> | [touchid] Approve & seal (Touch ID) | Discard | No empty and no vague place found.
? markup = Ask Pellum…
discard
? sections = assistant identity nextAction evidence readiness os provenance

== A conversation
organisation
open
ask What next?
answer {"answer":"Add a <b>document</b>.","action":"add_evidence"}
? window assistantSection = [apple.intelligence] Ask Pellum | Ask in plain English when you're stuck. Pellum reads your live readiness on this Mac and can suggest one next step — you always confirm. | What next? | [apple.intelligence] Add a <b>document</b>. | [checkmark.circle.fill] Do it: Add evidence | Ask Pellum… | Ask Pellum…
? markup = Ask Pellum… | ▾
ask And now?
fail gone
? window assistantSection = [apple.intelligence] Ask Pellum | Ask in plain English when you're stuck. Pellum reads your live readiness on this Mac and can suggest one next step — you always confirm. | What next? | [apple.intelligence] Add a <b>document</b>. | And now? | [apple.intelligence] On-device assistant unavailable right now — use the buttons on the right. | Ask Pellum… | Ask Pellum…

== Lines of an earlier run
write project/chat-history.json is [{"id":"A0000000-0000-4000-8000-000000000000","role":"you","text":"From yesterday","ts":"2026-01-30T09:00:00Z"}]
open
? shows From yesterday = yes


== A draft with places that are left
organisation
open
owner
generate CC6-access
answer The [To be completed: owner] reviews accounts periodically.
? is text draftPlaces = 1 empty place, 1 vague
? shows “[To be completed: owner]”: to be filled in. = yes
? shows “periodically”: how often? = yes
