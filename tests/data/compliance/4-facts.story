== Five tools are asked in order and always give five facts
? facts = FileVault disk encryption! unknown, Application firewall! unknown, Password required after sleep/screensaver! unknown, System Integrity Protection unknown, Gatekeeper (app verification) unknown
? asked = /usr/bin/fdesetup status, /usr/bin/defaults read /Library/Preferences/com.apple.alf globalstate, /usr/bin/defaults read com.apple.screensaver askForPassword, /usr/bin/csrutil status, /usr/sbin/spctl --status

== Each output is read as its tool means it
? fact 0 FileVault is On.\n = on, good
? fact 0 FILEVAULT IS ON. = on, good
? fact 0 FileVault is Off. = off
? fact 0  \n = unknown
? fact 0 \xffon = unknown
? fact 1 0 = off
? fact 1 1\n = on, good
? fact 1 2 = on (stealth), good
? fact 1 +2 = on (stealth), good
? fact 1 002 = on (stealth), good
? fact 1 3 = on, good
? fact 1 -1 = off
? fact 1 abc = unknown
? fact 1 1.0 = unknown
? fact 1 +-1 = unknown
? fact 1 + = unknown
? fact 1 1 1 = unknown
? fact 2 1 = yes, good
? fact 2 0 = no
? fact 2 2 = no
? fact 2 true = unknown
? fact 3 System Integrity Protection status: ENABLED. = enabled, good
? fact 3 disabled = disabled
? fact 4 assessments enabled = enabled, good
? fact 4 assessments disabled = disabled
