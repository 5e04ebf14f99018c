#!/usr/bin/env bash
# Where nothing can be shown the program ends and says why; and when the display server goes under a note, the note is
# kept, and the next start finds its directory free. Usage: sans_ecran.sh PROGRAM SOURCES
. "$(dirname "$0")/ecran.sh"
mode=--plein-ecran

# refuse MESSAGE [VARIABLE=VALUE...]
refuse() {
    local message=$1
    shift
    (env "$@" "$programme" --dossier "$terrain" 2>"$terrain/dit")
    [ $? = 2 ] || echoue "no status 2 where there is to be said: $message"
    grep -q "$message" "$terrain/dit" || echoue "it says: $(cat "$terrain/dit")"
}

refuse "^Aucun écran n'a été trouvé," -u DISPLAY -u WAYLAND_DISPLAY
refuse "installez le paquet xwayland$" -u DISPLAY WAYLAND_DISPLAY=wayland-0
profondeur=8 ouvre_ecran
refuse "^l'écran a 8 bits de couleur" -u WAYLAND_DISPLAY
kill "$pid_ecran"
wait "$pid_ecran" 2>/dev/null
echo "it says why it shows nothing"

# perd_l_ecran HOW COMMAND...: a note is in hand when the command takes the window's place away.
perd_l_ecran() {
    local comment=$1
    shift
    ouvre_ecran
    lance_programme
    ouvre_article
    clique 1168 687 # Valider
    attend 15000 est_peint 40 60 C24B45 || echoue "the articles are not shown again"
    rm -f "$terrain/prov.txt"
    "$@"
    attend 15000 est_fini || { kill -KILL "$pid_programme"; DISPLAY='' echoue "the program outlives $comment"; }
    wait "$pid_programme"
    [ $? = 1 ] || DISPLAY='' echoue "the loss of $comment passes for a good end"
    grep -q 8880000000024 "$terrain/prov.txt" || DISPLAY='' echoue "the note in hand is lost with $comment"
    kill "$pid_ecran" 2>/dev/null
    wait "$pid_ecran" 2>/dev/null
    echo "the note is kept when $comment goes"
}

perd_l_ecran "its display" eval 'kill "$pid_ecran"'
rm -f "$terrain"/prov*.txt
perd_l_ecran "its window" eval 'xdotool windowclose "$(xdotool search --name "^Orvalune$" | head -1)"'
