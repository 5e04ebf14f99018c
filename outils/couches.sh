#!/usr/bin/env bash
# Checks who includes whom in src/, and that no system header is included outside src/platform.
set -uo pipefail
cd "$(dirname "$0")/.." || exit

fautes=0
# refuse TITLE COMMAND...: what the command prints is a fault.
refuse() {
    local titre=$1 lignes
    shift
    lignes=$("$@" || true)
    [ -z "$lignes" ] && return
    printf '%s\n%s\n' "$titre" "$lignes"
    fautes=1
}
# The quoted includes of a folder that match none of the allowed beginnings.
inclut_hors() { grep -rnE '^ *# *include *"' "src/$1" | grep -vE "include *\"($2)"; }
# Angle includes of the standard library have no ".h" and no "/"; all others belong to a system or a library.
entetes_systeme() { grep -rnE '^ *# *include *<[^>]*[./]' src | grep -v '^src/platform/'; }
selon_systeme() { grep -rnE '^ *# *(if|elif|ifdef|ifndef)\b.*(_WIN32|__linux__|__unix__)' src |
    grep -vE '^src/(platform/|main\.cpp:)'; }

refuse "platform/ knows nobody above it:" inclut_hors platform 'platform/'
refuse "data/ knows platform/ and config/reglages only:" inclut_hors data 'data/|platform/|config/reglages\.h'
refuse "dialogs/ and config/ know nothing of the main screen:" inclut_hors dialogs 'dialogs/|config/|data/|platform/'
refuse "dialogs/ and config/ know nothing of the main screen:" inclut_hors config 'dialogs/|config/|data/|platform/'
refuse "System headers belong to platform/:" entetes_systeme
refuse "What differs between systems belongs to platform/:" selon_systeme
exit "$fautes"
