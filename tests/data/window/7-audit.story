== The owner sets the period, sees what the evidence carries, and hands a package over
organisation
open 1440x900
owner
write access review.txt is every account was matched
choose access review.txt
closeGap CC6-access
press Ctrl+1
? is text pageTitle = Evidence
? is text figures = Readiness 62.8% · supported 0.0%
? shows Set the audit period first; until then this shows the last twelve months. = yes
click askPeriod
click sealPeriod
? is text bannerWords = Sealed: Audit period*
? shows Set the audit period first; until then this shows the last twelve months. = no
press Ctrl+3
? is text pageTitle = Hand-over
? is enabled handOver = false
folder packages
click recipient
type Jane Doe, Example CPA LLP
? is enabled handOver = true
into packages
? is text bannerWords = Handed over to Jane Doe, Example CPA LLP: kelvo-audit-*
? is visible packageNumber = true
? shows Handed over to Jane Doe, Example CPA LLP = yes

== A contributor sees the evidence, and nothing of the hand-over
organisation
open
verify People lead
press Ctrl+3
? is text pageTitle = Ferrow — HITL
press Ctrl+1
? is text pageTitle = Evidence
? exists askPeriod = no
