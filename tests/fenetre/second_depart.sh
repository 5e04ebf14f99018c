#!/usr/bin/env bash
# Starts on a directory where the program runs already: they end, and the first one comes to the front, refreshed; also
# when it is frozen. A start on another directory runs beside it; after a crash the directory is free at once.
# Usage: second_depart.sh PROGRAM SOURCES [EMULATOR]
. "$(dirname "$0")/ecran.sh"
autre=$terrain/autre
mkdir "$autre"
cp -r "$terrain"/*.wdo "$terrain/reseau" "$autre"

fenetres() { xdotool search --onlyvisible --name '^Orvalune$' 2>/dev/null | wc -l; }
sont() { [ "$(fenetres)" = "$1" ]; }
est_gele() { ! grep -L '^State:.T' "/proc/$pid_programme"/task/*/status | grep -q .; }
est_a_l_accueil() { est_peint 240 60 C24B45; }
est_aux_serveurs() { est_peint 40 60 3F72A8 && ! est_a_l_accueil; }

# second PATH WINDOWS [SAYS]: a start there ends well and soon, and says nothing or that; meanwhile and afterwards there
# are so many windows.
second() {
    local debut duree
    debut=$(date +%s%3N)
    (demarre "$1" "$terrain/dit") &
    while kill -0 $! 2>/dev/null; do
        sont "$2" || echoue "a second start shows a window of its own"
        [ $(($(date +%s%3N) - debut)) -lt 20000 ] || echoue "a second start does not end"
    done
    wait $! || echoue "a second start ends with status $?"
    duree=$(($(date +%s%3N) - debut))
    sont "$2" || echoue "windows after a second start: $(fenetres)"
    [ "$(grep Orvalune "$terrain/dit" | tr -d '\r')" = "${3:-}" ] || echoue "a second start says: $(cat "$terrain/dit")"
    echo "a second start ended after $duree ms"
}

ouvre_ecran
lance_programme
clique 164 129 # Sophie
attend 3000 est_a_l_accueil || echoue "the home page is not shown"

demarre "$autre" &
pid_autre=$!
trap 's=$?; kill "$pid_autre" 2>/dev/null; (exit "$s"); finit' EXIT
attend 20000 sont 2 || echoue "a start on another directory shows no window"
attend 20000 est_aux_serveurs || echoue "the other window does not cover the first one"
echo "another directory has a window of its own"

printf 'attend' >"$terrain/2021-05-19-12-30-00_01_001_001_.-A-"
reglages=$(stat -c '%Y %s' "$terrain"/*.wdo)
second "$terrain" 2
attend 5000 est_a_l_accueil || echoue "the first window has not come to the front"
attend 5000 test -e "$terrain/reseau/2021-05-19-12-30-00_01_001_001_.txt" || echoue "the first program has not refreshed"
[ "$(stat -c '%Y %s' "$terrain"/*.wdo)" = "$reglages" ] || echoue "a second start has written to the directory"
kill "$pid_autre"
attend 5000 sont 1 || echoue "the other window stays"

ln -s "$terrain" "$terrain/lien"
if [ -n "$emulateur" ]; then detour=${terrain^^}/autre/..; else detour=$terrain/lien/autre/..; fi
second "$detour" 1
kill -STOP "$pid_programme"
attend 5000 est_gele
second "$terrain" 1 "Orvalune est déjà ouvert et ne répond pas, ou un autre utilisateur s'en sert : fermez-le d'abord."
kill -CONT "$pid_programme"

kill -KILL "$pid_programme"
wait "$pid_programme" 2>/dev/null
attend 5000 sont 0 || echoue "the killed program's window stays"
lance_programme
echo "after a crash the directory is free"
second "$terrain" 1
