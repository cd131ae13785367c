== A gap is closed in the fixed order
mesh [["A",0.5,1,"x GAP: a"],["B",0,3,"y"]]
start
owner
write review é.txt is reviewed\n
choose review é.txt
closeGap B
> panel Attach evidence
> presence Close B — verify to mark this criterion met
> mesh 1 met
> readiness 87.5%
> totems 2
> file control-1-#1...totem.json {"appBlockHash":"#1","appIndex":1,"appPrev":"#0","asOf":"2026-01-31T09:15:02Z","attested_at":"2026-01-31T09:15:02Z","criterion":"B","evidence_name":"review é.txt","evidence_root":"a9f2d25d1f71f8065e2119e538bde8846570fcdad320388236e99d9e225c290d","firedBy":"HIPR:TouchID:present","gate_after":1,"gate_before":0,"owner":"Ada Byron","payloadRoot":"8ba5b356fe93585c71aa168cb6006209c6448aac4492465e09cd903e6eba06e4","presence":"HIPR:TouchID:present","readiness_after":0.875,"readiness_before":0.125,"sourceDb":"control","tip":"#0","title":"Closed B"}
> status Closed B: readiness 12.5%→87.5%.
> cite Closed B with evidence review é.txt [a9f2d25d1f71] — readiness 12.5%→87.5% | owner Ada Byron · presence HIPR:TouchID:present
> event {"block":"#1","criterion":"B","gate_after":1,"gate_before":0,"kind":"close_gap","readiness_after":0.875}
> cards Close A — a (+12.5%) | Close A (verify)
? panel = Attach evidence | Select an evidence artifact to close B | 0 kinds
? human = Close A (verify) | a — verify with Touch ID to mark this criterion met and record it on your compliance log. | Close A

== A refusal changes nothing but the status and the event
mesh [["A",0.5]]
start
owner
closeGap no such criterion
> nothing
choose nothing
closeGap A
> panel Attach evidence
> status Evidence required to close A — no artifact selected.
> event {"criterion":"A","kind":"close_gap_no_evidence"}
choose outputs
closeGap A
> panel Attach evidence
> status Evidence required to close A — could not read artifact.
> event {"criterion":"A","kind":"close_gap_evidence_unreadable"}
write e.txt is e
choose e.txt
presence denied
biometry face
closeGap A
> panel Attach evidence
> presence Close A — verify to mark this criterion met
> status Not verified — A unchanged. HIPR:FaceID:DENIED
> event {"criterion":"A","kind":"close_gap_denied","record":"HIPR:FaceID:DENIED"}
? readiness = 0.5
? totems = 1: Identity verified: Ada Byron (Owner)

== A met criterion is sealed again, a high gate comes down to one, and of equal ids the first is closed
mesh [["A",1.5],["B",0],["B",0,2]]
start
owner
write e.txt is e
choose e.txt
closeGap A
> panel Attach evidence
> presence Close A — verify to mark this criterion met
> mesh 1 met
> readiness 25.0%
> totems 2
> file control-1-#1...totem.json {"appBlockHash":"#1","appIndex":1,"appPrev":"#0","asOf":"2026-01-31T09:15:02Z","attested_at":"2026-01-31T09:15:02Z","criterion":"A","evidence_name":"e.txt","evidence_root":"3f79bb7b435b05321651daefd374cdc681dc06faa65e374e38337b88ca046dea","firedBy":"HIPR:TouchID:present","gate_after":1,"gate_before":1.5,"owner":"Ada Byron","payloadRoot":"0b72a5715788192a85e9e3f67c3b948e86c85c98372ec59f902b9d1ea0638d4d","presence":"HIPR:TouchID:present","readiness_after":0.25,"readiness_before":0.375,"sourceDb":"control","tip":"#0","title":"Closed A"}
> status Closed A: readiness 37.5%→25.0%.
> cite Closed A with evidence e.txt [3f79bb7b435b] — readiness 37.5%→25.0% | owner Ada Byron · presence HIPR:TouchID:present
> event {"block":"#1","criterion":"A","gate_after":1,"gate_before":1.5,"kind":"close_gap","readiness_after":0.25}
> cards Close B — missing (+50.0%) | Close B (verify)
closeGap B
? readiness = 0.5

