#!/usr/bin/env bash
# One whole order in the real window, touch by touch. Usage: commande.sh PROGRAM SOURCES
. "$(dirname "$0")/ecran.sh"
ouvre_ecran
lance_programme
prend_commande
clique 442 463 # Oui
attend 5000 une_livree || echoue "the order has not arrived"
grep -q '^#REF#8880000000024  {2.00}' "$terrain"/reseau/*_01_012_004_.txt || echoue "the order is not the one that was taken"
echo "the order has arrived"
