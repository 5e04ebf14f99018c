#!/usr/bin/env bash
# Services on the real terminal beside a router that collects at once: what was told as sent arrives, each order once.
# Usage: outils/campagne.sh coupures N [EMULATOR]    kills the program N times at random; of Windows with an emulator
#        outils/campagne.sh terminaux [P [N]]       P terminals at the same time, N orders each (50, 40)
# PROGRAMME names another program than the built one. The directories lie on the disk of TMPDIR.
set -euo pipefail
sources=$(cd "$(dirname "$0")/.." && pwd)
campagne=${1:?coupures or terminaux}
shift

case $campagne in
    coupures) nombres=("${1:?how many kills}") emulateur=${2:-} ;;
    terminaux) nombres=("${1:-50}" "${2:-40}") emulateur= ;;
    *) echo "unknown campaign: $campagne" >&2 && exit 2 ;;
esac
programme=$sources/build/release/orvalune
[ -z "$emulateur" ] || programme=$sources/build/windows/orvalune.exe
programme=${PROGRAMME:-$programme}
[ -f "$programme" ] || { echo "$programme has not been built" >&2 && exit 2; }

terrain=$(mktemp -d)
trap 'rm -rf "$terrain"' EXIT
cp -r "$sources/demo/reseau" "$terrain/reseau"
mkdir "$terrain/modele"
cp "$sources"/demo/*.wdo "$terrain/modele"
# Any table is taken: the table check is the 55th record of the settings.
printf '%-20s' NON | dd of="$terrain/modele/wwinqx42.wdo" bs=20 seek=54 conv=notrunc status=none
printf '%s\r\n' "${emulateur:+Z:}$terrain/reseau" >"$terrain/modele/wfichdir.wdo"

# Wine's helpers outlive their program and hold its output open: they are started apart, once.
if [ -n "$emulateur" ]; then
    export WINEPREFIX=${WINEPREFIX:-$sources/build/wine} WINEDLLOVERRIDES="mscoree,mshtml=" WINEDEBUG=-all
    mkdir -p "$WINEPREFIX"
    wineserver -p >/dev/null 2>&1 </dev/null || true
    trap 'wineserver -k >/dev/null 2>&1 || true; rm -rf "$terrain"' EXIT
    "$emulateur" cmd /c exit >/dev/null 2>&1 </dev/null
fi
python3 "$sources/outils/campagne.py" "$terrain" "$programme" "$emulateur" "$campagne" "${nombres[@]}"
