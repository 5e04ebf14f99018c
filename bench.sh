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
outils/paquets.sh pairs >&2 || echo "Without FLTK its rows are left out." >&2
cmake --preset release >/dev/null
cibles=$(cmake --build --preset release --target help | sed -n 's/^\(pair_[a-z]*\):.*/\1/p')
# shellcheck disable=SC2086
cmake --build --preset release --target orvalune bancs sonde fenetre_nue $cibles >/dev/null

programmes=build/release/bench
terrain=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; rm -rf "$terrain"' EXIT
copie_demonstration "$terrain/demo"
remplit_l_ecran "$terrain/demo"
cp -r "$terrain/demo" "$terrain/petites"
pose_petites_touches "$terrain/petites"

# terminal NAME DIRECTORY: what is started, and where its first key lies.
terminal() { fenetres+=("$1" 20 45 3F72A8 build/release/orvalune --dossier "$terrain/$2" --); }
# regarde FILE SIZE ROUNDS PRESSES: the programs in `fenetres`, by turns on a screen of its own.
regarde() {
    local numero
    mkfifo "$terrain/ecran"
    Xvfb -displayfd 1 -screen 0 "$2x24" -noreset -nolisten tcp >"$terrain/ecran" 2>/dev/null &
    read -r -t 20 numero <"$terrain/ecran"
    rm "$terrain/ecran"
    DISPLAY=:$numero "$programmes/sonde" "$3" "$4" "${fenetres[@]}" >"$1"
    kill $!
    wait $! || true
}

for taille in 1280x800 1920x1200 2560x1600; do
    echo "Windows, $taille…" >&2
    fenetres=(fenetre_nue 10 10 3F72A8 "$programmes/fenetre_nue" --)
    terminal terminal demo
    terminal petites_touches petites
    for pair in $cibles; do fenetres+=("$pair" 30 30 3F72A8 "$programmes/$pair" --); done
    regarde "$terrain/fenetres_$taille" "$taille" 15 100
done

echo "Catalogues…" >&2
fenetres=()
terminal demonstration demo
for n in 4000 40000 400000; do
    cp -r "$terrain/demo" "$terrain/$n"
    pose_catalogue "$terrain/$n" "$n"
    terminal "$n-$(stat -c %s "$terrain/$n/worvalune.wdo")" "$n"
done
regarde "$terrain/catalogues" 1280x800 5 0

echo "Screens, painter, orders…" >&2
mesure() { # mesure FILE ARGUMENTS...
    local fichier=$1
    shift
    "$programmes/bancs" "$@" --benchmark_out="$fichier" --benchmark_out_format=json >"$terrain/journal" 2>&1 && return
    cat "$terrain/journal" >&2
    exit 1
}
# What the table has no row for is left out.
mesure "$terrain/bancs.json" --benchmark_filter='-^(commandes|commande_de|mise_en_lignes|rien_de_neuf)' \
    --benchmark_enable_random_interleaving=true --benchmark_repetitions=5 --benchmark_min_time=0.1
mesure "$terrain/commandes.json" --benchmark_filter='^(commandes|ecriture_nue/10/)'
python3 bench/tableau.py "$terrain"
