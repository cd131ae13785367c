== Period, dates, notes and documents are sealed, and the standing follows
mesh [["A"],["B"]]
write review.txt is reviewed
write system.pdf is described
start
begin
owner
choose review.txt
closeGap A
drain
? standing A = undated, supported 0.0%, no period
period 2026-01-01 2026-12-31
> presence Set the audit period 2026-01-01 to 2026-12-31 (SOC 2 Type II) — verify to seal
> totems 3
> file period-2-#2...totem.json {"appBlockHash":"#2","appIndex":2,"appPrev":"#1","asOf":"2026-01-31T09:15:02Z","attested_at":"2026-01-31T09:15:02Z","categories":["Security"],"firedBy":"HIPR:TouchID:present","firm":"Example CPA LLP","from":"2026-01-01","owner":"Ada Byron","payloadRoot":"d6e254c7013d4214104aa41bb170055c1bdc93fda8677429d3aa59fdebd18a61","presence":"HIPR:TouchID:present","report":"type2","role":"Owner","sourceDb":"period","tip":"#1","title":"Audit period 2026-01-01 to 2026-12-31","to":"2026-12-31"}
> status Sealed: Audit period 2026-01-01 to 2026-12-31.
> cite Audit period 2026-01-01 to 2026-12-31 [#2..] | owner Ada Byron · presence HIPR:TouchID:present
> event {"block":"#2","kind":"further_sealed","source":"period","title":"Audit period 2026-01-01 to 2026-12-31"}
> cards Close B — missing (+50.0%) | Close B (verify)
dates reviewed 2026-01-02 2026-01-30
> presence Record the dates of 1 evidence item — verify to seal
> totems 4
> file evidence-3-#3...totem.json {"appBlockHash":"#3","appIndex":3,"appPrev":"#2","asOf":"2026-01-31T09:15:02Z","attested_at":"2026-01-31T09:15:02Z","firedBy":"HIPR:TouchID:present","items":[{"covers_from":"2026-01-02","covers_to":"2026-01-30","evidence_root":"e4f934f321eb76c9bf8b5103e0a0d9afe72d6e62ace3d3ea849790619bf7487a","name":"reviewed","parameters":"","population":"","produced_at":"","produced_by":"","source":""}],"owner":"Ada Byron","payloadRoot":"be5c8ef6cc56f4c0258ac3682d4b025587d1956a8ba6330da10b9efb37417748","presence":"HIPR:TouchID:present","role":"Owner","sourceDb":"evidence","tip":"#2","title":"Evidence dates: 1 item"}
> status Sealed: Evidence dates: 1 item.
> cite Evidence dates: 1 item [#3..] | owner Ada Byron · presence HIPR:TouchID:present
> event {"block":"#3","kind":"further_sealed","source":"evidence","title":"Evidence dates: 1 item"}
> cards Close B — missing (+50.0%) | Close B (verify)
drain
? standing A = supported, supported 50.0%
note exception B - late
> presence Record an exception for B — verify to seal
> totems 5
> file note-4-#4...totem.json {"about":"","appBlockHash":"#4","appIndex":4,"appPrev":"#3","asOf":"2026-01-31T09:15:02Z","attested_at":"2026-01-31T09:15:02Z","criterion":"B","firedBy":"HIPR:TouchID:present","from":"","note":"exception","owner":"Ada Byron","payloadRoot":"ea3b952e36001336e1c86cb37b0ced9849d655f86ff4c07a8d2c3ea0268b9064","presence":"HIPR:TouchID:present","response":"","role":"Owner","sourceDb":"note","text":"late","tip":"#3","title":"Exception for B","to":""}
> status Sealed: Exception for B.
> cite Exception for B [#4..] | owner Ada Byron · presence HIPR:TouchID:present
> event {"block":"#4","kind":"further_sealed","source":"note","title":"Exception for B"}
> cards Close B — missing (+50.0%) | Close B (verify)
choose system.pdf
document 0
> panel Add
> presence Record the description of the system — verify to seal
> totems 6
> file document-5-#5...totem.json {"appBlockHash":"#5","appIndex":5,"appPrev":"#4","asOf":"2026-01-31T09:15:02Z","attested_at":"2026-01-31T09:15:02Z","document":"description","evidence_name":"system.pdf","evidence_root":"4249a1a0ce3af7c42fd931a99da8d5ffe5eccee0cbd89a7573684fcb32f4b741","firedBy":"HIPR:TouchID:present","owner":"Ada Byron","payloadRoot":"75bf5fd3033c0870eeb812eec072b4688f222f4741679a41cf4437b99bb5a54e","presence":"HIPR:TouchID:present","role":"Owner","sourceDb":"document","tip":"#4","title":"Description of the system"}
> status Sealed: Description of the system.
> cite Description of the system [#5..] | owner Ada Byron · presence HIPR:TouchID:present
> event {"block":"#5","kind":"further_sealed","source":"document","title":"Description of the system"}
> cards Close B — missing (+50.0%) | Close B (verify)
note withdrawal A 1 wrong
> presence Record a withdrawal for A — verify to seal
> totems 7
> file note-6-#6...totem.json {"about":"#1","appBlockHash":"#6","appIndex":6,"appPrev":"#5","asOf":"2026-01-31T09:15:02Z","attested_at":"2026-01-31T09:15:02Z","criterion":"A","firedBy":"HIPR:TouchID:present","from":"","note":"withdrawal","owner":"Ada Byron","payloadRoot":"03060c8345ce08727ddfbc636c7eec07089c22451c23684f77706b5735bc35a5","presence":"HIPR:TouchID:present","response":"","role":"Owner","sourceDb":"note","text":"wrong","tip":"#5","title":"Withdrawal for A","to":""}
> status Sealed: Withdrawal for A.
> cite Withdrawal for A [#6..] | owner Ada Byron · presence HIPR:TouchID:present
> event {"block":"#6","kind":"further_sealed","source":"note","title":"Withdrawal for A"}
> cards Close B — missing (+50.0%) | Close B (verify)
drain
? standing A = withdrawn, supported 0.0%
? readiness = 0.5

== What is refused changes nothing
mesh [["A"]]
roles [{"role":"Auditor","readonly":true},{"role":"Engineer","readonly":false,"criteria":["A"]}]
start
period 2026-01-01 2026-12-31
> status Only the owner sets the audit period — nothing was changed.
> event {"kind":"period_refused"}
verify Auditor
dates reviewed 2026-01-02 2026-01-30
> status Read-only role — nothing was changed.
> event {"kind":"readonly_refused"}
verify Engineer
document 1
> status Only the owner records the report's documents — nothing was changed.
> event {"kind":"document_refused"}
note review A 0 fine
> status Not among your tasks — nothing was changed.
> event {"criterion":"A","kind":"note_refused"}
note exception B - late
> status Not among your tasks — nothing was changed.
> event {"criterion":"B","kind":"note_refused"}
presence denied
note exception A - late
> presence Record an exception for A — verify to seal
> status Not verified — nothing was sealed. HIPR:TouchID:DENIED
> event {"kind":"further_denied","record":"HIPR:TouchID:DENIED","source":"note"}
dates reviewed 2026-01-30 2026-02-01
> status No dates were recorded: days that are still to come cannot be covered.
> event {"error":"days that are still to come cannot be covered","kind":"dates_refused","name":"reviewed"}
dates reviewed 2026-01-30 2026-01-29;reviewed 2026-01-01 2026-01-01
> status No dates were recorded: the first day is after the last.
> event {"error":"the first day is after the last","kind":"dates_refused","name":"reviewed"}
verify Owner
presence given
verify Owner
period 2026-12-31 2026-01-01
> status The period ends before it begins — nothing was changed.
> event {"kind":"period_refused"}
? totems = 3: Identity verified: Ada Byron (Owner) | Identity verified: Ada Byron (Engineer) | Identity verified: Ada Byron (Auditor)

== Later starts read the seals back and replay nothing of them
mesh [["A"]]
write review.txt is reviewed
start
begin
owner
period 2026-01-31
dates reviewed 2026-01-02 2026-01-30;other 2026-01-01 2026-01-01
start
begin
? readiness = 0
owner
choose review.txt
closeGap A
drain
? standing A = supported, supported 100.0%

== A package is handed over with the seal in it, and the log notes it
mesh [["A"]]
write review.txt is reviewed
start
begin
owner
handOver out
? package = refused: No audit period is set.
period 2026-01-01 2026-12-31
choose review.txt
closeGap A
presence denied
handOver out
? package = none
presence given
handOver out
? package = written
? checked = yes, 6 lines, 4 decisions
? totems = 4: Handed over to Jane Doe, Example CPA LLP | Closed A | Audit period 2026-01-01 to 2026-12-31 | Identity verified: Ada Byron (Owner)
