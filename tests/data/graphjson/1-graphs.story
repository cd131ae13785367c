== A bond graph reads back as it was written
? bondGraph {"bonds":[{"a":1,"b":2,"causality":"unset","powerAToB":true},{"a":-9223372036854775808,"b":0,"causality":"bSetsEffort","powerAToB":false}],"nodes":[{"id":"R","kind":"R","param":2},{"id":"1/é","kind":"j1"}]} = {"bonds":[{"a":1,"b":2,"causality":"unset","powerAToB":true},{"a":-9223372036854775808,"b":0,"causality":"bSetsEffort","powerAToB":false}],"nodes":[{"id":"R","kind":"R","param":2},{"id":"1\\/é","kind":"j1"}]}
? bondGraph {"bonds":[],"nodes":[]} = {"bonds":[],"nodes":[]}

== A member of a bond graph that cannot be read is named
? bondGraph [] = expected an object
? bondGraph {"bonds":[]} = nodes: missing
? bondGraph {"nodes":[]} = bonds: missing
? bondGraph {"nodes":{},"bonds":[]} = nodes: expected an array
? bondGraph {"nodes":[1],"bonds":[]} = nodes[0]: expected an object
? bondGraph {"nodes":[{"kind":"R"}],"bonds":[]} = nodes[0].id: missing
? bondGraph {"nodes":[{"id":"R","kind":"r"}],"bonds":[]} = nodes[0].kind: "r" is no element kind
? bondGraph {"nodes":[{"id":"R","kind":"R","param":true}],"bonds":[]} = nodes[0].param: expected a number
? bondGraph {"nodes":[],"bonds":[{"a":0.5,"b":1}]} = bonds[0].a: expected an integer
? bondGraph {"nodes":[],"bonds":[{"a":0,"b":9223372036854775808}]} = bonds[0].b: expected an integer
? bondGraph {"nodes":[],"bonds":[{"a":0,"b":1,"causality":"a","powerAToB":true}]} = bonds[0].causality: "a" is no causality
? bondGraph {"nodes":[],"bonds":[{"a":0,"b":1,"causality":"unset"}]} = bonds[0].powerAToB: missing
? bondGraph {"nodes":[],"bonds":[{"a":0,"b":1,"causality":"unset","powerAToB":1}]} = bonds[0].powerAToB: expected true or false

== An extracted graph is read as it stands and validated after
? extracted {"bonds":[{"from":"R","to":"nowhere"}],"nodes":[{"id":"R","kind":"R","param":0.1},{"id":"x","kind":"no kind"}]} = {"bonds":[{"from":"R","to":"nowhere"}],"nodes":[{"id":"R","kind":"R","param":0.1},{"id":"x","kind":"no kind"}]}
? extracted {"nodes":[{"id":"","kind":"","param":null}],"bonds":[]} = {"bonds":[],"nodes":[{"id":"","kind":""}]}
? extracted "nodes" = expected an object
? extracted {"nodes":[{"id":1,"kind":"R"}],"bonds":[]} = nodes[0].id: expected a string
? extracted {"nodes":[{"id":"a"}],"bonds":[]} = nodes[0].kind: missing
? extracted {"nodes":[],"bonds":[{"from":"a","to":"b"},{"from":"a"}]} = bonds[1].to: missing

== An extracted graph is rejected for its first fault
? validated {"nodes":[],"bonds":[{"from":"a","to":"b"}]} = extracted graph has no nodes
? validated {"nodes":[{"id":"a","kind":"X"},{"id":"a","kind":"R","param":1}],"bonds":[]} = duplicate node id 'a'
? validated {"nodes":[{"id":"a","kind":"se"},{"id":"b","kind":"R"}],"bonds":[]} = unknown element kind 'se' — not a bond-graph element
? validated {"nodes":[{"id":"R1","kind":"R"},{"id":"b","kind":"X"}],"bonds":[{"from":"Q","to":"Q"}]} = element R1 (R) requires a parameter value
? validated {"nodes":[{"id":"A","kind":"Se"}],"bonds":[{"from":"A","to":"Q"},{"from":"P","to":"A"}]} = bond references unknown node id 'Q'
? validated {"nodes":[{"id":"A","kind":"Se"}],"bonds":[{"from":"P","to":"Q"}]} = bond references unknown node id 'P'
? validated {"nodes":[{"id":"B","kind":"Se"},{"id":"A","kind":"j0"}],"bonds":[{"from":"A","to":"A"}]} = node 1 bonds to itself
? validated {"nodes":[{"id":"s","kind":"Se"},{"id":"j","kind":"j1"}],"bonds":[{"from":"s","to":"j"}]} = junction j degree 1 (need ≥ 2)
? validated {"nodes":[{"id":"x","kind":"R"}],"bonds":[]} = element x (R) requires a parameter value
? validated {"nodes":[{"id":"x","kind":"C"}],"bonds":[]} = element x (C) requires a parameter value
? validated {"nodes":[{"id":"x","kind":"I"}],"bonds":[]} = element x (I) requires a parameter value
? validated {"nodes":[{"id":"x","kind":"TF"}],"bonds":[]} = element x (TF) requires a parameter value
? validated {"nodes":[{"id":"x","kind":"GY"}],"bonds":[]} = element x (GY) requires a parameter value
? validated {"nodes":[{"id":"s","kind":"Se","param":7},{"id":"r","kind":"R","param":-2}],"bonds":[{"from":"r","to":"s"}]} = {"bonds":[{"a":1,"b":0,"causality":"unset","powerAToB":true}],"nodes":[{"id":"s","kind":"Se","param":7},{"id":"r","kind":"R","param":-2}]}

