#!/usr/bin/env bash
# The real window of Windows: it covers the screen, one whole order is taken in it, and a key of the keyboard reaches it.
# Then the same in a frame, inside which the same picture lies. Usage: commande_windows.sh PROGRAM SOURCES EMULATOR
. "$(dirname "$0")/ecran.sh"

ouvre_ecran
mode=--plein-ecran
lance_programme
for coin in "0 0" "1279 0" "0 799" "1279 799"; do
    # shellcheck disable=SC2086
    attend 3000 est_peint $coin 1F2A36 || echoue "the window does not cover the corner $coin"
done
import -silent -window root "$terrain/plein.png"

prend_commande
envoie_commande

donne_le_clavier
attend 3000 est_peint 240 60 C24B45 || echoue "the home page is not shown again"
xdotool key alt+F4
attend 3000 est_peint 330 440 23704F || echoue "Alt+F4 does not ask for the end"
xdotool key Escape
attend 3000 est_peint 240 60 C24B45 || echoue "Escape does not abandon"
xdotool mousemove 164 129 mousedown 1 mousemove 900 700 mouseup 1 # Entrées, left before it is released
xdotool key alt+F4
attend 3000 est_peint 330 440 23704F || echoue "a finger that left its key has fired it"
clique 442 463 # Oui
attend 5000 est_fini || echoue "the program does not end"
echo "the keyboard was heard"

mode=--fenetre
lance_programme
read -r gauche haut < <(xdotool search --name '^Orvalune$' getwindowgeometry --shell |
    awk -F= '$1 == "X" { x = $2 } $1 == "Y" { y = $2 } END { print x, y }')
dedans=$((1280 - gauche))x$((800 - haut))
ecart() {
    import -silent -window root -crop "$dedans+$gauche+$haut" +repage "$terrain/cadre.png"
    convert "$terrain/plein.png" -crop "$dedans+0+0" +repage "$terrain/attendu.png"
    compare -metric AE "$terrain/attendu.png" "$terrain/cadre.png" null: 2>&1
}
meme_image() { [ "$(ecart)" = 0 ]; }
attend 3000 meme_image || echoue "the picture in the frame is not the one of the whole screen"
echo "the frame shows the same picture at $gauche,$haut"
