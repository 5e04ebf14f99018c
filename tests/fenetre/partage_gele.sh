#!/usr/bin/env bash
# The shared directory freezes for real under the open window: every touch is answered all the same, the row says so,
# and the order leaves once it is free again. Usage: partage_gele.sh PROGRAM SOURCES
. "$(dirname "$0")/ecran.sh"
mv "$terrain/reseau" "$terrain/distant"
mkdir "$terrain/reseau"
bindfs --no-allow-other -f "$terrain/distant" "$terrain/reseau" 2>/dev/null &
pid_montage=$!
attend 5000 mountpoint -q "$terrain/reseau" || { echo "no FUSE here: not tried"; pid_montage= && exit 77; }
ouvre_ecran
lance_programme

# A touch on the house refreshes.
relance_et_livre() {
    clique 1244 13
    sleep 0.2
    une_livree
}

kill -STOP "$pid_montage"
debut=$(date +%s%3N)
prend_commande
clique 442 463 # Oui
duree=$(($(date +%s%3N) - debut))
echo "an order was taken in $duree ms with the directory frozen"
attend 8000 est_peint 870 730 D98E04 || echoue "the row does not say that the network is away"
compgen -G "$terrain/*_01_012_004_.-A-" >/dev/null || echoue "the order does not wait"
clique 534 129 # a family, while the probe hangs: its table is asked for
attend 1000 est_peint 1168 730 23704F || echoue "a touch is not answered while the directory is frozen"
clique 1168 687 # Valider

kill -CONT "$pid_montage"
attend 10000 relance_et_livre || echoue "the order has not left"
! compgen -G "$terrain/*.-A-" >/dev/null || echoue "the order waits still"
echo "the order has left"
