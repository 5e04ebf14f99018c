#!/usr/bin/env bash
# With a manager of windows: the whole screen is covered, a close request asks for the end, and a second start brings
# back what was hidden away. One that goes or comes under the terminal leaves it the screen and the keyboard. In a frame
# the inside has the wished size. Usage: gerant.sh PROGRAM SOURCES
. "$(dirname "$0")/ecran.sh"
command -v openbox >/dev/null || { echo "no manager of windows here: not tried" && exit 77; }
mode=--plein-ecran
ouvre_ecran
ouvre_gerant

a_le_clavier() { [ "$(xdotool getactivewindow getwindowname 2>/dev/null)" = Orvalune ]; }

lance_programme
attend 15000 couvre_tout || echoue "the screen is not covered"
attend 15000 a_le_clavier || echoue "the keyboard is not given to it"
xdotool windowminimize "$(xdotool getactivewindow)"
attend 15000 est_peint 640 400 000000 || echoue "it is not hidden away"
(demarre "$terrain") || echoue "a second start fails"
attend 15000 couvre_tout || echoue "a second start does not bring it back"
attend 15000 a_le_clavier || echoue "a second start does not give it the keyboard"
# A manager that is still busy with the second start may not hear it at once.
demande_la_fin() {
    xdotool key alt+F4
    attend 5000 est_peint 330 440 23704F
}
attend 15000 demande_la_fin || echoue "a close request does not ask for the end"
xdotool key Escape
attend 15000 est_peint 40 60 3F72A8 || echoue "Escape does not abandon"

tient_l_ecran() {
    attend 15000 couvre_tout || echoue "the screen is not covered $1"
    attend 15000 entend_le_clavier || echoue "the keyboard is lost $1"
}
ferme_gerant() {
    kill "-$1" "$pid_gerant"
    wait "$pid_gerant" 2>/dev/null
}
for signal in KILL TERM; do
    ferme_gerant "$signal"
    tient_l_ecran "when the manager has gone by SIG$signal"
    ouvre_gerant
    attend 15000 a_le_clavier || echoue "the manager that came back does not manage it"
    tient_l_ecran "when the manager has come back"
done
termine_programme
ferme_gerant TERM
lance_programme
tient_l_ecran "without a manager"
fenetre=$(xdotool getwindowfocus)
xprop -root -f _NET_SUPPORTING_WM_CHECK 32x -set _NET_SUPPORTING_WM_CHECK "$fenetre"
xdotool windowunmap --sync "$fenetre" windowmap --sync "$fenetre" mousemove 640 400
tient_l_ecran "when a dead manager's number has become its own"
xprop -root -remove _NET_SUPPORTING_WM_CHECK
xev >/dev/null &
pid_autre=$!
attend 15000 xdotool search --name '^Event Tester$' windowfocus 2>/dev/null || echoue "nothing else has the keyboard"
kill "$pid_autre"
tient_l_ecran "when another program has gone"
ouvre_gerant
attend 15000 a_le_clavier || echoue "a manager that comes later does not manage it"
tient_l_ecran "when a manager has come later"
termine_programme

"$programme" --dossier "$terrain" --fenetre --ecran 1000x600 &
pid_programme=$!
attend 20000 a_le_clavier || echoue "no window in a frame"
[[ $(xdotool getactivewindow getwindowgeometry) == *"Geometry: 1000x600"* ]] || echoue "it has not the wished size"
echo "the manager was obeyed"
