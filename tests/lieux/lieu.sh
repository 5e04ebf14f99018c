# A copy of the demonstration restaurant whose network directory lies elsewhere, and the program replayed on it.
# Source it with PROGRAM, the folder of the sources and, for a program of Windows, the emulator that runs it as arguments.
shopt -s lastpipe # what ends a pipeline can end the script
programme=$1 sources=$2 emulateur=${3:-}
terrain=$(mktemp -d)
tablette=$terrain/tablette
mkdir "$tablette" "$terrain/captures"
chmod 755 "$terrain"
trap 'quitte $?' EXIT
quitte() {
    trap - EXIT
    mountpoint -q "$tablette" && umount "$tablette"
    [ -n "${prefixe_propre:-}" ] && "${comme[@]}" wineserver -k >/dev/null 2>&1
    chmod -R u+w "$terrain"
    rm -rf "$terrain"
    exit "$1"
}

echoue() {
    echo "FAILED: $*" >&2
    exit 1
}

# The path as the program takes it.
chemin() { echo "${emulateur:+Z:}$1"; }

garnit() {
    cp "$sources"/demo/*.wdo "$tablette"
    cp -r "$sources/demo/reseau" "$terrain/reseau"
    printf '%s\r\n' "$(chemin "$terrain/reseau")" >"$tablette/wfichdir.wdo"
}

# joue DIRECTORY: plays the commands of standard input.
comme=()
joue() {
    "${comme[@]}" ${emulateur:+"$emulateur"} "$programme" --dossier "$(chemin "$1")" --rejoue - \
        --captures "$(chemin "$terrain/captures")" 2>&1 | tee "$terrain/reponses" | grep '^erreur'
    [ "${PIPESTATUS[0]}" = 0 ] || echoue "status ${PIPESTATUS[0]}"
}

prend_une_commande() {
    cat <<'COMMANDES'
touche "Sophie"
touche "Table"
touche g3 0 0
touche g3 0 1
touche g1 1 0
touche "Valider"
touche "Entrecôte"
touche "Valider"
touche "Note"
touche "Envoyer"
touche "Oui"
COMMANDES
}
livrees() { find "$terrain/reseau" -name '*_01_012_004_.txt' | wc -l; }
attentes() { find "$tablette" -name '*-A-' -o -name '*.tmp_' | wc -l; }
