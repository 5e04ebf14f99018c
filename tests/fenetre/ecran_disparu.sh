#!/usr/bin/env bash
# The display server goes, as when a graphical session breaks down: the program ends, so that the next start finds its
# directory free. Usage: ecran_disparu.sh PROGRAM SOURCES
. "$(dirname "$0")/ecran.sh"
mode=--plein-ecran
ouvre_ecran
lance_programme
kill "$pid_ecran"
attend 5000 est_fini || { kill -KILL "$pid_programme"; DISPLAY='' echoue "the program outlives its display"; }