== The seal of an unverified person says so
mesh [["A"]]
start
write e.txt is e
choose e.txt
closeGap A
> panel Attach evidence
> presence Close A — verify to mark this criterion met
> mesh 1 met
> readiness 100.0%
> totems 1
> file control-0-#0...totem.json {"appBlockHash":"#0","appIndex":0,"appPrev":"0000000000000000000000000000000000000000000000000000000000000000","asOf":"2026-01-31T09:15:02Z","attested_at":"2026-01-31T09:15:02Z","criterion":"A","evidence_name":"e.txt","evidence_root":"3f79bb7b435b05321651daefd374cdc681dc06faa65e374e38337b88ca046dea","firedBy":"HIPR:TouchID:present","gate_after":1,"gate_before":0,"owner":"unverified","payloadRoot":"cae1f799f3978ca84021e14ed22faa03f622334182177058f574bf256d93fed5","presence":"HIPR:TouchID:present","readiness_after":1,"readiness_before":0,"sourceDb":"control","tip":"0000000000000000000000000000000000000000000000000000000000000000","title":"Closed A"}
> status Closed A: readiness 0.0%→100.0%.
> cite Closed A with evidence e.txt [3f79bb7b435b] — readiness 0.0%→100.0% | owner unverified · presence HIPR:TouchID:present
> event {"block":"#0","criterion":"A","gate_after":1,"gate_before":0,"kind":"close_gap","readiness_after":1}
> cards First: who is accountable? | Verify your identity

== Readiness after a restart is readiness before it
mesh [["A",0,1],["B",0.3,2],["C",0.6,3],["D",0,4],["E",0.3,5]]
start
owner
write e.txt is e
choose e.txt
closeGap B
closeGap E
? readiness = 0.5866666666666667
start
? readiness = 0.5866666666666667
? totems = 0
? claims 2 = Replayed 2 sealed gap-closes → readiness 58.7% (2026-01-31T09:15:02Z) | Loaded SOC 2 readiness graph: 5 criteria, readiness 26.0% (2026-01-31T09:15:02Z)
? gate B = 1
? gate D = 0

== A large file is hashed in pieces with its progress shown and no tick between
mesh [["A"]]
start
owner
write big.bin is x
stretch big.bin 83886080
choose big.bin
play
during fire 5
closeGap A
> panel Attach evidence
> progress Reading big.bin 20.0%
> progress Reading big.bin 40.0%
> progress Reading big.bin 60.0%
> progress Reading big.bin 80.0%
> progress Reading big.bin 100.0%
> progress none
> presence Close A — verify to mark this criterion met
> mesh 1 met
> readiness 100.0%
> totems 2
> file control-1-#1...totem.json {"appBlockHash":"#1","appIndex":1,"appPrev":"#0","asOf":"2026-01-31T09:15:02Z","attested_at":"2026-01-31T09:15:02Z","criterion":"A","evidence_name":"big.bin","evidence_root":"96f690fb8d4b648f6ede5baafb8263ae11e5f5c95d070c6dcbb6a735d9bc80fb","firedBy":"HIPR:TouchID:present","gate_after":1,"gate_before":0,"owner":"Ada Byron","payloadRoot":"ca13b0bacb55c5e47b2937b78232f4732ed8c8eb9b368a2dea97d54d8973cf89","presence":"HIPR:TouchID:present","readiness_after":1,"readiness_before":0,"sourceDb":"control","tip":"#0","title":"Closed A"}
> status Closed A: readiness 0.0%→100.0%.
> cite Closed A with evidence big.bin [96f690fb8d4b] — readiness 0.0%→100.0% | owner Ada Byron · presence HIPR:TouchID:present
> event {"block":"#1","criterion":"A","gate_after":1,"gate_before":0,"kind":"close_gap","readiness_after":1}
> cards All criteria met — solve = 100%. | All criteria met
? t = 0.000

== Each action runs its operation
roles [{"role":"Engineer","readonly":false}]
mesh [["A"]]
start
run play
? running = yes
run pause
? running = no
run bond
? totems = 1: collapse@t=0.000
run throttle
? drive = 0.5
run kyc
? role = Engineer
owner
run kyc
? role = Owner
run snapshot
? lastEvent = {"count":5,"kind":"os_snapshot","ok":5}
write e.txt is e
choose e.txt
run closeGap A
? readiness = 1
run generate A
? status = Writing policy for A on-device…

== Without a role map the first identity is the owner's
start
run kyc
? role = Owner

