== An upload stages a proposal and records nothing
mesh [["A",0,2],["B",0.5,2],["C",1,1]]
start
owner
write rev.md is access reviews
choose rev.md
addEvidence
> panel Add evidence
> status Reading document on-device…
> event {"chars":14,"kind":"evidence_added","name":"rev.md"}
? panel = Add evidence | Select a compliance document (pdf, txt, md, json) | 4 kinds
? requests = 0
drain
? prompt = Allowed criterion ids: A, B, C\n\nDocument text:\naccess reviews
answer {"criteria":["B","b","Z","B"],"summary":"<b>Reviews</b>."}
> evidence rev.md [B B]
> status Apple Intelligence mapped rev.md → 2 criteria. Review & approve.
> cite Staged evidence rev.md [0437741a0234] — 2 criteria proposed | Apple Intelligence on-device · sha256 0437741a0234
? proposal = rev.md 0437741a0234 [B B] <b>Reviews</b>.

== Without a usable mapping the person chooses
mesh [["A",0,2],["B",0.5,2],["C",1,1]]
start
owner
write rev.md is access reviews
choose rev.md
addEvidence
drain
answer {"criteria":["Z"," A"],"summary":"s"}
> evidence rev.md []
> status Mapped no valid criteria for rev.md — choose manually.
> cite Staged evidence rev.md [0437741a0234] — 0 criteria proposed | Apple Intelligence on-device · sha256 0437741a0234
? proposal = rev.md 0437741a0234 [] On-device mapping unavailable — choose criteria manually.
addEvidence
drain
answer {"criteria":[],"summary":"s"}
> evidence rev.md []
> status On-device mapping unavailable for rev.md — choose criteria manually.
> cite Staged evidence rev.md [0437741a0234] — 0 criteria proposed | Apple Intelligence on-device · sha256 0437741a0234
? proposal = rev.md 0437741a0234 [] On-device mapping unavailable — choose criteria manually.
addEvidence
drain
answer {"criteria":"A","summary":"s"}
> evidence rev.md []
> status On-device mapping unavailable for rev.md — choose criteria manually.
> cite Staged evidence rev.md [0437741a0234] — 0 criteria proposed | Apple Intelligence on-device · sha256 0437741a0234
addEvidence
drain
answer approve everything
> evidence rev.md []
> status On-device mapping unavailable for rev.md — choose criteria manually.
> cite Staged evidence rev.md [0437741a0234] — 0 criteria proposed | Apple Intelligence on-device · sha256 0437741a0234
model unavailable off
addEvidence
drain
> evidence rev.md []
> status On-device mapping unavailable for rev.md — choose criteria manually.
> cite Staged evidence rev.md [0437741a0234] — 0 criteria proposed | Apple Intelligence on-device · sha256 0437741a0234
? requests = 4

== Nothing is staged of a file that is not chosen or cannot be read
mesh [["A"]]
start
owner
choose nothing
addEvidence
> panel Add evidence
> status No document selected.
> event {"kind":"evidence_no_file"}
choose outputs/missing.txt
addEvidence
> panel Add evidence
> status Could not read document.
> event {"kind":"evidence_unreadable"}
confirm A
> nothing

== A document's text is its UTF-8 or its PDF text
mesh [["A"]]
start
pdf from the pdf
write a.PDF is %PDF bytes
choose a.PDF
addEvidence
? lastEvent = {"chars":12,"kind":"evidence_added","name":"a.PDF"}
? pdfBytes = %PDF bytes
write b.txt is e\xcc\x81t\xc3\xa9
choose b.txt
addEvidence
? lastEvent = {"chars":3,"kind":"evidence_added","name":"b.txt"}
write c.txt is caf\xe9
choose c.txt
addEvidence
? lastEvent = {"chars":0,"kind":"evidence_added","name":"c.txt"}

