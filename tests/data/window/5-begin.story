== From an empty folder to the first next best action
open
? sections = assistant kyc nextAction evidence begin os provenance
? is text nextActionReminder = not there
? shows 13 criteria for a small company, all 33 common criteria covered. Ready in five minutes; change it later. = yes
click useStarter
? is text pageTitle = Begin: a few questions
? window beginPage = All three can be changed later. What you leave as it is, is a good answer. | 1  What is the organisation called? | It stands on the report and in each proof. | 2  Who does what? | One person may hold several roles. Names as in each person's account on the computer; yours is filled in. | Owner | 7 tasks | Ada Byron | [plus] People lead | 1 task | Not chosen yet | Not chosen yet | [plus] Engineer | 5 tasks | Not chosen yet | Not chosen yet | [plus] Auditor | sees all, changes nothing | Not chosen yet | Not chosen yet | 3  What do you have? | What you switch off is left off the list. Its common criteria then have nothing behind them, and an auditor will ask why. | Offices or hosting rooms of our own (CC6.4, CC6.5) | Laptops and other devices of our own (CC6.6, CC6.7, CC6.8) | Nothing is written yet. | Show what will be written
click showPreview
? shows A name is needed; it can be changed later. = yes
focus organisationName
type Larkspur
focus Engineer
type Jonas
click Another person for Engineer
focus One more Engineer
type Ada
click Offices or hosting rooms of our own (CC6.4, CC6.5)
? shows 6 tasks = yes
click showPreview
? is text pageTitle = Begin: what will be written
? shows 12 criteria, 4 roles. No criterion is met yet: readiness begins at 0.0%. = yes
? shows half-yearly = yes
press Escape
? shows Larkspur = yes
click showPreview
? files = nothing
click writeFiles
? status = 12 criteria are ready. Verify who you are to begin.
? is text pageTitle = Ferrow — HITL
? files = roles-bondgraph.json soc2-mesh-bondgraph.json
? sections = assistant kyc nextAction evidence readiness os provenance
? is currentText Your role = Owner
click Verify identity as Owner
? is text nextAction = Close with evidence
? shows Close CC6-access (verify) = yes
? holds outputs/soc2-mesh-bondgraph.json: "organisation" : "Larkspur" = yes
? holds outputs/roles-bondgraph.json: "Jonas" = yes

== What is there by then is not overwritten
open
click otherStarter
click useStarter
focus organisationName
type L
click showPreview
? shows 27 criteria, 4 roles. No criterion is met yet: readiness begins at 0.0%. = yes
write outputs/roles-bondgraph.json is mine
click writeFiles
? is text refusal = roles-bondgraph.json is there already. Nothing was written.
? files = roles-bondgraph.json

== A list with faults is not taken, a good one is, and a catalog alike
open
write own.csv is id,title\nCC6 access,One\n,Two\n
choose own.csv
click openCsv
? window faults = [exclamationmark.circle] Line 2 of own.csv: the id “CC6 access” holds a blank. Nothing was written. | [exclamationmark.circle] Line 3 of own.csv: the id is missing.
write own.csv is id;title;level\na;One;1\n
choose own.csv
click Choose again…
? is text pageTitle = Begin: a few questions
? shows 3  What do you have? = no
focus organisationName
type L
click showPreview
? shows 1 criterion, 2 roles. 1 criterion is met: readiness begins at 100.0%. = yes
press Escape
press Escape
write catalog.json is {"catalog":{"controls":[]}}
choose catalog.json
click openCatalog
? window faults = [exclamationmark.circle] catalog.json: there is no criterion in it. Nothing was written.

== A list that cannot be read is told, and read again once it can
write outputs/soc2-mesh-bondgraph.json is {}
open
? is text unreadable = Your list is there but could not be read: soc2-mesh-bondgraph.json: nodes: missing.
? shows Starter list = no
click Open the folder
organisation
click Read again
? status = 13 criteria are ready. Verify who you are to begin.
? is text unreadable = not there

== Files that come from elsewhere are read when they come
open
organisation
look
? status = 13 criteria are ready. Verify who you are to begin.
owner
? sections = assistant identity nextAction evidence readiness os provenance

== The sample opens beside the person's own window
open
click openSample
? samples = 1

== A home without any folder gets them, and keeps the proof from the first decision on
remove outputs
remove project
open
click useStarter
focus organisationName
type L
click showPreview
? shows The folder is not there yet; it is made, too. = yes
click writeFiles
owner
write review.txt is every account was matched
choose review.txt
closeGap CC6-access
press Ctrl+2
? shows 2 decisions, log whole, no checkpoint yet = yes

== A person is offered the roles that are meant for them
organisation
roles [{"role":"Owner","readonly":false,"people":["Ada Byron"]},{"role":"Engineer","readonly":false,"controls":[],"people":["Jonas Weber","Ada Byron"]},{"role":"Clerk","readonly":false,"people":["Grace Lindqvist"]},{"role":"Helper","readonly":false,"people":"Grace"},{"role":"Auditor","readonly":true}]
open
? is count Your role = 4
? is currentText Your role = Owner

== A person without a name in the first role begins with their own
organisation
roles [{"role":"Owner","readonly":false,"people":["Ada Byron"]},{"role":"Engineer","readonly":false,"controls":[],"people":["Jonas Weber","Ada Byron"]},{"role":"Clerk","readonly":false,"people":["Grace Lindqvist"]},{"role":"Helper","readonly":false,"people":"Grace"},{"role":"Auditor","readonly":true}]
account Jonas Weber
open
? is count Your role = 3
? is currentText Your role = Engineer
click nextAction
? role = Engineer

== Nobody is pushed into a role that is meant for others
organisation
roles [{"role":"Owner","readonly":false,"people":["Jonas Weber"]}]
open
? is displayText Your role = No role is meant for Ada Byron
? is enabled Verify identity as user = false
click nextAction
? status = No role is meant for Ada Byron. The owner names people in the role map.
? principal = none

== What was decided before the list came is of a run of its own in the log
open
owner
organisation
look
? status = 13 criteria are ready.
write review.txt is every account was matched
choose review.txt
closeGap CC6-access
? holds proof/seals*: "run":1 = yes
? holds proof/seals*: "run":2 = yes
press Ctrl+2
? shows 2 decisions, log whole, no checkpoint yet = yes
