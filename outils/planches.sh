#!/usr/bin/env bash
# Captures all screens on the screens that tablets have, and lays the pictures out on contact sheets,
# build/planches/LxH_N.png, each under its name in build/planches/LxH.
# Usage: outils/planches.sh [LxH ...]
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=outils/demonstration.sh
. outils/demonstration.sh

outils/paquets.sh programme tests
cmake --preset release >/dev/null
cmake --build --preset release --target orvalune

par_planche=12
[ $# -gt 0 ] || set -- 1280x770 800x800 1024x768 1920x1080 554x770
for taille in "$@"; do
    images=build/planches/$taille
    rm -rf "$images" "$images"_*.png
    mkdir -p "$images"
    for scenario in captures planches suivi; do
        dossier=build/planches/dossier
        copie_demonstration "$dossier" "$taille"
        [ "$scenario" != suivi ] || pose_commandes "$dossier"
        build/release/orvalune --dossier "$dossier" --rejoue "docs/$scenario.txt" --captures "$images" \
            --ecran "${taille%x*}x$((${taille#*x} + 30))" --horloge "2021-05-19 20:14:30"
    done
    colonnes=3 cote=640x
    [ "${taille%x*}" -gt "${taille#*x}" ] || colonnes=4 cote=x640
    mapfile -t vues < <(find "$images" -name '*.png' | sort)
    for ((n = 0; n < ${#vues[@]}; n += par_planche)); do
        montage -label '%t' "${vues[@]:n:par_planche}" -tile "${colonnes}x" -geometry "$cote+8+8" -background white \
            "$(printf '%s_%02d.png' "$images" $((n / par_planche + 1)))"
    done
    echo "${#vues[@]} pictures of $taille: $images, $(find build/planches -name "${taille}_*.png" | wc -l) sheets beside"
done
rm -rf build/planches/dossier