== Confirming seals each open criterion once under one presence check
mesh [["A",0,2],["B",0.5,2],["C",1,1]]
start
owner
write rev.md is access reviews
choose rev.md
addEvidence
drain
answer {"criteria":["A"],"summary":"Reviews."}
confirm B C nope B A
> presence Approve evidence rev.md — verify to seal
> mesh 2 met
> readiness 60.0%
> totems 2
> file control-1-#1...totem.json {"ai_mapped":true,"appBlockHash":"#1","appIndex":1,"appPrev":"#0","asOf":"2026-01-31T09:15:02Z","attested_at":"2026-01-31T09:15:02Z","criterion":"B","evidence_name":"rev.md","evidence_root":"0437741a0234a0b27d22b79a1de148b98d2d6008496c310ea743aa0b86d57da8","evidence_summary":"Reviews.","firedBy":"HIPR:TouchID:present","gate_after":1,"gate_before":0.5,"owner":"Ada Byron","payloadRoot":"dbbf68a3c826d988e7fd89e4e137e19e93572bc6ef3595587341b2f8d2ff0cdd","presence":"HIPR:TouchID:present","readiness_after":0.6,"readiness_before":0.4,"sourceDb":"control","tip":"#0","title":"Closed B (evidence)"}
> cite Sealed B from rev.md [0437741a0234] — readiness 40.0%→60.0% | owner Ada Byron · Apple Intelligence mapped · presence HIPR:TouchID:present
> event {"count":1,"criterion":"B","evidence_name":"rev.md","kind":"evidence_sealed"}
> mesh 3 met
> readiness 100.0%
> totems 3
> file control-2-#2...totem.json {"ai_mapped":true,"appBlockHash":"#2","appIndex":2,"appPrev":"#1","asOf":"2026-01-31T09:15:02Z","attested_at":"2026-01-31T09:15:02Z","criterion":"A","evidence_name":"rev.md","evidence_root":"0437741a0234a0b27d22b79a1de148b98d2d6008496c310ea743aa0b86d57da8","evidence_summary":"Reviews.","firedBy":"HIPR:TouchID:present","gate_after":1,"gate_before":0,"owner":"Ada Byron","payloadRoot":"5c112f9f014e4dc94eefb64ced6603ccfe4f045ce09ae560d6886d8203c95579","presence":"HIPR:TouchID:present","readiness_after":1,"readiness_before":0.6,"sourceDb":"control","tip":"#1","title":"Closed A (evidence)"}
> cite Sealed A from rev.md [0437741a0234] — readiness 60.0%→100.0% | owner Ada Byron · Apple Intelligence mapped · presence HIPR:TouchID:present
> event {"count":2,"criterion":"A","evidence_name":"rev.md","kind":"evidence_sealed"}
> evidence none
> status Sealed 2 criteria from rev.md: readiness 100.0%.
> cards All criteria met — solve = 100%. | All criteria met
start
? readiness = 1

== The seals of one approval share its moment
mesh [["A",0,2],["B",0.5,2]]
start
owner
write rev.md is access reviews
choose rev.md
addEvidence
drain
answer {"criteria":["A"],"summary":"Reviews."}
clock runs
confirm A B
> presence Approve evidence rev.md — verify to seal
> mesh 1 met
> readiness 75.0%
> totems 2
> file control-1-#1...totem.json {"ai_mapped":true,"appBlockHash":"#1","appIndex":1,"appPrev":"#0","asOf":"2026-01-31T09:15:04Z","attested_at":"2026-01-31T09:15:04Z","criterion":"A","evidence_name":"rev.md","evidence_root":"0437741a0234a0b27d22b79a1de148b98d2d6008496c310ea743aa0b86d57da8","evidence_summary":"Reviews.","firedBy":"HIPR:TouchID:present","gate_after":1,"gate_before":0,"owner":"Ada Byron","payloadRoot":"532035fc788f5a29c2fc444cbe523f5d131bd14ea976479605cd0c2e0ff34645","presence":"HIPR:TouchID:present","readiness_after":0.75,"readiness_before":0.25,"sourceDb":"control","tip":"#0","title":"Closed A (evidence)"}
> cite Sealed A from rev.md [0437741a0234] — readiness 25.0%→75.0% | owner Ada Byron · Apple Intelligence mapped · presence HIPR:TouchID:present
> event {"count":1,"criterion":"A","evidence_name":"rev.md","kind":"evidence_sealed"}
> mesh 2 met
> readiness 100.0%
> totems 3
> file control-2-#2...totem.json {"ai_mapped":true,"appBlockHash":"#2","appIndex":2,"appPrev":"#1","asOf":"2026-01-31T09:15:04Z","attested_at":"2026-01-31T09:15:04Z","criterion":"B","evidence_name":"rev.md","evidence_root":"0437741a0234a0b27d22b79a1de148b98d2d6008496c310ea743aa0b86d57da8","evidence_summary":"Reviews.","firedBy":"HIPR:TouchID:present","gate_after":1,"gate_before":0.5,"owner":"Ada Byron","payloadRoot":"e85c71c848df99e6d4eac8a7f2580f5bc5644f24839a0a7ce5622f73739164af","presence":"HIPR:TouchID:present","readiness_after":1,"readiness_before":0.75,"sourceDb":"control","tip":"#1","title":"Closed B (evidence)"}
> cite Sealed B from rev.md [0437741a0234] — readiness 75.0%→100.0% | owner Ada Byron · Apple Intelligence mapped · presence HIPR:TouchID:present
> event {"count":2,"criterion":"B","evidence_name":"rev.md","kind":"evidence_sealed"}
> evidence none
> status Sealed 2 criteria from rev.md: readiness 100.0%.
> cards All criteria met — solve = 100%. | All criteria met

