#!/usr/bin/env bash
# A disk that is full, for real: the order is refused and stays in the note, and is sent once there is room again. Then the
# network directory's disk: the order waits on the tablet. Skipped (77) where nothing may be mounted.
# Usage: disque_plein.sh PROGRAM SOURCES [EMULATOR]
# Who is not root is so in a name space of his own; the emulator would be started there a second time.
if [ "$(id -u)" != 0 ] && [ -z "${3:-}" ] && unshare -rm true 2>/dev/null; then exec unshare -rm "$0" "$@"; fi
. "$(dirname "$0")/lieu.sh"
mount -t tmpfs -o size=4m,mode=755 orvalune "$tablette" 2>/dev/null || { echo "nothing may be mounted here: not tried" && exit 77; }
garnit
remplit() { dd if=/dev/zero of="$tablette/plein" bs=4k 2>/dev/null; }

echo 'verifie ecran Form1' | joue "$tablette" # what a start makes
remplit
{
    prend_une_commande
    cat <<'COMMANDES'
verifie Label1 "La commande n'a pas pu être écrite, elle reste dans la note !"
touche "Fermer"
verifie ecran eta_com
verifie lignes g1 2
verifie Label4 "12"
capture refusee.png
COMMANDES
    for ((i = 0; i < 1000; i++)); do [ ! -s "$terrain/captures/refusee.png" ] && sleep 0.02; done
    [ "$(attentes)" = 0 ] || echo 'verifie Label4 "nothing was to be left of the refused order"'
    rm "$tablette/plein"
    cat <<'COMMANDES'
touche "Envoyer"
touche "Oui"
verifie Label1 "La commande à été envoyée !"
attend 2000
COMMANDES
} | joue "$tablette"
[ "$(livrees)" = 1 ] && [ "$(attentes)" = 0 ] || echoue "$(livrees) delivered, $(attentes) waiting"
echo "a full tablet"

mv "$terrain/reseau" "$tablette/reseau"
rm "$tablette"/reseau/*_01_012_004_.txt
cp "$tablette"/*.wdo "$terrain/captures"
printf '%s\r\n' "$(chemin "$tablette/reseau")" >"$terrain/captures/wfichdir.wdo"
remplit
{
    prend_une_commande
    echo 'verifie Label1 "La commande à été envoyée !"'
    echo 'attend 2000'
} | joue "$terrain/captures"
[ "$(find "$terrain/captures" -name '*-A-' | wc -l)" = 1 ] || echoue "the order does not wait"
[ "$(find "$tablette/reseau" -name '*.tmp_' | wc -l)" = 0 ] || echoue "a part of it lies in the network directory"
rm "$tablette/plein"
echo 'touche "Sophie"' | joue "$terrain/captures"
[ "$(find "$terrain/captures" -name '*-A-' | wc -l)" = 0 ] || echoue "the order still waits"
[ "$(find "$tablette/reseau" -name '*_01_012_004_.txt' | wc -l)" = 1 ] || echoue "the order was not delivered"
echo "a full network directory"