== Nothing runs between a prompt and its seal, and all of it afterwards
mesh [["A"],["B"]]
start
owner
write e.txt is e
choose e.txt
ask q
drain
play
during fire 5
during answer {"answer":"late","action":"play"}
during pause
during throttle
during say voice
during adopt CC1
during bond
during closeGap B
during snapshot
closeGap A
> panel Attach evidence
> presence Close A — verify to mark this criterion met
> mesh 1 met
> readiness 50.0%
> totems 2
> file control-1-#1...totem.json {"appBlockHash":"#1","appIndex":1,"appPrev":"#0","asOf":"2026-01-31T09:15:02Z","attested_at":"2026-01-31T09:15:02Z","criterion":"A","evidence_name":"e.txt","evidence_root":"3f79bb7b435b05321651daefd374cdc681dc06faa65e374e38337b88ca046dea","firedBy":"HIPR:TouchID:present","gate_after":1,"gate_before":0,"owner":"Ada Byron","payloadRoot":"92824519b6dcd39d689f0c7ead296170adaf48a5e22032d933191b60420ea441","presence":"HIPR:TouchID:present","readiness_after":0.5,"readiness_before":0,"sourceDb":"control","tip":"#0","title":"Closed A"}
> status Closed A: readiness 0.0%→50.0%.
> cite Closed A with evidence e.txt [3f79bb7b435b] — readiness 0.0%→50.0% | owner Ada Byron · presence HIPR:TouchID:present
> event {"block":"#1","criterion":"A","gate_after":1,"gate_before":0,"kind":"close_gap","readiness_after":0.5}
> cards Close B — missing (+50.0%) | Close B (verify)
> reply late
> chat pellum: late
> proposed Play
> event {"action":"play","chars":1,"kind":"assistant_ask","proposed":true}
> busy false
> running false
> status PAUSE — frozen.
> pending collapse@t=0.000
> event {"kind":"pause","risk":0,"t":0}
> cards Close B — missing (+50.0%) | Close B (verify)
> drive 0.500
> cite Agent throttled source Se → 0.50 | lever: reduce ∫R·f² growth rate
> event {"drive":0.5,"kind":"throttle"}
> cards Close B — missing (+50.0%) | Close B (verify)
> reply voice
> drive 1.000
> status loaded 7 nodes, 2 states
> cite System: 1 families, growing | kernel SCAP (Karnopp causality)
> event {"kind":"graph_loaded","nodes":7,"note":"System: 1 families, growing","states":2}
> cards Close B — missing (+50.0%) | Close B (verify)
> status System: 1 families, 2 states (latest +CC1 ×5). Play to charge, then Bond to checkpoint.
> cite Adopted CC1 into system: Control Environment (governance, org, HR, ethics) | compose · 1 families, 2 states
> event {"cc":"CC1","controls":5,"families":1,"kind":"adopt_compose","states":2}
> status HIPR — awaiting Touch ID…
> event {"kind":"hipr_request","title":"collapse@t=0.000"}
> presence BOND — collapse PENDING→FINAL, seal totem to chain
> totems 3
> pending none
> file collapse-2-#2...totem.json {"appBlockHash":"#2","appIndex":2,"appPrev":"#1","asOf":"2026-01-31T09:15:02Z","firedBy":"HIPR:TouchID:present","payloadRoot":"64f78b17cdca4c06bdf6992efb44d5612c1606db70587b3757eaed6cb58a8fca","risk":0,"sourceDb":"collapse","state":[0,0],"t":0,"tip":"#1","title":"collapse@t=0.000"}
> status FINAL — totem #2.. idx 2. verify=true. → outputs (bouncer will seal)
> cite measurement collapsed → FINAL | HIPR HIPR:TouchID:present · block #2..
> event {"blockHash":"#2","index":2,"kind":"final","record":"HIPR:TouchID:present","verify":true}
> cite Checkpointed system state: 1 families | 1 approval · totem #2..
> event {"approvals":3,"block":"#2","kind":"checkpoint"}
> cards Close B — missing (+50.0%) | Close B (verify)
> panel Attach evidence
> presence Close B — verify to mark this criterion met
> mesh 2 met
> readiness 100.0%
> totems 4
> file control-3-#3...totem.json {"appBlockHash":"#3","appIndex":3,"appPrev":"#2","asOf":"2026-01-31T09:15:02Z","attested_at":"2026-01-31T09:15:02Z","criterion":"B","evidence_name":"e.txt","evidence_root":"3f79bb7b435b05321651daefd374cdc681dc06faa65e374e38337b88ca046dea","firedBy":"HIPR:TouchID:present","gate_after":1,"gate_before":0,"owner":"Ada Byron","payloadRoot":"3129a49d72b0b6239ad8ad5f5607db143475474ecdaf102d10d5accff0439991","presence":"HIPR:TouchID:present","readiness_after":1,"readiness_before":0.5,"sourceDb":"control","tip":"#2","title":"Closed B"}
> status Closed B: readiness 50.0%→100.0%.
> cite Closed B with evidence e.txt [3f79bb7b435b] — readiness 50.0%→100.0% | owner Ada Byron · presence HIPR:TouchID:present
> event {"block":"#3","criterion":"B","gate_after":1,"gate_before":0,"kind":"close_gap","readiness_after":1}
> cards All criteria met — solve = 100%. | All criteria met
> facts 5
> event {"count":5,"kind":"os_snapshot","ok":5}
? asked = 4
? t = 0.000

== A second upload waits for the first panel
mesh [["A"]]
start
owner
during addEvidence
addEvidence
> panel Add evidence
> status No document selected.
> event {"kind":"evidence_no_file"}
> panel Add evidence
> status No document selected.
> event {"kind":"evidence_no_file"}
? panels = 2

