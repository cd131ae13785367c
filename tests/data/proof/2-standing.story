== Each standing has its reason
criterion open 1 0.5 annual
criterion declared 1 1 annual
criterion withdrawn 1 0 annual
criterion missing 1 0 annual
criterion undated 1 0 annual
criterion stale 1 0 annual
criterion partial 1 0 quarterly
criterion word 1 0 annual
criterion full 1 0 quarterly
period 2026-01-01..2026-06-30
close withdrawn with a on 2026-02-01 withdrawn
close missing with b on 2026-02-01 gone
close missing with c on 2026-02-02
close undated with d on 2026-02-01
close stale with e on 2026-02-01
dates e 2024-01-01..2024-12-31 on 2026-02-01
close partial with f on 2026-02-01 policy
close word with g on 2026-02-01 word
close full with h on 2026-04-01 word
dates h 2026-03-31..2026-04-01 on 2026-04-01
close full with i on 2026-04-02 device
close full with j on 2026-04-03
dates j 2026-01-01..2026-01-01 on 2026-04-03
? of open at 2026-11-23 = open 0 of 1
? of declared at 2026-11-23 = declared 0 of 1
? of withdrawn at 2026-11-23 = withdrawn 0 of 1
? of missing at 2026-11-23 = missing 0 of 1
? of undated at 2026-11-23 = undated 0 of 1
? of stale at 2026-11-23 = stale 0 of 1, until 2026-01-01, ran before the period, recorded 397 days later
? of partial at 2026-11-23 = partial 1 of 2, until 2026-05-04
? of word at 2026-11-23 = attested 1 of 1, until 2027-02-02
? of full at 2026-11-23 = supported 2 of 2, until 2026-07-03, recorded 92 days later
? supported at 2026-11-23 = 11.1%, readiness 94.4%

== Somebody's word covers a day, but one interval by it alone is only attested
criterion A 1 0 quarterly
period 2026-01-01..2026-06-30
close A with a on 2026-02-01 word
close A with b on 2026-05-01 device
? of A at 2026-11-23 = attested 2 of 2, until 2026-08-01

== Nothing is evidence of the future, and of several dates the last count
criterion A 1 0 annual
period 2026-01-01..2026-12-31
close A with a on 2026-02-01
dates a 2026-01-01..2026-02-02 on 2026-02-05
? of A at 2026-11-23 = undated 0 of 1, void
dates a 2026-01-01..2026-02-01 on 2026-02-06
? of A at 2026-11-23 = supported 1 of 1, until 2027-02-02
dates a 2026-02-01..2026-01-01 on 2026-02-07
? of A at 2026-11-23 = undated 0 of 1, void
dates a 2025-12-32..2026-01-01 on 2026-02-07
? of A at 2026-11-23 = undated 0 of 1, void

== What was dated before it was sealed speaks of no day after that either
criterion A 1 0 annual
dates a 2026-01-01..2026-01-20 on 2026-01-19
close A with a on 2026-02-01
? of A at 2026-11-23 = undated 0 of 1, void

== A statement with recorded days has these and not its own
criterion A 1 0 annual
close A with a on 2026-11-01 word
dates a 2024-01-01..2024-01-05 on 2026-11-01
? of A at 2026-11-23 = stale 0 of 1, until 2025-01-05, ran before the period, recorded 1031 days later

== A changed file carries nothing
criterion A 1 0 annual
close A with a on 2026-02-01 policy
? of A at 2026-11-23 = supported 1 of 1, until 2027-02-02
? altered a A at 2026-11-23 = missing 0 of 1

== A repeated record counts for nothing, a withdrawn one for the level alone
criterion A 1 0 annual
close A with a on 2026-02-01 repeated
? of A at 2026-11-23 = open 0 of 1
close A with a on 2026-02-01 withdrawn
? of A at 2026-11-23 = withdrawn 0 of 1
close A with b on 2026-02-01 policy
? of A at 2026-11-23 = supported 1 of 1, until 2027-02-02

== Exactly 31 days later is not late
criterion A 1 0 annual
close A with a on 2026-03-04
dates a 2026-02-01..2026-02-01 on 2026-03-04
? of A at 2026-11-23 = supported 1 of 1, until 2027-02-02
close A with b on 2026-03-05
dates b 2026-02-01..2026-02-01 on 2026-03-05
? of A at 2026-11-23 = supported 1 of 1, until 2027-02-02, recorded 32 days later

== Without a period the last twelve months count, over a leap day too
criterion A 1 0 monthly
close A with a on 2024-02-29 device
? of A at 2024-02-29 = partial 1 of 12, until 2024-03-31
? of A at 2025-02-28 = stale 0 of 12, until 2024-03-31

== Before a period begins nothing of it can be covered
criterion A 1 0 event
period 2027-01-01..2027-12-31
close A with a on 2026-11-01 device
? of A at 2026-11-23 = stale 0 of 1

== No weight, no share
criterion A 0 1 annual
? supported at 2026-11-23 = 0.0%, readiness 0.0%

== The sample organisation of a year
criterion CC1-governance 5 1 annual
criterion CC1-people 4 0.5 annual
criterion CC2-communication 3 1 annual
criterion CC3-risk 5 0.25 annual
criterion CC4-monitoring 3 0.5 annual
criterion CC5-procedures 4 0 annual
criterion CC6-access 8 0.5 quarterly
criterion CC6-devices 6 0 monthly
criterion CC6-encryption 4 1 annual
criterion CC7-incident-response 5 0.25 semiannual
criterion CC7-vulnerabilities 4 0.75 annual
criterion CC8-change 4 1 event
criterion CC9-vendor-risk 3 0 annual
period 2026-01-01..2026-12-31
close CC6-access with q1 on 2026-01-26
dates q1 2026-01-14..2026-01-14 on 2026-01-26
close CC6-devices with reading on 2026-04-07 device
close CC5-procedures with policy on 2026-04-07 policy
close CC7-vulnerabilities with statement on 2026-04-07 word
close CC7-incident-response with drill on 2026-06-01
dates drill 2026-05-28..2026-05-28 on 2026-06-01
close CC6-access with q3 on 2026-07-09
dates q3 2026-07-03..2026-07-03 on 2026-07-09
close CC3-risk with risks on 2026-07-09
dates risks 2025-12-01..2026-03-31 on 2026-07-09
close CC9-vendor-risk with vendors on 2026-01-10
? of CC6-access at 2026-11-23 = partial 2 of 3, until 2026-10-03
? of CC6-devices at 2026-11-23 = partial 1 of 10, until 2026-05-08
? of CC3-risk at 2026-11-23 = supported 1 of 1, until 2027-04-01, recorded 100 days later
? of CC5-procedures at 2026-11-23 = supported 1 of 1, until 2027-04-08
? of CC7-incident-response at 2026-11-23 = supported 1 of 1, until 2026-11-28
? of CC7-vulnerabilities at 2026-11-23 = attested 1 of 1, until 2027-04-08
? of CC9-vendor-risk at 2026-11-23 = undated 0 of 1
? of CC8-change at 2026-11-23 = declared 0 of 1
? of CC4-monitoring at 2026-11-23 = open 0 of 1
? supported at 2026-11-23 = 24.1%, readiness 94.0%
close CC6-devices with again on 2026-07-09 device
close CC9-vendor-risk with vendors on 2026-01-10 repeated
close CC6-access with q3 on 2026-07-09
? of CC6-devices at 2026-11-23 = partial 2 of 10, until 2026-08-09
? of CC6-access at 2026-11-23 = partial 2 of 3, until 2026-10-03
? supported at 2026-11-23 = 24.1%, readiness 94.0%
