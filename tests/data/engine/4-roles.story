== An identity is sealed and takes on the role
roles [{"role":"Owner","readonly":false},{"role":"Engineer","readonly":false,"controls":[{"criterion":"CC1-ethics","task":"Sign the code","close":"attest"}]}]
start
verify Engineer
> presence Verify your identity — Ada Byron (Engineer)
> totems 1
> file collapse-0-#0...totem.json {"appBlockHash":"#0","appIndex":0,"appPrev":"0000000000000000000000000000000000000000000000000000000000000000","asOf":"2026-01-31T09:15:02Z","firedBy":"HIPR:TouchID:present","kyc":"Ada Byron","payloadRoot":"c61e2c58c8ec2bba8bb0aa3e856a27e56515f6b06c57662108db8cd3cdbff1e3","role":"Engineer","sourceDb":"collapse","tip":"0000000000000000000000000000000000000000000000000000000000000000","title":"Identity verified: Ada Byron (Engineer)"}
> principal Ada Byron
> role Engineer
> status Identity verified: Ada Byron as Engineer. You can now see your responsibilities.
> cite Verified Ada Byron as Engineer | Identity check · HIPR:TouchID:present
> event {"block":"#0","kind":"kyc","principal":"Ada Byron","role":"Engineer"}
> cards Your next task: Sign the code | Sign the code

== A denial leaves the person unknown, and an empty name is the account owner
start
presence denied
biometry none
account
owner
> presence Verify your identity — Account owner (Owner)
> status Identity not verified.
> event {"kind":"kyc_denied","record":"HIPR:ownerAuth:DENIED","role":"Owner"}
? principal = none
? role = none
presence given
owner
? principal = Account owner

== The role's tasks follow the map and the mesh
mesh [["CC1-ethics",1,2],["CC6-access",0.25,1],["CC8-change",0,1]]
roles [{"role":"Owner","readonly":false},{"role":"Engineer","readonly":false,"controls":[{"criterion":"CC1-ethics","task":"Sign the code","close":"attest"},{"criterion":"CC6-access","task":"Review who has access","close":"attest"},{"criterion":"CC7-none","task":"Not in the mesh","close":"attest"},{"criterion":"CC8-change","task":"Write it down","close":"generate"}]},{"role":"Auditor","readonly":true,"criteria":["CC1-ethics"]}]
start
verify Engineer
? roles = Owner, Engineer, Auditor
? tasks = CC1-ethics closed, CC6-access, CC7-none, CC8-change
? roleReadiness = 0.25
? next = CC6-access: Review who has access (attest)
? readonly = no
? human = Review who has access | Your responsibility for CC6-access. Acknowledge (Touch ID) to mark it done. Your completion: 25.0%. | no action
verify Auditor
? readonly = yes
? tasks = CC1-ethics closed
? human = Review readiness | You have read-only access. Readiness is 56.2% (1/13 met). Re-solve to verify. | no action
verify Nobody's role
? tasks = nothing
? roleReadiness = 0.5625
? human = Close CC8-change (verify) | missing — verify with Touch ID to mark this criterion met and record it on your compliance log. | Close CC8-change

== An owner keeps the gaps although the map gives the owner tasks
mesh [["A",0.5,1,"GAP: a"]]
roles [{"role":"Owner","readonly":false,"controls":[{"criterion":"A","task":"Sign","close":"attest"}]}]
start
owner
? human = Close A (verify) | a — verify with Touch ID to mark this criterion met and record it on your compliance log. | Close A

