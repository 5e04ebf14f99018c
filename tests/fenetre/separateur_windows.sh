#!/usr/bin/env bash
# A Windows that writes numbers with a comma: the first run sets the point for good, says so and does nothing else; the
# second one starts as always. Usage: separateur_windows.sh PROGRAM SOURCES EMULATOR
. "$(dirname "$0")/ecran.sh"
reglages='HKCU\Control Panel\International'
separateur() { "$emulateur" reg query "$reglages" /v sDecimal 2>/dev/null </dev/null | tr -d '\r' | awk '$1 == "sDecimal" { print $3 }'; }

ouvre_ecran
"$emulateur" reg add "$reglages" /v sDecimal /d , /f >/dev/null 2>&1 </dev/null
[ "$(separateur)" = , ] || echoue "the comma is not set"
rm -f "$terrain/w_styl72.wdo" "$terrain/reseau/Test.res"

demarre "$terrain" &
pid_programme=$!
attend 20000 est_peint 640 262 2F5D8A || echoue "the message is not shown"
[ "$(separateur)" = . ] || echoue "the point is not set"
donne_le_clavier
xdotool key Escape
attend 10000 est_fini || echoue "the program does not end"
wait "$pid_programme" || echoue "the program ends with status $?"
for fichier in w_styl72.wdo reseau/Test.res; do
    [ ! -e "$terrain/$fichier" ] || echoue "the run that corrects has written $fichier"
done
echo "the first run has set the point"

lance_programme
[ "$(separateur)" = . ] || echoue "the point has not lasted"
echo "the second run started"
