# The demonstration restaurant in a directory of its own, for the scripts that play on it: they source this file at the
# root of the sources.
# shellcheck shell=bash

# A fresh copy; with a second word, width and height, on a screen of that format (the second record of the settings).
copie_demonstration() {
    rm -rf "$1"
    mkdir -p "$1"
    cp demo/*.wdo "$1"
    cp -r demo/reseau "$1/reseau"
    [ -z "${2:-}" ] && return
    printf '#I#0:%05d:%05d    ' "${2%x*}" "${2#*x}" |
        dd of="$1/wwinqx42.wdo" bs=20 seek=1 conv=notrunc status=none
}

# The orders of an evening: time, table, lines, state and since when.
commandes='19:40:00 012 9 collectée 19:41:00
19:51:00 033 2 à_vérifier 19:51:00
19:58:00 007 5 collectée 19:58:00
20:02:00 021 12 collectée 20:03:00
20:10:00 018 4 déposée 20:10:00
20:11:00 004 3 déposée 20:11:00
20:14:00 012 7 en_attente 20:14:00'

# Writes them into a working directory, which loses its network directory so that nothing changes them.
pose_commandes() {
    local jour=2021-05-19 heure table lignes etat depuis nom
    rm -rf "$1/reseau"
    while read -r heure table lignes etat depuis; do
        nom=${jour}-${heure//:/-}_01_${table}_004_.
        case $etat in # the files that tell its state; a deposited one also says in which directory, "reseau"
            en_attente) printf 'commande\r\n' >"$1/$nom-A-" ;;
            déposée) printf 'commande\r\n' >"$1/${nom}dcfc60ce.-T-" ;;
            à_vérifier) printf 'commande\r\n' >"$1/$nom-V-" ;;
        esac
        printf '%s;01;%s;004;%s;%s;%s;%s\r\n' "$jour $heure" "$table" "$lignes" "${etat/_/ }" "$jour $depuis" "$nom"
    done <<<"$commandes" | iconv -f utf-8 -t cp1252 >"$1/suivi.txt"
}
