#!/usr/bin/env bash
# What a display does under the terminal that fills it: it turns and takes another density, alone and with a manager and
# its panel; it takes no memory that is shared; it goes dark when nobody touches it, but not while the terminal is in
# front. Usage: serveur.sh PROGRAM SOURCES
. "$(dirname "$0")/ecran.sh"
command -v openbox >/dev/null || { echo "no manager of windows here: not tried" && exit 77; }
mode=--plein-ecran
affichage="Xvfb -screen 0 1280x1280x24" ouvre_ecran -listen tcp
for taille in 1280x800 800x1280; do
    xrandr --newmode $taille 0 ${taille%x*} 0 0 0 ${taille#*x} 0 0 0
    xrandr --addmode screen $taille
done
prend_la_taille() { xrandr --output screen --mode "$1"; }
prend_la_densite() { xprop -root -f RESOURCE_MANAGER 8s -set RESOURCE_MANAGER $'*font: fixed\nXft.dpi:\t'"$1"; }

# quitte X Y X Y X Y: ends the program by touches on a server, the key that ends and the answer, which lie there only on
# the screen as it is now.
quitte() {
    clique "$1" "$2"
    attend 15000 est_peint "$3" "$4" A83A2B || echoue "a touch on a server does not open the home page"
    clique "$3" "$4"
    attend 15000 est_peint "$5" "$6" 23704F || echoue "a touch on the key's new place does not ask for the end"
    clique "$5" "$6"
    attend 15000 est_fini || echoue "a touch on the answer's new place does not end it"
    wait "$pid_programme" || echoue "it ends with status $?"
}

# What starts on such displays show: no two the same.
while read -r nom taille densite; do
    prend_la_taille "$taille"
    prend_la_densite "$densite"
    lance_programme
    ! est_pareil paysage || echoue "a start does not heed the display's size or density"
    photographie "$nom"
    termine_programme
done <<<"paysage 1280x800 96
portrait 800x1280 96
dense 1280x800 144"
prend_la_densite 96

tourne() {
    lance_programme
    attend 15000 est_pareil paysage || echoue "$1, the screen is not covered"
    prend_la_taille 800x1280
    attend 15000 est_pareil portrait || echoue "$1, a turned screen is not taken"
    quitte 690 129 690 660 100 430
    prend_la_taille 1280x800
}
tourne "alone"

lance_programme
prend_la_densite 144
attend 15000 est_pareil dense || echoue "another density is not taken"
quitte 1168 129 1100 615 180 560
prend_la_densite 96

# A panel keeps the foot of the screen from all others. It is there before the manager, which overlooks nobody then.
xev -geometry 1280x80+0+720 >/dev/null &
pid_autre=$!
trap 's=$?; kill "$pid_autre" 2>/dev/null; (exit "$s"); finit' EXIT
trouve_le_panneau() { panneau=$(xdotool search --onlyvisible --name '^Event Tester$' 2>/dev/null); }
attend 15000 trouve_le_panneau || echoue "no panel"
xprop -id "$panneau" -f _NET_WM_WINDOW_TYPE 32a -set _NET_WM_WINDOW_TYPE _NET_WM_WINDOW_TYPE_DOCK
xprop -id "$panneau" -f _NET_WM_STRUT 32c -set _NET_WM_STRUT "0, 0, 0, 80"
ouvre_gerant
a_son_panneau() { [[ $(xprop -root _NET_WORKAREA) == *"= 0, 0, 1280, 720"* ]] && est_peint 640 790 FFFFFF; }
attend 15000 a_son_panneau || echoue "the panel keeps no place"
tourne "with a manager and its panel"
attend 15000 a_son_panneau || echoue "the panel does not come back"
kill "$pid_gerant"
wait "$pid_gerant" 2>/dev/null
echo "it follows the display"

# By way of the network the display says that it shares memory, but cannot.
DISPLAY=localhost$DISPLAY lance_programme
attend 15000 est_pareil paysage || echoue "without shared memory the picture differs"
termine_programme
echo "it does without shared memory"

# Once it is dark it shows none of its windows: the panel's white tells.
est_eteint() { est_peint 640 790 000000; }
est_allume() { est_peint 640 790 FFFFFF; }
lance_programme
attend 15000 entend_le_clavier || echoue "it has not the keyboard"
terminal=$(xdotool getwindowfocus)
xdotool windowraise "$panneau"
attend 15000 est_allume || echoue "the other window is not shown"
xset s noblank s expose s 1 1
! attend 2500 est_eteint || echoue "the display goes dark under the terminal"
xdotool windowfocus "$panneau"
attend 15000 est_eteint || echoue "the display stays lit for a terminal that is not in front"
xdotool windowfocus "$terminal"
xset s reset
attend 15000 est_allume || echoue "the display stays dark"
! attend 1500 est_eteint || echoue "the display goes dark under the terminal that is in front again"
termine_programme
attend 15000 est_eteint || echoue "the display stays lit for a terminal that has ended"
echo "it keeps the display lit while it is in front"
