#!/usr/bin/env bash
# The share in trouble, measured on the real window: it hangs, is slow, is full, vanishes and comes back, and 10,000 orders
# wait for it. For each the longest time from a touch to its picture, and from the share's return to the arrival of the first
# and of the last order. Linux, as root: what may not be mounted here is skipped.
# Usage: outils/partage.sh [TROUBLE...]     of: fige lent plein disparu dix_mille; default: all
# The directories lie on the disk of TMPDIR. On a busy machine: chrt --rr 1 outils/partage.sh
set -euo pipefail
sources=$(cd "$(dirname "$0")/.." && pwd)
programme=${PROGRAMME:-$sources/build/release/orvalune}
[ -f "$programme" ] || { echo "$programme has not been built" >&2 && exit 2; }

terrain=$(mktemp -d)
trap 'rm -rf --one-file-system "$terrain"' EXIT
mkdir "$terrain/modele"
cp "$sources"/demo/*.wdo "$terrain/modele"
cp -r "$sources/demo/reseau" "$terrain/modele/reseau"
g++ -std=c++20 -O1 -shared -fPIC "$sources/outils/lenteur.cpp" -o "$terrain/lenteur.so"
python3 "$sources/outils/partage.py" "$terrain" "$programme" "$@"
