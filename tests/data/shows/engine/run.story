== From PLAY through the automatic pause, a denied and an approved BOND
start
play
fire 1000
presence denied
bond
presence given
bond
