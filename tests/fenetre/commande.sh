#!/usr/bin/env bash
# One whole order in the real window, touch by touch. Usage: commande.sh PROGRAM SOURCES
. "$(dirname "$0")/ecran.sh"
ouvre_ecran
lance_programme
prend_commande
envoie_commande
