== The first day of a sample organisation
organisation examples/outputs
open
page 1-start The window opens on a copy of the sample organisation
click Verify identity as Owner
? principal = Ada Byron
page 2-identity The owner's identity is verified (presence simulated)
write device-inventory.csv is laptop,encrypted,firewall,screen lock\nlarkspur-01,yes,yes,5 min\n
choose device-inventory.csv
click Close with evidence
? met = 5
page 3-gap-closed The gap of the highest impact is closed with evidence
click Play
fire 1000
? running = no
page 4-risk-pause The run pauses itself at the risk limit
click Bond — approve & seal
? staged = none
page 5-sealed The state is approved and sealed (presence simulated)
generate CC6-access
respond
focus draft
page 6-draft A policy is drafted for CC6-access by the built-in responder
click Approve & seal (Touch ID)
? draft = none
page 7-policy The policy is approved and sealed (presence simulated)
keep outputs
