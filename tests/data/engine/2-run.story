== The start-up model pauses itself at the rate limit, again after each start
start
play
> running true
> status PLAY — unitary evolution (PENDING, reversible)
> event {"kind":"play","t":0}
> cards First: who is accountable? | Verify your identity
play
> nothing
? starts = 1
fire 1000
? fired = 44
? running = no
? latched = yes
? status = PAUSE — frozen.
? staged = collapse@t=0.440 {"risk":0.06901912576183444,"state":[0.19451223047458494,0.11326590237196943],"t":0.4400000000000002,"tip":"0000000000000000000000000000000000000000000000000000000000000000","title":"collapse@t=0.440"}
? claims 1 = Risk crossed safe limit — auto-paused for human approval. (2026-01-31T09:15:02Z)
? notified = 1: ⚠ Risk needs your review | System auto-paused. Press BOND (Touch ID) to approve, or PLAY to continue.
? agent = First: who is accountable? | Establish the owner responsible for compliance before anything else. This grounds every later approval. | no action
? human = Verify your identity | Confirm who you are with Touch ID. This is the first record on your compliance log — everything else builds on it. | Verify identity
play
? latched = no
fire 10
? fired = 1
? staged = collapse@t=0.450 {"risk":0.07206224962520884,"state":[0.1955584024790596,0.11716674347538807],"t":0.45000000000000023,"tip":"0000000000000000000000000000000000000000000000000000000000000000","title":"collapse@t=0.450"}
? notified = 2: ⚠ Risk needs your review | System auto-paused. Press BOND (Touch ID) to approve, or PLAY to continue. || ⚠ Risk needs your review | System auto-paused. Press BOND (Touch ID) to approve, or PLAY to continue.

== Pausing stages the state also when idle
start
pause
> running false
> status PAUSE — frozen.
> pending collapse@t=0.000
> event {"kind":"pause","risk":0,"t":0}
> cards First: who is accountable? | Verify your identity
? staged = collapse@t=0.000 {"risk":0,"state":[0,0],"t":0,"tip":"0000000000000000000000000000000000000000000000000000000000000000","title":"collapse@t=0.000"}

== Throttling halves what the next step reads
start
throttle
> drive 0.500
> cite Agent throttled source Se → 0.50 | lever: reduce ∫R·f² growth rate
> event {"drive":0.5,"kind":"throttle"}
> cards First: who is accountable? | Verify your identity
throttle
? drive = 0.25
throttle
? drive = 0.125
play
fire 1
? stateLine = t=0.010  I=0.0012  C=0.0000  risk=0.00000

== A rate of exactly the limit does not pause the run
start
load {"nodes":[{"id":"s","kind":"Se"},{"id":"r","kind":"R","param":3.3333333333333335}],"bonds":[{"from":"s","to":"r"}]}
play
fire 5
? rate = 0.3
? fired = 5

== A state without a JSON form is staged without bytes
start
load {"nodes":[{"id":"s","kind":"Se"},{"id":"J","kind":"j1"},{"id":"i","kind":"I","param":0},{"id":"r","kind":"R","param":1}],"bonds":[{"from":"s","to":"J"},{"from":"J","to":"i"},{"from":"J","to":"r"}]}
play
fire 3
pause
> running false
> status PAUSE — frozen.
> pending collapse@t=0.030
> cards First: who is accountable? | Verify your identity
? staged = collapse@t=0.030 
bond
> status HIPR — awaiting Touch ID…
> event {"kind":"hipr_request","title":"collapse@t=0.030"}
> presence BOND — collapse PENDING→FINAL, seal totem to chain
> totems 1
> pending none
> file collapse-0-#0...totem.json {"appBlockHash":"#0","appIndex":0,"appPrev":"0000000000000000000000000000000000000000000000000000000000000000","asOf":"2026-01-31T09:15:02Z","firedBy":"HIPR:TouchID:present","payloadRoot":"e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855","sourceDb":"collapse","title":"collapse@t=0.030"}
> status FINAL — totem #0.. idx 0. verify=true. → outputs (bouncer will seal)
> cite measurement collapsed → FINAL | HIPR HIPR:TouchID:present · block #0..
> event {"blockHash":"#0","index":0,"kind":"final","record":"HIPR:TouchID:present","verify":true}
> cite Checkpointed system state: 0 families | 1 approval · totem #0..
> event {"approvals":1,"block":"#0","kind":"checkpoint"}
> cards First: who is accountable? | Verify your identity

