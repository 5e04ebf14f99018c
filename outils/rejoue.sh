#!/usr/bin/env bash
# Replays the recorded service of the demonstration restaurant on a fresh copy of it, with captures.
# Usage: outils/rejoue.sh DESTINATION PROGRAM [ARGUMENTS OF THE PROGRAM]   (from the root of the sources)
set -euo pipefail
cd "$(dirname "$0")/.."

destination=$1
shift
rm -rf "$destination"
mkdir -p "$destination/captures"
cp demo/*.wdo "$destination"
cp -r demo/reseau "$destination/reseau"

statut=0
"$@" --dossier "$destination" --rejoue demo/service.txt --captures "$destination/captures" || statut=$?

shopt -s nullglob
livrees=("$destination"/reseau/*_.txt)
attente=("$destination"/*_.-A-)
captures=("$destination"/captures/*.png)
echo "Orders delivered: ${#livrees[@]} in $PWD/$destination/reseau"
echo "Orders waiting:   ${#attente[@]} in $PWD/$destination"
echo "Captures:         ${#captures[@]} in $PWD/$destination/captures"
exit "$statut"
