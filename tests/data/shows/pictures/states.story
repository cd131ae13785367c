== A fresh start
organisation
open 860x560
picture start-860x560
resize 1440x900
picture start-1440x900

== The owner's work
organisation
open
owner
picture owner-1440x900
scroll readinessSection
picture owner-readiness
scroll provenanceSection
picture owner-provenance
resize 860x560
scroll nextActionSection
picture owner-860x560
scroll readinessSection
picture owner-readiness-860x560

== A running and a pending model
open
play
fire 30
picture running
fire 100
picture pending
owner
bond
picture sealed

== Evidence and a draft
organisation
open
owner
write vendor-register.txt is Vendors and risks
choose vendor-register.txt
addEvidence
answer {"criteria":["CC9-vendor-risk","CC3-risk"],"summary":"A register of vendors with a risk rating for each."}
generate CC7-incidents
answer Incident response policy\n\nPurpose\nThis policy says how incidents are found, contained and learned from.\n\nScope\nAll services that the on-call rota covers.\n\nPolicy\n1. The on-call person acknowledges every alert.\n2. The plan is tested twice a year.\n
ask What should I do next?
answer {"answer":"Close CC6-access first. It has the largest weight among the open criteria.","action":"generate: CC6-access"}
picture draft
scroll draftSection
picture draft-section
scroll evidenceSection
picture evidence

== All control families
organisation
open
adopt all
play
fire 120
picture families

== The other roles
organisation
open
verify Engineer
picture engineer
scroll responsibilitiesSection
picture engineer-tasks
verify Auditor
scroll auditorSection
picture auditor

== The proof, whole and with trouble
organisation
start
begin
owner
write access review.txt is every account was matched
choose access review.txt
closeGap CC6-access
stop
hours 24
open
owner
press Ctrl+2
picture proof-whole-1440x900
remove outputs/control-1*
verify Owner
picture proof-trouble-1440x900
resize 860x560
picture proof-trouble-860x560
press Escape
picture trouble-line-860x560
press Ctrl+2
click Restore
click makeCheckpoint
resize 1440x900
picture checkpoint-1440x900

== What came of an action, at the foot of the right pane
organisation
open 1440x900
owner
write access review.txt is every account was matched
choose access review.txt
closeGap CC6-access
click bannerEarlier
picture banner-1440x900

== The same where there is little room
organisation
open 860x560
owner
write access review.txt is every account was matched
choose access review.txt
closeGap CC6-access
picture banner-860x560

== What the evidence carries, and the hand-over
organisation
open 1440x900
owner
write access review.txt is every account was matched
choose access review.txt
closeGap CC6-access
press Ctrl+1
click askPeriod
click sealPeriod
click bannerClose
picture evidence-1440x900
press Ctrl+3
folder packages
click recipient
type Jane Doe, Example CPA LLP
into packages
click bannerClose
picture hand-over-1440x900
resize 860x560
picture hand-over-860x560
press Ctrl+1
picture evidence-860x560
