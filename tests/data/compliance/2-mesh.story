== Readiness is the weighted mean gate level, also of weights beyond 64 bits
? readiness [[0, 3], [0.5, 2], [1, 5]] = 0.6 of 10
? readiness [] = 0 of 0
? readiness [[1, 2], [0.5, -2]] = 0 of 0
? readiness [[1.2, 10]] = 1.2 of 10
? readiness [[1, -4], [0, 2]] = 2 of -2
? readiness [[1, 9223372036854775807], [1, 9223372036854775807], [0, 2]] = 1 of 9223372036854775807
? readiness [[1, -9223372036854775808], [1, -1]] = 1 of -9223372036854775808
? readiness [[1, 9223372036854775807], [1, 1], [1, -6]] = 1 of 9223372036854775802

== Gaps fall by impact and equal impact keeps the file's order
? gaps [[0, 2], [0.5, 4], [0, 2], [1, 9], [0.999, 1], [1.2, 7], [0.25, 4]] = 6 0 1 2 4, highest 6, 2 met
? gaps [[0, 1], [0, 3], [-1, 1], [0, 3], [0, -1]] = 1 3 2 0 4, highest 1, 0 met
? gaps [["nan", 1], ["-inf", 0], ["-inf", 1], ["-inf", -1]] = 2 1 3, highest 2, 0 met
? gaps [[1, 1]] = none, highest none, 1 met
? gaps [[0.995, 1]] = 0, highest 0, 0 met

== The text of a gap is what follows the first marker
? gapText policy exists. GAP:  no annual review\x20 = no annual review
? gapText complete = complete
? gapText gap: x = gap: x
? gapText \x20GAP:\tone GAP: two\t = one GAP: two
? gapText GAP: = nothing
? gapText GAP: \n line breaks stay \n\x20 = \n line breaks stay \n
? gapText GAP: no-break space stays =  no-break space stays

== A mesh with a fault is refused whole and the member named
? mesh {"nodes":[{"id":"é/1","g":1,"w":3.0,"evidence":"GAP: x","n":[]},{"id":"é/1","g":-2.5,"w":-9223372036854775808,"evidence":""}]} = accepted {"nodes":[{"evidence":"GAP: x","g":1.0,"id":"é/1","w":3},{"evidence":"","g":-2.5,"id":"é/1","w":-9223372036854775808}]}
? mesh {"nodes":[{"g":1,"w":1,"evidence":""}]} = mesh.json: nodes[0].id: missing
? mesh {"nodes":[{"id":"a","w":1,"evidence":""}]} = mesh.json: nodes[0].g: missing
? mesh {"nodes":[{"id":"a","g":1,"evidence":""}]} = mesh.json: nodes[0].w: missing
? mesh {"nodes":[{"id":"a","g":1,"w":1}]} = mesh.json: nodes[0].evidence: missing
? mesh {"nodes":[{"id":"a","g":1,"w":1,"evidence":""},{"id":7,"g":1,"w":1,"evidence":""}]} = mesh.json: nodes[1].id: expected a string
? mesh {"nodes":[{"id":"a","g":true,"w":1,"evidence":""}]} = mesh.json: nodes[0].g: expected a number
? mesh {"nodes":[{"id":"a","g":null,"w":1,"evidence":""}]} = mesh.json: nodes[0].g: expected a number
? mesh {"nodes":[{"id":"a","g":1,"w":1.5,"evidence":""}]} = mesh.json: nodes[0].w: expected an integer
? mesh {"nodes":[{"id":"a","g":1,"w":9223372036854775808,"evidence":""}]} = mesh.json: nodes[0].w: expected an integer
? mesh {"nodes":[{"id":"a","g":1,"w":1,"evidence":[]}]} = mesh.json: nodes[0].evidence: expected a string
? mesh {"nodes":[7]} = mesh.json: nodes[0]: expected an object
? mesh {"nodes":{}} = mesh.json: nodes: expected an array
? mesh {"nodes":[{"id":"a","g":1,"w":9223372036854775807,"evidence":""},{"id":"b","g":1,"w":1,"evidence":""}]} = mesh.json: nodes: the weights w add up to more than 64 bits hold
? mesh {"nodes":[{"id":"a","g":1e308,"w":1000,"evidence":""}]} = mesh.json: nodes: the products of g and w are too large to add up
? mesh {"nodes":[{"id":"a","g":1e999,"w":1,"evidence":""}]} = mesh.json: *
? mesh {"nodes":[{"id":"a","g":NaN,"w":1,"evidence":""}]} = mesh.json: *
? mesh {} = mesh.json: nodes: missing
? mesh [] = mesh.json: expected an object
? mesh = mesh.json: *
? mesh {"nodes":[]} x = mesh.json: *
? mesh {"nodes":[],"\xff":1} = mesh.json: *
? meshOf 65536 262144 = accepted*
? meshOf 65537 0 = mesh.json: nodes[0].id: longer than 64 KiB
? meshOf 0 262145 = mesh.json: nodes[0].evidence: longer than 256 KiB
? meshFile missing = mesh.json: No such file or directory
? meshFile folder = mesh.json: not a regular file
? meshFile 100000000 bytes = mesh.json: larger than is read
