== Controls come from the list or else from the criteria, and of equal names the first counts
? roles {"roles":[{"role":"Owner","readonly":false},{"role":"Engineer","readonly":false,"controls":[{"criterion":"CC6","task":"Encrypt","close":"os"}],"criteria":["CC1"]},{"role":"People","readonly":false,"criteria":["CC1","CC2"],"controls":null},{"role":"Auditor","readonly":true,"criteria":["A","B"],"extra":1},{"role":"Nobody","readonly":false,"controls":[],"criteria":["CC1"]},{"role":"Owner","readonly":true,"criteria":["later"]}]} = Owner: ; Engineer: CC6 Encrypt os; People: CC1 Attest control attest, CC2 Attest control attest; Auditor (looks): A Verify control attest, B Verify control attest; Nobody: ; Owner: 

== A role map with a fault is refused whole and the member named
? roles {} = roles.json: roles: missing
? roles {"roles":null} = roles.json: roles: expected an array
? roles {"roles":[{"readonly":true}]} = roles.json: roles[0].role: missing
? roles {"roles":[{"role":"A"}]} = roles.json: roles[0].readonly: missing
? roles {"roles":[{"role":"A","readonly":0}]} = roles.json: roles[0].readonly: expected true or false
? roles {"roles":[{"role":"A","readonly":true,"controls":{}}]} = roles.json: roles[0].controls: expected an array
? roles {"roles":[{"role":"A","readonly":true,"controls":[{"criterion":"x","task":"y"}]}]} = roles.json: roles[0].controls[0].close: missing
? roles {"roles":[{"role":"A","readonly":true,"criteria":["a",1]}]} = roles.json: roles[0].criteria: expected only strings
? roles [ = roles.json: *
? rolesFile 100000000 bytes = roles.json: larger than is read
