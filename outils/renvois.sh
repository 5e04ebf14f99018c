#!/usr/bin/env bash
# Whether the files, functions and controls that the README and docs/architecture.md name between "`" are there. Commands,
# key codes and what begins with a sign are not looked for.
set -euo pipefail
cd "$(dirname "$0")/.."

# A file by its path from the root, from src/ or from a room, perhaps with "*"; a module by its path without an end.
est_fichier() {
    compgen -G "$1" || compgen -G "src/$1" || compgen -G "src/$1.cpp" || compgen -G "src/*/$1"
}

# A name of the sources, perhaps behind that of its namespace or class.
est_nom() {
    local nom=${1%%(*}
    local sources=(src tests)
    [[ $nom != *::* ]] || mapfile -t sources < <(grep -rlE "(namespace|class|struct) ${nom%%::*}\b" src tests)
    [ ${#sources[@]} -gt 0 ] && grep -rqw -- "${nom##*::}" "${sources[@]}"
}

fautes=0
for page in README.md docs/architecture.md; do
    while read -r renvoi; do
        est_fichier "$renvoi" >/dev/null || est_nom "$renvoi" && continue
        echo "$page: \`$renvoi\` is not in the sources"
        fautes=1
    done < <(grep -oE '`[^`]+`' "$page" | tr -d '`' | grep -E '^[a-zA-Z]' | grep -vE ' |NAME|^(clang-format|sudo)$' | sort -u)
done
exit $fautes
