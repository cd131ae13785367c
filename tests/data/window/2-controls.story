== Play and pause
open
click Play
? running = yes
click Pause
? running = no
click Bond — approve & seal
? totems = 1: collapse@t=0.000
? sections = assistant kyc nextAction evidence begin os provenance

== The chosen role is the one that is verified
organisation
open
focus Your role
press Down
click Verify identity as Engineer
? role = Engineer
? sections = assistant identity nextAction responsibilities os provenance

== Without roles the owner is verified
open
click Verify identity as user
? role = Owner

== A denied identity leaves the form
organisation
open
presence denied
click Verify identity as Owner
? shows Identity not verified. = yes
? sections = assistant kyc nextAction evidence readiness os provenance

== The next best action runs
organisation
open
click nextAction
? role = Owner
write review.txt is Access review
choose review.txt
click Close with evidence
? gate CC6-access = 1
? shows Closed CC6-access: readiness 51.2%→62.8%. = yes
? shows 62.8% = yes

== A card that changes between the press and its turn runs what it said
organisation
open
owner
write review.txt is Access review
choose review.txt
hit Close with evidence
attest ["CC6-access","Reviewed meanwhile",""]
? totems = 3: Closed CC6-access | Acknowledged CC6-access | Identity verified: Ada Byron (Owner)
? gate CC6-device-security = 0

== The reminder runs the same action and goes once the card is seen
organisation
open 860x560
clickThere nextActionReminder
? principal = Ada Byron
focus nextAction
? is visible nextActionReminder = not there

== A role's tasks are completed in their own ways
organisation
open
verify Engineer
click Check this device
? gate CC6-device-security = 1
click Acknowledge (Touch ID)
? gate CC6-access = 1
? window responsibilitiesSection = Your responsibilities | 75% | 3/4 of your tasks complete | [checkmark.seal.fill] Keep this laptop encrypted, locked and patched | Done | [circle] Write the incident response plan | [doc.badge.gearshape] Generate | [checkmark.seal.fill] Confirm the quarterly access review | Done | [checkmark.seal.fill] Confirm that changes are reviewed before release | Done
click Generate
? open = 1
answer Plan
? draft = CC7-incidents: Plan

== A policy is generated for the criterion of its row
organisation
open
owner
click Generate policy for C1-confidentiality
? status = Writing policy for C1-confidentiality on-device…

== A draft is approved, or discarded without a trace
organisation
open
owner
generate CC6-access
answer The policy
click Discard
? draft = none
? files = collapse-0-8ba477c74eec.totem.json roles-bondgraph.json soc2-mesh-bondgraph.json
generate CC6-access
answer The policy
click Approve & seal (Touch ID)
? gate CC6-access = 1
? sections = assistant identity nextAction evidence readiness os provenance

== Suggested criteria are on, and only what stays on is sealed
organisation
open
owner
write register.txt is Vendors
choose register.txt
click Add evidence (upload doc)
answer {"criteria":["CC9-vendor-risk","CC3-risk","CC6-access"],"summary":"s"}
? is checked CC9-vendor-risk = true
? is checked CC3-risk = true
? is checked CC6-access = true
click CC3-risk
click Approve & seal evidence
? gate CC9-vendor-risk = 1
? gate CC6-access = 1
? gate CC3-risk = 0.5
? is enabled Approve & seal evidence = not there

== Nothing selected cannot be sealed, and a new proposal selects its own
organisation
open
owner
write register.txt is Vendors
choose register.txt
addEvidence
answer {"criteria":["CC9-vendor-risk"],"summary":"s"}
? is enabled Approve & seal evidence = true
click CC9-vendor-risk
? is enabled Approve & seal evidence = false
addEvidence
answer {"criteria":["CC9-vendor-risk","CC3-risk"],"summary":"s"}
? is checked CC9-vendor-risk = true
? is checked CC3-risk = true

== Without suggestions the open gaps are offered
organisation
open
owner
write register.txt is Vendors
choose register.txt
addEvidence
answer {"criteria":[],"summary":"s"}
? is enabled Approve & seal evidence = false
? is checked CC4-monitoring = false
click CC4-monitoring
click Approve & seal evidence
? gate CC4-monitoring = 1

== Refresh and re-solve read the device anew
organisation
open
verify Auditor
machine silent
click Refresh
? facts = unknown! unknown! unknown! unknown! unknown!
machine secure
click Re-solve verified
? facts = on on yes enabled enabled

== A question leaves the field before its answer arrives, and may overlap
organisation
open
focus question
type \x20\x20What next?\x20
press Return
? is text question = nothing
? chat = you: What next?
? busy = yes
? is visible Send = not there
type And then?
press Return
? open = 2

== A blank question is ignored
open
focus question
type \x20\x20
press Return
? chat = nothing
? is text question = nothing

== What the model is at is shown and can be given up
organisation
open
owner
? is visible cancelModelWork = not there
generate CC6-access
ask What next?
? shows Writing the policy for CC6-access and 1 more = yes
answer A policy
? shows Answering your question = yes
click cancelModelWork
? open = 0
? busy = no
? is visible cancelModelWork = not there

== The proposed step runs once
organisation
open
focus question
type Run it
click Send
answer {"answer":"Yes.","action":"play"}
click Do it: Play
? running = yes
? is visible Do it: Play = not there

== The conversation stays at its newest line
open
ask Question 1
fail none
ask Question 2
fail none
ask Question 3
fail none
ask Question 4
fail none
ask Question 5
fail none
ask Question 6
fail none
? is atYEnd chat = true

