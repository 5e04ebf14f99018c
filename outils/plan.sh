#!/usr/bin/env bash
# Draws the rooms of src/ and who includes whom, straight from the sources: docs/images/maison.svg.
# Usage: outils/plan.sh [--verifie]     --verifie only tells whether the picture is current.
set -euo pipefail
export LC_ALL=C
cd "$(dirname "$0")/../src"
# shellcheck source=outils/salles.sh
. ../outils/salles.sh
image=../docs/images/maison.svg

# A module is its header, its source and what each system has of it.
modules_de() {
    fichiers_de "$1" | sed -nE 's,.*/([^/]+)[.](h|cpp)$,\1,p' |
        sed -E 's/_(win32|posix|x11|systeme|interne)$//' | sort -u
}

# The rooms from top to bottom, "salle ROOM FILES MODULES…"; then what one has of another, "fleche FROM TO INCLUDES".
releve() {
    local salle
    for salle in $(sed 's/:.*//' <<<"$table"); do
        # shellcheck disable=SC2046
        echo salle "$salle" "$(fichiers_de "$salle" | wc -l)" $([ -f "$salle" ] || modules_de "$salle")
    done
    inclusions | awk '$2 != $4 { ++n[$2 " " $4] } END { for (f in n) print "fleche", f, n[f] }' | sort
}

if [ "${1:-}" = --verifie ]; then
    releve | awk -f ../outils/plan.awk | cmp -s - "$image" && exit 0
    echo "docs/images/maison.svg shows the rooms as they were; outils/plan.sh draws them anew" >&2
    exit 1
fi
releve | awk -f ../outils/plan.awk >"$image"