== A denied approval keeps the measurement, and with nothing staged nothing happens
start
bond
> nothing
pause
presence denied
bond
> status HIPR — awaiting Touch ID…
> event {"kind":"hipr_request","title":"collapse@t=0.000"}
> presence BOND — collapse PENDING→FINAL, seal totem to chain
> status HIPR DENIED — no chain write. HIPR:TouchID:DENIED
> event {"kind":"hipr_denied","record":"HIPR:TouchID:DENIED"}
presence unavailable
bond
> status HIPR — awaiting Touch ID…
> event {"kind":"hipr_request","title":"collapse@t=0.000"}
> status HIPR DENIED — no chain write. HIPR-UNAVAILABLE: no policy
> event {"kind":"hipr_denied","record":"HIPR-UNAVAILABLE: no policy"}
? staged = collapse@t=0.000 {"risk":0,"state":[0,0],"t":0,"tip":"0000000000000000000000000000000000000000000000000000000000000000","title":"collapse@t=0.000"}
? totems = 0
? files = nothing

== An approval seals in the fixed order
start
play
fire 44
bond
> status HIPR — awaiting Touch ID…
> event {"kind":"hipr_request","title":"collapse@t=0.440"}
> presence BOND — collapse PENDING→FINAL, seal totem to chain
> totems 1
> pending none
> file collapse-0-#0...totem.json {"appBlockHash":"#0","appIndex":0,"appPrev":"0000000000000000000000000000000000000000000000000000000000000000","asOf":"2026-01-31T09:15:02Z","firedBy":"HIPR:TouchID:present","payloadRoot":"5fe1e9a3539a26da1abd1d48c82335e60b5d31d73530c1b23f0cee3a60bbc267","risk":0.06901912576183444,"sourceDb":"collapse","state":[0.19451223047458494,0.11326590237196943],"t":0.4400000000000002,"tip":"0000000000000000000000000000000000000000000000000000000000000000","title":"collapse@t=0.440"}
> status FINAL — totem #0.. idx 0. verify=true. → outputs (bouncer will seal)
> cite measurement collapsed → FINAL | HIPR HIPR:TouchID:present · block #0..
> event {"blockHash":"#0","index":0,"kind":"final","record":"HIPR:TouchID:present","verify":true}
> cite Checkpointed system state: 0 families | 1 approval · totem #0..
> event {"approvals":1,"block":"#0","kind":"checkpoint"}
> cards First: who is accountable? | Verify your identity
? latched = yes
? running = no

== One seal hangs on the other and the newest is published first
start
pause
bond
pause
bond
pause
bond
> status HIPR — awaiting Touch ID…
> event {"kind":"hipr_request","title":"collapse@t=0.000"}
> presence BOND — collapse PENDING→FINAL, seal totem to chain
> totems 3
> pending none
> file collapse-2-#2...totem.json {"appBlockHash":"#2","appIndex":2,"appPrev":"#1","asOf":"2026-01-31T09:15:02Z","firedBy":"HIPR:TouchID:present","payloadRoot":"9e3fdea80b40f859cb23ae6a08f2718335fb9543e4332b7b4612e5f2efb6e2f0","risk":0,"sourceDb":"collapse","state":[0,0],"t":0,"tip":"#1","title":"collapse@t=0.000"}
> status FINAL — totem #2.. idx 2. verify=true. → outputs (bouncer will seal)
> cite measurement collapsed → FINAL | HIPR HIPR:TouchID:present · block #2..
> event {"blockHash":"#2","index":2,"kind":"final","record":"HIPR:TouchID:present","verify":true}
> cite Checkpointed system state: 0 families | 1 approval · totem #2..
> event {"approvals":3,"block":"#2","kind":"checkpoint"}
> cards First: who is accountable? | Verify your identity
? totems = 3: collapse@t=0.000 | collapse@t=0.000 | collapse@t=0.000

== A record that cannot be written keeps its totem
start
pause
remove outputs
bond
> status HIPR — awaiting Touch ID…
> event {"kind":"hipr_request","title":"collapse@t=0.000"}
> presence BOND — collapse PENDING→FINAL, seal totem to chain
> totems 1
> pending none
> status FINAL — totem #0.. idx 0. verify=true. outputs: collapse-0-#0...totem.json: No such file or directory
> cite measurement collapsed → FINAL | HIPR HIPR:TouchID:present · block #0..
> event {"blockHash":"#0","index":0,"kind":"final","record":"HIPR:TouchID:present","verify":true}
> cite Checkpointed system state: 0 families | 1 approval · totem #0..
> event {"approvals":1,"block":"#0","kind":"checkpoint"}
> cards First: who is accountable? | Verify your identity
? totems = 1: collapse@t=0.000
? staged = none

