#!/usr/bin/env bash
# The Windows installer under Wine, in a Windows of its own: installs, updates and uninstalls without a question.
# Usage: installeur.sh INSTALLER SOURCES DIRECTORY
set -euo pipefail

installeur=$1 sources=$2 essai=$3
export WINEPREFIX=$essai/windows WINEDLLOVERRIDES="mscoree,mshtml=" WINEDEBUG=-all
rm -rf "$essai"
mkdir -p "$WINEPREFIX"
# Wine's helpers would keep the output of the test open: they are started apart.
wineserver -p >/dev/null 2>&1 </dev/null
trap 'wineserver -k >/dev/null 2>&1 || true' EXIT
wine cmd /c exit >/dev/null 2>&1 </dev/null

programme=$WINEPREFIX/drive_c/Été/Orvalune
dossier=$(wine cmd /c 'echo %LOCALAPPDATA%\Orvalune' 2>/dev/null | tr -d '\r')
travail=$(winepath -u "$dossier")
echec() {
    echo "FAILED: $*" >&2
    exit 1
}
# statut EXPECTED COMMAND...
statut() {
    local attendu=$1 trouve=0
    shift
    timeout 60 "$@" >"$essai/sortie" 2>&1 </dev/null || trouve=$?
    [ "$trouve" -eq "$attendu" ] || { cat "$essai/sortie"; echec "status $trouve, not $attendu: $*"; }
}
installe() { statut "$1" wine "$installeur" /S "${@:2}" '/D=C:\Été\Orvalune'; }
desinstalle() { statut "$1" wine "$programme/desinstalle.exe" /S '_?=C:\Été\Orvalune'; }
# valeur KEY NAME: a text of the registry, nothing when there is none
valeur() { wine reg query "HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\$1" /v "$2" 2>&1 | tr -d '\r' | sed -n 's/^.*REG_SZ *//p'; }
demarrage() { valeur Run Orvalune; }
inscrit() { valeur 'Uninstall\Orvalune' "$1"; }
# wfichdir FIRST LINE, in the bytes of the code page
wfichdir() {
    { printf "$1\r\n" && printf ' \r\n%.0s' {1..11}; } | cmp - "$travail/wfichdir.wdo" || echec "wfichdir.wdo after $2"
}

# A new tablet.
installe 0 '/RESEAU=\\serveur\Café bar'
wfichdir '\\\\serveur\\Caf\xe9 bar' "an installation"
[ -s "$programme/orvalune.exe" ] || echec "no program in $programme"
[ -z "$(demarrage)" ] || echec "starts at logon, and nobody asked for it"
[[ $(inscrit UninstallString) == *'\Orvalune\desinstalle.exe"' ]] || echec "not listed among the programs"
raccourci=$WINEPREFIX/drive_c/users/$(id -un)/AppData/Roaming/Microsoft/Windows/"Start Menu"/Programs/Orvalune.lnk
[ "$(tr -d '\0' <"$raccourci" | grep -acF -- "--dossier \"$dossier\"")" -gt 0 ] || echec "the shortcut does not name $dossier"

# What must not change it.
installe 2 '/RESEAU=\\serveur\Ω'
wfichdir '\\\\serveur\\Caf\xe9 bar' "a directory that the code page does not have"

# The installed program serves a lunch in its working directory.
installe 0 /RESEAU=reseau
wfichdir reseau "another directory"
for fichier in "$sources"/demo/*.wdo; do
    [ "${fichier##*/}" = wfichdir.wdo ] || cp "$fichier" "$travail"
done
cp -r "$sources/demo/reseau" "$travail"
mkdir "$essai/captures"
statut 0 wine "$programme/orvalune.exe" --dossier "$dossier" --rejoue "$sources/demo/service.txt" --captures "$essai/captures"
[ "$(find "$travail/reseau" -name '*_.txt' | wc -l)" -eq 13 ] || echec "the replay did not deliver its 13 orders"

# An update keeps what the restaurant has changed.
printf 'ailleurs\r\n' >"$travail/wfichdir.wdo"
printf '#VERSION#2.1' >"$travail/2021-05-19-12-30-00_01_007_004_.-A-"
cp -r "$travail" "$essai/avant"
installe 0 /DEMARRAGE
diff -r "$travail" "$essai/avant" || echec "an update changed the working directory"
[[ $(demarrage) == *"\\Orvalune\\orvalune.exe\" --dossier \"$dossier\""* ]] || echec "does not start at logon: $(demarrage)"
installe 0
[ -n "$(demarrage)" ] || echec "an update forgot the start at logon"
installe 0 /DEMARRAGE=non
[ -z "$(demarrage)" ] || echec "still starts at logon"
installe 0 /DEMARRAGE

# Over a program that runs: refused, and the program stays whole.
mkfifo "$essai/commandes"
wine "$programme/orvalune.exe" --dossier "$dossier" --rejoue - <"$essai/commandes" >"$essai/reponses" 2>&1 &
ouvert=$!
exec 3>"$essai/commandes"
echo 'lit ecran' >&3
for ((i = 0; i < 100; i++)); do
    grep -q '^ok' "$essai/reponses" && break
    sleep 0.1
done
cp "$programme/orvalune.exe" "$essai/programme"
installe 2
desinstalle 2
cmp "$programme/orvalune.exe" "$essai/programme" || echec "the running program was changed"
echo fin >&3
exec 3>&-
wait "$ouvert" || echec "the program did not outlive it"

# Uninstalled: the program goes, orders and settings stay.
rm -rf "$essai/avant"
cp -r "$travail" "$essai/avant"
desinstalle 0
[ ! -e "$programme/orvalune.exe" ] || echec "the program is still there"
[ -z "$(demarrage)$(inscrit DisplayName)" ] || echec "still in the registry"
[ ! -e "$raccourci" ] || echec "the shortcut is still there"
diff -r "$travail" "$essai/avant" || echec "uninstalling changed the working directory"
