#!/usr/bin/env bash
# Hands the readers of files whatever comes, each in a directory of its own, and tells what was tried. What one does not
# bear is a fault, kept in build/fuzz/fautes: the target takes such a file as its argument.
# Usage: [GRAINE=NUMBER] outils/fuzz.sh SECONDS [TARGET...]     a target is a source of tests/fuzz, by its name; default:
# all. With a number the inputs come in the order that it stands for, otherwise by chance.
set -euo pipefail
cd "$(dirname "$0")/.."
racine=$PWD duree=${1:?seconds for each target}
shift
outils/paquets.sh programme fuzz
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz -j "$(nproc)"

# Files are flushed: a disk would take most of the time.
memoire=${TMPDIR:-/tmp}
[ -w /dev/shm ] && memoire=/dev/shm

cibles=("$@")
[ ${#cibles[@]} -gt 0 ] || mapfile -t cibles < <(basename -s .cpp tests/fuzz/*.cpp)

# What a target has found new stays in build/fuzz/trouves for the next time.
essaie() {
    local cible=$1 terrain graines=$racine/tests/fuzz/graines/$1
    terrain=$(mktemp -d -p "$memoire")
    [ -d "$graines" ] || graines=
    mkdir -p build/fuzz/{fautes,journaux,trouves/"$cible"}
    local journal=$racine/build/fuzz/journaux/$cible statut=0
    (cd "$terrain" && "$racine/build/fuzz/tests/fuzz/fuzz_$cible" -max_total_time="$duree" -max_len=4096 -timeout=120 \
        -print_final_stats=1 ${GRAINE:+-seed="$GRAINE"} -dict="$racine/tests/fuzz/mots.txt" -artifact_prefix="$racine/build/fuzz/fautes/$cible-" \
        "$racine/build/fuzz/trouves/$cible" ${graines:+"$graines"}) >"$journal" 2>&1 || statut=$?
    rm -rf "$terrain"
    local faits
    faits=$(sed -n 's/^stat::number_of_executed_units: *//p' "$journal")
    if [ $statut -eq 0 ] && [ "${faits:-0}" -gt 0 ]; then
        echo "$cible: $faits executions, no fault"
    else
        tail -n 40 "$journal"
        echo "$cible: FAULT, see $journal"
        return 1
    fi
}
export -f essaie
export racine duree memoire
printf '%s\n' "${cibles[@]}" | xargs -P "$(nproc)" -I '{}' bash -c 'essaie {}'