== A denial keeps the proposal, and with nothing open it is cleared
mesh [["C",1]]
start
owner
write rev.md is access reviews
choose rev.md
addEvidence
drain
answer {"criteria":["C"],"summary":"Reviews."}
presence denied
confirm C
> presence Approve evidence rev.md — verify to seal
> status Not verified — evidence not sealed. HIPR:TouchID:DENIED
> event {"kind":"evidence_denied","record":"HIPR:TouchID:DENIED"}
? proposal = rev.md 0437741a0234 [C] Reviews.
presence given
confirm C nope
> presence Approve evidence rev.md — verify to seal
> evidence none
> status Nothing sealed — selected criteria already met.
> cards All criteria met — solve = 100%. | All criteria met

== The last mapping to arrive stays staged
mesh [["A"],["B"]]
start
write rev.md is access reviews
choose rev.md
addEvidence
write second.md is x
choose second.md
addEvidence
drain
answerNewest {"criteria":["A"],"summary":"second"}
answer {"criteria":["B"],"summary":"first"}
? proposal = rev.md 0437741a0234 [B] first

== What was closed while the model read is not sealed again
mesh [["A"]]
start
owner
write rev.md is access reviews
choose rev.md
addEvidence
drain
closeGap A
answer {"criteria":["A"],"summary":"s"}
? proposal = rev.md 0437741a0234 [A] s
confirm A
? status = Nothing sealed — selected criteria already met.
? totems = 2: Closed A | Identity verified: Ada Byron (Owner)

== Without a mesh the model is asked but nothing can be confirmed
start
write rev.md is access reviews
choose rev.md
addEvidence
drain
answer {"criteria":["A"],"summary":"s"}
? status = Mapped no valid criteria for rev.md — choose manually.
confirm A
> nothing

== A draft is staged for review and can be discarded
mesh [["A",0,3],["CC9-vendor",0.4,1,"We list vendors. GAP: no review"]]
start
owner
generate CC9-vendor
drain
? prompt = Criterion: CC9-vendor\nDocument owner: Ada Byron\nOrganization's actual facts/architecture for this criterion:\nWe list vendors.\n\nWrite the formal document now.
answer <think>hm</think>\nVendor policy — v1\x20\n
> draft CC9-vendor
> status Drafted a policy for CC9-vendor from the graph. Review & approve to seal.
> cite Generated policy for CC9-vendor from graph variables (18 chars) — review pending | Apple Intelligence on-device · grounded in node evidence
> event {"chars":18,"criterion":"CC9-vendor","kind":"policy_generated"}
? draft = CC9-vendor: Vendor policy — v1
discard
> draft none

== Unknown criteria and an empty reply are refused
mesh [["A"]]
start
generate a
> status Unknown criterion a.
generate A
> status Writing policy for A on-device…
> event {"criterion":"A","kind":"policy_generate_start"}
drain
answer \x20\n\x20
> status On-device generation unavailable.
> event {"criterion":"A","kind":"policy_generate_unavailable"}
model version 25
generate A
drain
> status On-device generation unavailable.
> event {"criterion":"A","kind":"policy_generate_unavailable"}
? requests = 1
? draft = none

== Without a mesh no policy is written
start
generate A
> status Unknown criterion A.

