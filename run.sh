#!/usr/bin/env bash
# Builds the terminal and opens it on the demonstration restaurant, with the kitchen beside it: its tickets are written
# here. Arguments go to the terminal (try --fenetre). With no display, a recorded service is replayed and collected instead.
set -euo pipefail
cd "$(dirname "$0")"

outils/paquets.sh programme tests
cmake --preset release >/dev/null
cmake --build --preset release --target orvalune orvalune-cuisine

ecran=non cuisine=oui
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then ecran=oui; fi
for argument in "$@"; do
    case $argument in
        --plein-ecran) ecran=inutile ;;
        --rejoue | --journal | --aide | --version) ecran=inutile cuisine=non ;;
    esac
done

if [ "$ecran" = non ]; then
    echo "No display: replaying demo/service.txt"
    outils/rejoue.sh demo/service.txt build/demo-service build/release/orvalune
    exec outils/collecte.sh build/demo-service build/release/orvalune-cuisine
fi
# The restaurant that you play with stays as you leave it; remove build/demo to start afresh.
if [ ! -d build/demo ]; then
    mkdir -p build/demo
    cp demo/*.wdo build/demo
    cp -r demo/reseau build/demo/reseau
fi
[ "$cuisine" = oui ] || exec build/release/orvalune --dossier build/demo "$@"

build/release/orvalune-cuisine build/demo/reseau --ecran &
trap 'kill $! 2>/dev/null && wait' EXIT
build/release/orvalune --dossier build/demo "$@"
