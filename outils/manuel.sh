#!/usr/bin/env bash
# Makes the pictures of the manual and of the README anew, with the terminal and the kitchen themselves; then the manual's
# page for a browser.
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=outils/demonstration.sh
. outils/demonstration.sh

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

# The orders of an evening, on the screens that a tablet may have.
for taille in 1280x770 800x800 1024x768 554x770; do
    dossier=build/manuel-suivi-$taille
    copie_demonstration "$dossier" "$taille"
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
