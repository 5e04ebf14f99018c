# A large house, for the scripts that measure: they source this file at the root of the sources.
# shellcheck shell=bash

# pose_catalogue DIRECTORY ARTICLES: in place of the demonstration's, in a copy of it.
pose_catalogue() {
    awk -v n="$2" 'BEGIN { ORS = "\r\n"; print "#SERV#01 Sophie"; print "#FAMI#02 Viandes"; print "#TABL#1"
        for (i = 0; i < n; i++)
            printf "#ARTI#00000%.0f  |DES:Article %d|PVE:12.50|FA1:%d|FA2:0%s", 8880000000000 + i, i, 1 + i % 140, ORS }' \
        >"$1/worvalune.wdo"
    cp "$1/worvalune.wdo" "$1/reseau"
}
