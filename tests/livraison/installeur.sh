#!/usr/bin/env bash
# The Windows installer under Wine, in a Windows of its own: installs, updates and uninstalls without a question.
# Usage: installeur.sh COMPILER SOURCES DIRECTORY [INSTALLER]
set -euo pipefail

compilateur=$1 sources=$2 essai=$3 installeur=${4-}
echec() {
    echo "FAILED: $*" >&2
    exit 1
}
[ -n "$installeur" ] || echec "there is no installer: makensis was missing when the build was configured (package nsis)"
# Wine does not run its own icacls when there is another one, and puts nothing into the menus of this desktop.
export WINEPREFIX=$essai/windows WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe=;icacls.exe=n" WINEDEBUG=-all
rm -rf "$essai"
mkdir -p "$WINEPREFIX"
touch "$essai/ligne"   # the last command line tried as it is
"$compilateur" -std=c++20 -static -s -o "$essai/lance.exe" "$sources/tests/livraison/lance.cpp"
# Wine's helpers would keep the output of the test open: they are started apart.
wineserver -p >/dev/null 2>&1 </dev/null
trap 'wineserver -k >/dev/null 2>&1 || true' EXIT
wine cmd /c exit >/dev/null 2>&1 </dev/null

disque=$WINEPREFIX/drive_c
cp "$essai/lance.exe" "$disque/windows/system32/icacls.exe"
programme=$disque/Été/Orvalune
pour_tous="$disque/Program Files/Orvalune"
commun=$disque/ProgramData/Orvalune
profil=$disque/users/$(id -un)
dossier=$(wine cmd /c 'echo %LOCALAPPDATA%\Orvalune' 2>/dev/null | tr -d '\r')
travail=$(winepath -u "$dossier")
sous_windows=$(winepath -w "$installeur")
menu="Microsoft/Windows/Start Menu/Programs/Orvalune.lnk"
raccourci=$profil/AppData/Roaming/$menu
manuel="$(dirname "$raccourci")/Manuel d'Orvalune.lnk"
relire=${raccourci%/*}/Relire\ la\ carte.lnk

# statut EXPECTED COMMAND...
statut() {
    local attendu=$1 trouve=0
    shift
    timeout 120 "$@" >"$essai/sortie" 2>&1 </dev/null || trouve=$?
    [ "$trouve" -eq "$attendu" ] || { cat "$essai/sortie" "$essai/ligne"; echec "status $trouve, not $attendu: $*"; }
}
installe() { statut "$1" wine "$installeur" /S "${@:2}" '/D=C:\Été\Orvalune'; }
desinstalle() { statut "$1" wine "$programme/desinstalle.exe" /S '_?=C:\Été\Orvalune'; }
# brute STATUS COMMAND_LINE [sans-droits]: as a technician types it, quotes and all
brute() {
    printf %s "$2" >"$essai/ligne"
    statut "$1" wine "$essai/lance.exe" "$essai/ligne" ${3-}
}
# ligne STATUS OPTIONS [sans-droits]: the silent installer
ligne() { brute "$1" "\"$sous_windows\" /S $2" ${3-}; }
# sans_attendre DIRECTORY: the uninstaller as Windows calls it, which comes back before it has finished
sans_attendre() {
    statut 0 wine "$1/desinstalle.exe" /S
    for ((i = 0; i < 100; i++)); do
        [ ! -e "$1" ] && return
        sleep 0.1
    done
    echec "after uninstalling: $(ls "$1")"
}
# valeur ROOT KEY NAME: a text of the registry, nothing when there is none
valeur() { wine reg query "$1\\Software\\Microsoft\\Windows\\CurrentVersion\\$2" /v "$3" 2>&1 | tr -d '\r' | sed -n 's/^.*REG_SZ *//p'; }
demarrage() { valeur "${1-HKCU}" Run Orvalune; }
inscrit() { valeur "${2-HKCU}" 'Uninstall\Orvalune' "$1"; }
# wfichdir FIRST LINE, in the bytes of the code page
wfichdir() {
    { printf "$1\r\n" && printf ' \r\n%.0s' {1..11}; } | cmp - "$travail/wfichdir.wdo" || echec "wfichdir.wdo after $2"
}
# The files of every installation, wherever the sources themselves lie; the registry is written after them.
etat() { (cd "$disque" && find . -ipath '*orvalune*' -printf '%p %s %T@\n' | sort); }
# refuse REASON OPTIONS [sans-droits]: told, and nothing is changed by it
refuse() {
    local avant
    avant=$(etat)
    ligne 2 "${@:2}"
    grep -aqF -- "$1" "$essai/sortie" || { cat "$essai/sortie"; echec "the reason is not \"$1\": ${*:2}"; }
    [ "$(etat)" = "$avant" ] || { diff <(etat) <(echo "$avant"); echec "changed something: ${*:2}"; }
}
# An installed program that is not the one of the installer: an older one.
vieillit() { printf vieux >>"$1/orvalune.exe"; }
a_jour() { cmp -s "$1/orvalune.exe" "$essai/programme" || echec "the program of $1 is not the new one"; }

# A command line that is not understood installs nothing.
refuse 'Option inconnue : /RESEAUX=\\a\b' '/RESEAUX=\\a\b'
refuse 'Option inconnue : bar' '/RESEAU=\\serveur\Caf bar'
refuse 'signe / ' '/RESEAU=\\serveur\bar/DEMARRAGE'
refuse 'signe " ' '/RESEAU="\\serveur\bar\" /DEMARRAGE'
for rien in '' '\' '"\\"' '" "' '\\serveur' '\\serveur\'; do refuse 'pas complet' "/RESEAU=$rien"; done
refuse 'ne conna' '/RESEAU=\\serveur\Ω'
refuse "s'excluent" '/AllUsers /CurrentUser'
refuse 'Option inconnue : /DEMARRAGE=on' '/DEMARRAGE=on'
for nulle_part in '"C:\Un dossier"' 'C:\Orvalune /DEMARRAGE' 'Orvalune' 'C:\'; do
    refuse '/D= veut le chemin complet' "/D=$nulle_part"
done
refuse 'administrateur' '/AllUsers' sans-droits
[ -z "$(inscrit DisplayName)$(inscrit DisplayName HKLM)" ] || echec "listed among the programs, though refused"

# A new tablet, by its user.
ligne 0 '/RESEAU="\\serveur\Café bar" /D=C:\Été\Orvalune' sans-droits
wfichdir '\\\\serveur\\Caf\xe9 bar' "an installation"
[ -s "$programme/orvalune.exe" ] && [ -s "$programme/orvalune-cuisine.exe" ] || echec "no program in $programme"
[ -e "${raccourci%.lnk} Cuisine.lnk" ] || echec "the start menu has no kitchen"
cp "$programme/orvalune.exe" "$essai/programme"
[ -z "$(demarrage)" ] || echec "starts at logon, and nobody asked for it"
[[ $(inscrit UninstallString) == *'\Orvalune\desinstalle.exe"' ]] || echec "not listed among the programs"
[ "$(tr -d '\0' <"$raccourci" | grep -acF -- "--dossier \"$dossier\"")" -gt 0 ] || echec "the shortcut does not name $dossier"
[ -e "$manuel" ] && grep -qF 'id="13-installer"' "$programme/manuel.html" || echec "the manual is not in the menu"

[ -s "$programme/orvalune-carte.exe" ] || echec "no orvalune-carte in $programme"
[ "$(tr -d '\0' <"$relire" | grep -acF -- "\"$dossier\\carte\"")" -gt 0 ] || echec "the shortcut does not name the sheets' folder"
# What that shortcut starts: the example is written, and the page is made and shown.
statut 0 wine "$programme/orvalune-carte.exe" "$dossier\\carte"
[ -s "$travail/carte/articles.csv" ] || echec "no example in $travail/carte"

# Other ways to name a directory, and the program found where it is.
vieillit "$programme"
ligne 0 '/RESEAU=\\serveur\bar'
wfichdir '\\\\serveur\\bar' "a name without quotes"
a_jour "$programme"
ligne 0 '"/RESEAU=\\serveur\Café bar"'
wfichdir '\\\\serveur\\Caf\xe9 bar' "quotes around the option"
ligne 0 '"/RESEAU=\"\\serveur\le bar\""'
wfichdir '\\\\serveur\\le bar' "quotes in quotes"

# A second copy, which would have another working directory; also when another user has the first one.
refuse 'pour un seul utilisateur, dans C:\' '/AllUsers'
cle='Software\Microsoft\Windows\CurrentVersion\Uninstall\Orvalune'
wine reg add "HKU\\S-1-5-21-1-2-3-1001\\$cle" /v InstallLocation /d 'C:\Ailleurs' /f >/dev/null 2>&1
mkdir "$disque/Ailleurs"
touch "$disque/Ailleurs/orvalune.exe"
wine reg delete "HKCU\\$cle" /v InstallLocation /f >/dev/null 2>&1
refuse 'pour un seul utilisateur, dans C:\Ailleurs' '/AllUsers'
wine reg delete "HKU\\S-1-5-21-1-2-3-1001" /f >/dev/null 2>&1
rm -r "$disque/Ailleurs"

# An update keeps what the restaurant has changed.
installe 0 /RESEAU=reseau
wfichdir reseau "another directory"
printf 'ailleurs\r\n' >"$travail/wfichdir.wdo"
cp "$sources"/demo/{progppb,wwinqx42}.wdo "$travail"
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

# Over a program that runs: refused, wherever the new one is to be, and the program stays whole.
mkfifo "$essai/commandes"
wine "$programme/orvalune.exe" --dossier "$dossier" --rejoue - <"$essai/commandes" >"$essai/reponses" 2>&1 &
ouvert=$!
exec 3>"$essai/commandes"
echo 'lit ecran' >&3
for ((i = 0; i < 100; i++)); do
    grep -q '^ok' "$essai/reponses" && break
    sleep 0.1
done
refuse 'est ouvert' '/DEMARRAGE=non'
refuse 'est ouvert' '/D=C:\Été\Autre'
[ -n "$(demarrage)" ] || echec "a refused update changed the start at logon"
desinstalle 2
cmp "$programme/orvalune.exe" "$essai/programme" || echec "the running program was changed"
echo fin >&3
exec 3>&-
wait "$ouvert" || echec "the program did not outlive it"

# Moved to another directory by an update, and back: one program, which starts at logon from there.
ligne 0 '/D=C:\Été\Un autre'
[ ! -e "$programme" ] || echec "the program is in two directories"
[[ $(demarrage) == *'\Un autre\orvalune.exe"'* ]] || echec "starts from elsewhere: $(demarrage)"
ligne 0 '"/D=C:\Été\Orvalune"'
ligne 0 '/D=C:\ÉTÉ\..\Été\orvalune\'
a_jour "$programme"
[ ! -e "$disque/Été/Un autre" ] || echec "the program is in two directories"

# Uninstalled: the program goes, orders and settings stay.
rm -rf "$essai/avant"
cp -r "$travail" "$essai/avant"
desinstalle 0
[ ! -e "$programme/orvalune.exe" ] || echec "the program is still there"
[ -z "$(demarrage)$(inscrit DisplayName)" ] || echec "still in the registry"
[ ! -e "$programme/orvalune-carte.exe" ] || echec "orvalune-carte is still there"
for lien in "$raccourci" "${raccourci%.lnk} Cuisine.lnk" "$relire" "$manuel"; do
    [ ! -e "$lien" ] || echec "a shortcut is still there: $lien"
done
ligne 0 ''
sans_attendre "$profil/AppData/Local/Programs/Orvalune"
diff -r "$travail" "$essai/avant" || echec "uninstalling changed the working directory"

# For all users of the tablet: one program, one directory where all may write, and it starts for each of them.
ligne 0 '/AllUsers /RESEAU="\\serveur\orvalune" /DEMARRAGE'
[ "$(demarrage HKLM)" = '"C:\Program Files\Orvalune\orvalune.exe" --dossier "C:\ProgramData\Orvalune"' ] ||
    echec "does not start for all: $(demarrage HKLM)"
grep -aqF ' "C:\ProgramData\Orvalune" /grant *S-1-5-32-545:(OI)(CI)M /T' "$disque/icacls.txt" || echec "not everyone may write"
[ -e "$disque/ProgramData/$menu" ] && [ ! -e "$raccourci" ] || echec "the shortcut is not for all"
diff -r "$travail" "$essai/avant" || echec "an installation for all changed the directory of one"

# Its update by "/S" alone, with an order that waits.
printf '#VERSION#2.1' >"$commun/2021-05-19-12-30-00_01_007_004_.-A-"
cp -r "$commun" "$essai/commun"
vieillit "$pour_tous"
rm "$disque/icacls.txt"
ligne 0 ''
a_jour "$pour_tous"
[ -z "$(inscrit InstallLocation)$(demarrage)" ] || echec "an update made a second copy"
[ -n "$(demarrage HKLM)" ] || echec "an update forgot the start at logon"
[ -e "$disque/icacls.txt" ] || echec "an update does not give the files that came since to everyone"

# What cannot be done to it leaves it as it is.
vieillit "$pour_tous"
refuse 'pour tous les utilisateurs, dans C:\' '/CurrentUser'
refuse 'administrateur' '' sans-droits
brute 2 '"C:\Program Files\Orvalune\desinstalle.exe" /S _?=C:\Program Files\Orvalune' sans-droits
echo 5 >"$disque/icacls.txt"
ligne 2 ''
grep -aqF 'Les droits du dossier C:\ProgramData\Orvalune' "$essai/sortie" || echec "rights that are refused are not told"
[ "$(tail -c 5 "$pour_tous/orvalune.exe")" = vieux ] || echec "a failed update replaced the program"
diff -r "$commun" "$essai/commun" || echec "an update changed the common directory"
sans_attendre "$pour_tous"
[ -z "$(demarrage HKLM)$(inscrit DisplayName HKLM)" ] || echec "still in the registry of all"
[ ! -e "$disque/ProgramData/$menu" ] || echec "the shortcut of all is still there"
diff -r "$commun" "$essai/commun" || echec "uninstalling changed the common directory"