== An attestation is sealed in the fixed order
mesh [["CC1-ethics",1,2],["CC6-access",0.25,1],["CC8-change",0,1]]
roles [{"role":"Engineer","readonly":false,"controls":[{"criterion":"CC6-access","task":"Review who has access","close":"attest"},{"criterion":"CC8-change","task":"Write it down","close":"generate"}]}]
start
verify Engineer
close ["CC6-access","Review who has access","attest"]
> presence Acknowledge: Review who has access
> mesh 2 met
> readiness 75.0%
> totems 2
> file control-1-#1...totem.json {"appBlockHash":"#1","appIndex":1,"appPrev":"#0","asOf":"2026-01-31T09:15:02Z","attested":true,"attested_at":"2026-01-31T09:15:02Z","close_method":"attest","criterion":"CC6-access","evidence_name":"role-attest-CC6-access.txt","evidence_root":"2bcc997a124457d9264511a97dc416c84091501a7a16e9896fcc5291a5eaf732","evidence_summary":"Attested by Engineer Ada Byron: Review who has access","firedBy":"HIPR:TouchID:present","gate_after":1,"gate_before":0.25,"owner":"Ada Byron","payloadRoot":"11cdb56c1cc5f9604e8e48fcf615a1c181b9c6ef38b2c79988c53d8f11b2cfc2","presence":"HIPR:TouchID:present","readiness_after":0.75,"readiness_before":0.5625,"role":"Engineer","sourceDb":"control","tip":"#0","title":"Acknowledged CC6-access"}
> status Acknowledged: Review who has access. Your completion is now 50.0%.
> cite Engineer Ada Byron acknowledged CC6-access: Review who has access [2bcc997a1244] | presence HIPR:TouchID:present · role attest
> event {"block":"#1","criterion":"CC6-access","kind":"attest_role_control","role":"Engineer"}
> cards Your next task: Write it down | Write it down

== An attestation that is refused asks for nothing and changes nothing
mesh [["CC1-ethics",1,2],["CC6-access",0.25,1],["CC8-change",0,1]]
start
verify Engineer
attest ["CC7-none","Not in the mesh","attest"]
> status Unknown criterion CC7-none.
attest ["CC1-ethics","Sign the code","attest"]
> status CC1-ethics already met.
presence denied
close ["CC6-access","Review who has access","attest"]
> presence Acknowledge: Review who has access
> status Not verified — CC6-access unchanged. HIPR:TouchID:DENIED
> event {"criterion":"CC6-access","kind":"attest_denied","record":"HIPR:TouchID:DENIED"}
close ["CC8-change","Write it down","generate"]
> status Writing policy for CC8-change on-device…
> event {"criterion":"CC8-change","kind":"policy_generate_start"}

== A read-only role closes nothing in any way
mesh [["A"]]
roles [{"role":"Auditor","readonly":true,"controls":[{"criterion":"A","task":"Look","close":"os"}]}]
start
verify Auditor
close ["A","Look","attest"]
> nothing
close ["A","Look","os"]
> nothing
close ["A","Look","generate"]
> nothing
drain
? requests = 0

== Before any identity a statement names a contributor
mesh [["CC6-access"]]
start
attest ["CC6-access","Review","attest"]
> presence Acknowledge: Review
> mesh 1 met
> readiness 100.0%
> totems 1
> file control-0-#0...totem.json {"appBlockHash":"#0","appIndex":0,"appPrev":"0000000000000000000000000000000000000000000000000000000000000000","asOf":"2026-01-31T09:15:02Z","attested":true,"attested_at":"2026-01-31T09:15:02Z","close_method":"attest","criterion":"CC6-access","evidence_name":"role-attest-CC6-access.txt","evidence_root":"c77d2a7a12ae47a1ce81ae08cb7a42ec9f56f8303b6671376c18abc66b590505","evidence_summary":"Attested by contributor user: Review","firedBy":"HIPR:TouchID:present","gate_after":1,"gate_before":0,"owner":"unverified","payloadRoot":"07c22503675670968cfecb38dadb30157208c56b17e2a1f982f82b93e1261cc3","presence":"HIPR:TouchID:present","readiness_after":1,"readiness_before":0,"role":"contributor","sourceDb":"control","tip":"0000000000000000000000000000000000000000000000000000000000000000","title":"Acknowledged CC6-access"}
> status Acknowledged: Review. Your completion is now 100.0%.
> cite contributor user acknowledged CC6-access: Review [c77d2a7a12ae] | presence HIPR:TouchID:present · role attest
> event {"block":"#0","criterion":"CC6-access","kind":"attest_role_control","role":"contributor"}
> cards First: who is accountable? | Verify your identity

