# Other houses than that of the demonstration, for the scripts that measure: they source this file at the root of the
# sources.
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

# pose_petites_touches DIRECTORY: twenty servers on eight columns, whose keys are about as large as those of the peers.
pose_petites_touches() {
    {
        for n in {1..20}; do printf '#SERV#%02d Article %d\r\n' "$n" "$n"; done
        grep -av '^#SERV#' demo/worvalune.wdo
    } >"$1/worvalune.wdo"
    cp "$1/worvalune.wdo" "$1/reseau"
    local record valeur
    # Settings: width and height of a server's key in cells, keys per page, columns and rows of the grid.
    while read -r record valeur; do
        printf '#I#%-17s' "$valeur" | dd of="$1/wwinqx42.wdo" bs=20 seek=$((record - 1)) conv=notrunc status=none
    done <<<$'11 1\n12 1\n13 20\n25 8\n26 5'
}
