#!/usr/bin/env bash
# Builds the terminal and opens it on the demonstration restaurant. Arguments go to the terminal (try --fenetre).
# With no display, a recorded service is replayed instead.
set -euo pipefail
cd "$(dirname "$0")"

outils/paquets.sh programme tests
cmake --preset release >/dev/null
cmake --build --preset release --target orvalune

ecran=non
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then ecran=oui; fi
for argument in "$@"; do
    case $argument in --plein-ecran | --rejoue | --aide | --version) ecran=inutile ;; esac
done

if [ "$ecran" = non ]; then
    echo "No display: replaying demo/service.txt"
    exec outils/rejoue.sh demo/service.txt build/demo-service build/release/orvalune
fi
# The restaurant that you play with stays as you leave it; remove build/demo to start afresh.
if [ ! -d build/demo ]; then
    mkdir -p build/demo
    cp demo/*.wdo build/demo
    cp -r demo/reseau build/demo/reseau
fi
exec build/release/orvalune --dossier build/demo "$@"
