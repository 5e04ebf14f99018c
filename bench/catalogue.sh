# A large house, for the scripts that measure: they source this file at the root of the sources.
# shellcheck shell=bash

# pose_catalogue DIRECTORY ARTICLES: in place of those of the demonstration, of which the directory is a copy.
pose_catalogue() {
    {
        grep -av '^#ARTI#' demo/worvalune.wdo
        awk -v n="$2" 'BEGIN { for (i = 0; i < n; i++)
            printf "#ARTI#00000%.0f  |DES:Article %d|PVE:12.50|FA1:%d|FA2:0\r\n", 8880000000000 + i, i, 1 + i % 140 }'
    } >"$1/worvalune.wdo"
    cp "$1/worvalune.wdo" "$1/reseau"
}
