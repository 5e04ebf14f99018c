#!/usr/bin/env bash
# Checks the rooms of src/: every include runs down the table of outils/salles.sh, none up, none in a circle; no room is
# crowded, and none is missing in the table; the system is known to platform/ alone, and what its sources share with each
# system's own to their room. Each fault is named with its file and line.
set -uo pipefail
cd "$(dirname "$0")/../src" || exit
# shellcheck source=outils/salles.sh
. ../outils/salles.sh

fichiers_max=28

# Files in no room of the table.
verifie_salles() {
    find . -type f | sed 's|^\./||' | awk -v table="$table" '
        BEGIN { n = split(table, lignes, "\n"); for (i = 1; i <= n; ++i) { sub(":.*", "", lignes[i]); salles[lignes[i]] } }
        { salle = $0; sub("/[^/]*$", "", salle); if (!(salle in salles)) print "src/" $0 ": the table has no room " salle }'
}

# Arrows that run up, out of bounds or to what a room keeps to itself.
verifie_fleches() {
    awk -v table="$table" '
        BEGIN {
            n = split(table, lignes, "\n")
            for (i = 1; i <= n; ++i) {
                split(lignes[i], m, ": ")
                if (m[1] != "") { rang[m[1]] = i; bornes[m[1]] = m[2] }
            }
        }
        {
            de = $2; vers = $4
            if (!(de in rang)) next
            if (!(vers in rang)) print "src/" $1 ": \"" $3 "\" is in no room of the table"
            else if (rang[vers] < rang[de]) print "src/" $1 ": " de " lies below \"" $3 "\""
            else if (de != vers && bornes[de] != "" && index(bornes[de], vers) == 0)
                print "src/" $1 ": " de " keeps to " bornes[de] ", and not to \"" $3 "\""
            else if (de != vers && $3 ~ /_(systeme|interne)[.]h$/)
                print "src/" $1 ": \"" $3 "\" is for " vers " alone"
        }'
}

# A module is the header and the source of one name, with what they share with each system's own source beside them.
# tsort names those that stand in a circle.
verifie_cercles() {
    local arcs membres
    arcs=$(awk '
        function module(chemin) { sub("(_(systeme|interne))?[.](h|cpp)$", "", chemin); return chemin }
        { de = $1; sub(":.*", "", de); if (module(de) != module($3)) print module(de), module($3), $1, $3 }')
    membres=$(cut -d ' ' -f 1,2 <<<"$arcs" | tsort 2>&1 >/dev/null | sed -nE 's/^tsort: ([^- ]*[^:])$/\1/p')
    awk -v membres="$membres" '
        BEGIN { split(membres, m, "\n"); for (i in m) cercle[m[i]] }
        ($1 in cercle) && ($2 in cercle) { print "src/" $3 ": \"" $4 "\" closes a circle" }' <<<"$arcs"
}

verifie_nombres() {
    find . -type d | while read -r dossier; do
        local nombre
        nombre=$(fichiers_de "$dossier" | wc -l)
        [ "$nombre" -le "$fichiers_max" ] || echo "src/${dossier#./}: $nombre files, more than $fichiers_max"
    done
}

# Angle includes of the standard library have no ".h" and no "/"; all others but the tree's own belong to a system or a
# library.
verifie_systeme() {
    local siens systemes='_WIN32|_WIN64|WIN32|_MSC_VER|__MINGW32__|__linux__|__unix__|__APPLE__'
    mapfile -t siens < <(find . -mindepth 1 -maxdepth 1 -type d -printf '-e\n<%f/\n')
    siens=(-e '^src/platform/' "${siens[@]}")
    grep -rnE '^[[:space:]]*#[[:space:]]*include[[:space:]]*<[^>]*[./]' . | sed 's|^\./|src/|' | grep -v "${siens[@]}"
    grep -rnE "^[[:space:]]*#[[:space:]]*(el)?if(n?def)?\b.*\b($systemes)\b" . |
        sed -nE 's|^\./(.*)|src/\1|; /^src\/(platform\/|([a-z]+\/)?main\.cpp:)/!p'
}

fleches=$(inclusions)
[ -n "$fleches" ] || { echo "src/: the includes could not be read"; exit 1; }
fautes=$(verifie_salles; verifie_fleches <<<"$fleches"; verifie_cercles <<<"$fleches"; verifie_nombres; verifie_systeme)
[ -z "$fautes" ] || { echo "$fautes"; exit 1; }
