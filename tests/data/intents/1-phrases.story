== A spoken or typed phrase is understood in any spelling
? matches adopt cc6 in kelvo soc2 = adopt:CC6
? matches ADOPT C C SIX IN KELVO S O C TWO = adopt:CC6
? matches Set up C.C.6 in Kelvo SOC-2! = adopt:CC6
? matches \x20set  up\tcc six,\nin “Kelvo SOC 2”.\x20 = adopt:CC6
? matches run kelvo soc two = run
? matches Approve, in Kelvo SOC2 = approve
? matches ask kelvo soc 2 = ask
? matches Ask Kelvo SOC2, what is CC6? = ask:what is CC6?
? matches ask kelvo soc two — “Who?” = ask:“Who?”
? matches Ask Kelvo SOC2: approve in Kelvo SOC2 = ask:approve in Kelvo SOC2
? matches Ask Kelvo SOC2 ... = ask

== What is no phrase is not understood
? matches = none
? matches \x20 = none
? matches approve = none
? matches approve kelvo soc2 = none
? matches approve in kelvo = none
? matches approve in soc2 = none
? matches don't approve in Kelvo SOC2 = none
? matches approve in Kelvo SOC2 not = none
? matches approve in Kelvo SOC3 = none
? matches approve in Kelvo SOC22 = none
? matches approve in Kelvo SOC to = none
? matches improve in Kelvo SOC2 = none
? matches approve in Kelvo sock two = none
? matches approve-in-kelvosoc2 = none
? matches appr0ve in Kelvo SOC2 = none
? matches аррrove in Kelvo SOC2 = none
? matches approve​ in Kelvo SOC2 = none
? matches approve ≠ in Kelvo SOC2 = none
? matches approve in Kelvo SOC² = none
? matches approve in Kelvo SO C2 = none
? matches a p p r o v e in Kelvo SOC2 = none
? matches approve and run in Kelvo SOC2 = none
? matches run Kelvo SOC2 Engine = none
? matches adopt in Kelvo SOC2 = none
? matches adopt CC0 in Kelvo SOC2 = none
? matches adopt CC10 in Kelvo SOC2 = none
? matches adopt CC6 CC7 in Kelvo SOC2 = none
? matches adopt C6 in Kelvo SOC2 = none
? matches set CC6 up in Kelvo SOC2 = none
? matches \xff approve in Kelvo SOC2 = none

== What is being typed is completed
? offers Adopt CC6 in Kelvo SOC2 = whole Adopt CC6 in Kelvo SOC2
? offers adopt cc6 = Adopt CC6 in Kelvo SOC2
? offers cc six = Set up CC6 in Kelvo SOC2
? offers app kel = Approve in Kelvo SOC2
? offers run = Run Kelvo SOC2
? offers Ask Kelvo SOC2 what is left? = whole what is left?
? offers kelvo = Set up CC1 in Kelvo SOC2 | Set up CC2 in Kelvo SOC2 | Set up CC3 in Kelvo SOC2 | Set up CC4 in Kelvo SOC2 | Set up CC5 in Kelvo SOC2 | Set up CC6 in Kelvo SOC2 | Set up CC7 in Kelvo SOC2 | Set up CC8 in Kelvo SOC2 | Set up CC9 in Kelvo SOC2 | Run Kelvo SOC2
? offers = nothing
? offers ru = nothing
? offers -- = nothing
? offers Ask Kelvo SOC2 = nothing
? offers kelvo run = nothing
? offers weather = nothing
? offers run x = nothing

== What was heard forgives a breath except before the seal
? hears adopt c c six in kelvo soc two = adopt:CC6
? hears sound_z sound_uw adopt c c six in kelvo soc two = adopt:CC6
? hears sound_z sound_z sound_z adopt c c six in kelvo soc two = none
? hears run sound_z kelvo soc two = none
? hears run kelvo soc two sound_z = none
? hears sound_hh run kelvo soc two = run
? hears sound_aa sound_t run kelvo soc two = none
? hears ask kelvo soc two = ask
? hears ask kelvo soc two tomorrow = none
? hears not run kelvo soc two = none
? hears approve in kelvo soc two = approve
? hears sound_t approve in kelvo soc two = none
? hears sound_t = none
? hears = none

== An id is read as it is written
? id run = run
? id approve = approve
? id adopt:CC1 = adopt:CC1
? id adopt:CC9 = adopt:CC9
? id ask:why: so? = ask:why: so?
? id = REFUSED “” is no intent. The intents are ask, adopt, run and approve.
? id : = REFUSED “” is no intent. The intents are ask, adopt, run and approve.
? id run: = REFUSED “run:” is no intent.
? id approve: = REFUSED “approve:” is no intent.
? id adopt = REFUSED “” is no control family. The families are CC1 to CC9.
? id adopt: = REFUSED “” is no control family. The families are CC1 to CC9.
? id ask: = REFUSED The question is empty.
? id adopt:CC1: = REFUSED “CC1:” is no control family. The families are CC1 to CC9.
? id adopt:cc6 = REFUSED “cc6” is no control family. The families are CC1 to CC9.
? id adopt:CC0 = REFUSED “CC0” is no control family. The families are CC1 to CC9.
? id adopt:CC10 = REFUSED “CC10” is no control family. The families are CC1 to CC9.
? id adopt:CC6\x20 = REFUSED “CC6 ” is no control family. The families are CC1 to CC9.

== A request is refused with its reason
? request ask = REFUSED The question is empty.
? request ask  \n  = REFUSED The question is empty.
? request ask \xff = REFUSED The question is not UTF-8 text.
? request adopt CC10 = REFUSED “CC10” is no control family. The families are CC1 to CC9.
? request adopt xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx = REFUSED “xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx…” is no control family. The families are CC1 to CC9.
? request run now = REFUSED “run” takes no parameter.
? request approve CC6 = REFUSED “approve” takes no parameter.
? request seal = REFUSED “seal” is no intent. The intents are ask, adopt, run and approve.
? longest 8192 = taken
? longest 8193 = REFUSED The question is longer than 8192 bytes.

== Shortcuts have their phrases, titles and images in order
? shortcuts = AskKelvoAgentIntent | Ask the agent | apple.intelligence | Ask {app}\nAdoptFamilyIntent | Set up controls | checkmark.seal | Set up {family} in {app} | Adopt {family} in {app}\nPlayKelvoIntent | Run | play.fill | Run {app}\nSealKelvoIntent | Approve and save | touchid | Approve in {app}
? phrases = Ask Kelvo SOC2\nSet up CC1 in Kelvo SOC2\nSet up CC2 in Kelvo SOC2\nSet up CC3 in Kelvo SOC2\nSet up CC4 in Kelvo SOC2\nSet up CC5 in Kelvo SOC2\nSet up CC6 in Kelvo SOC2\nSet up CC7 in Kelvo SOC2\nSet up CC8 in Kelvo SOC2\nSet up CC9 in Kelvo SOC2\nAdopt CC1 in Kelvo SOC2\nAdopt CC2 in Kelvo SOC2\nAdopt CC3 in Kelvo SOC2\nAdopt CC4 in Kelvo SOC2\nAdopt CC5 in Kelvo SOC2\nAdopt CC6 in Kelvo SOC2\nAdopt CC7 in Kelvo SOC2\nAdopt CC8 in Kelvo SOC2\nAdopt CC9 in Kelvo SOC2\nRun Kelvo SOC2\nApprove in Kelvo SOC2

== Each intent says what it is from outside
? types = Ask the SOC2 agent | Question\nAdopt a SOC2 control family | Family | opens\nRun |  | opens\nApprove and save |  | opens

