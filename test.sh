#!/usr/bin/env bash
# Builds everything and runs every test. Further arguments go to ctest (such as -R commande).
# Usage: ./test.sh [--sanitize | --thread | --windows] [ARGUMENTS OF CTEST]
set -euo pipefail
cd "$(dirname "$0")"

preset=release
groupes="programme tests"
case ${1:-} in
    --sanitize) preset=sanitize && shift ;;
    --thread) preset=thread && shift ;;
    --windows) preset=windows && groupes="$groupes windows" && shift ;;
esac
# shellcheck disable=SC2086
outils/paquets.sh $groupes
cmake --preset "$preset"
cmake --build --preset "$preset" -j "$(nproc)"

if [ "$preset" = windows ]; then
    export LC_ALL=C.UTF-8  # Wine writes the names of files in the locale's letters: "é" is one of them
    # Wine's helpers outlive their program and hold its output open: they are started apart, once.
    export WINEPREFIX=$PWD/build/wine WINEDLLOVERRIDES="mscoree,mshtml=" WINEDEBUG=-all
    mkdir -p build/wine
    wineserver -p >/dev/null 2>&1 </dev/null || true
    trap 'wineserver -k >/dev/null 2>&1 || true' EXIT
    # The first start makes its Windows, and was seen to fail at that; a second one completes it.
    demarre() { wine cmd /c exit >build/wine.log 2>&1 </dev/null; }
    demarre || demarre || { cat build/wine.log && echo "Wine does not start" && exit 1; } >&2
    outils/rejoue.sh demo/service.txt build/demo-windows wine build/windows/orvalune.exe
    outils/collecte.sh build/demo-windows wine build/windows/orvalune-cuisine.exe
fi
ctest --preset "$preset" -j "$(nproc)" --output-log "build/$preset/tests.log" "$@"
