#!/usr/bin/env bash
# A Windows program as it is shipped: what it needs of the system, how large it is, what it tells Windows of itself.
# Usage: programme.sh PROGRAM VERSION EDITION PREFIX_OF_BINUTILS [EMULATOR]
set -euo pipefail

programme=$1 version=$2 edition=$3 outils=$4
shift 4
fautes=0
faute() {
    echo "$*" >&2
    fautes=1
}

# Every Windows has these.
permises=" advapi32.dll gdi32.dll kernel32.dll msvcrt.dll user32.dll ws2_32.dll "
entetes=$("${outils}objdump" -p "$programme")
mapfile -t dll < <(sed -n 's/^.*dll name: //p' <<<"${entetes,,}")
[ ${#dll[@]} -ge 2 ] || faute "no import table was found"
for nom in "${dll[@]}"; do
    case $permises in *" $nom "*) ;; *) faute "needs $nom" ;; esac
done
nom=$(basename "$programme" .exe)
sous_systeme=CUI dit_son_nom=$nom
case $nom in
    orvalune) sous_systeme=GUI dit_son_nom=Orvalune description="Orvalune, prise de commande à table" ;;
    orvalune-carte) description="Orvalune, la carte du restaurant" ;;
    orvalune-cuisine) description="Orvalune, tickets de cuisine" ;;
esac
grep -q "^Subsystem.*(Windows $sous_systeme)" <<<"$entetes" || faute "is no program of the subsystem $sous_systeme"

octets=$(stat -c %s "$programme")
[ "$octets" -lt $((4 * 1024 * 1024)) ] || faute "$octets bytes: more than 4 MiB"
! grep -q '\.debug' <<<"$("${outils}objdump" -h "$programme")" || faute "holds debugging sections"

# Resources: the manifest is UTF-8 text, the version UTF-16.
ressources=$(mktemp)
trap 'rm -f "$ressources"' EXIT
"${outils}objcopy" -O binary -j .rsrc "$programme" "$ressources"
dit() { grep -aqF "$1" "$ressources" || faute "the manifest does not say: $1"; }
dit '>PerMonitorV2, PerMonitor</dpiAwareness>'
dit '>true/pm</dpiAware>'
dit '>UTF-8</activeCodePage>'
dit '>true</longPathAware>'
dit 'level="asInvoker" uiAccess="false"'
for systeme in 35138b9a-5d96-4fbd-8e2d-a2440225f93a 4a2f28e3-53b9-4441-ba9c-d69d4a4a6e38 \
    1f676c76-80e1-4239-95bb-83d0f6d0da78 8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a; do
    dit "supportedOS Id=\"{$systeme}\""
done
for texte in "$description" "$version ($edition)"; do
    iconv -c -f UTF-16LE -t UTF-8 "$ressources" | grep -acF "$texte" >/dev/null || faute "the version does not say: $texte"
done

# Without a console window, the standard output of a pipe is still written to.
[ $# -eq 0 ] || [ "$("$@" "$programme" --version | tr -d '\r')" = "$dit_son_nom $version ($edition)" ] ||
    faute "--version does not say $version ($edition)"
exit $fautes
