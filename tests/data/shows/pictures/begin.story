== From nothing
open 860x560
picture begin-860x560
resize 1440x900
picture begin-1440x900
click useStarter
focus organisationName
type Larkspur Instruments
focus Engineer
type Jonas Weber
click Another person for Engineer
picture begin-questions-1440x900
resize 860x560
picture begin-questions-860x560
click showPreview
picture begin-preview-860x560
resize 1440x900
picture begin-preview-1440x900
write outputs/roles-bondgraph.json is mine
click writeFiles
picture begin-refused-1440x900

== A list with faults, and one that cannot be read
open 860x560
write own.csv is id,title,frequency\nCC6 access,One,yearly\n,Two,\n
choose own.csv
click openCsv
picture begin-faults-860x560

== Unreadable
write outputs/soc2-mesh-bondgraph.json is {}
open 860x560
picture begin-unreadable-860x560
