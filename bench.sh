#!/usr/bin/env bash
# Measures the terminal and prints one table: each figure beside its floor or its peer, measured in the same run, by turns.
# The peers are pages of 48 keys made with FLTK, where its packages can be had, and Qt, where they are installed. Several
# minutes; leave the machine alone meanwhile.
set -euo pipefail
cd "$(dirname "$0")"
# shellcheck source=outils/demonstration.sh
. outils/demonstration.sh
# shellcheck source=bench/maisons.sh
. bench/maisons.sh

outils/paquets.sh programme tests banc
outils/paquets.sh pairs || echo "The table does without what could not be installed." >&2
cmake --preset release >/dev/null
cibles=$(cmake --build --preset release --target help | sed -n 's/^\(pair_[a-z]*\):.*/\1/p')
# shellcheck disable=SC2086
cmake --build --preset release --target orvalune bancs sonde fenetre_nue $cibles >/dev/null

programmes=build/release/bench
terrain=$(mktemp -d)
trap 'kill "${XVFB_PID:-}" 2>/dev/null || true; rm -rf "$terrain"' EXIT

# ouvre_ecran WIDTHxHEIGHT: a display of this size, in place of the one before.
ouvre_ecran() {
    local numero ancien=${XVFB_PID:-}
    if [ -n "$ancien" ]; then
        kill "$ancien"
        wait "$ancien" || true
    fi
    coproc XVFB { exec Xvfb -displayfd 1 -screen 0 "$1x24" -noreset -nolisten tcp 2>/dev/null; }
    read -r -t 20 numero <&"${XVFB[0]}"
    export DISPLAY=:$numero
}

nue=(fenetre_nue 10 10 3F72A8 "$programmes/fenetre_nue" --)
terminal=(40 60 3F72A8 build/release/orvalune --dossier) # and the directory

copie_demonstration "$terrain/demo" 9999x9999 # the whole screen, whatever its size
cp -r "$terrain/demo" "$terrain/petites"
pose_petites_touches "$terrain/petites"
fenetres=("${nue[@]}" terminal "${terminal[@]}" "$terrain/demo" --
    petites_touches 20 "${terminal[@]:1}" "$terrain/petites" --)
for pair in $cibles; do fenetres+=("$pair" 30 30 3F72A8 "$programmes/$pair" --); done
for taille in 1280x800 1920x1200 2560x1600; do
    echo "Windows, $taille…" >&2
    ouvre_ecran "$taille"
    "$programmes/sonde" 21 100 "${fenetres[@]}" | sed "s/^/$taille /" >>"$terrain/fenetres"
done

echo "Catalogues…" >&2
ouvre_ecran 1280x800
catalogues=("${nue[@]}" terminal "${terminal[@]}" "$terrain/demo" --)
for n in 4000 40000 400000; do
    copie_demonstration "$terrain/$n" 9999x9999
    pose_catalogue "$terrain/$n" "$n"
    catalogues+=("$n-$(stat -c %s "$terrain/$n/worvalune.wdo")" "${terminal[@]}" "$terrain/$n" --)
done
"$programmes/sonde" 5 0 "${catalogues[@]}" >"$terrain/catalogues"

echo "Screens, painter, orders…" >&2
if ! TMPDIR=$terrain "$programmes/bancs" --benchmark_filter="$(python3 bench/tableau.py --filtre)" \
    --benchmark_enable_random_interleaving=true --benchmark_repetitions=5 --benchmark_min_time=0.1 \
    --benchmark_out="$terrain/bancs.json" --benchmark_out_format=json >"$terrain/journal" 2>&1; then
    cat "$terrain/journal" >&2
    exit 1
fi
python3 bench/tableau.py "$terrain/fenetres" "$terrain/catalogues" "$terrain/bancs.json"
