#!/usr/bin/env bash
# Makes the pictures of the manual and of the README anew, with the terminal and the kitchen themselves; then the manual's
# page for a browser.
set -euo pipefail
cd "$(dirname "$0")/.."

outils/paquets.sh programme tests
cmake --preset release >/dev/null
cmake --build --preset release --target orvalune orvalune-cuisine

outils/rejoue.sh docs/captures.txt build/manuel build/release/orvalune
# The first start: a tablet that has nothing yet but a network directory.
rm -rf build/manuel-premier
mkdir -p build/manuel-premier
cp -r demo/reseau build/manuel-premier/reseau
build/release/orvalune --dossier build/manuel-premier --rejoue docs/premier_demarrage.txt \
    --captures build/manuel/captures

# The orders of an evening, written with this list's states; no network changes them.
commandes='19:40:00 012 9 collectée 19:41:00
19:51:00 033 2 à_vérifier 19:51:00
19:58:00 007 5 collectée 19:58:00
20:02:00 021 12 collectée 20:03:00
20:10:00 018 4 déposée 20:10:00
20:11:00 004 3 déposée 20:11:00
20:14:00 012 7 en_attente 20:14:00'

# Writes them into a working directory.
pose_commandes() {
    local jour=2021-05-19 heure table lignes etat depuis nom
    while read -r heure table lignes etat depuis; do
        nom=${jour}-${heure//:/-}_01_${table}_004_.
        case $etat in # the files that tell its state; a deposited one also says in which directory, "reseau"
            en_attente) printf 'commande\r\n' >"$1/$nom-A-" ;;
            déposée) printf 'commande\r\n' >"$1/${nom}dcfc60ce.-T-" ;;
            à_vérifier) printf 'commande\r\n' >"$1/$nom-V-" ;;
        esac
        printf '%s;01;%s;004;%s;%s;%s;%s\r\n' "$jour $heure" "$table" "$lignes" "${etat/_/ }" "$jour $depuis" "$nom"
    done <<<"$commandes" | iconv -f utf-8 -t cp1252 >"$1/suivi.txt"
}

# On the screens that a tablet may have; the format is the second record of the settings.
for taille in 1280x770 800x800 1024x768 554x770; do
    dossier=build/manuel-suivi-$taille
    rm -rf "$dossier"
    mkdir -p "$dossier"
    cp demo/*.wdo "$dossier"
    printf '#I#0:%05d:%05d    ' "${taille%x*}" "${taille#*x}" |
        dd of="$dossier/wwinqx42.wdo" bs=20 seek=1 conv=notrunc status=none
    pose_commandes "$dossier"
    build/release/orvalune --dossier "$dossier" --rejoue docs/suivi.txt --captures "$dossier" \
        --horloge "2021-05-19 20:14:30"
    for image in suivi non_collectees; do
        cp "$dossier/$image.png" "build/manuel/captures/${image}_$taille.png"
    done
done
cp build/manuel-suivi-1280x770/renvoyer.png build/manuel/captures

build/release/orvalune-cuisine demo/reseau --familles 8=tcp://bar \
    --apercu docs/2021-05-19-12-31-05_04_012_004_.txt build/manuel/captures/ticket.png

mkdir -p docs/images
cp build/manuel/captures/*.png docs/images/
outils/page_manuel.sh docs/manuel.md build/manuel/manuel.html
echo "The manual: $PWD/build/manuel/manuel.html"
