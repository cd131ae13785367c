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
click dates-CC6-access
click coversFrom
type 2025-11-01
click coversTo
type 2026-03-31
click sealDates
? is text datesFault = Days that are still to come cannot be covered: the whole item would count for nothing.
press Ctrl+A
type 2026-01-30
click coversTo
press Ctrl+A
type 2026-01-30
click sealDates
? is text bannerWords = Sealed: Evidence dates: 1 item.
? is text figures = Readiness 62.8% · supported *
? shows Supported = yes
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
