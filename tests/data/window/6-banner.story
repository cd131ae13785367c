== What came of an action is told at the foot of the right pane, and stays to be read
organisation
open
? is visible banner = not there
owner
? is visible banner = true
? is text bannerWords = Identity verified*
write review.txt is every account was matched
choose review.txt
closeGap CC6-access
? is text bannerWords = Closed*
click bannerEarlier
? shows Identity verified: Ada Byron as Owner. You can now see your responsibilities. = yes
click bannerClose
? is visible banner = not there

== A month after the last checkpoint the window asks for another, once a start
organisation
start
begin
owner
hours 800
stop
open
owner
? is text bannerWords = There is no checkpoint of the log yet.
click bannerCheckpoint
? is text pageTitle = Checkpoint
? is text bannerWords = Checkpoint of the log made: 5 lines.

== Another person takes over, and the records of before are named
organisation
start
begin
owner
stop
open
? shows Nothing is sealed in this run yet. = yes
? is text earlierRecords = 1 earlier record is in *
click showEarlier
? is text pageTitle = Proof
press Escape
owner
click notYou
? shows Get started = yes
? shows You are: Ada Byron · Owner = no
