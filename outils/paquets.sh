#!/usr/bin/env bash
# Installs the distribution's packages that a task needs and the machine lacks (Debian, Ubuntu).
# Usage: outils/paquets.sh [programme] [tests] [windows] [fuzz] [format] [banc] [pairs]
set -euo pipefail

programme="cmake ninja-build g++ pkg-config libxcb1-dev libxcb-shm0-dev libxcb-xinput-dev libxcb-screensaver0-dev libxcb-xkb-dev
    libxkbcommon-dev libxkbcommon-x11-dev libstb-dev libcsv-dev cmark-gfm fonts-liberation fonts-material-design-icons-iconfont"
tests="libgtest-dev googletest libbenchmark-dev xvfb openbox cage xwayland tigervnc-standalone-server x11-utils x11-xkb-utils
    x11-xserver-utils xdotool imagemagick bindfs dpkg-dev file python3 valgrind"
windows="g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix googletest wine64 wine nsis"
fuzz="clang libclang-rt-dev"
format="clang-format python3"
banc="libbenchmark-dev libxcb-xtest0-dev xvfb python3"
pairs="libfltk1.3-dev" # what the bench compares with; it does without

manquants=()
for groupe in "$@"; do
    for paquet in ${!groupe}; do
        etat=$(dpkg-query -W -f='${db:Status-Status}' "$paquet" 2>/dev/null || true)
        [ "$etat" = installed ] || manquants+=("$paquet")
    done
done
[ ${#manquants[@]} -eq 0 ] && exit 0

if ! command -v apt-get >/dev/null; then
    echo "Missing packages (by their Debian names): ${manquants[*]}" >&2
    exit 1
fi
racine=()
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
        echo "Neither root nor sudo. As root: apt-get install ${manquants[*]}" >&2
        exit 1
    fi
    racine=(sudo)
fi
echo "Installing: ${manquants[*]}"
"${racine[@]}" apt-get update -qq || true # a list that nothing here needs may be out of reach
"${racine[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends --no-remove \
    "${manquants[@]}" && exit 0
echo "Not installed. Is there a network, and does /etc/apt/sources.list name where to fetch from?" >&2
exit 1
