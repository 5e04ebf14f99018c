#!/usr/bin/env bash
# Makes the pictures of the manual and of the README anew, with the terminal itself.
set -euo pipefail
cd "$(dirname "$0")/.."

outils/paquets.sh programme tests
cmake --preset release >/dev/null
cmake --build --preset release --target orvalune

outils/rejoue.sh docs/captures.txt build/manuel build/release/orvalune
# The first start: a tablet that has nothing yet but a network directory.
rm -rf build/manuel-premier
mkdir -p build/manuel-premier
cp -r demo/reseau build/manuel-premier/reseau
build/release/orvalune --dossier build/manuel-premier --rejoue docs/premier_demarrage.txt \
    --captures build/manuel/captures

mkdir -p docs/images
cp build/manuel/captures/*.png docs/images/
