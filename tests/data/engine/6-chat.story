== A question is answered from the live state
mesh [["CC6-access",0.4,1,"x GAP: no review "],["CC7-logs",1,1]]
start
owner
ask \x20\n what next?\xe2\x80\x83
> busy true
> proposed none
> chat you: what next?
drain
? prompt = Current state:\nOwner: Ada Byron\nReadiness: 70.0% (1/13 criteria met)\nOpen gaps (criterion id — what's needed):\n- CC6-access: no review\n\nUser: what next?
? busy = yes
answer {"answer":"Close the gap.","action":" Generate: cc6-ACCESS \\n"}
> reply Close the gap.
> chat pellum: Close the gap.
> proposed Generate CC6-access policy
> event {"action":"generate: cc6-access","chars":10,"kind":"assistant_ask","proposed":true}
> busy false
? action = Generate CC6-access policy
runProposed
? proposed = none
? status = Writing policy for CC6-access on-device…
runProposed
> proposed none

== No step is proposed for a criterion that was closed meanwhile
mesh [["CC6-access",0.4]]
start
ask draft the access policy
drain
attest ["CC6-access","Review","attest"]
answer {"answer":"Sure.","action":"generate:CC6-access"}
? proposed = none

== A blank question changes nothing, and without a model the answer is the fixed text
start
ask \x20\n\t\xc2\xa0
> nothing
model unavailable off
ask hello
> busy true
> proposed none
> chat you: hello
drain
> reply On-device assistant unavailable right now — use the buttons on the right.
> chat pellum: On-device assistant unavailable right now — use the buttons on the right.
> busy false

== The context without a mesh and with everything met
start
ask q
drain
? prompt = Current state:\nOwner: not yet verified\nReadiness: 0.0% (0/13 criteria met)\n\nUser: q
mesh [["A",1]]
start
owner
ask q
drain
? prompt = Current state:\nOwner: Ada Byron\nReadiness: 100.0% (1/13 criteria met)\nOpen gaps: none — every criterion is met.\n\nUser: q

== The next question clears the proposal, and an upload runs once
start
ask upload
drain
answer {"answer":"Sure.","action":"ADD_EVIDENCE"}
> reply Sure.
> chat pellum: Sure.
> proposed Add evidence
> event {"action":"add_evidence","chars":6,"kind":"assistant_ask","proposed":true}
> busy false
? action = no action
runProposed
> proposed none
> panel Add evidence
> status No document selected.
> event {"kind":"evidence_no_file"}
? proposed = none
ask start
drain
answer {"answer":"Ok.","action":"play"}
? proposed = Play
ask thanks
? proposed = none
drain
answer {"answer":"Welcome.","action":"none"}
? proposed = none
? lastEvent = {"action":"none","chars":6,"kind":"assistant_ask","proposed":false}

== Overlapping questions are answered as the answers arrive
start
ask one
ask two
drain
answerNewest {"answer":"second","action":"play"}
? busy = no
answer {"answer":"first","action":"none"}
? proposed = Play
? reply = first
? chat = you: one | you: two | pellum: second | pellum: first

== The history is written at each line and read at the next start
start
ask a/b "é"
drain
answer {"answer":"<b>plain</b>","action":"none"}
start
? chat = you: a/b "é" | pellum: <b>plain</b>
ask more
start
? chat = you: a/b "é" | pellum: <b>plain</b> | you: more
remove project
ask unsaved
? chat = you: a/b "é" | pellum: <b>plain</b> | you: more | you: unsaved

== An answer for an engine that is gone is dropped
mesh [["A"]]
start
ask q
drain
generate A
stop
drain
answer {"answer":"late","action":"play"}
? open = 0

== Cancelling ends all that the model is at
mesh [["A"]]
start
ask q
generate A
drain
? open = 2
cancel
> reply On-device assistant unavailable right now — use the buttons on the right.
> chat pellum: On-device assistant unavailable right now — use the buttons on the right.
> busy false
> status On-device generation unavailable.
> event {"criterion":"A","kind":"policy_generate_unavailable"}

