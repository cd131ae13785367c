== Each kind of element has its symbol, ports and role
? kind Se = 1 port source
? kind Sf = 1 port source
? kind R = 1 port
? kind C = 1 port storage
? kind I = 1 port storage
? kind TF = 2 ports
? kind GY = 2 ports
? kind j0 = any ports junction
? kind j1 = any ports junction
? kind se = unknown
? kind J0 = unknown
? kind = unknown
? kind R\x20 = unknown

== A graph is refused for its first fault
? strokes R R R, 0>5 = bond references out-of-range node index 5
? strokes R R R, 3>-1 = bond references out-of-range node index 3
? strokes R R, 0>-9223372036854775808 = bond references out-of-range node index -9223372036854775808
? strokes R R R, 2>2 = node 2 bonds to itself
? strokes R R, 1>1 0>7 = node 1 bonds to itself
? strokes R Se, 0>1 1>0 0>9 = bond references out-of-range node index 9
? strokes R Se, 0>1 0>1 = element n0 needs 1 port(s), has 2
? strokes TF Se, 0>1 = element n0 needs 2 port(s), has 1
? strokes Se j1, 0>1 = junction n1 degree 1 (need ≥ 2)
? strokes j1, = junction n0 degree 0 (need ≥ 2)
? strokes Se j0 Se, 0>1 1>2 = junction n1 over-causal (>1 strong bond) — smartcard-6982 pattern
? strokes Sf j1 Sf Sf j1 Sf, 3>4 4>5 0>1 1>2 = junction n1 over-causal (>1 strong bond) — smartcard-6982 pattern
? strokes j1 j1, 0>1 0>1 = junction bond 0-1 under-causal (no causal stroke resolved)
? strokes j0 C C, 1>0!a 2>0!a = junction n0 over-causal (>1 strong bond) — smartcard-6982 pattern
? strokes j0 C C, 1>0!b 2>0!b = junction n0 under-causal (no causal stroke resolved)

== Strokes follow the order of the nodes through each element
? strokes Se j1 R I C, 0>1 1>2 1>3 1>4 = a b a b
? strokes C j0 C, 0>1 1>2 = a a
? strokes R j1 R R, 0>1 1>2 1>3 = b b b
? strokes R R, 1>0 = a
? strokes Se TF C, 0>1 1>2 = a a
? strokes Se GY I, 0>1 1>2 = a b
? strokes Se Sf, 0>1 = a
? strokes Se Se, 0>1 = b
? strokes R R, 0>1!a = a
? strokes j0 j0, 0>1 0>1 = junction bond 0-1 under-causal (no causal stroke resolved)
? strokes , = nothing

== Values follow the graph through each element, driven by 3
? values Se C=2, 0>1 at 0.5 = effort 3; flow 0; dx 0; power 0 0 0 0.0625
? values C=2 Se, 1>0 at 0.5 = effort 0.25; flow 0; dx 0; power 0 0 0 0.0625
? values C=2 j0 C=4, 0>1 1>2 at 1 1 = effort 0.5 0.25; flow 0 0; dx -0 0; power 0 0 0 0.375
? values Sf TF=4 R=0.5, 0>1 1>2 at\x20 = effort 24 6; flow 3 12; dx ; power 72 0 72 0
? values Sf GY=4 R=0.5, 0>1 1>2 at\x20 = effort 96 12; flow 3 24; dx ; power 288 0 288 0
? values Se R, 0>1 at\x20 = effort 3; flow 3; dx ; power 9 0 9 0
? values Se R, 0<1 at\x20 = effort 3; flow 3; dx ; power -9 0 9 0
? values Se R=2 Sf R=2, 0>1 2>3 at\x20 = effort 3 6; flow 1.5 3; dx ; power 22.5 0 22.5 0
? values Se j1 R=2 I=0.5 C, 0>1 1>2 1>3 1>4 at 0.25 0.5 = effort 3 1 1.5 0.5; flow 0.5 0.5 0.5 0.5; dx 1.5 0.5; power 1.5 1 0.5 0.1875
? values Se j1 R=2 I=0.5 C, 0<1 1>2 1<3 1>4 at 0.25 0.5 = effort 3 1 4.5 0.5; flow 0.5 0.5 0.5 0.5; dx -4.5 0.5; power -1.5 -2 0.5 0.1875

