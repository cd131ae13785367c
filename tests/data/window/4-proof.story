== Two mornings with the same first seal are two decisions
organisation
start
begin
owner
stop
hours 24
open
owner
press Ctrl+2
? shows 2 decisions, log whole, no checkpoint yet = yes
? shows Every record is as it was sealed, and none is missing. Compared at 09:15. = yes
? is sentence troubleLine = not there

== The newest record is deleted, and restored
organisation
start
begin
owner
write review.txt is every account was matched
choose review.txt
closeGap CC6-access
stop
remove outputs/control-1*
open
owner
? is sentence troubleLine = 1 record is gone.
click troubleShow
? shows A record is gone = yes
? shows Its sealed bytes are kept. Restore writes the same file back. = yes
? shows “Close CC6-access — verify to mark this criterion met”, 31 January, Ada Byron = yes
click Restore
? is sentence troubleLine = not there
? shows 3 decisions, log whole, no checkpoint yet = yes

== The date of a record is changed
organisation
start
begin
owner
write review.txt is every account was matched
choose review.txt
closeGap CC6-access
stop
edit outputs/control-1*: "asOf" : "2026 => "asOf" : "2025
open
owner
? is sentence troubleLine = 1 record was changed after it was sealed.
click troubleShow
? shows as sealed = yes
? shows "2025-01-31T09:15:02Z" = yes
click Restore the sealed one
? is sentence troubleLine = not there

== A record that nobody sealed is put in
organisation
start
begin
owner
stop
write outputs/control-9-aaaaaaaaaaaa.totem.json is {"sourceDb":"control","criterion":"CC9-vendor-risk","gate_after":1,"evidence_root":"x","owner":"Eve","asOf":"2026-01-30T09:00:00Z"}
open
owner
? gate CC9-vendor-risk = 1
? is sentence troubleLine = Readiness counts 1 record that no log knows.
click troubleShow
? shows A record that no log knows = yes
? shows It says that CC9-vendor-risk was closed by Eve. Readiness counts it. = yes

== A level is raised by hand
organisation
start
begin
owner
stop
edit outputs/soc2-mesh-bondgraph.json: "g": 0.5 => "g": 1
open
? is sentence troubleLine = The list of criteria was changed.
click troubleShow
? shows A level was raised without a decision = yes

== A draft's empty places are told beside the button that seals it
organisation
start
begin
owner
stop
open
owner
generate CC6-access
answer The [To be completed: owner] keeps a list of accounts, and the [To be completed: engineer] reads it.
? is text draftPlaces = 2 empty places
? shows “[To be completed: engineer]”: to be filled in. = yes
click Approve & seal (Touch ID)
? is text draftPlaces = not there
? status = Sealed generated policy for CC6-access: readiness 51.2%→62.8%.

== The kept evidence is thrown away, and supplied again
organisation
start
begin
owner
write review.txt is every account was matched
choose review.txt
closeGap CC6-access
stop
remove proof/vault/6358a8c1c8505a371ce2966757872b234a4a98d5032fc281e559d9ccb2c35d8a
open
owner
? is sentence troubleLine = The kept evidence of 1 decision is gone.
click troubleShow
write other.txt is something else
choose other.txt
click Supply the file…
? status = That is another file: its hash is not the sealed one. Nothing was changed.
choose review.txt
click Supply the file…
? status = Kept review.txt: it is the file that was sealed.
? is sentence troubleLine = not there

== The file that was sealed may change; the kept one is shown
organisation
start
begin
owner
write review.txt is every account was matched
choose review.txt
closeGap CC6-access
write review.txt is nothing of the kind
stop
open
owner
press Ctrl+2
click View the evidence of CC6-access
? opened = review.txt: every account was matched
click Verify the evidence of CC6-access
? shows Verified 09:15: the kept file is the one that was sealed. = yes

== Records from before the log are adopted
organisation
start
owner
write review.txt is every account was matched
choose review.txt
closeGap CC6-access
stop
remove proof
open
? is sentence troubleLine = 2 earlier records are in no log yet.
owner
? is sentence troubleLine = Readiness counts 1 record that no log knows.
click troubleShow
click Adopt 1 earlier record
? status = Adopted 1 earlier record into the log.
? shows 2 decisions, log whole, no checkpoint yet = yes
? is sentence troubleLine = not there

== A record that cannot be written is kept, told and written later
organisation
open
owner
remove outputs
write review.txt is every account was matched
choose review.txt
closeGap CC6-access
? status = Closed CC6-access: readiness 51.2%→62.8%.
? is sentence troubleLine = 1 decision is not on disk since 09:15: the folder is gone. And 2 more.
press Ctrl+2
? shows Not on disk = yes
folder elsewhere
saveUnwritten elsewhere
? exists elsewhere/control-1* = yes
folder outputs
organisation
click Try now
? exists outputs/control-1* = yes
? shows A record is gone = yes

== Only the owner adopts and makes checkpoints; an auditor looks and verifies
organisation
start
begin
owner
write review.txt is every account was matched
choose review.txt
closeGap CC6-access
stop
open
verify Auditor
press Ctrl+2
? is enabled makeCheckpoint = false
click Verify the evidence of CC6-access
? shows Verified 09:15: the kept file is the one that was sealed. = yes
verify Owner
? is enabled makeCheckpoint = true

== A checkpoint is made, copied, sent and checked, and a change behind it is told
organisation
start
begin
owner
write review.txt is every account was matched
choose review.txt
closeGap CC6-access
stop
open
owner
press Ctrl+2
click makeCheckpoint
? shows Give this to somebody who is not you = yes
click Copy
? shows Copied. = yes
click Send…
? shows A message was opened in your mail program. Nothing was sent yet. = yes
click Print…
? shows The page was given to the print dialog. = yes
press Escape
? shows 3 decisions, log whole, last checkpoint 31 January (none since) = yes
click checkCheckpoint
focus pastedCheckpoint
press Ctrl+V
click checkPasted
? answers = holds
press Escape
press Escape
? is visible proofPage = not there

== Closing is asked about where a decision would be lost by it
organisation
open
owner
remove outputs
write review.txt is every account was matched
choose review.txt
closeGap CC6-access
? closes = no
? shows 1 decision is not on disk. It is gone when the window closes. = yes
click Stay
? shows 1 decision is not on disk. It is gone when the window closes. = no
? closes = no
