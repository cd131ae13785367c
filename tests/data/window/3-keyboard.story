== Space toggles play and pause, with a modifier it is another key
open
press Space
? running = yes
press Space
? running = no
press Ctrl+Space
press Shift+Space
? running = no

== A held space bar toggles once
open
hold Space
? running = yes

== Space in the question is a space
open
focus question
type a b
? is text question = a b
? running = no

== Space on a focused button presses that button
open
machine silent
focus Refresh
press Space
? facts = unknown! unknown! unknown! unknown! unknown!
? running = no

== Space on a switch toggles the switch
organisation
open
write a.txt is text
choose a.txt
addEvidence
answer {"criteria":["CC3-risk"],"summary":"s"}
focus CC3-risk
press Space
? is checked CC3-risk = false
? running = no

== Space still toggles after a focused control went away
open
pause
focus Bond — approve & seal
press Space
? sections = assistant kyc nextAction evidence begin os provenance
press Space
? running = yes