== A secure device closes its control with its readings
mesh [["CC6-device",0,1],["CC7-logs",1,1]]
start
machine csrutil status says status: off
close ["CC6-device","Secure the laptop","os"]
> facts 5
> event {"count":5,"kind":"os_snapshot","ok":4}
> presence Confirm: this device is secure — Secure the laptop
> mesh 2 met
> readiness 100.0%
> totems 1
> file control-0-#0...totem.json {"appBlockHash":"#0","appIndex":0,"appPrev":"0000000000000000000000000000000000000000000000000000000000000000","asOf":"2026-01-31T09:15:02Z","attested_at":"2026-01-31T09:15:02Z","close_method":"os","criterion":"CC6-device","evidence_name":"device-posture-CC6-device.txt","evidence_root":"8492acef00f1a48c521a75a204237063239f171ae4301f31ef64598332d7ef75","evidence_summary":"Device posture OK: FileVault disk encryption=on; Application firewall=on; Password required after sleep/screensaver=yes","firedBy":"HIPR:TouchID:present","gate_after":1,"gate_before":0,"os_attested":true,"owner":"unverified","payloadRoot":"f0f3c5b5b2353c5c5b8ee44e52f86757f70a11bb03d607bb38b22c4b2c50d617","presence":"HIPR:TouchID:present","readiness_after":1,"readiness_before":0.5,"role":"contributor","sourceDb":"control","tip":"0000000000000000000000000000000000000000000000000000000000000000","title":"Secured device for CC6-device"}
> status Device secured for CC6-device. Your completion is now 100.0%.
> cite contributor user secured device for CC6-device: Device posture OK: FileVault disk encryption=on; Application firewall=on; Password required after sleep/screensaver=yes | OS snapshot (read-only) · presence HIPR:TouchID:present
> event {"block":"#0","criterion":"CC6-device","kind":"os_close_role_control","role":"contributor"}
> cards First: who is accountable? | Verify your identity

== An insecure device is reported before its criterion is looked at
mesh [["CC6-device",0,1],["CC7-logs",1,1]]
start
machine fdesetup status says FileVault is Off.
machine defaults globalstate says \x20
close ["no such criterion","","os"]
> facts 5
> event {"count":5,"kind":"os_snapshot","ok":3}
> status Device not yet secure — turn on: FileVault disk encryption, Application firewall.
> event {"bad":"FileVault disk encryption, Application firewall","criterion":"no such criterion","kind":"os_close_blocked"}
machine secure
secure ["no such criterion","","os"]
> facts 5
> event {"count":5,"kind":"os_snapshot","ok":5}
> status no such criterion already met.
secure ["CC7-logs","","os"]
> facts 5
> event {"count":5,"kind":"os_snapshot","ok":5}
> status CC7-logs already met.
? asked = 0

== A device is attested by what it is now
mesh [["A"]]
start
? facts = on on yes enabled enabled
machine defaults askForPassword says 0
secure ["A","Lock","os"]
> facts 5
> event {"count":5,"kind":"os_snapshot","ok":4}
> status Device not yet secure — turn on: Password required after sleep/screensaver.
> event {"bad":"Password required after sleep/screensaver","criterion":"A","kind":"os_close_blocked"}
machine secure
secure ["A","Lock","os"]
? readiness = 1

== A device that says nothing is not secure
mesh [["A"]]
machine silent
start
? facts = unknown! unknown! unknown! unknown! unknown!
secure ["A","Lock","os"]
> facts 5
> event {"count":5,"kind":"os_snapshot","ok":0}
> status Device not yet secure — turn on: FileVault disk encryption, Application firewall, Password required after sleep/screensaver.
> event {"bad":"FileVault disk encryption, Application firewall, Password required after sleep/screensaver","criterion":"A","kind":"os_close_blocked"}

== A denial changes only the facts
mesh [["CC6-device"]]
start
presence denied
secure ["CC6-device","Secure the laptop","os"]
> facts 5
> event {"count":5,"kind":"os_snapshot","ok":5}
> presence Confirm: this device is secure — Secure the laptop
> status Not verified — CC6-device unchanged. HIPR:TouchID:DENIED
> event {"criterion":"CC6-device","kind":"os_close_denied","record":"HIPR:TouchID:DENIED"}
? met = 0

