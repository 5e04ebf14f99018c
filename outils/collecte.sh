#!/usr/bin/env bash
# The kitchen's part behind outils/rejoue.sh: collects the orders that a replay has left, with their tickets as text, and
# draws the first one.
# Usage: outils/collecte.sh DESTINATION PROGRAM [ARGUMENTS OF THE PROGRAM]   (paths from the root of the sources)
set -euo pipefail
cd "$(dirname "$0")/.."

destination=$1
shift
"$@" "$destination/reseau" --ecran --une-fois >"$destination/tickets.txt"
shopt -s nullglob
prises=("$destination"/reseau/archive/*/*_.txt)
[ ${#prises[@]} -gt 0 ] || { echo "The kitchen found no order in $PWD/$destination/reseau" >&2; exit 1; }
"$@" "$destination/reseau" --apercu "${prises[0]}" "$destination/captures/ticket.png"
echo "Orders collected: ${#prises[@]} in $PWD/$destination/reseau/archive"
echo "Tickets:          $(grep -c '^FIN' "$destination/tickets.txt") in $PWD/$destination/tickets.txt"
