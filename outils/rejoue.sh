#!/usr/bin/env bash
# Replays a scenario on a fresh copy of the demonstration restaurant, with captures.
# Usage: outils/rejoue.sh SCENARIO DESTINATION PROGRAM [ARGUMENTS OF THE PROGRAM]   (paths from the root of the sources)
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=outils/demonstration.sh
. outils/demonstration.sh

scenario=$1 destination=$2
shift 2
copie_demonstration "$destination"
mkdir -p "$destination/captures"

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
