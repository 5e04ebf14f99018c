#!/usr/bin/env bash
# A working directory that may only be read: what cannot be kept is said, and nothing is shown as sent.
# Usage: lecture_seule.sh PROGRAM SOURCES [EMULATOR]
. "$(dirname "$0")/lieu.sh"
garnit
mkdir "$terrain/vide"
if [ "$(id -u)" = 0 ]; then # nothing is read-only for root
    comme=(setpriv --reuid 65534 --regid 65534 --clear-groups env "HOME=$terrain/maison")
    cp "$programme" "$terrain" # others may not enter root's own directories, where the sources may lie
    programme=$terrain/$(basename "$programme")
    "${comme[@]}" test -x "$programme" || { echo "others may not enter $terrain: not tried" && exit 77; }
    mkdir "$terrain/maison"
    chown -R 65534:65534 "$terrain"
    if [ -n "$emulateur" ]; then
        prefixe_propre=oui
        comme+=("WINEPREFIX=$terrain/maison/wine" "WINEDLLOVERRIDES=mscoree,mshtml=" WINEDEBUG=-all)
        "${comme[@]}" wineboot -i >/dev/null 2>&1 </dev/null || exit 77
    fi
fi
chmod -R a-w "$tablette" "$terrain/vide"

{
    prend_une_commande
    cat <<'COMMANDES'
verifie Label1 "La commande n'a pas pu être écrite, elle reste dans la note !"
touche "Fermer"
verifie lignes g1 2
touche "Fermer"
touche "Quitter"
touche "Oui"
verifie Label1 "La note n'a pas pu être gardée et sera perdue, fermer quand même ?"
touche "Oui"
verifie arret
COMMANDES
} | joue "$tablette"
[ "$(livrees)" = 0 ] && [ "$(attentes)" = 0 ] || echoue "$(livrees) delivered, $(attentes) waiting"
echo "a tablet that was set up"

joue "$tablette" <<'COMMANDES'
touche "Sophie"
touche logil
attend 100
touche "5"
touche "8"
touche "2"
touche "6"
touche "Valider"
verifie ecran ch_outils
attend 300
verifie g1 1 1 "12"
touche g1 1 0
verifie ecran clav_num
attend 100
touche "C"
touche "Valider"
verifie Label1 "Le réglage n'a pas pu être enregistré, il reste ce qu'il était !"
touche "Fermer"
verifie g1 1 1 "12"
COMMANDES
echo "a setting"

joue "$terrain/vide" <<'COMMANDES'
verifie Label1 "Rien ne peut être écrit dans le répertoire de travail, le logiciel s'arrête : prévenez le technicien !"
touche "Fermer"
verifie arret
COMMANDES
echo "an empty one"
