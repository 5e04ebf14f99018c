# The rooms of src/, for the scripts that check and draw them: they source this file within src/.
# shellcheck shell=bash disable=SC2034

# From top to bottom; a room uses those below it. Behind ":" the rooms that it keeps to.
table='
main.cpp
main_screen
config
dialogs
cuisine: data platform/peinture platform/controles platform/liaison platform/console platform/systeme
carte: data platform/peinture platform/controles platform/tableur platform/console platform/systeme
data: platform/systeme
platform/rejeu
platform/ecran
platform/peinture
platform/controles
platform/liaison
platform/tableur
platform/console
platform/systeme
'

# Every include of one of the tree's own headers, in quotes or in angle brackets: "file:line", the file's room, the
# header, the header's room.
inclusions() {
    local dossiers
    dossiers=$(find . -mindepth 1 -maxdepth 1 -type d -printf '%f|')
    grep -rnE "^[[:space:]]*#[[:space:]]*include[[:space:]]*(\"|<(${dossiers%|})/)" . |
        sed -E 's|^\./([^:]*:[0-9]+):[^"<]*["<]([^">]*)[">].*|\1 \2|' | awk '
        function salle(chemin) { sub("/[^/]*$", "", chemin); return chemin }
        { fichier = $1; sub(":.*", "", fichier); print $1, salle(fichier), $2, salle($2) }'
}

# The files of a room.
fichiers_de() {
    find "$1" -maxdepth 1 -type f
}
