#!/usr/bin/env bash
# An order on a display that shares no memory with its programs, as one across a network: the same picture, sent, and a
# remark typed on a French keyboard, with a dead key and a composed sign; what is meant for others types nothing. Usage: clavier.sh PROGRAM SOURCES
. "$(dirname "$0")/ecran.sh"

ouvre_ecran
lance_programme
photographie partage
kill "$pid_programme" "$pid_ecran"
wait "$pid_programme" "$pid_ecran" 2>/dev/null
ouvre_ecran -extension MIT-SHM
lance_programme
attend 15000 est_pareil partage || echoue "the pictures differ"

ouvre_article
clique 300 300 # a row for a remark
attend 15000 est_peint 1032 640 23704F || echoue "the keyboard is not shown"
xdotool key a
attend 15000 est_peint 202 365 1F2A36 || echoue "a letter is not heard"
setxkbmap fr -option compose:menu
xdotool key alt+b super+c dead_circumflex e eacute EuroSign w BackSpace Multi_key o e dead_circumflex d Return
attend 15000 est_peint 1168 730 23704F || echoue "Enter does not accept the remark"
envoie_note
envoie_commande
LC_ALL=C grep -qaF $'a\xEA\xE9\x80\x9Cd' "$terrain"/reseau/*_01_012_004_.txt || echoue "the remark is not the one that was typed"
echo "the remark has arrived"
