#!/usr/bin/env bash
# The kiosk as its unit starts it: cage on a screen of ours, Xwayland within, and the terminal within that. It fills the
# screen, hears finger and keyboard, takes an order, and cage ends with it; a stop keeps the note, and the next start
# goes. Without Xwayland it says so. Usage: kiosque.sh PROGRAM SOURCES
. "$(dirname "$0")/ecran.sh"
for outil in cage Xwayland; do
    command -v $outil >/dev/null || { echo "no $outil here: not tried" && exit 77; }
done
unite=$sources/livraison/linux/orvalune-kiosk.service
cp "$programme" "$terrain/orvalune"
mkdir -m 700 "$terrain/session"
personne=() # cage starts for nobody who may become root
if [ "$(id -u)" = 0 ]; then
    personne=(setpriv --reuid nobody --regid nogroup --clear-groups)
    chown -R nobody:nogroup "$terrain"
fi

# The unit's command with its environment, on our paths; what it tells goes to a file.
mapfile -t reglages < <(sed -n 's/^Environment=//p' "$unite")
read -ra commande < <(sed -n "s|/usr/bin/orvalune|$terrain/orvalune|; s|/var/lib/orvalune|$terrain|; s/^ExecStart=//p" "$unite")
demarre() {
    exec env -u WAYLAND_DISPLAY XDG_RUNTIME_DIR="$terrain/session" WLR_BACKENDS=x11 WLR_RENDERER=pixman \
        ${sans_xwayland:+WLR_XWAYLAND=/nonexistent} "${reglages[@]}" "${personne[@]}" "${commande[@]}" 2>"$terrain/dit"
}

est_mort() { ! grep -qs '^State:.[^ZX]' "/proc/$1/status"; }

# The terminal is the child of cage; its display is Xwayland's.
trouve_le_terminal() {
    local enfants
    enfants=$(cat "/proc/$pid_programme/task/$pid_programme/children" 2>/dev/null)
    pid_terminal=${enfants%% *}
    [ -n "$pid_terminal" ] || return 1
    interieur=$(tr '\0' '\n' <"/proc/$pid_terminal/environ" | sed -n 's/^DISPLAY=://p')
    [ "$(cat "/proc/$pid_terminal/comm")" = orvalune ]
}

lance_kiosque() {
    lance_programme
    trouve_le_terminal || echoue "cage has not started the terminal"
    [ -n "$interieur" ] && [ ":$interieur" != "$DISPLAY" ] || echoue "the terminal is not shown by way of Xwayland"
    # The output is as large as the screen only after the first page is there.
    xdotool windowsize "$(xwininfo -root -children | awk '$1 ~ /^0x/ { print $1; exit }')" 1280 800
    attend 15000 couvre_tout || echoue "the terminal does not fill the screen"
}

# Cage cleans up when the terminal ends; one that was killed leaves the name of Xwayland's display behind,
# which another server may have taken since.
range() {
    local statut=$?
    if [ -n "${pid_programme:-}" ] && trouve_le_terminal; then
        kill "$pid_terminal"
        attend 15000 est_mort "$pid_programme"
    fi
    local possesseur
    possesseur=$(tr -dc 0-9 2>/dev/null <"/tmp/.X${interieur:-}-lock") && est_mort "$possesseur" &&
        rm -f "/tmp/.X$interieur-lock" "/tmp/.X11-unix/X$interieur"
    (exit "$statut")
    finit
}
trap range EXIT

ouvre_ecran -ac
lance_kiosque
ouvre_article
clique 300 300 # a row for a remark
attend 15000 est_peint 1032 640 23704F || echoue "the keyboard is not shown"
xdotool key q 2 Return # the places of these keys, which a French keyboard calls a and é
attend 15000 est_peint 1168 730 23704F || echoue "Enter does not accept the remark"
envoie_note
envoie_commande
LC_ALL=C grep -qaF $'a\xE9' "$terrain"/reseau/*_01_012_004_.txt || echoue "the keyboard is not French"

attend 15000 est_peint 240 60 C24B45 || echoue "the home page is not shown again"
clique 1168 687 # Quitter
attend 15000 est_peint 330 440 23704F || echoue "the question is not asked"
clique 442 463 # Oui
attend 15000 est_fini || echoue "cage outlives the terminal"
wait "$pid_programme" || echoue "cage ends with status $?"
echo "the terminal ends cage"

# A cage that is asked to end may crash over it: Debian 12's does.
lance_kiosque
ouvre_article
clique 1168 687 # Valider
attend 15000 est_peint 40 60 C24B45 || echoue "the articles are not shown again"
kill "$pid_programme"
attend 15000 est_fini || echoue "cage does not end"
attend 15000 est_mort "$pid_terminal" || echoue "the terminal outlives cage"
wait "$pid_programme" 2>/dev/null
grep -q 8880000000024 "$terrain/prov.txt" || echoue "the note in hand is lost"
lance_kiosque
kill "$pid_terminal"
attend 15000 est_fini || echoue "cage outlives a terminal that is asked to end"
echo "a stopped kiosk keeps the note, and starts again"

sans_xwayland=oui
(demarre "$terrain")
grep -q "installez le paquet xwayland\.$" "$terrain/dit" || echoue "without Xwayland it says: $(cat "$terrain/dit")"
echo "it says what it lacks"
