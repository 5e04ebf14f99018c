#!/usr/bin/env bash
# Fetches the source of a distribution's package into build/paquets-sources/NAME, for what is cross-built and has no
# package there. It asks the machine's own package sources, by a list of its own beside theirs, which stay as they are.
# Usage: outils/sources.sh NAME...
set -euo pipefail
cd "$(dirname "$0")/.."
racine=$PWD/build/paquets-sources

manquants=()
for nom in "$@"; do
    [ -d "$racine/$nom" ] || manquants+=("$nom")
done
[ ${#manquants[@]} -eq 0 ] && exit 0
command -v apt-get >/dev/null || { echo "Missing sources (by their Debian names): ${manquants[*]}" >&2; exit 1; }

mkdir -p "$racine"
travail=$(mktemp -d)
trap 'rm -rf "$travail"' EXIT
mkdir -p "$travail/listes/partial" "$travail/archives/partial" "$travail/sources.d"

# Both forms in which a machine names its sources, turned from programs to sources.
eval "$(apt-config shell parties Dir::Etc::sourceparts/d liste Dir::Etc::sourcelist/f)"
for fichier in "$parties"/*.sources; do
    [ -e "$fichier" ] || continue
    sed -E 's/^Types:.*/Types: deb-src/' "$fichier" >"$travail/sources.d/$(basename "$fichier")"
done
for fichier in "$liste" "$parties"/*.list; do
    [ -e "$fichier" ] || continue
    sed -nE 's/^[[:space:]]*deb(-src)?[[:space:]]/deb-src /p' "$fichier" | sort -u >"$travail/sources.d/$(basename "$fichier" .list).list"
done

options=(-qq -o "Dir::Etc::sourcelist=/dev/null" -o "Dir::Etc::sourceparts=$travail/sources.d"
    -o "Dir::State::lists=$travail/listes" -o "Dir::Cache::archives=$travail/archives" -o "Dir::Cache::srcpkgcache="
    -o "Dir::Cache::pkgcache=" -o "APT::Sandbox::User=$(id -un)")
apt-get "${options[@]}" update
for nom in "${manquants[@]}"; do
    echo "Fetching the source of $nom"
    mkdir "$travail/$nom"
    (cd "$travail/$nom" && apt-get "${options[@]}" source --download-only "$nom")
    # Whole under its name, or not at all.
    mkdir "$travail/$nom/contenu"
    tar -C "$travail/$nom/contenu" --strip-components=1 -xf "$travail/$nom"/*.orig.tar.*[!c]
    cp -r "$travail/$nom/contenu" "$racine/$nom.nouveau"
    mv "$racine/$nom.nouveau" "$racine/$nom"
done
