#!/usr/bin/env bash
# Counts the instructions that the scenarios of bench/budget/ take, and compares them with bench/budget.txt: a slow commit
# fails, a slow machine does not. Five per cent above are too many; five per cent below want a new figure.
# Usage: bench/budget.sh [--renouvelle]   (writes the figures anew)
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=outils/demonstration.sh
. outils/demonstration.sh
# shellcheck source=bench/maisons.sh
. bench/maisons.sh

outils/paquets.sh programme tests
cmake --preset release >/dev/null
cmake --build --preset release --target orvalune rejeu_peint >/dev/null

programme=$PWD/build/release/orvalune peint=$PWD/build/release/bench/rejeu_peint
terrain=$(mktemp -d)
trap 'rm -rf "$terrain"' EXIT

# The system's library must not choose its procedures by the processor.
sans_choix=glibc.cpu.hwcaps=-AVX512F,-AVX512VL,-AVX512BW,-AVX2,-AVX2_Usable,-AVX_Fast_Unaligned_Load,-ERMS,-FSRM,-RTM,-BMI2

# instructions NAME: what the scenario takes, its start included.
instructions() {
    local scenario=$PWD/bench/budget/$1.txt commande
    copie_demonstration "$terrain/salle"
    [ "$1" = catalogue ] && pose_catalogue "$terrain/salle" 40000
    case $1 in
        page | touche) commande=("$peint" "$scenario" 1280x770) ;;
        *) commande=("$programme" --machine budget --rejoue "$scenario") ;;
    esac
    (
        cd "$terrain/salle" &&
            env -i PATH="$PATH" LC_ALL=C GLIBC_TUNABLES="$sans_choix" valgrind --tool=callgrind \
                --callgrind-out-file=/dev/null "${commande[@]}" >"$terrain/journal" 2>&1
    ) || {
        cat "$terrain/journal" >&2
        return 1
    }
    local compte
    compte=$(sed -n 's/^==[0-9]*== Collected : \([0-9]*\)$/\1/p' "$terrain/journal")
    if [ -z "$compte" ]; then
        cat "$terrain/journal" >&2
        echo "$1: no count of instructions" >&2
        return 1
    fi
    echo "$compte"
}

# pour_cent COUNT ALLOWED: how far the first lies above the second, to two decimals.
pour_cent() {
    awk -v n="$1" -v permis="$2" 'BEGIN { printf "%+.2f", (n - permis) * 100 / permis }'
}

statut=0 neuf=
while read -r nom permis; do
    compte=$(instructions "$nom") || exit 1
    neuf+="$nom $compte"$'\n'
    verdict=
    if ((compte * 100 > permis * 105)); then
        verdict="TOO MANY" statut=1
    elif ((compte * 100 < permis * 95)); then
        verdict="fewer: bench/budget.sh --renouvelle"
    fi
    printf '%-10s %12d instructions of %12d  %s %%  %s\n' "$nom" "$compte" "$permis" \
        "$(pour_cent "$compte" "$permis")" "$verdict"
done <bench/budget.txt
[ "${1:-}" = --renouvelle ] || exit "$statut"
printf '%s' "$neuf" >bench/budget.txt
