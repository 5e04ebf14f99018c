#!/usr/bin/env bash
# The Debian package: made anew, with what it must contain, and its scripts keep the orders.
# Usage: deb.sh BUILD_DIRECTORY VERSION
set -euo pipefail

construction=$1 version=$2
command -v dpkg-shlibdeps >/dev/null || { echo "no Debian here: not tried" && exit 77; }
essai=$construction/deb
rm -rf "$essai"
mkdir "$essai"
cpack --config "$construction/CPackConfig.cmake" -B "$essai" >"$essai/sortie" 2>&1 || { cat "$essai/sortie" && exit 1; }
paquet=$essai/orvalune_${version}_$(dpkg --print-architecture).deb
echec() {
    echo "FAILED: $*" >&2
    exit 1
}

contenu=$(dpkg-deb -c "$paquet" | sed 's/^\(.\{10\}\) [^ ]* .* \.\//\1 /')
for fichier in '-rwxr-xr-x usr/bin/orvalune' '-rwxr-xr-x usr/bin/orvalune-carte' '-rwxr-xr-x usr/bin/orvalune-cuisine' \
    '-rw-r--r-- usr/share/man/man1/orvalune-carte.1.gz' '-rw-r--r-- usr/share/man/man1/orvalune-cuisine.1.gz' \
    '-rw-r--r-- usr/lib/systemd/system/orvalune-cuisine.service' \
    '-rw-r--r-- usr/share/applications/orvalune.desktop' '-rw-r--r-- usr/share/applications/orvalune-manuel.desktop' \
    '-rw-r--r-- usr/share/icons/hicolor/256x256/apps/orvalune.png' '-rw-r--r-- usr/share/man/man1/orvalune.1.gz' \
    '-rw-r--r-- usr/share/doc/orvalune/copyright' '-rw-r--r-- usr/lib/systemd/system/orvalune-kiosk.service'; do
    grep -qxF -e "$fichier" <<<"$contenu" || echec "not in the package: $fichier"
done
! grep -q '\.wdo\|wants/' <<<"$contenu" || echec "it brings settings, or enables the kiosk"
depend=$(dpkg-deb -f "$paquet" Depends)
for nom in libxcb-xinput0 libxkbcommon-x11-0 libx11-data libc6 adduser; do
    [[ ", $depend" == *", $nom"* ]] || echec "does not depend on $nom: $depend"
done

dpkg-deb -R "$paquet" "$essai/paquet"
programme=$essai/paquet/usr/bin/orvalune
# The kitchen is one file that runs on any machine of the restaurant.
cuisine=$programme-cuisine
[ "$(stat -c %s "$cuisine")" -lt $((4 * 1024 * 1024)) ] || echec "the kitchen is larger than 4 MiB"
[ "$(objdump -p "$cuisine" | sed -n 's/^ *NEEDED *//p' | grep -vE '^(libc|libm|ld-linux.*)\.so' || true)" = "" ] ||
    echec "the kitchen needs libraries: $(objdump -p "$cuisine" | grep NEEDED)"
[[ $("$cuisine" --version) == "orvalune-cuisine $version ("* ]] || echec "the kitchen does not say its version"
# A kiosk that fails is never given up; systemd reads that line in the first section only.
sed '/^\[Service\]/,$d' "$essai/paquet/usr/lib/systemd/system/orvalune-kiosk.service" | grep -qx 'StartLimitIntervalSec=0' ||
    echec "a kiosk that fails five times stays black"
[[ $("$programme" --version) == "Orvalune $version ("* ]] || echec "the packaged program does not say its version"
# The packaged companion finds the packaged terminal beside it.
"$essai/paquet/usr/bin/orvalune-carte" modele "$essai/carte" >"$essai/sortie" &&
    "$essai/paquet/usr/bin/orvalune-carte" apercu "$essai/carte" "$essai/carte.html" >>"$essai/sortie" 2>&1 ||
    { cat "$essai/sortie" && echec "the packaged orvalune-carte shows no card"; }
# The manual is one page: every picture within, every link leads somewhere in it.
manuel=$essai/paquet/usr/share/doc/orvalune/manuel.html
images=$(grep -o '<img [^>]*src="[^"]\{8\}' "$manuel" | sort | uniq -c | sed 's/^ *//')
[[ $images =~ ^[1-9][0-9]+\ \<img\ src=\"data:ima$ ]] || echec "pictures of the manual are not within it: $images"
liens=$(grep -o 'href="[^"]*"' "$manuel" | sed 's/^href="//; s/"$//; s/%/\\x/g' | sort -u)
while read -r lien; do
    grep -qF "id=\"$(printf '%b' "${lien#\#}")\"" "$manuel" || echec "the manual has no heading for $lien"
done <<<"$liens"

# Removed, then purged, upon a working directory of our own.
apres_retrait() {
    sed 's|/var/lib/orvalune|travail|; s|/run/systemd/system|/nowhere|' "$essai/paquet/DEBIAN/postrm" | (cd "$essai" && sh -s "$1")
}
travail=$essai/travail
mkdir "$travail"
attend=2021-05-19-12-30-00_01_007_004_.-A-
touch "$travail/$attend" "$travail/prov.txt" "$travail/wwinqx42.wdo"
for etape in remove purge; do
    apres_retrait "$etape"
    [ -e "$travail/$attend" ] && [ -e "$travail/prov.txt" ] || echec "$etape took orders away"
    [ "$etape" = purge ] || [ -e "$travail/wwinqx42.wdo" ] || echec "$etape took settings away"
done
[ ! -e "$travail/wwinqx42.wdo" ] || echec "a purge left settings"
rm "$travail/$attend" "$travail/prov.txt"
apres_retrait purge
[ ! -d "$travail" ] || echec "a purge left an empty directory"
