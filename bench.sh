#!/usr/bin/env bash
# Measures the terminal and prints one table: each figure beside its floor or its peer, measured in the same run, by turns.
# The peers are pages of 48 keys made with FLTK and, where its packages are installed, Qt. Several minutes; leave the
# machine alone meanwhile.
set -euo pipefail
cd "$(dirname "$0")"
# shellcheck source=outils/demonstration.sh
. outils/demonstration.sh
# shellcheck source=bench/maisons.sh
. bench/maisons.sh

outils/paquets.sh programme tests banc
cmake --preset release >/dev/null
cibles=$(cmake --build --preset release --target help | sed -n 's/^\(pair_[a-z]*\):.*/\1/p')
# shellcheck disable=SC2086
cmake --build --preset release --target orvalune bancs sonde fenetre_nue $cibles >/dev/null

programmes=build/release/bench
terrain=$(mktemp -d)
trap 'kill "${XVFB_PID:-}" 2>/dev/null || true; rm -rf "$terrain"' EXIT
coproc XVFB { exec Xvfb -displayfd 1 -screen 0 1280x800x24 -noreset -nolisten tcp 2>/dev/null; }
read -r -t 20 numero <&"${XVFB[0]}"
export DISPLAY=:$numero

echo "Windows…" >&2
copie_demonstration "$terrain/demo"
copie_demonstration "$terrain/petites"
pose_petites_touches "$terrain/petites"
fenetres=(fenetre_nue 10 10 3F72A8 "$programmes/fenetre_nue" --
    terminal 40 60 3F72A8 build/release/orvalune --dossier "$terrain/demo" --
    petites_touches 20 60 3F72A8 build/release/orvalune --dossier "$terrain/petites" --)
for pair in $cibles; do fenetres+=("$pair" 30 30 3F72A8 "$programmes/$pair" --); done
"$programmes/sonde" 21 100 "${fenetres[@]}" >"$terrain/fenetres"

echo "Catalogues…" >&2
catalogues=()
for n in 4000 40000 400000; do
    copie_demonstration "$terrain/$n"
    pose_catalogue "$terrain/$n" "$n"
    catalogues+=("$n-$(stat -c %s "$terrain/$n/worvalune.wdo")" 40 60 3F72A8 build/release/orvalune --dossier "$terrain/$n" --)
done
"$programmes/sonde" 5 0 "${catalogues[@]}" >"$terrain/catalogues"

echo "Screens, painter, orders…" >&2
mesure() { # mesure FILE ARGUMENTS...
    local fichier=$1
    shift
    "$programmes/bancs" "$@" --benchmark_out="$fichier" --benchmark_out_format=json >"$terrain/journal" 2>&1 && return
    cat "$terrain/journal" >&2
    exit 1
}
mesure "$terrain/bancs.json" --benchmark_filter='-^commandes' --benchmark_enable_random_interleaving=true \
    --benchmark_repetitions=5 --benchmark_min_time=0.1
mesure "$terrain/commandes.json" --benchmark_filter='^commandes'
python3 bench/tableau.py "$terrain/fenetres" "$terrain/catalogues" "$terrain/bancs.json" "$terrain/commandes.json"
