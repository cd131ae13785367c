== Without any file the series loop is installed and everything goes on
start
? equations = STATE VARS: I·p, C·q\nPOWER: source = stored + dissipated (Tellegen)\nevaluator: causal, deterministic — kernel owns numbers\n
? stateLine = t=0.000  I=0.0000  C=0.0000  risk=0.00000
? status = Could not load readiness graph: soc2-mesh-bondgraph.json: No such file or directory
? claims = graph loaded (2026-01-31T09:15:02Z)
? source = Se
? drive = 1
? human = Verify your identity | Confirm who you are with Touch ID. This is the first record on your compliance log — everything else builds on it. | Verify identity
? facts = on on yes enabled enabled
? events = graph_loaded mesh_load_failed rolemap_load_failed os_snapshot
? lastEvent = {"count":5,"kind":"os_snapshot","ok":5}
? readiness = 0
? tasks = nothing

== Mesh, roles and chat are read in this order
mesh [["CC1-a",1,3],["CC6-b",0.5,1]]
roles [{"role":"Owner","readonly":false},{"role":"Auditor","readonly":true}]
write project/chat-history.json is [{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","role":"you","text":"hi","ts":"2026-01-30T00:00:00Z"}]
start
? claims = Loaded role map: 2 roles (Owner, Auditor) (2026-01-31T09:15:02Z) | Replayed 0 sealed gap-closes → readiness 87.5% (2026-01-31T09:15:02Z) | Loaded SOC 2 readiness graph: 2 criteria, readiness 87.5% (2026-01-31T09:15:02Z) | graph loaded (2026-01-31T09:15:02Z)
? events = graph_loaded mesh_loaded mesh_replayed rolemap_loaded os_snapshot
? status = loaded 5 nodes, 2 states
? chat = you: hi
? roles = Owner, Auditor

== A chat history that does not decode is none
write project/chat-history.json
start
? chat = nothing
write project/chat-history.json is {}
start
? chat = nothing
write project/chat-history.json is [1]
start
? chat = nothing
write project/chat-history.json is [{"id":"x","role":"you","text":"","ts":""}]
start
? chat = nothing
write project/chat-history.json is [{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","role":"you","ts":""}]
start
? chat = nothing

== Without its directories the engine runs and creates none
remove outputs
remove project
start
play
fire 3
? t = 0.030
? there project = no

== A rejected graph leaves the running model alone
start
play
fire 5
? stateLine = t=0.050  I=0.0453  C=0.0023  risk=0.00029
load {"nodes":[],"bonds":[]}
> status REJECTED: extracted graph has no nodes
load {"nodes":[{"id":"a","kind":"X"}],"bonds":[]}
> status REJECTED: unknown element kind 'X' — not a bond-graph element
load {"nodes":[{"id":"R1","kind":"R"}],"bonds":[]}
> status REJECTED: element R1 (R) requires a parameter value
load {"nodes":[{"id":"J","kind":"j1"}],"bonds":[]}
> status REJECTED: junction J degree 0 (need ≥ 2)
load {"nodes":[{"id":"s","kind":"Se"},{"id":"z","kind":"Se"},{"id":"J","kind":"j0"}],"bonds":[{"from":"s","to":"J"},{"from":"z","to":"J"}]}
> status REJECTED: junction J over-causal (>1 strong bond) — smartcard-6982 pattern
? stateLine = t=0.050  I=0.0453  C=0.0023  risk=0.00029

== Installing restarts time but not the loop, and drives the first of two effort sources
start
throttle
play
fire 5
load {"nodes":[{"id":"src","kind":"Sf"},{"id":"drive","kind":"Se"},{"id":"other","kind":"Se"},{"id":"r","kind":"R","param":2},{"id":"q","kind":"R","param":1},{"id":"p","kind":"R","param":1}],"bonds":[{"from":"src","to":"r"},{"from":"drive","to":"q"},{"from":"other","to":"p"}]}
> drive 1.000
> status loaded 6 nodes, 0 states
> cite graph loaded | kernel SCAP (Karnopp causality)
> event {"kind":"graph_loaded","nodes":6,"note":"graph loaded","states":0}
> cards First: who is accountable? | Verify your identity
? source = drive
? t = 0.000
? drive = 1
? running = yes
? stateLine = t=0.000    risk=0.00000
fire 1
? rate = 1

== A graph built from a question is installed and answered
start
built {"nodes":[{"id":"s","kind":"Se"},{"id":"r","kind":"R","param":2}],"bonds":[{"a":0,"b":1,"causality":"unset","powerAToB":true}]}
> drive 1.000
> status loaded 2 nodes, 0 states
> cite Siri → "a heater" | kernel SCAP (Karnopp causality)
> event {"kind":"graph_loaded","nodes":2,"note":"Siri → \\"a heater\\"","states":0}
> cards First: who is accountable? | Verify your identity
> reply Set up a model for that. Tap Run to see how it behaves.
built {"nodes":[{"id":"s","kind":"Se"}],"bonds":[]}
> status REJECTED: element s needs 1 port(s), has 0
> reply Set up a model for that. Tap Run to see how it behaves.
say Hello
> reply Hello

== Families compose in the order of their table
start
adopt CC6
> drive 1.000
> status loaded 7 nodes, 2 states
> cite System: 1 families, growing | kernel SCAP (Karnopp causality)
> event {"kind":"graph_loaded","nodes":7,"note":"System: 1 families, growing","states":2}
> cards First: who is accountable? | Verify your identity
> status System: 1 families, 2 states (latest +CC6 ×8). Play to charge, then Bond to checkpoint.
> cite Adopted CC6 into system: Logical & Physical Access (SSO, MFA, MDM) | compose · 1 families, 2 states
> event {"cc":"CC6","controls":8,"families":1,"kind":"adopt_compose","states":2}
? adopted = CC6 (CC6)
? source = owner
adopt CC1
? nodes = owner owner_j0 f1_TF_CC1 f1_1_CC1 f1_R_CC1gap f1_I_CC1proc f1_C_CC1 f2_TF_CC6 f2_1_CC6 f2_R_CC6gap f2_I_CC6proc f2_C_CC6
play
fire 3
adopt CC1
? adopted = CC1 CC6 (CC1)
? t = 0.000

== One family stays calm
start
adopt CC6
play
fire 600
? fired = 600

== All nine families pause themselves and start over with a full drive
start
throttle
adopt all
? drive = 1
play
fire 1000
? fired = 169
bond
? claims 1 = Checkpointed system state: 9 families (2026-01-31T09:15:02Z)

