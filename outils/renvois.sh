#!/usr/bin/env bash
# Whether the files, functions and controls that the README and docs/architecture.md name between "`" are there. Commands,
# key codes and what begins with a sign are not looked for.
set -euo pipefail
cd "$(dirname "$0")/.."

# A file by its path from the root, from src/ or from a room, perhaps with "*"; a module by its path without an end.
est_fichier() {
    compgen -G "$1" || compgen -G "src/$1" || compgen -G "src/$1.cpp" || compgen -G "src/*/$1"
}

# The headers of a module, or of a namespace or class without a module of its name.
entetes_de() {
    local ouvrent
    ouvrent=$(grep -rlE --include='*.h' "^ *(namespace|class|struct) $1\b[^;]*\$" src tests)
    grep -E "/$1\.h\$" <<<"$ouvrent" || echo "$ouvrent"
}

# The code of a module: its headers, and of the sources beside them what begins a line, which is no local variable's.
code_de() {
    local entete
    entetes_de "$1" | while read -r entete; do
        [ ! -f "$entete" ] || cat "$entete"
        [ ! -f "${entete%.h}.cpp" ] || grep '^[a-z]' "${entete%.h}.cpp"
    done | sed 's,//.*,,'
}

# A name of the sources, perhaps behind that of its module or class; "*" stands for any end.
est_nom() {
    local nom=${1%%(*}
    local mot=${nom##*::}
    mot=${mot//\*/[a-z_]*}
    case $nom in
        *::*) code_de "${nom%::*}" | grep -cw -- "$mot" ;;
        *) grep -rqw -- "$mot" src tests ;;
    esac
}

# shellcheck disable=SC2016
renvois() {
    grep -oE '`[^`]+`' "$1" | tr -d '`' | grep -E '^[a-zA-Z]' | grep -vE ' |NAME|^(clang-format|sudo)$' | sort -u
}

# "name file" where the page tells, in parentheses, which source a name stands in.
# shellcheck disable=SC2016
renvois_places() {
    tr '\n' ' ' <"$1" | grep -oE '`[a-z_:]+(\(\))?` \(`[a-z0-9_/]+\.(cpp|h)`' | tr -d '`()'
}

fautes=0
for page in README.md docs/architecture.md; do
    while read -r renvoi; do
        est_fichier "$renvoi" >/dev/null || est_nom "$renvoi" >/dev/null && continue
        echo "$page: \`$renvoi\` is not in the sources"
        fautes=1
    done < <(renvois "$page")
    while read -r nom fichier; do
        find src -path "*/$fichier" -exec grep -hw -- "${nom##*::}" {} + | grep -cv '^ *//' >/dev/null && continue
        echo "$page: \`$nom\` is not in \`$fichier\`"
        fautes=1
    done < <(renvois_places "$page")
done
exit $fautes
