#!/usr/bin/env bash
# Where nothing can be shown the program ends and says why; and when display or window go under a note, or the session
# asks for the end, the note is kept, and the next start finds its directory free. Usage: sans_ecran.sh PROGRAM SOURCES
. "$(dirname "$0")/ecran.sh"
mode=--plein-ecran

# refuse MESSAGE [VARIABLE=VALUE...]
refuse() {
    local message=$1
    shift
    (env "$@" timeout 20 "$programme" --dossier "$terrain" 2>"$terrain/dit")
    [ $? = 2 ] || echoue "no status 2 where there is to be said: $message"
    grep -q "$message" "$terrain/dit" || echoue "it says: $(cat "$terrain/dit")"
}

refuse "^Aucun écran n'a été trouvé," -u DISPLAY -u WAYLAND_DISPLAY
refuse "^Aucun écran n'a été trouvé," -u DISPLAY WAYLAND_DISPLAY=
refuse "^L'affichage :4711 ne répond pas" DISPLAY=:4711 WAYLAND_DISPLAY=wayland-0
refuse "installez le paquet xwayland\.$" -u DISPLAY WAYLAND_DISPLAY=wayland-0

# refuse_l_ecran MESSAGE DISPLAY...: without Composite, which has colours of 32 bits for any screen.
refuse_l_ecran() {
    affichage=${*:2} ouvre_ecran -extension Composite
    refuse "$1" -u WAYLAND_DISPLAY
    kill "$pid_ecran"
    wait "$pid_ecran" 2>/dev/null
}

for bits in 8 16; do
    refuse_l_ecran "^L'écran a $bits bits de couleur, Orvalune en demande 24 ou 32 (TrueColor)\.$" \
        Xvfb -screen 0 1280x800x$bits
done
refuse_l_ecran "^L'écran a 24 bits de couleur, mais range le rouge et le bleu dans un ordre qu'Orvalune" \
    Xvnc -depth 24 -pixelformat BGR888 -rfbport -1 -extension GLX
echo "it says why it shows nothing"

# garde_la_note STATUS CAUSE COMMAND: a note is in hand when the command ends the program.
garde_la_note() {
    local statut=$1 cause=$2
    rm -f "$terrain"/prov*.txt
    ouvre_ecran
    lance_programme
    ouvre_article
    clique 1168 687 # Valider
    attend 15000 est_peint 40 60 C24B45 || echoue "the articles are not shown again"
    eval "$3"
    attend 15000 est_fini || { kill -KILL "$pid_programme"; DISPLAY='' echoue "the program outlives $cause"; }
    wait "$pid_programme"
    [ $? = "$statut" ] || DISPLAY='' echoue "$cause ends the program otherwise than with status $statut"
    grep -q 8880000000024 "$terrain/prov.txt" || DISPLAY='' echoue "the note in hand is lost with $cause"
    kill "$pid_ecran" 2>/dev/null
    wait "$pid_ecran" 2>/dev/null
    echo "the note outlives $cause"
}

garde_la_note 1 "the loss of the display" 'kill "$pid_ecran"'
garde_la_note 1 "the loss of the window" 'xdotool windowclose "$(xdotool search --name "^Orvalune$" | head -1)"'
garde_la_note 0 "the end of the session" 'kill -HUP "$pid_programme"'
garde_la_note 0 "a stopped service" 'kill "$pid_programme"'

# Before the first page that note has not been read yet.
rm "$terrain/wfichdir.wdo"
ouvre_ecran
demarre "$terrain" &
pid_programme=$!
attend 60000 est_peint 330 440 23704F || echoue "the start asks nothing"
kill "$pid_programme"
wait "$pid_programme"
grep -q 8880000000024 "$terrain/prov.txt" || echoue "a start that was ended in between has lost the note that was kept"
echo "the note outlives a start that comes to nothing"
