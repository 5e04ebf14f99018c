#!/usr/bin/env bash
# Replays a scenario on a fresh copy of the demonstration restaurant, with captures.
# Usage: outils/rejoue.sh SCENARIO DESTINATION PROGRAM [ARGUMENTS OF THE PROGRAM]   (paths from the root of the sources)
set -euo pipefail
cd "$(dirname "$0")/.."

scenario=$1 destination=$2
shift 2
rm -rf "$destination"
mkdir -p "$destination/captures"
cp demo/*.wdo "$destination"
cp -r demo/reseau "$destination/reseau"

statut=0
"$@" --dossier "$destination" --rejoue "$scenario" --captures "$destination/captures" || statut=$?

shopt -s nullglob
livrees=("$destination"/reseau/*_.txt)
attente=("$destination"/*_.-A-)
captures=("$destination"/captures/*.png)
echo "Orders delivered: ${#livrees[@]} in $PWD/$destination/reseau"
echo "Orders waiting:   ${#attente[@]} in $PWD/$destination"
echo "Captures:         ${#captures[@]} in $PWD/$destination/captures"
exit "$statut"
