== Identity comes first, then the gap with the largest impact, then nothing
mesh [["A",0,1,"x GAP: policy"],["B",0,3,"y GAP:\\tlog "]]
start
? agent = First: who is accountable? | Establish the owner responsible for compliance before anything else. This grounds every later approval. | no action
? human = Verify your identity | Confirm who you are with Touch ID. This is the first record on your compliance log — everything else builds on it. | Verify identity
owner
? agent = Close B — log (+75.0%) | Closing the highest-impact criterion lifts readiness from 0.0% toward met. Read from the graph. | Close B
? human = Close B (verify) | log — verify with Touch ID to mark this criterion met and record it on your compliance log. | Close B
write e.txt is e
choose e.txt
closeGap A
closeGap B
? agent = All criteria met — solve = 100%. | Every Trust Services Criterion is met. Readiness solves to 100%. | no action
? human = All criteria met | Nothing to close. Readiness = 100%. | no action

== Of equal gaps the first in the file is proposed, with the gain that is left
mesh [["A",0,2,"a"],["B",0.5,4,"b"]]
start
owner
? agent = Close A — a (+33.3%) | Closing the highest-impact criterion lifts readiness from 33.3% toward met. Read from the graph. | Close A
? human = Close A (verify) | a — verify with Touch ID to mark this criterion met and record it on your compliance log. | Close A

== A role's tasks are named by the way to close them until all are done
mesh [["CC6-access"],["CC5-policy"],["CC1-ethics"]]
roles [{"role":"Engineer","readonly":false,"controls":[{"criterion":"CC6-access","task":"Lock the laptop","close":"os"},{"criterion":"CC5-policy","task":"Write the policy","close":"generate"},{"criterion":"CC1-ethics","task":"Read the code","close":"sign"}]}]
start
verify Engineer
? agent = Your next task: Lock the laptop | This is your responsibility for CC6-access. Check this device to complete it. Your completion: 0.0%. | no action
? human = Lock the laptop | Your responsibility for CC6-access. Check this device (Touch ID) to mark it done. Your completion: 0.0%. | no action
attest ["CC6-access","",""]
? agent = Your next task: Write the policy | This is your responsibility for CC5-policy. Generate to complete it. Your completion: 33.3%. | no action
? human = Write the policy | Your responsibility for CC5-policy. Generate (Touch ID) to mark it done. Your completion: 33.3%. | no action
attest ["CC5-policy","",""]
? agent = Your next task: Read the code | This is your responsibility for CC1-ethics. Acknowledge to complete it. Your completion: 66.7%. | no action
? human = Read the code | Your responsibility for CC1-ethics. Acknowledge (Touch ID) to mark it done. Your completion: 66.7%. | no action
attest ["CC1-ethics","",""]
? agent = You're all set | Every responsibility for your role is complete. Your completion: 100%. | no action
? human = All your responsibilities are complete | Nothing left for your role. Your completion: 100%. | no action

== A read-only role looks, also when nothing is open
mesh [["A",0.4237],["B",1]]
roles [{"role":"Auditor","readonly":true,"criteria":["A"]},{"role":"Reader","readonly":true,"criteria":["B"]}]
start
verify Auditor
? agent = Verify readiness (read-only) | Re-solve the org graph and confirm each criterion's met/gap state. No changes. | no action
? human = Review readiness | You have read-only access. Readiness is 71.2% (1/13 met). Re-solve to verify. | no action
verify Reader
? agent = Verify readiness (read-only) | Re-solve the org graph and confirm each criterion's met/gap state. No changes. | no action
? human = Review readiness | You have read-only access. Readiness is 71.2% (1/13 met). Re-solve to verify. | no action

== Without a mesh the simulation speaks
start
owner
? agent = STEADY → propose SEAL | I·p≈0, C charged — system settled. checkpoint state. | Pause
? human = Approve & seal steady state | System reached steady state. BOND (Touch ID) to checkpoint it on the chain. | Approve & save
play
fire 20
? agent = INTEGRATE forward | RK4 over totem-time · within risk limit · reversible (PENDING) | Play
? human = Monitor | Within safe limits. No approval needed — watching. | no action
fire 100
? agent = AWAIT HIPR | measurement staged · agent blocked until human presence (no-cloning) | no action
? human = Approve & seal | Press BOND (Touch ID) to record this state on the chain — or PLAY to keep running. | Approve & save
bond
? agent = THROTTLE Se ↓ | dissipation rate 0.303 ≥ 0.30 → cut source to cool it (cumulative risk 0.069) | Reduce exposure
? human = Reduce risk? | Agent proposes lowering drive to cool the dissipation rate. Approve the throttle, or BOND to seal now. | Reduce exposure
throttle
? human = Reduce risk? | Agent proposes lowering drive to cool the dissipation rate. Approve the throttle, or BOND to seal now. | Reduce exposure
play
fire 3
? agent = INTEGRATE forward | RK4 over totem-time · within risk limit · reversible (PENDING) | Play