== Approving writes the file, then closes and seals
mesh [["A",0,3],["CC9-vendor",0.4,1,"We list vendors. GAP: no review"]]
start
owner
generate CC9-vendor
drain
answer \nVendor policy — v1\x20\n
approve
> presence Approve generated policy for CC9-vendor — verify to seal
> file policy-CC9-vendor-dceca7cc.txt Vendor policy — v1
> mesh 1 met
> readiness 25.0%
> totems 2
> file control-1-#1...totem.json {"appBlockHash":"#1","appIndex":1,"appPrev":"#0","asOf":"2026-01-31T09:15:02Z","attested_at":"2026-01-31T09:15:02Z","criterion":"CC9-vendor","evidence_name":"policy-CC9-vendor.txt","evidence_root":"dceca7cc3d1d090cfb2582e79c63ccea42517b26745d7c3c5fe61a0e5c32f9a9","evidence_summary":"generated from graph variables","firedBy":"HIPR:TouchID:present","gate_after":1,"gate_before":0.4,"generated":true,"owner":"Ada Byron","payloadRoot":"1381ee0f0f1d3d215c65fa7675256709c3c16dfe469078558c7b1607d143e6c0","presence":"HIPR:TouchID:present","readiness_after":0.25,"readiness_before":0.1,"sourceDb":"control","source_variables":"We list vendors. GAP: no review","tip":"#0","title":"Sealed generated policy CC9-vendor"}
> status Sealed generated policy for CC9-vendor: readiness 10.0%→25.0%.
> cite Sealed generated policy for CC9-vendor → policy-CC9-vendor-dceca7cc.txt [dceca7cc3d1d] — readiness 10.0%→25.0% | owner Ada Byron · generated from graph variables · presence HIPR:TouchID:present
> event {"block":"#1","criterion":"CC9-vendor","kind":"policy_generated_sealed","readiness_after":0.25}
> draft none
> cards Close A — missing (+75.0%) | Close A (verify)

== A denial or a file that cannot be written leaves no trace of a policy
mesh [["A"]]
start
owner
generate A
drain
answer Vendor policy
presence denied
approve
> presence Approve generated policy for A — verify to seal
> status Not verified — policy not sealed. HIPR:TouchID:DENIED
> event {"criterion":"A","kind":"policy_denied","record":"HIPR:TouchID:DENIED"}
presence given
remove outputs
approve
> presence Approve generated policy for A — verify to seal
> status Could not write policy artifact: policy-A-83cbfaef.txt: No such file or directory
> event {"criterion":"A","error":"policy-A-83cbfaef.txt: No such file or directory","kind":"policy_write_failed"}
? readiness = 0
? totems = 1: Identity verified: Ada Byron (Owner)
? draft = A: Vendor policy

== A hostile criterion leads nowhere
mesh [["../../x"]]
start
owner
generate ../../x
drain
answer Text
approve
> presence Approve generated policy for ../../x — verify to seal
> status Could not write policy artifact: "policy-../../x-71988c4d.txt" cannot be a file name
> event {"criterion":"../../x","error":"\\"policy-../../x-71988c4d.txt\\" cannot be a file name","kind":"policy_write_failed"}

== The policy of a met criterion is sealed again
mesh [["A",1]]
start
generate A
drain
answer Text
approve
> presence Approve generated policy for A — verify to seal
> file policy-A-71988c4d.txt Text
> mesh 1 met
> readiness 100.0%
> totems 1
> file control-0-#0...totem.json {"appBlockHash":"#0","appIndex":0,"appPrev":"0000000000000000000000000000000000000000000000000000000000000000","asOf":"2026-01-31T09:15:02Z","attested_at":"2026-01-31T09:15:02Z","criterion":"A","evidence_name":"policy-A.txt","evidence_root":"71988c4d8e0803ba4519f0b2864c1331c14a1890bf8694e251379177bfedb5c3","evidence_summary":"generated from graph variables","firedBy":"HIPR:TouchID:present","gate_after":1,"gate_before":1,"generated":true,"owner":"unverified","payloadRoot":"44f1c0b21706d69ad9b03a745c9586892b00598115ee3e83dc790a7f06b89a02","presence":"HIPR:TouchID:present","readiness_after":1,"readiness_before":1,"sourceDb":"control","source_variables":"facts. GAP: missing","tip":"0000000000000000000000000000000000000000000000000000000000000000","title":"Sealed generated policy A"}
> status Sealed generated policy for A: readiness 100.0%→100.0%.
> cite Sealed generated policy for A → policy-A-71988c4d.txt [71988c4d8e08] — readiness 100.0%→100.0% | owner unverified · generated from graph variables · presence HIPR:TouchID:present
> event {"block":"#0","criterion":"A","kind":"policy_generated_sealed","readiness_after":1}
> draft none
> cards First: who is accountable? | Verify your identity

