# A display of its own, the real window upon it with a copy of the demonstration restaurant, and a finger.
# Source it with PROGRAM, the folder of the sources and, for a program of Windows, the emulator that runs it as
# arguments; the caller's exit ends everything.
programme=$1 sources=$2 emulateur=${3:-}
mode=--fenetre
terrain=$(mktemp -d)
cp "$sources"/demo/*.wdo "$terrain"
cp -r "$sources/demo/reseau" "$terrain/reseau"

finit() {
    local statut=$?
    trap - EXIT
    [ -n "${pid_montage:-}" ] && kill -CONT "$pid_montage" 2>/dev/null
    [ -n "${pid_programme:-}" ] && { kill "$pid_programme"; kill -CONT "$pid_programme"; } 2>/dev/null
    wait "${pid_programme:-}" 2>/dev/null
    [ -n "${pid_gerant:-}" ] && kill "$pid_gerant" 2>/dev/null
    [ -n "$emulateur" ] && wineserver -k >/dev/null 2>&1
    [ -n "${pid_montage:-}" ] && fusermount -u "$terrain/reseau" 2>/dev/null
    [ -n "${pid_ecran:-}" ] && kill "$pid_ecran" 2>/dev/null
    rm -rf "$terrain"
    exit "$statut"
}
trap finit EXIT

echoue() {
    [ -n "${DISPLAY:-}" ] && import -silent -window root "${ECHEC:-/dev/null}" 2>/dev/null
    echo "FAILED: $*" >&2
    exit 1
}

# attend MILLISECONDS COMMAND...: until the command succeeds.
attend() {
    local fin=$(($(date +%s%3N) + $1))
    shift
    until "$@"; do
        [ "$(date +%s%3N)" -lt "$fin" ] || return 1
        sleep 0.02
    done
}

# ouvre_ecran [OPTIONS OF THE DISPLAY]: ours, or the one that $affichage names with its size and its colours.
ouvre_ecran() {
    local serveur
    read -ra serveur <<<"${affichage:-Xvfb -screen 0 1280x800x24}"
    coproc XVFB { exec "${serveur[@]}" -displayfd 1 -noreset -nolisten tcp "$@" 2>/dev/null; }
    pid_ecran=$XVFB_PID
    read -r -t 20 numero <&"${XVFB[0]}" || echoue "no display"
    export DISPLAY=:$numero
    if [ -n "$emulateur" ]; then ouvre_windows; fi
}

# A manager of windows, openbox, until the caller's exit.
ouvre_gerant() {
    HOME=$terrain openbox >/dev/null 2>&1 &
    pid_gerant=$!
    attend 15000 est_gere || echoue "no manager"
}
est_gere() { xprop -root _NET_SUPPORTING_WM_CHECK | grep -q ' 0x'; }

# A Windows of its own on this display: one that was started without any keeps a screen of another size. Its disk is the
# one that the tests share, its registry a copy. What stays running behind its programs must not hold our output.
ouvre_windows() {
    local commun=${WINEPREFIX:-$HOME/.wine}
    export WINEPREFIX=$terrain/wine WINEDLLOVERRIDES="mscoree,mshtml=" WINEDEBUG=-all
    mkdir "$WINEPREFIX"
    if [ -d "$commun/drive_c" ]; then
        cp -a "$commun"/*.reg "$commun/dosdevices" "$commun/.update-timestamp" "$WINEPREFIX"
        ln -s "$(realpath "$commun")/drive_c" "$WINEPREFIX/drive_c"
    fi
    "$emulateur" cmd /c exit >/dev/null 2>&1 </dev/null || echoue "no Windows"
}

# On a display without a window manager nobody else gives the keyboard to the window.
donne_le_clavier() { xdotool windowfocus "$(xdotool search --name '^Orvalune$' | head -1)"; }

# demarre DIRECTORY [FILE]: becomes the program, so that a subshell that does this has its process number and its
# status. What it tells goes to the file.
demarre() {
    if [ -n "${2:-}" ]; then exec 2>"$2"; fi
    if [ -n "$emulateur" ]; then
        [ -n "${2:-}" ] || exec 2>/dev/null
        exec "$emulateur" "$programme" --dossier "Z:$1" "$mode" >/dev/null </dev/null
    else
        exec "$programme" --dossier "$1" "$mode"
    fi
}

lance_programme() {
    demarre "$terrain" &
    pid_programme=$!
    # Sophie's key stands there, in its colour.
    attend 60000 est_peint 40 60 3F72A8 || echoue "the page of the servers is not shown"
}

termine_programme() {
    kill "$pid_programme"
    wait "$pid_programme" 2>/dev/null
}

# The whole screen as it is now, and whether it is like one that was kept.
photographie() { import -silent -window root "$terrain/$1.png"; }
est_pareil() {
    photographie maintenant
    [ "$(compare -metric AE "$terrain/$1.png" "$terrain/maintenant.png" null: 2>&1)" = 0 ]
}

clique() { xdotool mousemove "$1" "$2" click 1; }

# The colour of a pixel of the screen, as RRGGBB.
couleur() { import -silent -window root -crop "1x1+$1+$2" -depth 8 rgb:- 2>/dev/null | od -An -tx1 | tr -d ' \n' | tr a-f A-F; }
est_peint() { [ "$(couleur "$1" "$2")" = "$3" ]; }
couvre_tout() {
    est_peint 0 0 1F2A36 && est_peint 1279 0 1F2A36 && est_peint 0 799 1F2A36 && est_peint 1279 799 1F2A36
}
entend_le_clavier() { [ "$(xdotool getwindowfocus getwindowname 2>/dev/null)" = Orvalune ]; }

# Takes one order by clicks, from the page of the servers to the question before sending.
prend_commande() {
    ouvre_article
    envoie_note
}

# To the first article of a table of four.
ouvre_article() {
    clique 164 129  # Sophie
    attend 3000 est_peint 240 60 C24B45 || echoue "the home page is not shown"
    clique 322 129  # Viandes: the table is asked for first
    attend 3000 est_peint 1168 730 23704F || echoue "the table is not asked for"
    clique 111 210  # 1
    clique 323 210  # 2
    clique 746 330  # 4 covers
    clique 1168 687 # Valider
    attend 3000 est_peint 40 60 C24B45 || echoue "the articles are not shown"
    clique 164 129 # Entrecôte
    attend 3000 est_peint 1168 730 23704F || echoue "the article is not opened"
}

envoie_note() {
    clique 980 111  # one more
    clique 1168 687 # Valider
    attend 3000 est_peint 40 60 C24B45 || echoue "the articles are not shown again"
    clique 957 687 # Note
    attend 3000 est_peint 746 730 23704F || echoue "the note is not shown"
    clique 746 687 # Envoyer
    attend 3000 est_peint 330 440 23704F || echoue "the question is not asked"
}

# Answers the question, and sees the order arrive.
envoie_commande() {
    clique 442 463 # Oui
    attend 5000 une_livree || echoue "the order has not arrived"
    grep -q '^#REF#8880000000024  {2.00}' "$terrain"/reseau/*_01_012_004_.txt || echoue "the order is not the one that was taken"
    echo "the order has arrived"
}

une_livree() { [ "$(find "$terrain/reseau" -name '*_01_012_004_.txt' | wc -l)" = 1 ]; }
est_fini() { ! kill -0 "$pid_programme" 2>/dev/null; }
